// checksums.cpp: the peers' checksums. zlib's is the reflected form of the same polynomial.
#include "../ChecksumOperations.h"

#include <isa-l/crc.h>
#include <zlib.h>

#include <boost/crc.hpp>

using namespace bench;

namespace {

void Boost(State& st)
{
    MeasureMsb(st, [](const unsigned char* data, std::size_t n) {
        boost::crc_optimal<32, kEthernet, 0, 0, false, false> crc;
        crc.process_bytes(data, n);
        return crc.checksum();
    });
}

void Isal(State& st)
{
    MeasureMsb(st, [](const unsigned char* data, std::size_t n) { return ~crc32_ieee(~0u, data, n); });
}

void Zlib(State& st)
{
    Measure(st, [](const unsigned char* data, std::size_t n) { return static_cast<std::uint32_t>(crc32(0, data, static_cast<uInt>(n))); });
}

CHECKSUM(Boost, "boost");
CHECKSUM(Isal, "ISA-L");
CHECKSUM(Zlib, "zlib_reflected");

}  // namespace
