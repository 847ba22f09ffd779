// MemoryFile.h: a file whose bytes are in a memory storage.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/MemoryStorage.h>
#include <kelgen/framework/files/File.h>

/// A file over the storage that it contains: what is written is in GetAllocation(), pointers kept in the container follow it.
///
///     CMemoryFile file;
///     file.Write(data, size);
///     file.SeekToBegin();
///
/// By contract: the position moves by reading, writing and the members below only, since Seek is that of a closed file.
/// Throws: CMemoryException when memory ends, at 4 GB at the latest. Threads: one at a time.
/// Cost: a write within the storage is a copy; beyond it the block grows by what is missing and 256 bytes.
class KELGEN_API CMemoryFile : public CFile, public CMemoryStorageContainer
{
public:
    /// @p n bytes, which are undefined; below 0 no storage is made before the first write.
    CMemoryFile(int n = 0);
    /// By contract: both arguments are ignored, as there is nothing to open; the file is empty and without a storage.
    CMemoryFile(void* data, DWORD size);
    ~CMemoryFile() override;

    /// Copies up to @p n bytes and returns @p n; 0 at or behind the end. By contract: when fewer are left, all of them are copied, but
    /// the result, by which the position moves too, is what is left minus @p n in 32 bits; so a caller asks GetLength first.
    UINT Read(void* buf, UINT n) override;
    /// Writes at the position; the storage becomes as long as the write needs.
    void Write(const void* buf, UINT n) override;

    /// At most 32 bits.
    ULONGLONG GetPosition() const override { return m_position; }
    /// The storage's size: at most 32 bits.
    ULONGLONG GetLength() const override { return GetStorageSize_(); }
    /// Moves the position to 0.
    void SeekToBegin() { m_position = 0; }

    /// Sets the size. By contract: the position stays, even behind the end, so a caller that cuts the file moves it (or calls Truncate).
    void Create(int n);
    /// Sets the size, and the position to the beginning.
    void Truncate(int n);
    /// Sets size and position to 0.
    void Clear();

private:
    DWORD m_position = 0;
};
