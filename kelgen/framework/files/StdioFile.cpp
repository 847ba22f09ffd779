// StdioFile.cpp: the buffer, line ends and lines of CStdioFile.
#include <kelgen/framework/files/StdioFile.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

}  // namespace

IMPLEMENT_DYNAMIC(CStdioFile, CFile)

CStdioFile::CStdioFile() = default;

CStdioFile::CStdioFile(LPCSTR lpszFileName, UINT nOpenFlags)
{
    CFileException error;
    if (!CStdioFile::Open(lpszFileName, nOpenFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CStdioFile::~CStdioFile()
{
    try {
        CStdioFile::Close();
    } catch (CException* e) {
        e->Delete();
    }
}

BOOL CStdioFile::Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    if (!m_buffer) {
        m_buffer.reset(new (std::nothrow) char[kBufferSize]);
        if (!m_buffer)
            AfxThrowMemoryException();
    }
    m_holds = Holds::Nothing;
    m_cursor = 0;
    m_end = 0;
    m_text = (nOpenFlags & typeBinary) == 0;
    return CFile::Open(lpszFileName, nOpenFlags, pError);
}

void CStdioFile::WriteOut()
{
    const std::size_t count = m_holds == Holds::Unwritten ? m_cursor : 0;
    if (count == 0)
        return;
    // Forgotten first: part of it may be in the file already when the write fails.
    m_cursor = 0;
    CFile::Write(m_buffer.get(), static_cast<UINT>(count));
}

void CStdioFile::StartReading()
{
    if (m_hFile == hFileNull)
        AfxThrowFileException(CFileException::invalidFile, ERROR_INVALID_HANDLE, m_strFileName);
    WriteOut();
    m_cursor = 0;
    m_end = 0;
    m_holds = Holds::ReadAhead;
}

void CStdioFile::StartWriting()
{
    if (m_hFile == hFileNull)
        AfxThrowFileException(CFileException::invalidFile, ERROR_INVALID_HANDLE, m_strFileName);
    if (m_holds == Holds::ReadAhead && m_cursor != m_end)
        CFile::Seek(-static_cast<LONGLONG>(m_end - m_cursor), current);
    m_cursor = 0;
    m_end = 0;
    m_holds = Holds::Unwritten;
}

// Reads more behind what is still to be read; false when the file has no more.
bool CStdioFile::Fill()
{
    const std::size_t kept = m_end - m_cursor;
    std::memmove(m_buffer.get(), m_buffer.get() + m_cursor, kept);
    m_cursor = 0;
    m_end = kept;
    m_lineFeed.at = m_return.at = m_endOfText.at = -1;
    const UINT got = CFile::Read(m_buffer.get() + kept, static_cast<UINT>(kBufferSize - kept));
    m_end += got;
    return got != 0;
}

// The position of the mark's next byte, m_end when the buffer holds none. The cursor is before m_end.
std::size_t CStdioFile::Next(Mark& mark)
{
    if (mark.at < static_cast<std::ptrdiff_t>(m_cursor)) {
        const char* from = m_buffer.get() + m_cursor;
        const void* found = std::memchr(from, mark.value, m_end - m_cursor);
        mark.at = found != nullptr ? static_cast<const char*>(found) - m_buffer.get() : static_cast<std::ptrdiff_t>(m_end);
    }
    return static_cast<std::size_t>(mark.at);
}

// Takes translated bytes, if asked up to and including a line feed; fewer than there is room for only at such or at the end.
UINT CStdioFile::Take(char* target, UINT room, bool line)
{
    UINT taken = 0;
    while (taken < room) {
        if (m_cursor == m_end && !Fill())
            break;
        std::size_t stop = std::min<std::size_t>(m_end, m_cursor + (room - taken));
        if (m_text) {
            const char first = m_buffer[m_cursor];
            if (first == m_endOfText.value)
                break;
            if (first == '\r') {
                if (m_cursor + 1 == m_end)
                    Fill();
                const bool lineEnd = m_cursor + 1 < m_end && m_buffer[m_cursor + 1] == '\n';
                ++m_cursor;
                if (!lineEnd)
                    target[taken++] = '\r';
                continue;
            }
            stop = std::min({stop, Next(m_return), Next(m_endOfText)});
        }
        bool ended = false;
        if (line && Next(m_lineFeed) < stop) {
            stop = Next(m_lineFeed) + 1;
            ended = true;
        }
        std::memcpy(target + taken, m_buffer.get() + m_cursor, stop - m_cursor);
        taken += static_cast<UINT>(stop - m_cursor);
        m_cursor = stop;
        if (ended)
            break;
    }
    return taken;
}

// The common case: a line that lies whole in the buffer and needs nothing but its end cut off.
bool CStdioFile::TakeBufferedLine(CString& line)
{
    if (m_cursor == m_end)
        return false;
    const std::size_t lineFeed = Next(m_lineFeed);
    if (lineFeed == m_end)
        return false;
    std::size_t stop = lineFeed;
    if (m_text) {
        if (Next(m_endOfText) < lineFeed || Next(m_return) + 1 < lineFeed)
            return false;
        stop = std::min(stop, Next(m_return));
    }
    line.SetString(m_buffer.get() + m_cursor, static_cast<int>(stop - m_cursor));
    m_cursor = lineFeed + 1;
    return true;
}

UINT CStdioFile::ReadBytes(char* target, UINT count)
{
    UINT done = 0;
    for (;;) {
        const UINT part = static_cast<UINT>(std::min<std::size_t>(count - done, m_end - m_cursor));
        std::memcpy(target + done, m_buffer.get() + m_cursor, part);
        m_cursor += part;
        done += part;
        if (done == count)
            return done;
        if (count - done < kBufferSize) {
            if (!Fill())
                return done;
            continue;
        }
        const UINT got = CFile::Read(target + done, count - done);
        if (got == 0)
            return done;
        done += got;
    }
}

UINT CStdioFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    if (m_holds != Holds::ReadAhead)
        StartReading();
    char* target = static_cast<char*>(lpBuf);
    return m_text ? Take(target, nCount, false) : ReadBytes(target, nCount);
}

void CStdioFile::WriteBytes(const char* bytes, std::size_t count)
{
    if (count > kBufferSize - m_cursor) {
        WriteOut();
        if (count >= kBufferSize) {
            CFile::Write(bytes, static_cast<UINT>(count));
            return;
        }
    }
    std::memcpy(m_buffer.get() + m_cursor, bytes, count);
    m_cursor += count;
}

void CStdioFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    if (m_holds != Holds::Unwritten)
        StartWriting();
    const char* bytes = static_cast<const char*>(lpBuf);
    if (!m_text) {
        WriteBytes(bytes, nCount);
        return;
    }
    const char* const last = bytes + nCount;
    while (bytes != last) {
        const void* found = std::memchr(bytes, '\n', static_cast<std::size_t>(last - bytes));
        const char* lineEnd = found != nullptr ? static_cast<const char*>(found) : last;
        WriteBytes(bytes, static_cast<std::size_t>(lineEnd - bytes));
        bytes = lineEnd;
        if (bytes != last) {
            WriteBytes("\r\n", 2);
            ++bytes;
        }
    }
}

