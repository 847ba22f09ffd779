// File.h: CFile, binary files without a buffer, and the base of every file-like class.
#pragma once

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

/// What is known of a file without reading it. A zero time stands for an unknown one.
struct CFileStatus
{
    FILETIME m_ctime{};                ///< Creation.
    FILETIME m_mtime{};                ///< Last writing.
    FILETIME m_atime{};                ///< Last access.
    ULONGLONG m_size = 0;              ///< Bytes.
    BYTE m_attribute = 0;              ///< CFile::Attribute values, combined.
    char m_szFullName[MAX_PATH] = {};  ///< The full path.
};

// A given name, CFile::system, is also that of a function of the C library.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"

/// A file of bytes, read and written without a buffer of its own.
///
///     CFile file("C:\\data.bin", CFile::modeRead | CFile::shareDenyWrite);
///     BYTE header[16];
///     if (file.Read(header, sizeof header) == sizeof header)
///         Parse(header);
///
/// Throws: CFileException with cause, platform error code and path when the platform's call fails; a closed file counts as a
/// failure (invalidFile). Static members name the file that failed. Threads: one at a time.
class KELGEN_FRAMEWORK_API CFile : public CObject
{
    DECLARE_DYNAMIC(CFile)

public:
    /// One of the first three, one share value, and any of the others.
    enum OpenFlags
    {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,     ///< As shareExclusive.
        shareExclusive = 0x0010,  ///< Nobody else may open the file.
        shareDenyWrite = 0x0020,  ///< Others may read.
        shareDenyRead = 0x0030,   ///< Others may write.
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,   ///< Child processes do not get the handle.
        modeCreate = 0x1000,      ///< Creates the file; one that exists is emptied.
        modeNoTruncate = 0x2000,  ///< With modeCreate: one that exists is kept.
        typeText = 0x4000,        ///< For classes that translate line ends.
        typeBinary = 0x8000,
        osNoBuffer = 0x10000,
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000,
    };

    enum Attribute
    {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        system = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20,
    };

    enum SeekPosition
    {
        begin = 0,
        current = 1,
        end = 2,
    };

    /// m_hFile of a closed file.
    static const HANDLE hFileNull;

    CFile();
    /// Uses an open handle; the destructor does not close it, Close does.
    explicit CFile(HANDLE hFile);
    /// Opens, or throws what Open would report.
    CFile(LPCSTR lpszFileName, UINT nOpenFlags);
    /// Closes a file that was opened by name. Errors are ignored: call Close to see them.
    ~CFile() override;

    /// The handle, so that an object serves where a call takes a file.
    operator HANDLE() const { return m_hFile; }

    /// FALSE on failure, with the cause, error code and name in @p pError if given; nothing is thrown for it.
    virtual BOOL Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);

    /// The position, in bytes from the beginning, by SetFilePointerEx.
    virtual ULONGLONG GetPosition() const;
    /// The full path, or the text given to SetFilePath; empty for a file without one.
    virtual CString GetFilePath() const { return m_strFileName; }
    /// The part of the path behind the last backslash, slash or colon.
    virtual CString GetFileName() const;
    /// The file name without its extension.
    virtual CString GetFileTitle() const;
    /// Throws: the invalid-argument exception for null.
    virtual void SetFilePath(LPCSTR lpszNewName);

    /// Moves the position, counted from the beginning, the current position or the end, by SetFilePointerEx, and returns the new one.
    /// Throws: CFileException; a target before the beginning leaves the position.
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    /// Moves the position to the beginning.
    void SeekToBegin() { Seek(0, begin); }
    /// Moves the position to the end and returns it: the length.
    ULONGLONG SeekToEnd() { return Seek(0, end); }

    /// Cuts or extends the file by SetEndOfFile; the position becomes its end.
    virtual void SetLength(ULONGLONG dwNewLen);
    /// The length in bytes, by GetFileSizeEx.
    virtual ULONGLONG GetLength() const;

    /// Reads up to @p nCount bytes by ReadFile and returns their number; fewer only when the end comes before.
    virtual UINT Read(void* lpBuf, UINT nCount);
    /// Writes all @p nCount bytes by WriteFile. Throws: CFileException diskFull when fewer could be written.
    virtual void Write(const void* lpBuf, UINT nCount);

    /// Keeps other openers out of a range, which may lie past the end, by LockFile.
    virtual void LockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    /// Frees a range that LockRange took, with the same numbers, by UnlockFile.
    virtual void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount);

    /// Forces what was written to the disk by FlushFileBuffers.
    virtual void Flush();
    /// Closes by CloseHandle; a closed file stays so.
    virtual void Close();
    /// Closes without an exception, even if the system reports an error.
    virtual void Abort();

    /// A new object of its own handle to the same open file: the two share one position.
    virtual CFile* Duplicate() const;

    /// FALSE when the file is closed or cannot be asked; TRUE with what is known.
    BOOL GetStatus(CFileStatus& rStatus) const;
    /// FALSE when there is no file @p lpszFileName.
    static BOOL GetStatus(LPCSTR lpszFileName, CFileStatus& rStatus);
    /// Sets the attributes, and those times that are not zero. By contract: access and creation times are set only together with the time
    /// of last writing, so a caller gives that one too.
    static void SetStatus(LPCSTR lpszFileName, const CFileStatus& status);

    /// Gives a file another name by MoveFileA, in the same volume; a file of the new name must not exist.
    static void Rename(LPCSTR lpszOldName, LPCSTR lpszNewName);
    /// Deletes a file by DeleteFileA.
    static void Remove(LPCSTR lpszFileName);

    /// The handle; hFileNull while closed.
    HANDLE m_hFile;

protected:
    /// Throws: CFileException for the last platform error and this file's path.
    [[noreturn]] void ThrowLastError() const;

    BOOL m_bCloseOnDelete;
    CString m_strFileName;
};

#pragma GCC diagnostic pop
