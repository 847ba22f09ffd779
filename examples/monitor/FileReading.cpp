// FileReading.cpp: size, time, pieces, checksum.
#include "FileReading.h"

#include <algorithm>

namespace {

constexpr DWORD kPolynomial = 0x04C11DB7;
// Takes a few milliseconds: windows are not kept waiting.
constexpr std::size_t kPiece = 1 << 20;
// Of a file that is written all the time; the next look goes on from there.
constexpr int kAttempts = 3;

ULONGLONG Join(DWORD high, DWORD low)
{
    return ULONGLONG{high} << 32 | low;
}

}  // namespace

CFileReading::CFileReading() : m_crc(kPolynomial) {}

bool CFileReading::Begin(const CString& path)
{
    m_path = path;
    m_attempts = 0;
    return Open();
}

bool CFileReading::Open()
{
    if (!AskSizeAndTime())
        return false;
    m_done = 0;
    m_checksum = 0;
    m_crc.Done();
    m_file = std::make_unique<CFile>();
    m_isReadable = m_file->Open(m_path, CFile::modeRead | CFile::shareDenyNone) != FALSE;
    if (!m_isReadable)
        m_file.reset();
    return true;
}

bool CFileReading::Step()
{
    if (!m_file)
        return false;
    try {
        m_piece.resize(kPiece);
        const UINT count = m_file->Read(m_piece.data(), static_cast<UINT>(kPiece));
        m_crc.PutBytes(m_piece.data(), static_cast<int>(count));
        m_done += count;
        if (count == kPiece)
            return true;
        m_checksum = m_crc.Done();
    } catch (CFileException* error) {
        error->Delete();
        m_isReadable = false;
    }
    m_file.reset();
    return m_isReadable && ReadsAgain();
}

/// Whether the file was written meanwhile, so that size, time and checksum are not of one moment.
bool CFileReading::ReadsAgain()
{
    const ULONGLONG size = m_size;
    const ULONGLONG time = m_time;
    if (AskSizeAndTime() && (size != m_size || time != m_time || m_done != m_size) && ++m_attempts < kAttempts)
        return Open();
    // Of a file that is still being written: what was read, and the time before it. The next look then sees whether there is more.
    if (size != m_size || time != m_time) {
        m_size = m_done;
        m_time = time;
    }
    return false;
}

bool CFileReading::AskSizeAndTime()
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExA(m_path, GetFileExInfoStandard, &data) || data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        return false;
    m_size = Join(data.nFileSizeHigh, data.nFileSizeLow);
    m_time = Join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
    return true;
}

double CFileReading::GetPartDone() const
{
    return m_size == 0 ? 0 : std::min(1.0, static_cast<double>(m_done) / static_cast<double>(m_size));
}
