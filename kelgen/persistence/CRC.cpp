// CRC.cpp: the table path, and carry-less folding for long runs.
#include <kelgen/persistence/CRC.h>

#include <kelgen/persistence/MemoryStorage.h>
#include <kelgen/persistence/internal/CRCFold.h>

#include <utility>

CCRCFast::Table CCRCFast::m_table;

namespace {

DWORD Feed(DWORD crc, const unsigned char* data, size_t size)
{
    const CCRCFast::Table& table = CCRCFast::m_table;
    size_t done = 0;
    // Folding, too, goes by the table's polynomial and not the object's: a rebuilt table changes this result.
    if (size >= kelgen::detail::kFoldMinimum && kelgen::detail::canFold)
        done = kelgen::detail::FoldCrc(crc, data, size);
    for (; done < size; ++done)
        crc = (crc << 8) ^ table.m_entries[(crc >> 24) ^ data[done]];
    return crc;
}

}  // namespace

CCRC::CCRC(DWORD polynomial) : m_polynomial(polynomial) {}

CCRC::~CCRC() = default;

DWORD CCRC::Done()
{
    return std::exchange(m_register, 0);
}

void CCRCFast::Table::Build(DWORD polynomial)
{
    if (polynomial == m_polynomial)
        return;

    m_polynomial = polynomial;
    for (DWORD i = 0; i < 256; ++i) {
        DWORD x = i << 24;
        for (int bit = 0; bit < 8; ++bit)
            x = (x & 0x80000000) ? (x << 1) ^ polynomial : x << 1;
        m_entries[i] = x;
    }
    kelgen::detail::PrepareFold(polynomial);
}

CCRCFast::CCRCFast(DWORD polynomial) : CCRC(polynomial)
{
    m_table.Build(polynomial);
}

void CCRCFast::PutBytes(unsigned char* data, int n)
{
    if (n > 0)
        m_register = Feed(m_register, data, static_cast<size_t>(n));
}

void CCRCFast::PutBytes(CMemoryStorage* s)
{
    s->Lock();
    m_register = Feed(m_register, s->GetAllocation(), s->GetAllocation() ? s->GetStorageSize() : 0);
    s->Unlock();
}
