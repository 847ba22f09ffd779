// BufferedFile.h: reading ahead of and writing behind another file.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/MemoryStorage.h>
#include <kelgen/framework/files/File.h>

#include <memory>

/// A file that reads and writes another one, the inner file, in larger pieces.
///
///     CBufferedFile file("C:\\data.bin", CFile::modeCreate | CFile::modeWrite, 4096, 65536);
///     file.Write(record, sizeof record);
///     file.Close();
///
/// One buffer serves both directions: what was read ahead ends at the inner file's position, and its last (inner position - position)
/// bytes are still to be read. A call for more than the buffer's size goes past it. Sizes are held between 128 and 1048576 bytes.
///
/// By contract:
/// - bytes that were collected count in GetPosition when they come and once more when a later Write sends them out; Flush adds nothing;
/// - writing after reading drops what was read ahead and leaves the inner file where it is, but after Flush in between what was read
///   ahead counts as collected for writing;
/// - reading past the buffer leaves in it what was read before, which a seek back then finds in the place of the file's bytes;
/// - where the position has left the inner file's (for one of these reasons, or because a host moves its file), reads go by that
///   arithmetic, and bytes of the result that no buffer holds are left as they are;
/// - members that are not here are those of a closed file.
/// Throws: what the inner file throws; CMemoryException. Threads: one at a time.
/// Cost: a copy. Reads of a host's file also ask it for its position each time; one opened by path is not asked.
class KELGEN_API CBufferedFile : public CFile
{
public:
    /// Reads and writes @p inner from its position on; it stays the caller's and must live longer.
    CBufferedFile(CFile* inner, DWORD readSize, DWORD writeSize);
    /// Opens the inner file, and throws as it does.
    CBufferedFile(LPCSTR path, UINT openFlags, DWORD readSize, DWORD writeSize);
    /// Closes an inner file that was opened by path. By contract: what was collected is dropped, so a host calls Close or Flush before.
    ~CBufferedFile() override;

    /// Sets how many bytes are read ahead.
    void SetReadBufferSize(UINT size);
    /// Sets how many bytes are collected before they are sent out.
    void SetWriteBufferSize(UINT size);

    /// Reads up to @p n bytes and returns their number, within the arithmetic above.
    UINT Read(void* buf, UINT n) override;
    /// Collects or sends out @p n bytes.
    void Write(const void* buf, UINT n) override;

    /// A target within what was read ahead is only noted; else Flush, then the inner file's Seek, with its result. By contract: the inner
    /// file then counts `current` from its own position, so after reading ahead a caller seeks from the beginning.
    ULONGLONG Seek(LONGLONG offset, UINT from) override;
    /// Sends out what was collected and flushes the inner file. What was read ahead stays.
    void Flush() override;
    /// Flush, then the inner file's Close.
    void Close() override;

    ULONGLONG GetPosition() const override { return m_position; }
    /// The inner file's length. By contract: what was collected does not count, since the inner file does not have it yet.
    ULONGLONG GetLength() const override;
    /// Names this file only, not the inner one.
    void SetFilePath(LPCSTR path) override;

private:
    enum class Mode
    {
        None,
        Reading,
        Writing,
    };

    CBufferedFile(CFile* inner, std::unique_ptr<CFile> owned, DWORD readSize, DWORD writeSize);

    ULONGLONG InnerPosition();
    UINT ReadInner(void* buf, UINT n);
    void WriteInner(const void* buf, UINT n);
    UINT Refill();
    void CopyBuffered(void* buf, UINT n, ULONGLONG available) const;

    std::unique_ptr<CFile> m_owned;
    CFile* m_inner;
    Mode m_mode = Mode::None;
    DWORD m_readSize;
    DWORD m_writeSize;
    CMemoryStorage m_buffer{nullptr};
    ULONGLONG m_position;
    // Of an owned inner file, whose position nobody else moves: asking the system costs more than a small read.
    ULONGLONG m_innerPosition = 0;
    bool m_knowsInnerPosition = false;
};
