// MemFile.h: CMemFile, a file whose bytes are in memory.
#pragma once

#include <kelgen/framework/files/File.h>

/// A file in memory, that grows as it is written.
///
///     CMemFile file;
///     CArchive archive(&file, CArchive::store);
///
/// A derived class may take the memory from elsewhere by Alloc, Realloc and Free. Bytes between the end and a position past it
/// become 0 when something is written there.
/// Throws: CFileException badSeek for a position before the beginning; the memory exception.
/// Threads: one at a time.
class KELGEN_FRAMEWORK_API CMemFile : public CFile
{
    DECLARE_DYNAMIC(CMemFile)

public:
    /// The block grows by multiples of @p nGrowBytes; 0: it cannot grow.
    explicit CMemFile(UINT nGrowBytes = 1024);
    /// As Attach.
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    ~CMemFile() override;

    /// Uses the caller's block instead of the present one, which is freed unless it was attached too. With @p nGrowBytes 0 the
    /// file's bytes are the block's; otherwise the file is empty, and the block, from malloc, is moved as the file grows.
    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    /// Gives the block to the caller, to be freed by free(); the file is empty then.
    BYTE* Detach();

    /// Stores the size in bytes and the name, if one was set; times and attributes are 0. Returns TRUE.
    BOOL GetStatus(CFileStatus& rStatus) const;
    ULONGLONG GetPosition() const override { return m_nPosition; }
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    /// Cuts, which moves a position past the new end to it, or extends with bytes of 0.
    void SetLength(ULONGLONG dwNewLen) override;
    ULONGLONG GetLength() const override { return m_nFileSize; }
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    void Flush() override {}
    /// Frees the block unless it was attached.
    void Close() override;
    void Abort() override { Close(); }

    /// Not supported. Throws: the not-supported exception.
    CFile* Duplicate() const override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;

protected:
    /// Null when memory runs out.
    virtual BYTE* Alloc(SIZE_T nBytes);
    /// Moves a block of Alloc's to one of @p nBytes; null, and the block as it was, when memory runs out.
    virtual BYTE* Realloc(BYTE* lpMem, SIZE_T nBytes);
    /// Copies between the block and a caller's memory, as memcpy does. Returns @p lpMemTarget.
    virtual BYTE* Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes);
    /// Frees a block of Alloc's or Realloc's; null is nothing.
    virtual void Free(BYTE* lpMem);
    /// Makes the block hold at least @p dwNewLen bytes.
    virtual void GrowFile(SIZE_T dwNewLen);

    SIZE_T m_nGrowBytes;
    SIZE_T m_nPosition = 0;
    SIZE_T m_nBufferSize = 0;
    SIZE_T m_nFileSize = 0;
    BYTE* m_lpBuffer = nullptr;
    BOOL m_bAutoDelete = TRUE;
};
