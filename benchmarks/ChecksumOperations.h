// ChecksumOperations.h: sums of random bytes, checked against the plain byte table.
#pragma once

#include "Bench.h"

#include <array>

namespace bench {

inline std::vector<unsigned char> RandomBytes(std::size_t n)
{
    std::vector<unsigned char> bytes(n);
    std::mt19937 rng(6);
    for (auto& b : bytes)
        b = static_cast<unsigned char>(rng());
    return bytes;
}

/// The plain loop: any polynomial, one byte at a time.
struct ByteTable
{
    std::array<std::uint32_t, 256> entries;

    explicit ByteTable(std::uint32_t polynomial)
    {
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t x = i << 24;
            for (int bit = 0; bit < 8; ++bit)
                x = x & 0x80000000u ? x << 1 ^ polynomial : x << 1;
            entries[i] = x;
        }
    }

    std::uint32_t operator()(const unsigned char* data, std::size_t n) const
    {
        std::uint32_t crc = 0;
        for (; n; --n)
            crc = crc << 8 ^ entries[crc >> 24 ^ *data++];
        return crc;
    }
};

constexpr std::uint32_t kEthernet = 0x04C11DB7;

template <class Sum>
void Measure(State& st, Sum sum)
{
    auto bytes = RandomBytes(static_cast<std::size_t>(st.range(0)));
    unsigned char* data = bytes.data();
    for (auto _ : st) {
        DoNotOptimize(data);
        DoNotOptimize(sum(data, bytes.size()));
    }
    st.SetBytesProcessed(st.iterations() * st.range(0));
}

/// Most significant bit first, initial 0, nothing inverted: all must agree.
template <class Sum>
void MeasureMsb(State& st, Sum sum)
{
    auto bytes = RandomBytes(static_cast<std::size_t>(st.range(0)));
    require(sum(bytes.data(), bytes.size()) == ByteTable(kEthernet)(bytes.data(), bytes.size()), "Crc32/Msb");
    Measure(st, sum);
}

#define CHECKSUM(function, name) COUNTED(function)->Name("Crc32/Msb/" name)->Arg(64)->Arg(4096)->Arg(1 << 20)

}  // namespace bench
