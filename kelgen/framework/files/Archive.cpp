// Archive.cpp: the archive's buffer, plain bytes, lines, texts and counts.
#include <kelgen/framework/files/Archive.h>

#include <kelgen/framework/collections/CollectionHelpers.h>
#include <kelgen/framework/files/File.h>
#include <kelgen/framework/files/internal/ArchiveObjects.h>

#include <algorithm>
#include <climits>
#include <limits>

namespace {

constexpr UINT kSmallestBuffer = 128;
constexpr UINT kNoSchemaAsked = static_cast<UINT>(-1);
constexpr WORD kWideTextMarker = 0xFFFE;
// A text is loaded in pieces of this size at first, so that a wrong length fails at the end of the file and not for want of
// memory.
constexpr int kFirstTextPiece = 64 * 1024;

// The length of a text, or the marker that announces 16-bit text and a second length.
struct TextLength
{
    DWORD length;
    bool wideMarker;
};

TextLength LoadTextLength(CArchive& archive)
{
    BYTE shortLength;
    archive >> shortLength;
    if (shortLength < 0xFF)
        return {shortLength, false};
    WORD length;
    archive >> length;
    if (length == kWideTextMarker)
        return {0, true};
    if (length < 0xFFFF)
        return {length, false};
    DWORD longLength;
    archive >> longLength;
    return {longLength, false};
}

// Loads exactly that many bytes, in pieces that at most double what is there already.
CString LoadBytes(CArchive& archive, ULONGLONG count)
{
    CString bytes;
    for (ULONGLONG done = 0; done < count;) {
        const ULONGLONG piece = std::min(count - done, std::max<ULONGLONG>(done, kFirstTextPiece));
        if (done + piece > INT_MAX)
            AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
        LPSTR buffer = bytes.GetBuffer(static_cast<int>(done + piece));
        const UINT loaded = archive.Read(buffer + done, static_cast<UINT>(piece));
        bytes.ReleaseBuffer(static_cast<int>(done + loaded));
        if (loaded < piece)
            AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
        done += piece;
    }
    return bytes;
}

}  // namespace

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf) : m_nMode(nMode), m_pFile(pFile), m_nObjectSchema(kNoSchemaAsked)
{
    if (pFile == nullptr)
        AfxThrowInvalidArgException();
    if (nBufSize < static_cast<int>(kSmallestBuffer)) {
        nBufSize = kSmallestBuffer;
        lpBuf = nullptr;
    }
    m_strFileName = pFile->GetFilePath();
    m_nBufSize = static_cast<UINT>(nBufSize);
    m_lpBufStart = static_cast<BYTE*>(lpBuf);
    if (m_lpBufStart == nullptr) {
        // Cleared, so that a file class that overstates what it read shows no foreign memory.
        m_buffer.reset(new (std::nothrow) BYTE[m_nBufSize]());
        if (!m_buffer)
            AfxThrowMemoryException();
        m_lpBufStart = m_buffer.get();
    }
    m_lpBufCur = m_lpBufStart;
    m_nRoom = IsStoring() ? m_nBufSize : 0;
}

CArchive::~CArchive()
{
    if (m_pFile != nullptr && (m_nMode & bNoFlushOnDelete) == 0) {
        try {
            Close();
        } catch (CException* e) {
            e->Delete();
        }
    }
    Abort();
}

void CArchive::Throw(int cause) const
{
    AfxThrowArchiveException(cause, m_strFileName);
}

void CArchive::CheckStoring() const
{
    if (!IsStoring())
        Throw(CArchiveException::readOnly);
    if (m_pFile == nullptr)
        Throw(CArchiveException::genericException);
}

void CArchive::CheckLoading() const
{
    if (!IsLoading())
        Throw(CArchiveException::writeOnly);
    if (m_pFile == nullptr)
        Throw(CArchiveException::genericException);
}

UINT CArchive::GetObjectSchema()
{
    const UINT schema = m_nObjectSchema;
    m_nObjectSchema = kNoSchemaAsked;
    return schema;
}

void CArchive::MakeRoom()
{
    CheckStoring();
    m_pFile->Write(m_lpBufStart, static_cast<UINT>(m_lpBufCur - m_lpBufStart));
    m_lpBufCur = m_lpBufStart;
    m_nRoom = m_nBufSize;
}

UINT CArchive::ReadFile(void* buffer, UINT count)
{
    // A file class may report more than it was asked for; nothing may be taken that was not.
    return std::min(m_pFile->Read(buffer, count), count);
}