void CStdioFile::WriteString(LPCSTR lpsz)
{
    Write(lpsz, static_cast<UINT>(std::strlen(lpsz)));
}

LPSTR CStdioFile::ReadString(LPSTR lpsz, UINT nMax)
{
    if (nMax == 0)
        return nullptr;
    if (m_holds != Holds::ReadAhead)
        StartReading();
    const UINT length = Take(lpsz, nMax - 1, true);
    lpsz[length] = 0;
    return length != 0 || nMax == 1 ? lpsz : nullptr;
}

BOOL CStdioFile::ReadString(CString& rString)
{
    if (m_holds != Holds::ReadAhead)
        StartReading();

    if (TakeBufferedLine(rString))
        return TRUE;

    // The caller's buffer is used again for the next line.
    std::size_t length = 0;
    bool ended = false;
    while (!ended && (m_cursor != m_end || Fill())) {
        const std::size_t part = std::min(Next(m_lineFeed) + 1, m_end) - m_cursor;
        if (length + part > INT_MAX / 2)
            AfxThrowMemoryException();
        const int needed = static_cast<int>(length + part);
        const int capacity = rString.GetAllocLength();
        char* buffer = rString.GetBuffer(needed <= capacity ? needed : std::max(needed, length != 0 ? 2 * capacity : 0));
        const UINT taken = Take(buffer + length, static_cast<UINT>(part), true);
        length += taken;
        ended = taken == 0 || buffer[length - 1] == '\n';
        rString.ReleaseBuffer(static_cast<int>(length));
    }
    if (length == 0) {
        rString.Empty();
        return FALSE;
    }
    if (rString.GetAt(static_cast<int>(length) - 1) == '\n')
        rString.ReleaseBuffer(static_cast<int>(length) - 1);
    return TRUE;
}

ULONGLONG CStdioFile::GetPosition() const
{
    const ULONGLONG position = CFile::GetPosition();
    switch (m_holds) {
    case Holds::ReadAhead:
        return position - (m_end - m_cursor);
    case Holds::Unwritten:
        return position + m_cursor;
    default:
        return position;
    }
}

ULONGLONG CStdioFile::Seek(LONGLONG lOff, UINT nFrom)
{
    WriteOut();
    if (m_holds == Holds::ReadAhead && nFrom == current)
        lOff -= static_cast<LONGLONG>(m_end - m_cursor);
    const ULONGLONG position = CFile::Seek(lOff, nFrom);
    m_holds = Holds::Nothing;
    m_cursor = 0;
    m_end = 0;
    return position;
}

void CStdioFile::SetLength(ULONGLONG dwNewLen)
{
    CStdioFile::Seek(0, current);
    CFile::SetLength(dwNewLen);
}

ULONGLONG CStdioFile::GetLength() const
{
    const ULONGLONG length = CFile::GetLength();
    return m_holds == Holds::Unwritten ? std::max(length, GetPosition()) : length;
}

void CStdioFile::Flush()
{
    WriteOut();
}

void CStdioFile::Close()
{
    try {
        WriteOut();
    } catch (CException*) {
        Abort();
        throw;
    }
    m_holds = Holds::Nothing;
    CFile::Close();
}

void CStdioFile::Abort()
{
    m_holds = Holds::Nothing;
    m_cursor = 0;
    m_end = 0;
    CFile::Abort();
}

CFile* CStdioFile::Duplicate() const
{
    AfxThrowNotSupportedException();
}

void CStdioFile::LockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

void CStdioFile::UnlockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}
