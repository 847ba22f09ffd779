// WArchive.cpp: the records of strings, and lines.
#include <kelgen/text/WArchive.h>

#include <kelgen/text/internal/ScanUnits.h>

#include <algorithm>
#include <climits>

namespace {

constexpr BYTE kLongLength = 0xFF;
constexpr WORD kWideMarker = 0xFFFE;
constexpr DWORD kNoLength = 0xFFFFFFFF;
// Units read before memory for the announced length is asked for, so that a wrong length fails at the end of the file.
constexpr DWORD kFirstPiece = 32 * 1024;
constexpr int kLinePiece = 128;

struct Length
{
    DWORD units;
    bool isMarker;
};

Length ReadLength(CArchive& archive)
{
    BYTE shortLength;
    archive >> shortLength;
    if (shortLength < kLongLength)
        return {shortLength, false};
    WORD length;
    archive >> length;
    if (length == kWideMarker)
        return {kNoLength, true};
    if (length < 0xFFFF)
        return {length, false};
    DWORD longLength;
    archive >> longLength;
    return {longLength, false};
}

/// Reads @p count bytes into the first @p count bytes of the units of @p text, which become @p units. Long ones come in pieces that at
/// most double what is there. Short of bytes: @p text is empty.
void ReadUnits(CArchive& archive, CWStr& text, DWORD units, ULONGLONG count)
{
    ULONGLONG done = 0;
    for (DWORD ready = 0; ready < units;) {
        const DWORD next = std::min<ULONGLONG>(units, std::max<ULONGLONG>(2ULL * ready, kFirstPiece)) & 0xFFFFFFFF;
        if (next > INT_MAX)
            AfxThrowMemoryException();
        BYTE* const bytes = reinterpret_cast<BYTE*>(text.GetBufferSetLength(static_cast<int>(next)));
        const UINT piece = static_cast<UINT>(std::min<ULONGLONG>(count, 2ULL * next) - done);
        const UINT got = archive.Read(bytes + done, piece);
        if (got < piece) {
            text.GetBufferSetLength(0);
            AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
        }
        done += got;
        ready = next;
    }
}

/// By contract 8-bit text is not converted, since nothing tells its code page. Its bytes become units in pairs, low byte first, up to the
/// first 0 unit.
CWStr ReadPairs(CArchive& archive, DWORD count)
{
    const DWORD units = count / 2 + count % 2;
    CWStr pairs;
    ReadUnits(archive, pairs, units, count);
    if (count % 2 != 0)
        reinterpret_cast<BYTE*>(pairs.GetBuffer(0))[count] = 0;
    return CWStr(pairs, kelgen::detail::LengthToZero(pairs, pairs.GetLength()));
}

/// Gives a buffer that is being written its terminator back, whatever happens.
class LineBuffer
{
public:
    explicit LineBuffer(CWStr& line) : m_line(line) {}
    ~LineBuffer() { m_line.ReleaseBuffer(m_length); }
    LineBuffer(const LineBuffer&) = delete;
    LineBuffer& operator=(const LineBuffer&) = delete;

    int Length() const { return m_length; }
    void Add(int units) { m_length += units; }
    void DropLast() { --m_length; }

    /// Room for @p units behind the text. Doubled, for lines of any length.
    unsigned short* More(int units)
    {
        if (m_length > INT_MAX / 2)
            AfxThrowMemoryException();
        m_line.ReleaseBuffer(m_length);
        const int needed = m_length + units;
        return m_line.GetBuffer(needed <= m_line.GetAllocLength() ? needed : std::max(needed, 2 * m_length)) + m_length;
    }

private:
    CWStr& m_line;
    int m_length = 0;
};

}  // namespace

CArchive& operator<<(CArchive& archive, const CWStr& text)
{
    const auto length = static_cast<DWORD>(text.GetLength());
    archive << kLongLength << kWideMarker;
    if (length < kLongLength)
        archive << static_cast<BYTE>(length);
    else if (length < kWideMarker)
        archive << kLongLength << static_cast<WORD>(length);
    else
        archive << kLongLength << static_cast<WORD>(0xFFFF) << length;
    archive.Write(static_cast<const unsigned short*>(text), 2 * length);
    return archive;
}

CArchive& operator>>(CArchive& archive, CWStr& text)
{
    Length length = ReadLength(archive);
    if (!length.isMarker) {
        CWStr read = ReadPairs(archive, length.units);
        text.Release();
        text = static_cast<CWStr&&>(read);
        return archive;
    }
    // A second marker is no length: it counts as the largest, which no file holds.
    length = ReadLength(archive);
    text.GetBufferSetLength(0);
    ReadUnits(archive, text, length.units, 2ULL * length.units);
    return archive;
}

template <>
void SerializeElements<CWStr>(CArchive& ar, CWStr* pElements, int nCount)
{
    for (int i = 0; i < nCount; ++i) {
        if (ar.IsStoring())
            ar << pElements[i];
        else
            ar >> pElements[i];
    }
}

CWArchive::CWArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf) : CArchive(pFile, nMode, nBufSize, lpBuf) {}

CWArchive::~CWArchive() = default;

unsigned short* CWArchive::ReadString(unsigned short* buffer, UINT nMax)
{
    const bool withEnd = static_cast<int>(nMax) < 0;
    const UINT stop = withEnd ? 0 - nMax : nMax;
    UINT stored = 0;
    try {
        while (stored < stop) {
            unsigned short unit;
            *this >> unit;
            if (unit == '\n' || unit == '\r') {
                if (unit == '\r')
                    *this >> unit;
                if (withEnd)
                    buffer[stored++] = unit;
                break;
            }
            buffer[stored++] = unit;
        }
    } catch (CArchiveException* e) {
        if (e->m_cause != CArchiveException::endOfFile)
            throw;
        e->Delete();
        if (stored == 0)
            return nullptr;
    }
    buffer[stored] = 0;
    return buffer;
}

BOOL CWArchive::ReadString(CWStr& line)
{
    line.Empty();
    int room = 0;
    const unsigned short* read;
    {
        LineBuffer buffer(line);
        int length;
        do {
            room = buffer.Length() + kLinePiece;
            unsigned short* const piece = buffer.More(kLinePiece);
            read = ReadString(piece, static_cast<UINT>(-kLinePiece));
            length = read ? CWStr::SafeStrlen(piece) : 0;
            buffer.Add(length);
            if (length > 0 && piece[length - 1] == '\n') {
                buffer.DropLast();
                break;
            }
        } while (length == kLinePiece);
    }

    // The room that was doubled goes down to what the pieces make.
    if (line.GetAllocLength() > std::max(room, 512)) {
        CWStr fitting;
        line.AllocCopy(fitting, line.GetLength(), 0, room - line.GetLength());
        fitting.ReleaseBuffer(line.GetLength());
        line = static_cast<CWStr&&>(fitting);
    }
    return read != nullptr;
}
