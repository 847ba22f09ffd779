// FuzzTest.cpp: replays the seeds of every fuzz target, then random changes of them.
#include "posix/fuzz/FuzzTargets.h"
#include "support/Random.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace kelgen::test;

namespace {

constexpr int kChanges = 3000;
// All targets together stay below three seconds, whatever the machine.
constexpr std::chrono::milliseconds kTimeForEach(150);

std::vector<std::string> SeedsOf(const FuzzTarget& target)
{
    std::vector<std::string> seeds;
    for (const auto& file : std::filesystem::directory_iterator(target.corpus)) {
        std::ifstream stream(file.path(), std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    std::sort(seeds.begin(), seeds.end());
    return seeds;
}

void Feed(const FuzzTarget& target, const std::string& bytes)
{
    target.run(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

std::size_t Place(Random& random, const std::string& bytes)
{
    return static_cast<std::size_t>(random.Between(0, static_cast<int>(bytes.size())));
}

/// One random change: a byte, a number of limits, a piece left out, doubled or taken from another seed.
void Change(std::string& bytes, const std::vector<std::string>& seeds, Random& random)
{
    static constexpr unsigned kLimits[] = {0, 1, 0x7F, 0xFF, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFE, 0xFFFFFFFF};
    const std::size_t place = Place(random, bytes);
    const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(random.Between(1, 16)), bytes.size() - place);
    switch (random.Between(0, 4)) {
    case 0:
        if (place < bytes.size())
            bytes[place] = static_cast<char>(random.Between(0, 255));
        break;
    case 1: {
        const unsigned limit = kLimits[random.Between(0, 8)];
        bytes.replace(place, std::min<std::size_t>(4, length), reinterpret_cast<const char*>(&limit), std::min<std::size_t>(4, length));
        break;
    }
    case 2:
        bytes.erase(place, length);
        break;
    case 3:
        bytes.insert(place, bytes.substr(place, length));
        break;
    default: {
        const std::string& other = seeds[static_cast<std::size_t>(random.Between(0, static_cast<int>(seeds.size()) - 1))];
        bytes.insert(place, other.substr(Place(random, other), static_cast<std::size_t>(random.Between(1, 64))));
    }
    }
}

}  // namespace

class Fuzz : public testing::TestWithParam<FuzzTarget>
{};

TEST_P(Fuzz, SeedsAndTheirChangesAreHarmless)
{
    Random random;
    std::printf("%s %s\n", GetParam().name, random.Seed().c_str());
    std::fflush(stdout);
    const auto seeds = SeedsOf(GetParam());
    ASSERT_FALSE(seeds.empty()) << GetParam().corpus;
    for (const std::string& seed : seeds)
        Feed(GetParam(), seed);

    const bool isRepeated = std::getenv("KELGEN_TEST_SEED") != nullptr;
    const auto end = std::chrono::steady_clock::now() + kTimeForEach;
    for (int i = 0; i < kChanges && (isRepeated || std::chrono::steady_clock::now() < end); ++i) {
        std::string bytes = seeds[static_cast<std::size_t>(i) % seeds.size()];
        for (int changes = random.Between(1, 5); changes > 0; --changes)
            Change(bytes, seeds, random);
        Feed(GetParam(), bytes);
    }
}

INSTANTIATE_TEST_SUITE_P(, Fuzz, testing::ValuesIn(fuzzTargets), [](const auto& row) { return row.param.name; });
