// Bench.h: inputs shared by every area. The seeds are fixed, so the library and every peer get the same data. Names are
// Area/Operation/Peer(/size); the library's rows differ in the third part only.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <unistd.h>

namespace bench {

using benchmark::DoNotOptimize;
using benchmark::State;

// A fast wrong answer is no figure: every area checks its results once per benchmark.
inline void require(bool ok, const char* what)
{
    if (!ok) {
        std::fprintf(stderr, "wrong result: %s\n", what);
        std::exit(1);
    }
}

inline std::u16string letters(std::size_t n, unsigned span = 26, unsigned seed = 1)
{
    std::mt19937 rng(seed);
    std::u16string s(n, u'a');
    for (char16_t& c : s)
        c = char16_t(u'a' + rng() % span);
    return s;
}

inline std::vector<std::u16string> words(std::size_t count, std::size_t min, std::size_t max)
{
    std::mt19937 rng(2);
    std::vector<std::u16string> v;
    for (std::size_t i = 0; i < count; ++i)
        v.push_back(letters(min + rng() % (max - min + 1), 26, rng()));
    return v;
}

inline std::vector<std::uint32_t> numbers(std::size_t n)
{
    std::mt19937 rng(3);
    std::vector<std::uint32_t> v(n);
    for (auto& x : v)
        x = rng();
    return v;
}

// S with this text (set-up only, never timed).
template <class S>
S text(std::u16string_view v)
{
    if constexpr (std::is_constructible_v<S, const char16_t*, int>)
        return S(v.data(), int(v.size()));
    else if constexpr (std::is_constructible_v<S, const unsigned short*, int>)
        return S(reinterpret_cast<const unsigned short*>(v.data()), int(v.size()));
    else if constexpr (requires { S::fromUtf16(v.data(), v.size()); })
        return S::fromUtf16(v.data(), v.size());
    else
        return S(std::wstring(v.begin(), v.end()));
}

// A folder of this process, which its main removes.
inline std::filesystem::path scratchFolder()
{
    return std::filesystem::temp_directory_path() / ("kelgen-bench-" + std::to_string(getpid()));
}

inline std::string scratch(const std::string& name)
{
    std::filesystem::create_directories(scratchFolder());
    return (scratchFolder() / name).string();
}

// Counting instructions takes a number of iterations that the environment fixes; measuring times lets the clock choose.
inline void fixIterations(benchmark::internal::Benchmark* row)
{
    if (const char* iterations = std::getenv("KELGEN_BENCH_ITERATIONS"))
        row->Iterations(std::atoi(iterations));
}

}  // namespace bench

#define COUNTED(...) BENCHMARK(__VA_ARGS__)->Apply(bench::fixIterations)
