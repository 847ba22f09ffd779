// MemoryStorageContainer.cpp: who owns the storage, and the pointers that follow its block.
#include <kelgen/containers/MemoryStorage.h>

namespace {

constexpr DWORD kUsualAddUp = 512;

}  // namespace

CMemoryStorageContainer::CMemoryStorageContainer(DWORD addUp) : m_addUp(addUp) {}

CMemoryStorageContainer::CMemoryStorageContainer(void* data, DWORD size) : m_addUp(kUsualAddUp)
{
    static_cast<void>(data);
    static_cast<void>(size);
}

CMemoryStorageContainer::~CMemoryStorageContainer()
{
    if (m_owns)
        delete m_storage;
}

bool CMemoryStorageContainer::IsValid() const
{
    return m_storage != nullptr;
}

void CMemoryStorageContainer::Allocate(DWORD n)
{
    if (!m_storage) {
        m_storage = new CMemoryStorage(this);
        m_storage->m_addUp = m_addUp;
        m_owns = true;
    }
    m_storage->Allocate(n);
}

void CMemoryStorageContainer::AllocateAddUp(DWORD n)
{
    const DWORD size = GetStorageSize_();
    if (size + n < size)
        throw new CMemoryException;
    Allocate(size + n);
}

DWORD CMemoryStorageContainer::GetStorageSize_() const
{
    return m_storage ? m_storage->GetStorageSize() : 0;
}

unsigned char* CMemoryStorageContainer::GetAllocation()
{
    return m_storage ? m_storage->GetAllocation() : nullptr;
}

unsigned char* CMemoryStorageContainer::DetachStorage()
{
    return m_storage ? m_storage->DetachStorage() : nullptr;
}

bool CMemoryStorageContainer::Lock()
{
    if (!m_storage)
        return false;
    m_storage->Lock();
    return true;
}

bool CMemoryStorageContainer::Unlock()
{
    if (!m_storage)
        return false;
    m_storage->Unlock();
    return true;
}

void CMemoryStorageContainer::FullLoad(CMemoryStorage* storage, bool own)
{
    if (m_owns && m_storage != storage)
        delete m_storage;
    m_storage = storage;
    m_owns = own;
}

void CMemoryStorageContainer::FullLoad(CArchive& ar)
{
    if (!m_storage) {
        m_storage = new CMemoryStorage(this);
        m_owns = true;
    }
    m_storage->FullLoad(ar);
}

CMemoryStorageContainer& CMemoryStorageContainer::operator=(const CMemoryStorageContainer& source)
{
    // Before the copy allocates: the kept pointers belong to the storage that is let go.
    m_keptPointers.RemoveAll();
    m_owns = source.m_owns;
    if (!source.m_storage) {
        m_storage = nullptr;
        return *this;
    }
    const CMemoryStorage& original = *source.m_storage;
    m_storage = new CMemoryStorage(this);
    m_storage->CopyData(original);
    return *this;
}

bool CMemoryStorageContainer::KeepStoragePointer(void** pointer)
{
    m_keptPointers.Add(pointer);
    return true;
}

bool CMemoryStorageContainer::OffsetStorageKeptPointers(INT_PTR delta)
{
    for (int i = 0; i < m_keptPointers.GetSize(); ++i) {
        void*& pointer = *m_keptPointers.GetAt(i);
        pointer = reinterpret_cast<void*>(reinterpret_cast<INT_PTR>(pointer) + delta);
    }
    return true;
}