// Fills the buffer until it holds that many unread bytes or the file ends; returns how many it holds.
UINT CArchive::ReadAhead(UINT count)
{
    std::memmove(m_lpBufStart, m_lpBufCur, m_nUnread);
    m_lpBufCur = m_lpBufStart;
    while (m_nUnread < count) {
        const UINT got = ReadFile(m_lpBufStart + m_nUnread, m_nBufSize - m_nUnread);
        if (got == 0)
            break;
        m_nUnread += got;
    }
    return m_nUnread;
}

void CArchive::Fetch(UINT count)
{
    CheckLoading();
    if (ReadAhead(count) < count)
        Throw(CArchiveException::endOfFile);
}

void CArchive::Flush()
{
    if (m_pFile == nullptr)
        return;
    if (IsStoring()) {
        if (m_lpBufCur != m_lpBufStart)
            MakeRoom();
        return;
    }
    if (m_nUnread != 0)
        m_pFile->Seek(-static_cast<LONGLONG>(m_nUnread), CFile::current);
    m_nUnread = 0;
    m_lpBufCur = m_lpBufStart;
}

void CArchive::Close()
{
    Flush();
    Abort();
}

void CArchive::Abort()
{
    m_pFile = nullptr;
    m_nUnread = 0;
    m_nRoom = 0;
    m_lpBufCur = m_lpBufStart;
    m_maps.reset();
}

UINT CArchive::Read(void* lpBuf, UINT nMax)
{
    if (nMax == 0)
        return 0;
    CheckLoading();

    BYTE* target = static_cast<BYTE*>(lpBuf);
    UINT done = 0;
    const auto takeUnread = [&] {
        const UINT count = std::min(nMax - done, m_nUnread);
        std::memcpy(target + done, m_lpBufCur, count);
        m_lpBufCur += count;
        m_nUnread -= count;
        done += count;
    };

    takeUnread();
    while (nMax - done >= m_nBufSize) {
        const UINT got = ReadFile(target + done, nMax - done);
        if (got == 0)
            return done;
        done += got;
    }
    if (done < nMax) {
        ReadAhead(nMax - done);
        takeUnread();
    }
    return done;
}

void CArchive::Write(const void* lpBuf, UINT nMax)
{
    if (nMax == 0)
        return;
    CheckStoring();

    const BYTE* source = static_cast<const BYTE*>(lpBuf);
    if (nMax > m_nRoom) {
        Flush();
        const UINT direct = nMax - nMax % m_nBufSize;
        if (direct != 0)
            m_pFile->Write(source, direct);
        source += direct;
        nMax -= direct;
    }
    std::memcpy(m_lpBufCur, source, nMax);
    m_lpBufCur += nMax;
    m_nRoom -= nMax;
}

void CArchive::WriteString(LPCSTR lpsz)
{
    Write(lpsz, static_cast<UINT>(std::strlen(lpsz)));
}

// The bytes of one line up to that many; whether its end was reached. Nothing left and nothing loaded: 0 and not ended.
UINT CArchive::ReadLine(char* line, UINT max, bool withEnd, bool& ended)
{
    CheckLoading();
    UINT length = 0;
    ended = false;
    while (length < max) {
        if (m_nUnread == 0 && ReadAhead(1) == 0)
            break;
        char character = Get<char>();
        if (character == '\n' || character == '\r') {
            if (character == '\r') {
                if (m_nUnread == 0 && ReadAhead(1) == 0)
                    break;
                character = Get<char>();
            }
            if (withEnd)
                line[length++] = character;
            ended = true;
            break;
        }
        line[length++] = character;
    }
    return length;
}

LPSTR CArchive::ReadString(LPSTR lpsz, UINT nMax)
{
    const LONG signedMax = static_cast<LONG>(nMax);
    const UINT max = signedMax < 0 ? 0 - nMax : nMax;
    bool ended;
    const UINT length = ReadLine(lpsz, max, signedMax < 0, ended);
    lpsz[length] = 0;
    return length != 0 || ended || max == 0 ? lpsz : nullptr;
}

