// MemoryStorage.h: an owned, growing block of bytes, and a holder that makes outside pointers follow it.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/Synchronization.h>
#include <kelgen/framework/collections/ArrayTypes.h>
#include <kelgen/platform/Win32.h>

class CArchive;
class CMemoryStorageContainer;

/// A block of bytes with a lock of its own.
///
///     CMemoryStorage bytes(nullptr);
///     bytes.Allocate(100);
///     std::memcpy(bytes.GetAllocation(), data, 100);
///
/// The block is closed while lock enforcement is on and the locked flag is off. By contract: nothing here switches either, since both are
/// for derived classes.
/// Threads: one at a time; Lock and Unlock let callers share a storage, and only the comparison locks by itself.
class KELGEN_API CMemoryStorage
{
public:
    /// Empty. @p container, which may be null, is told when the block moves.
    CMemoryStorage(CMemoryStorageContainer* container);
    /// A copy of @p size bytes. Throws: as Allocate.
    CMemoryStorage(CMemoryStorageContainer* container, void* data, DWORD size);
    virtual ~CMemoryStorage();
    CMemoryStorage(const CMemoryStorage&) = delete;

    /// Sets every member but the lock as the first constructor does. By contract: a block that it has is not freed, since the members are
    /// taken to hold nothing yet.
    void Construct(CMemoryStorageContainer* container);

    /// The number of bytes in use.
    DWORD GetStorageSize() const { return m_size; }
    /// The block; null when the size is 0 or the block is closed.
    unsigned char* GetAllocation() const { return IsEnabled() && m_size != 0 ? m_block : nullptr; }

    /// Sets the size; bytes that are new are undefined. A block that is too small is replaced by one of @p n bytes and 512 more,
    /// and the container's kept pointers follow; a block never shrinks.
    /// Throws: a new CMemoryException when memory ends or the block is closed; the storage is then as it was.
    void Allocate(DWORD n);
    /// Allocate for @p n bytes more than now. Throws: as Allocate.
    void AllocateAddUp(DWORD n);
    /// Becomes a copy of the @p n bytes at @p data, which may lie in the block. Throws: as Allocate.
    void SetDataAndSize(unsigned char* data, int n);
    /// Becomes a copy of the bytes of @p source; those of a closed block are not copied. Throws: as Allocate.
    void CopyData(const CMemoryStorage& source);
    CMemoryStorage& operator=(const CMemoryStorage& source);

    /// Whether sizes and bytes are equal; both storages are locked meanwhile, this one first.
    bool operator==(CMemoryStorage& other);

    /// Hands the block over, for the caller to free(); the storage is as constructed, with the same container.
    unsigned char* DetachStorage();

    /// Enters the storage's lock. By contract: the locked flag does not follow, since nothing here switches it.
    void Lock() { m_lock.Lock(); }
    /// Leaves the storage's lock.
    void Unlock() { m_lock.Unlock(); }
    /// The locked flag.
    bool IsLocked() const { return m_locked; }
    /// Whether the block is open.
    bool IsEnabled() const { return !m_lockEnforced || m_locked; }

    /// Reads the whole file behind @p ar. By contract: errors of the file are swallowed and leave what was read, so a caller goes by the
    /// size; a closed block reads nothing.
    /// Throws: a `char*` text for a file of 2 GB or more; as Allocate.
    void FullLoad(CArchive& ar);

protected:
    friend class CMemoryStorageContainer;

    CCriticalSection m_lock;
    bool m_locked = false;
    bool m_lockEnforced = false;
    unsigned char* m_block = nullptr;
    DWORD m_size = 0;
    DWORD m_capacity = 0;
    DWORD m_addUp;
    CMemoryStorageContainer* m_container;

private:
    void MoveTo(unsigned char* block);
};

/// Holds a storage, its own or somebody else's, and outside pointers into its block that follow it when it moves.
///
///     unsigned char* cursor = ...;   // into the block, or an offset while there is none
///     container.KeepStoragePointer(reinterpret_cast<void**>(&cursor));
///
/// Threads: one at a time.
class KELGEN_API CMemoryStorageContainer
{
public:
    /// @p addUp is what a storage that Allocate makes reserves beyond each growth.
    CMemoryStorageContainer(DWORD addUp);
    /// By contract: both arguments are ignored: no storage is held, and the bytes stay the caller's.
    CMemoryStorageContainer(void* data, DWORD size);
    /// Deletes the storage if it is the container's own.
    virtual ~CMemoryStorageContainer();
    CMemoryStorageContainer(const CMemoryStorageContainer&) = delete;

    /// Whether a storage is held.
    virtual bool IsValid() const;
    /// The storage's Allocate; makes a storage first when none is held.
    virtual void Allocate(DWORD n);
    /// Allocate for @p n bytes more than the storage has.
    virtual void AllocateAddUp(DWORD n);

    /// The storage that is held; null for none.
    CMemoryStorage* GetMemoryStorage() const { return m_storage; }
    /// 0 without a storage.
    DWORD GetStorageSize_() const;
    /// Null without a storage.
    unsigned char* GetAllocation();
    /// The storage's DetachStorage; null without a storage.
    unsigned char* DetachStorage();
    /// False, and nothing is locked, without a storage.
    bool Lock();
    /// Undoes Lock; false without a storage.
    bool Unlock();

    /// Holds @p storage from now on; the old one is deleted if it was the container's own.
    void FullLoad(CMemoryStorage* storage, bool own);
    /// The storage's FullLoad. By contract: a storage made for it reserves 512 bytes beyond each growth, since only Allocate passes the
    /// container's own number on.
    void FullLoad(CArchive& ar);

    /// Holds a new copy of the storage of @p source, owned if @p source owns its own; forgets the kept pointers.
    /// By contract: the storage held before is not deleted, since others may hold it.
    CMemoryStorageContainer& operator=(const CMemoryStorageContainer& source);

    /// Adds to the pointers that follow the block; true. There is no way to take one out.
    bool KeepStoragePointer(void** pointer);
    /// Shifts every kept pointer by @p delta bytes; true.
    bool OffsetStorageKeptPointers(INT_PTR delta);

private:
    CMemoryStorage* m_storage = nullptr;
    bool m_owns = false;
    CTypedPtrArray<CPtrArray, void**> m_keptPointers;
    DWORD m_addUp;
};
