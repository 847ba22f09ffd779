// File.cpp: files over the platform's handles.
#include <kelgen/framework/files/File.h>

#include <algorithm>
#include <cstring>

namespace {

// The path in full, or the text as it stands when it has no full form.
CString FullPath(LPCSTR name)
{
    CString full;
    DWORD needed = MAX_PATH;
    for (;;) {
        LPSTR buffer = full.GetBuffer(static_cast<int>(needed));
        const DWORD length = GetFullPathNameA(name, needed, buffer, nullptr);
        full.ReleaseBuffer(length < needed ? static_cast<int>(length) : 0);
        if (length < needed)
            return length != 0 ? full : CString(name);
        needed = length + 1;
    }
}

DWORD AccessOf(UINT openFlags)
{
    if (openFlags & CFile::modeReadWrite)
        return GENERIC_READ | GENERIC_WRITE;
    return openFlags & CFile::modeWrite ? GENERIC_WRITE : GENERIC_READ;
}

DWORD ShareOf(UINT openFlags)
{
    switch (openFlags & 0x70) {
    case CFile::shareDenyWrite:
        return FILE_SHARE_READ;
    case CFile::shareDenyRead:
        return FILE_SHARE_WRITE;
    case CFile::shareDenyNone:
        return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default:
        return 0;
    }
}

DWORD DispositionOf(UINT openFlags)
{
    if ((openFlags & CFile::modeCreate) == 0)
        return OPEN_EXISTING;
    return openFlags & CFile::modeNoTruncate ? OPEN_ALWAYS : CREATE_ALWAYS;
}

DWORD AttributesOf(UINT openFlags)
{
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
    if (openFlags & CFile::osNoBuffer)
        attributes |= FILE_FLAG_NO_BUFFERING;
    if (openFlags & CFile::osWriteThrough)
        attributes |= FILE_FLAG_WRITE_THROUGH;
    if (openFlags & CFile::osRandomAccess)
        attributes |= FILE_FLAG_RANDOM_ACCESS;
    if (openFlags & CFile::osSequentialScan)
        attributes |= FILE_FLAG_SEQUENTIAL_SCAN;
    return attributes;
}

bool IsSet(const FILETIME& time)
{
    return time.dwLowDateTime != 0 || time.dwHighDateTime != 0;
}

DWORD LowHalf(ULONGLONG value)
{
    return static_cast<DWORD>(value & 0xFFFFFFFFu);
}

DWORD HighHalf(ULONGLONG value)
{
    return static_cast<DWORD>(value >> 32);
}

[[noreturn]] void ThrowError(DWORD error, LPCSTR name)
{
    const LONG osError = static_cast<LONG>(error);
    AfxThrowFileException(CFileException::OsErrorToException(osError), osError, name);
}

void CopyFullName(CFileStatus& status, LPCSTR path)
{
    const std::size_t length = std::min(std::strlen(path), sizeof status.m_szFullName - 1);
    std::memcpy(status.m_szFullName, path, length);
    status.m_szFullName[length] = 0;
}

BYTE StatusAttributes(DWORD attributes)
{
    return static_cast<BYTE>(attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL));
}

/// Of an open file's description or of an entry that was found: both call these members alike.
template <class INFORMATION>
void CopyInformation(CFileStatus& status, const INFORMATION& information)
{
    status.m_ctime = information.ftCreationTime;
    status.m_mtime = information.ftLastWriteTime;
    status.m_atime = information.ftLastAccessTime;
    status.m_size = (static_cast<ULONGLONG>(information.nFileSizeHigh) << 32) | information.nFileSizeLow;
    status.m_attribute = StatusAttributes(information.dwFileAttributes);
}

void SetTimes(LPCSTR name, const CFileStatus& status)
{
    const HANDLE file =
        CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        ThrowError(GetLastError(), name);
    const FILETIME* created = IsSet(status.m_ctime) ? &status.m_ctime : nullptr;
    const FILETIME* accessed = IsSet(status.m_atime) ? &status.m_atime : nullptr;
    const bool done = SetFileTime(file, created, accessed, &status.m_mtime);
    const DWORD error = GetLastError();
    CloseHandle(file);
    if (!done)
        ThrowError(error, name);
}

void SetAttributes(LPCSTR name, BYTE attributes)
{
    if (!SetFileAttributesA(name, attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL))
        ThrowError(GetLastError(), name);
}

}  // namespace

IMPLEMENT_DYNAMIC(CFile, CObject)

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

CFile::CFile() : CFile(INVALID_HANDLE_VALUE) {}

CFile::CFile(HANDLE hFile) : m_hFile(hFile), m_bCloseOnDelete(FALSE) {}