BOOL CArchive::ReadString(CString& rString)
{
    constexpr int kPiece = 128;
    rString.Empty();
    CString line;
    int length = 0;
    bool found = false;
    for (;;) {
        const int capacity = std::max(length + kPiece, line.GetAllocLength());
        bool ended;
        LPSTR buffer = line.GetBuffer(capacity);
        const int got = static_cast<int>(ReadLine(buffer + length, kPiece, true, ended));
        length += got;
        line.ReleaseBuffer(length);
        found = found || got != 0;
        if (got < kPiece || line.GetAt(length - 1) == '\n')
            break;
        if (length == line.GetAllocLength())
            line.Preallocate(length * 2);
    }
    if (length > 0 && line.GetAt(length - 1) == '\n')
        line.Truncate(length - 1);
    rString = line;
    return found;
}

void CArchive::WriteCount(DWORD_PTR dwCount)
{
    if (dwCount > std::numeric_limits<DWORD>::max())
        AfxThrowInvalidArgException();
    if (dwCount < 0xFFFF)
        *this << static_cast<WORD>(dwCount);
    else
        *this << static_cast<WORD>(0xFFFF) << static_cast<DWORD>(dwCount);
}

DWORD_PTR CArchive::ReadCount()
{
    const WORD shortCount = Get<WORD>();
    return shortCount < 0xFFFF ? shortCount : Get<DWORD>();
}

// What can still be loaded; the largest number when the file does not tell.
ULONGLONG CArchive::BytesLeft() const
{
    try {
        const ULONGLONG length = m_pFile->GetLength();
        const ULONGLONG position = m_pFile->GetPosition();
        return m_nUnread + (length > position ? length - position : 0);
    } catch (CException* e) {
        e->Delete();
        return std::numeric_limits<ULONGLONG>::max();
    }
}

CArchive& operator<<(CArchive& archive, const CString& text)
{
    const DWORD length = static_cast<DWORD>(text.GetLength());
    if (length < 0xFF)
        archive << static_cast<BYTE>(length);
    else if (length < kWideTextMarker)
        archive << static_cast<BYTE>(0xFF) << static_cast<WORD>(length);
    else
        archive << static_cast<BYTE>(0xFF) << static_cast<WORD>(0xFFFF) << length;
    archive.Write(text.GetString(), length);
    return archive;
}

CArchive& operator>>(CArchive& archive, CString& text)
{
    TextLength length = LoadTextLength(archive);
    if (!length.wideMarker) {
        text = LoadBytes(archive, length.length);
        return archive;
    }
    length = LoadTextLength(archive);
    if (length.wideMarker || length.length > INT_MAX / sizeof(WCHAR))
        AfxThrowArchiveException(CArchiveException::badIndex, archive.m_strFileName);
    const CString bytes = LoadBytes(archive, length.length * sizeof(WCHAR));
    text = CString(reinterpret_cast<const WCHAR*>(bytes.GetString()), static_cast<int>(length.length));
    return archive;
}

namespace kelgen::detail {

bool IsStoring(const CArchive& archive)
{
    return archive.IsStoring() != FALSE;
}

struct ArchiveBytes
{
    static bool HasLeft(CArchive& archive, DWORD_PTR count)
    {
        // What lies in the buffer usually settles it without asking the file.
        return count <= archive.m_nUnread || count <= archive.BytesLeft();
    }
};

int SerializeCount(CArchive& archive, int size)
{
    if (archive.IsStoring()) {
        archive.WriteCount(static_cast<DWORD_PTR>(size));
        return size;
    }
    const DWORD_PTR count = archive.ReadCount();
    if (!ArchiveBytes::HasLeft(archive, count / 8))
        AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
    if (count > INT_MAX)
        AfxThrowArchiveException(CArchiveException::badIndex, archive.m_strFileName);
    return static_cast<int>(count);
}

void SerializeBytes(CArchive& archive, void* bytes, std::size_t count)
{
    // Pieces that are multiples of every page and buffer size, since one call takes at most 32 bits.
    constexpr std::size_t kPiece = std::size_t{1} << 30;
    BYTE* next = static_cast<BYTE*>(bytes);
    while (count > 0) {
        const UINT piece = static_cast<UINT>(std::min(count, kPiece));
        if (archive.IsStoring())
            archive.Write(next, piece);
        else if (archive.Read(next, piece) < piece)
            AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
        next += piece;
        count -= piece;
    }
}

}  // namespace kelgen::detail

template <>
void SerializeElements<CString>(CArchive& ar, CString* pElements, int nCount)
{
    for (int i = 0; i < nCount; ++i) {
        if (ar.IsStoring())
            ar << pElements[i];
        else
            ar >> pElements[i];
    }
}
