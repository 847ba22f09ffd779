// MemoryFile.cpp: reading and writing at a position in the storage.
#include <kelgen/persistence/MemoryFile.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr DWORD kAddUp = 256;

}  // namespace

CMemoryFile::CMemoryFile(int n) : CMemoryStorageContainer(kAddUp)
{
    if (n >= 0)
        Allocate(static_cast<DWORD>(n));
}

CMemoryFile::CMemoryFile(void* data, DWORD size) : CMemoryStorageContainer(data, size) {}

CMemoryFile::~CMemoryFile() = default;

UINT CMemoryFile::Read(void* buf, UINT n)
{
    const DWORD size = GetStorageSize_();
    if (m_position >= size)
        return 0;
    const DWORD left = size - m_position;
    const unsigned char* const block = GetAllocation();
    if (block && n != 0)
        std::memcpy(buf, block + m_position, std::min<DWORD>(n, left));

    // All of this is 32-bit arithmetic, which hosts see in the result.
    const DWORD last = m_position + n;
    const DWORD count = last > size ? left - n : n;
    m_position += count;
    return static_cast<UINT>(count);
}

void CMemoryFile::Write(const void* buf, UINT n)
{
    const DWORD last = m_position + n;
    if (last < m_position)
        throw new CMemoryException;
    auto source = static_cast<const unsigned char*>(buf);
    if (last > GetStorageSize_()) {
        // The bytes may be the file's own, which move.
        const auto place = reinterpret_cast<std::uintptr_t>(source) - reinterpret_cast<std::uintptr_t>(GetAllocation());
        const bool isOwn = place < GetStorageSize_();
        Allocate(last);
        if (isOwn)
            source = GetAllocation() + place;
    }
    // A host's own Allocate may do otherwise than it should.
    unsigned char* const block = GetAllocation();
    const DWORD size = GetStorageSize_();
    if (block && n != 0 && m_position < size)
        std::memmove(block + m_position, source, std::min<DWORD>(n, size - m_position));
    m_position = last;
}

void CMemoryFile::Create(int n)
{
    Allocate(static_cast<DWORD>(n));
}

void CMemoryFile::Truncate(int n)
{
    Allocate(static_cast<DWORD>(n));
    m_position = 0;
}

void CMemoryFile::Clear()
{
    m_position = 0;
    Allocate(0);
    m_position = 0;
}