CFile::CFile(LPCSTR lpszFileName, UINT nOpenFlags) : CFile()
{
    CFileException error;
    if (!CFile::Open(lpszFileName, nOpenFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile()
{
    if (m_hFile != hFileNull && m_bCloseOnDelete)
        CloseHandle(m_hFile);
}

BOOL CFile::Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    KELGEN_ASSERT(m_hFile == hFileNull);
    SECURITY_ATTRIBUTES security{};
    security.nLength = sizeof security;
    security.bInheritHandle = (nOpenFlags & modeNoInherit) == 0;
    const HANDLE file = CreateFileA(lpszFileName, AccessOf(nOpenFlags), ShareOf(nOpenFlags), &security, DispositionOf(nOpenFlags),
                                    AttributesOf(nOpenFlags), nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        if (pError != nullptr) {
            pError->m_lOsError = static_cast<LONG>(GetLastError());
            pError->m_cause = CFileException::OsErrorToException(pError->m_lOsError);
            pError->m_strFileName = lpszFileName;
        }
        return FALSE;
    }
    m_hFile = file;
    m_bCloseOnDelete = TRUE;
    m_strFileName = FullPath(lpszFileName);
    return TRUE;
}

void CFile::ThrowLastError() const
{
    ThrowError(GetLastError(), m_strFileName);
}

CString CFile::GetFileName() const
{
    const CString path = GetFilePath();
    int start = path.GetLength();
    while (start > 0 && path.GetAt(start - 1) != '\\' && path.GetAt(start - 1) != '/' && path.GetAt(start - 1) != ':')
        --start;
    return path.Mid(start);
}

CString CFile::GetFileTitle() const
{
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot >= 0 ? name.Left(dot) : name;
}

void CFile::SetFilePath(LPCSTR lpszNewName)
{
    if (lpszNewName == nullptr)
        AfxThrowInvalidArgException();
    m_strFileName = lpszNewName;
}

ULONGLONG CFile::GetPosition() const
{
    LARGE_INTEGER distance;
    distance.QuadPart = 0;
    LARGE_INTEGER position;
    if (!SetFilePointerEx(m_hFile, distance, &position, FILE_CURRENT))
        ThrowLastError();
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom)
{
    LARGE_INTEGER distance;
    distance.QuadPart = lOff;
    LARGE_INTEGER position;
    if (!SetFilePointerEx(m_hFile, distance, &position, nFrom))
        ThrowLastError();
    return static_cast<ULONGLONG>(position.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen)
{
    CFile::Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (!SetEndOfFile(m_hFile))
        ThrowLastError();
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(m_hFile, &size))
        ThrowLastError();
    return static_cast<ULONGLONG>(size.QuadPart);
}

UINT CFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    DWORD done = 0;
    if (!ReadFile(m_hFile, lpBuf, nCount, &done, nullptr))
        ThrowLastError();
    return done;
}

void CFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    DWORD done = 0;
    if (!WriteFile(m_hFile, lpBuf, nCount, &done, nullptr))
        ThrowLastError();
    if (done != nCount)
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

void CFile::LockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!LockFile(m_hFile, LowHalf(dwPos), HighHalf(dwPos), LowHalf(dwCount), HighHalf(dwCount)))
        ThrowLastError();
}

void CFile::UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!UnlockFile(m_hFile, LowHalf(dwPos), HighHalf(dwPos), LowHalf(dwCount), HighHalf(dwCount)))
        ThrowLastError();
}

void CFile::Flush()
{
    if (m_hFile != hFileNull && !FlushFileBuffers(m_hFile))
        ThrowLastError();
}

void CFile::Close()
{
    const HANDLE file = m_hFile;
    const CString path = m_strFileName;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
    if (file != hFileNull && !CloseHandle(file))
        ThrowError(GetLastError(), path);
}

void CFile::Abort()
{
    if (m_hFile != hFileNull)
        CloseHandle(m_hFile);
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}

CFile* CFile::Duplicate() const
{
    // The value of a closed file's handle stands for the process itself in this call.
    if (m_hFile == hFileNull)
        AfxThrowFileException(CFileException::invalidFile, ERROR_INVALID_HANDLE, m_strFileName);
    HANDLE copy = hFileNull;
    if (!DuplicateHandle(GetCurrentProcess(), m_hFile, GetCurrentProcess(), &copy, 0, FALSE, DUPLICATE_SAME_ACCESS))
        ThrowLastError();
    CFile* file = new CFile(copy);
    file->m_bCloseOnDelete = TRUE;
    file->m_strFileName = m_strFileName;
    return file;
}

BOOL CFile::GetStatus(CFileStatus& rStatus) const
{
    rStatus = CFileStatus();
    CopyFullName(rStatus, m_strFileName);
    BY_HANDLE_FILE_INFORMATION information;
    if (m_hFile == hFileNull || !GetFileInformationByHandle(m_hFile, &information))
        return FALSE;
    CopyInformation(rStatus, information);
    return TRUE;
}

BOOL CFile::GetStatus(LPCSTR lpszFileName, CFileStatus& rStatus)
{
    rStatus = CFileStatus();
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(lpszFileName, &found);
    if (search == INVALID_HANDLE_VALUE)
        return FALSE;
    FindClose(search);
    CopyFullName(rStatus, FullPath(lpszFileName));
    CopyInformation(rStatus, found);
    return TRUE;
}

void CFile::SetStatus(LPCSTR lpszFileName, const CFileStatus& status)
{
    const DWORD present = GetFileAttributesA(lpszFileName);
    if (present == INVALID_FILE_ATTRIBUTES)
        ThrowError(GetLastError(), lpszFileName);

    // A file that loses its write protection must lose it before its times can be set; one that gains it, after that.
    const bool attributesFirst = (present & FILE_ATTRIBUTE_READONLY) != 0;
    const bool attributesChange = StatusAttributes(present) != status.m_attribute;
    if (attributesChange && attributesFirst)
        SetAttributes(lpszFileName, status.m_attribute);
    if (IsSet(status.m_mtime))
        SetTimes(lpszFileName, status);
    if (attributesChange && !attributesFirst)
        SetAttributes(lpszFileName, status.m_attribute);
}

void CFile::Rename(LPCSTR lpszOldName, LPCSTR lpszNewName)
{
    if (!MoveFileA(lpszOldName, lpszNewName))
        ThrowError(GetLastError(), lpszOldName);
}

void CFile::Remove(LPCSTR lpszFileName)
{
    if (!DeleteFileA(lpszFileName))
        ThrowError(GetLastError(), lpszFileName);
}
