// MemoryStorage.cpp: growth, and what follows it.
#include <kelgen/containers/MemoryStorage.h>

#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/File.h>

#include <cstdlib>
#include <cstring>

namespace {

constexpr DWORD kAddUp = 512;
constexpr ULONGLONG kTooLarge = 0x80000000;

/// The sum of two sizes. Throws: a new CMemoryException when it is beyond 32 bits.
DWORD AddSizes(DWORD left, DWORD right)
{
    const DWORD sum = left + right;
    if (sum < left)
        throw new CMemoryException;
    return sum;
}

[[noreturn]] void ThrowTooLarge()
{
    static char text[] = "File farly too large to be stored entirely in 32-bit memory.";
    throw static_cast<char*>(text);
}

}  // namespace

CMemoryStorage::CMemoryStorage(CMemoryStorageContainer* container) : m_addUp(kAddUp), m_container(container) {}

CMemoryStorage::CMemoryStorage(CMemoryStorageContainer* container, void* data, DWORD size) : CMemoryStorage(container)
{
    Allocate(size);
    if (size != 0)
        std::memcpy(m_block, data, size);
}

CMemoryStorage::~CMemoryStorage()
{
    std::free(m_block);
}

void CMemoryStorage::Construct(CMemoryStorageContainer* container)
{
    m_locked = false;
    m_lockEnforced = false;
    m_block = nullptr;
    m_size = 0;
    m_capacity = 0;
    m_addUp = kAddUp;
    m_container = container;
}

/// Takes a block that replaces the present one, which is gone already.
void CMemoryStorage::MoveTo(unsigned char* block)
{
    const INT_PTR delta = reinterpret_cast<INT_PTR>(block) - reinterpret_cast<INT_PTR>(m_block);
    if (m_container)
        m_container->OffsetStorageKeptPointers(delta);
    m_block = block;
}

void CMemoryStorage::Allocate(DWORD n)
{
    if (!IsEnabled())
        throw new CMemoryException;
    if (n == 0 || (m_block && n <= m_capacity)) {
        m_size = n;
        return;
    }

    const DWORD capacity = AddSizes(m_addUp, n);
    void* const block = std::realloc(m_block, capacity);
    if (!block)
        throw new CMemoryException;
    MoveTo(static_cast<unsigned char*>(block));
    m_capacity = capacity;
    m_size = n;
}

void CMemoryStorage::AllocateAddUp(DWORD n)
{
    Allocate(AddSizes(m_size, n));
}

void CMemoryStorage::SetDataAndSize(unsigned char* data, int n)
{
    Allocate(static_cast<DWORD>(n));
    if (unsigned char* const block = GetAllocation())
        std::memmove(block, data, m_size);
}

void CMemoryStorage::CopyData(const CMemoryStorage& source)
{
    Allocate(source.m_size);
    const unsigned char* const bytes = source.GetAllocation();
    if (bytes && GetAllocation())
        std::memmove(m_block, bytes, m_size);
}

CMemoryStorage& CMemoryStorage::operator=(const CMemoryStorage& source)
{
    CopyData(source);
    return *this;
}

bool CMemoryStorage::operator==(CMemoryStorage& other)
{
    const CSingleLock own(&m_lock, TRUE);
    const CSingleLock others(&other.m_lock, TRUE);
    if (m_size != other.m_size)
        return false;
    if (m_size == 0)
        return true;
    const unsigned char* const left = GetAllocation();
    const unsigned char* const right = other.GetAllocation();
    return left && right && std::memcmp(left, right, m_size) == 0;
}

unsigned char* CMemoryStorage::DetachStorage()
{
    unsigned char* const block = m_block;
    Construct(m_container);
    return block;
}

void CMemoryStorage::FullLoad(CArchive& ar)
{
    if (!IsEnabled())
        return;
    try {
        CFile* const file = ar.GetFile();
        const ULONGLONG length = file->GetLength();
        if (length >= kTooLarge)
            ThrowTooLarge();
        file->SeekToBegin();
        Allocate(static_cast<DWORD>(length));
        file->Read(GetAllocation(), m_size);
    } catch (CFileException* error) {
        error->Delete();
    }
}
