// Random.h: random input whose seed a failing test prints.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

namespace kelgen::test {

/// A generator with a fresh seed, or the one in KELGEN_TEST_SEED. While it lives, failures name its seed.
class Random : public std::mt19937
{
public:
    Random() : Random(ChooseSeed()) {}

    /// What a program prints that may end without a failure: the environment variable that repeats the run.
    std::string Seed() const { return "KELGEN_TEST_SEED=" + std::to_string(m_seed); }

    /// A number from @p low to @p high, both included.
    int Between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(*this); }

private:
    explicit Random(unsigned seed) : std::mt19937(seed), m_seed(seed), m_trace(__FILE__, __LINE__, Seed()) {}

    static unsigned ChooseSeed()
    {
        const char* given = std::getenv("KELGEN_TEST_SEED");
        return given ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device{}();
    }

    unsigned m_seed;
    testing::ScopedTrace m_trace;
};

}  // namespace kelgen::test
