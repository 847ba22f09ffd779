// BufferedFile.cpp: one buffer for both directions, and the position that counts for both.
#include <kelgen/persistence/BufferedFile.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

DWORD BufferSize(DWORD size)
{
    return std::clamp<DWORD>(size, 128, 0x100000);
}

}  // namespace

CBufferedFile::CBufferedFile(CFile* inner, std::unique_ptr<CFile> owned, DWORD readSize, DWORD writeSize)
    : m_owned(std::move(owned)), m_inner(m_owned ? m_owned.get() : inner), m_readSize(BufferSize(readSize)),
      m_writeSize(BufferSize(writeSize)), m_position(m_inner->GetPosition())
{}

CBufferedFile::CBufferedFile(CFile* inner, DWORD readSize, DWORD writeSize) : CBufferedFile(inner, nullptr, readSize, writeSize) {}

CBufferedFile::CBufferedFile(LPCSTR path, UINT openFlags, DWORD readSize, DWORD writeSize)
    : CBufferedFile(nullptr, std::make_unique<CFile>(path, openFlags), readSize, writeSize)
{}

CBufferedFile::~CBufferedFile() = default;

void CBufferedFile::SetReadBufferSize(UINT size)
{
    m_readSize = BufferSize(size);
}

void CBufferedFile::SetWriteBufferSize(UINT size)
{
    m_writeSize = BufferSize(size);
}

ULONGLONG CBufferedFile::InnerPosition()
{
    if (!m_owned)
        return m_inner->GetPosition();
    if (!m_knowsInnerPosition) {
        m_innerPosition = m_inner->GetPosition();
        m_knowsInnerPosition = true;
    }
    return m_innerPosition;
}

UINT CBufferedFile::ReadInner(void* buf, UINT n)
{
    // Unknown when the inner file throws.
    const bool known = std::exchange(m_knowsInnerPosition, false);
    const UINT got = m_inner->Read(buf, n);
    m_innerPosition += got;
    m_knowsInnerPosition = known;
    return got;
}

void CBufferedFile::WriteInner(const void* buf, UINT n)
{
    m_knowsInnerPosition = false;
    m_inner->Write(buf, n);
}

/// Fills the buffer anew; the bytes in it.
UINT CBufferedFile::Refill()
{
    const DWORD held = m_buffer.GetStorageSize();
    m_buffer.Allocate(m_readSize);
    UINT got = 0;
    try {
        // A file that says more has given no more than it was asked for.
        got = std::min(ReadInner(m_buffer.GetAllocation(), static_cast<UINT>(m_readSize)), static_cast<UINT>(m_readSize));
    } catch (...) {
        // What is still to be read lies where it was, for the next try.
        m_buffer.Allocate(held);
        throw;
    }
    m_buffer.Allocate(got);
    return got;
}

/// Copies @p n of the buffer's last @p available bytes, as far as the buffer goes.
void CBufferedFile::CopyBuffered(void* buf, UINT n, ULONGLONG available) const
{
    const ULONGLONG size = m_buffer.GetStorageSize();
    const unsigned char* const block = m_buffer.GetAllocation();
    if (!block || n == 0)
        return;
    if (available <= size) {
        std::memcpy(buf, block + (size - available), n);
        return;
    }
    const ULONGLONG missing = available - size;
    if (missing < n)
        std::memcpy(static_cast<unsigned char*>(buf) + missing, block, std::min<ULONGLONG>(n - missing, size));
}

UINT CBufferedFile::Read(void* buf, UINT n)
{
    if (m_mode == Mode::Writing && m_buffer.GetStorageSize() != 0)
        Flush();
    m_mode = Mode::Reading;

    const ULONGLONG available = InnerPosition() - m_position;
    const auto take = static_cast<UINT>(std::min<ULONGLONG>(n, available));
    CopyBuffered(buf, take, available);
    if (n <= available) {
        m_position += take;
        return take;
    }

    const UINT remaining = n - take;
    unsigned char* const rest = static_cast<unsigned char*>(buf) + take;
    UINT got;
    if (remaining <= m_readSize) {
        got = std::min(remaining, Refill());
        CopyBuffered(rest, got, m_buffer.GetStorageSize());
    } else {
        got = ReadInner(rest, remaining);
    }
    m_position += ULONGLONG{got} + take;
    return got + take;
}

void CBufferedFile::Write(const void* buf, UINT n)
{
    if (m_mode == Mode::Reading && m_buffer.GetStorageSize() != 0)
        m_buffer.Allocate(0);
    m_mode = Mode::Writing;

    const DWORD collected = m_buffer.GetStorageSize();
    if (ULONGLONG{collected} + n > m_writeSize) {
        WriteInner(m_buffer.GetAllocation(), static_cast<UINT>(collected));
        m_position += collected;
        m_buffer.Allocate(0);
        if (n > m_writeSize) {
            WriteInner(buf, n);
            m_position += n;
            return;
        }
    }
    if (n == 0)
        return;
    const DWORD before = m_buffer.GetStorageSize();
    m_buffer.Allocate(before + n);
    std::memcpy(m_buffer.GetAllocation() + before, buf, n);
    m_position += n;
}

ULONGLONG CBufferedFile::Seek(LONGLONG offset, UINT from)
{
    if (m_mode == Mode::Reading && from <= end) {
        const ULONGLONG origin = from == begin ? 0 : from == current ? m_position : m_inner->GetLength();
        const ULONGLONG target = origin + static_cast<ULONGLONG>(offset);
        const ULONGLONG last = InnerPosition();
        const ULONGLONG distance = last - target;
        if (distance != 0 && distance <= std::min<ULONGLONG>(last, m_buffer.GetStorageSize())) {
            m_position = target;
            return target;
        }
    }
    Flush();
    m_knowsInnerPosition = false;
    const ULONGLONG result = m_inner->Seek(offset, from);
    m_position = InnerPosition();
    m_buffer.Allocate(0);
    return result;
}

void CBufferedFile::Flush()
{
    if (m_mode == Mode::Writing) {
        WriteInner(m_buffer.GetAllocation(), static_cast<UINT>(m_buffer.GetStorageSize()));
        m_buffer.Allocate(0);
        m_inner->Flush();
    }
    m_mode = Mode::None;
}

void CBufferedFile::Close()
{
    Flush();
    m_knowsInnerPosition = false;
    m_inner->Close();
}

ULONGLONG CBufferedFile::GetLength() const
{
    return m_inner->GetLength();
}

void CBufferedFile::SetFilePath(LPCSTR path)
{
    CFile::SetFilePath(path);
}
