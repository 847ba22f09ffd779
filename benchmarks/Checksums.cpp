// Checksums.cpp: the library's checksum beside the plain byte table.
#include "ChecksumOperations.h"

#include <kelgen/persistence/CRC.h>

using namespace bench;

namespace {

void Kelgen(State& st)
{
    MeasureMsb(st, [](unsigned char* data, std::size_t n) {
        CCRCFast crc(kEthernet);
        crc.PutBytes(data, static_cast<int>(n));
        return std::uint32_t{crc.Done()};
    });
}

void Table(State& st)
{
    MeasureMsb(st, ByteTable(kEthernet));
}

CHECKSUM(Kelgen, "kelgen");
CHECKSUM(Table, "byte_table");

}  // namespace
