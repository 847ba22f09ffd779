// StdioFile.h: CStdioFile, buffered files that are read and written by lines.
#pragma once

#include <kelgen/framework/files/File.h>

#include <cstddef>
#include <memory>

/// A buffered file, of text unless it is opened with typeBinary.
///
///     CStdioFile file("C:\\names.txt", CFile::modeRead | CFile::shareDenyNone);
///     CString line;
///     while (file.ReadString(line))
///         names.Add(line);
///
/// In text, carriage return and line feed together read as one line feed, and a line feed is written as both; a carriage return
/// alone stays. By contract: a byte 0x1A ends a text for reading, as in the runtime's text files. All other bytes pass, zeros too.
/// Positions are the file's own bytes in both kinds. Reading and writing may alternate at will.
/// Throws: as CFile. What waits in the buffer is dropped when writing it fails.
class KELGEN_FRAMEWORK_API CStdioFile : public CFile
{
    DECLARE_DYNAMIC(CStdioFile)

public:
    CStdioFile();
    /// Opens a file; @p nOpenFlags are CFile's and typeText or typeBinary. Throws: CFileException when that fails.
    CStdioFile(LPCSTR lpszFileName, UINT nOpenFlags);
    /// Closes. Errors are ignored: call Close to see them.
    ~CStdioFile() override;

    BOOL Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr) override;

    /// Writes the characters before the terminator; no line end is added.
    virtual void WriteString(LPCSTR lpsz);
    /// Reads up to and including the next line feed, at most @p nMax - 1 characters, and terminates them; null when nothing is
    /// left or there is no room.
    virtual LPSTR ReadString(LPSTR lpsz, UINT nMax);
    /// Reads the next line, of any length, without its line feed; FALSE when nothing is left, @p rString is then empty.
    virtual BOOL ReadString(CString& rString);

    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    void SetLength(ULONGLONG dwNewLen) override;
    /// Counts what waits in the buffer.
    ULONGLONG GetLength() const override;
    /// Gives what waits in the buffer to the system; the disk may get it later.
    void Flush() override;
    void Close() override;
    void Abort() override;

    /// Not supported. Throws: the not-supported exception.
    CFile* Duplicate() const override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;

private:
    enum class Holds
    {
        Nothing,
        ReadAhead,  // bytes from m_cursor to m_end are still to be read
        Unwritten,  // bytes up to m_cursor wait to be written
    };
    /// Where the next byte of one value lies in the buffer, found once and kept until the cursor passes it.
    struct Mark
    {
        char value;
        std::ptrdiff_t at;
    };

    void StartReading();
    void StartWriting();
    bool Fill();
    void WriteOut();
    void WriteBytes(const char* bytes, std::size_t count);
    UINT ReadBytes(char* target, UINT count);
    std::size_t Next(Mark& mark);
    bool TakeBufferedLine(CString& line);
    UINT Take(char* target, UINT room, bool line);

    Holds m_holds = Holds::Nothing;
    bool m_text = true;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_cursor = 0;
    std::size_t m_end = 0;
    Mark m_lineFeed{'\n', -1};
    Mark m_return{'\r', -1};
    Mark m_endOfText{0x1A, -1};
};
