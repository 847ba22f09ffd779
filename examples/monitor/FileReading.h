// FileReading.h: reads a file piece by piece and forms its checksum.
#pragma once

#include <kelgen/framework/files/File.h>
#include <kelgen/persistence/CRC.h>

#include <memory>
#include <vector>

/// One reading of a file.
///
///     CFileReading reading;
///     if (reading.Begin(path))
///         while (reading.Step()) {}
class CFileReading
{
public:
    CFileReading();

    /// Asks for size and time, and opens the file; false when there is no such file. One that cannot be opened is there all the same.
    bool Begin(const CString& path);
    /// Reads the next piece; false when nothing is left.
    bool Step();

    /// Between 0 and 1.
    double GetPartDone() const;
    ULONGLONG GetSize() const { return m_size; }
    /// When it was last written; in units of 100 ns since 1601, UTC.
    ULONGLONG GetTime() const { return m_time; }
    /// False when the file could not be opened or read to its end.
    bool IsReadable() const { return m_isReadable; }
    /// After the last piece.
    DWORD GetChecksum() const { return m_checksum; }

private:
    bool Open();
    bool ReadsAgain();
    bool AskSizeAndTime();

    CString m_path;
    std::unique_ptr<CFile> m_file;
    CCRCFast m_crc;
    std::vector<unsigned char> m_piece;
    ULONGLONG m_size = 0;
    ULONGLONG m_time = 0;
    ULONGLONG m_done = 0;
    DWORD m_checksum = 0;
    int m_attempts = 0;
    bool m_isReadable = false;
};
