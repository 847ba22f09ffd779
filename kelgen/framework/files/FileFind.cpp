// FileFind.cpp: walks a search of the platform one entry ahead, so that the last entry is known as such.
#include <kelgen/framework/files/FileFind.h>

#include <kelgen/framework/base/Exceptions.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

IMPLEMENT_DYNAMIC(CFileFind, CObject)

namespace {

/// The full path of @p name's folder.
CString FolderOf(LPCSTR name)
{
    std::string path(MAX_PATH, 0);
    DWORD length = GetFullPathNameA(name, static_cast<DWORD>(path.size()), path.data(), nullptr);
    if (length >= path.size()) {
        path.resize(length);
        length = GetFullPathNameA(name, static_cast<DWORD>(path.size()), path.data(), nullptr);
    }
    path.resize(std::min<std::size_t>(length, path.size()));
    const std::size_t end = path.find_last_of("\\/");
    return end == std::string::npos ? CString() : CString(path.data(), static_cast<int>(end));
}

}  // namespace

CFileFind::CFileFind() = default;

CFileFind::~CFileFind()
{
    Close();
}

BOOL CFileFind::FindFile(LPCSTR pstrName, DWORD)
{
    Close();
    const LPCSTR name = pstrName ? pstrName : "*.*";
    m_find = FindFirstFileA(name, &m_next);
    if (m_find == INVALID_HANDLE_VALUE)
        return FALSE;
    m_hasNext = true;
    m_root = FolderOf(name);
    return TRUE;
}

BOOL CFileFind::FindNextFile()
{
    if (m_find == INVALID_HANDLE_VALUE || !m_hasNext) {
        SetLastError(ERROR_NO_MORE_FILES);
        return FALSE;
    }
    m_current = m_next;
    m_hasCurrent = true;
    m_hasNext = ::FindNextFileA(m_find, &m_next) != FALSE;
    return m_hasNext;
}

void CFileFind::Close()
{
    if (m_find == INVALID_HANDLE_VALUE)
        return;
    CloseContext();
    m_hasCurrent = false;
    m_hasNext = false;
}

void CFileFind::CloseContext()
{
    const DWORD error = GetLastError();
    ::FindClose(std::exchange(m_find, INVALID_HANDLE_VALUE));
    SetLastError(error);
}

const WIN32_FIND_DATAA& CFileFind::Current() const
{
    if (!m_hasCurrent)
        AfxThrowInvalidArgException();
    return m_current;
}

ULONGLONG CFileFind::GetLength() const
{
    return (ULONGLONG{Current().nFileSizeHigh} << 32) | Current().nFileSizeLow;
}

CString CFileFind::GetFileName() const
{
    return Current().cFileName;
}

CString CFileFind::GetFilePath() const
{
    const auto nameLength = static_cast<int>(std::strlen(Current().cFileName));
    CString path;
    const int rootLength = m_root.GetLength();
    char* const text = path.GetBuffer(rootLength + 1 + nameLength);
    std::memcpy(text, m_root.GetString(), static_cast<std::size_t>(rootLength));
    text[rootLength] = '\\';
    std::memcpy(text + rootLength + 1, m_current.cFileName, static_cast<std::size_t>(nameLength));
    path.ReleaseBufferSetLength(rootLength + 1 + nameLength);
    return path;
}

CString CFileFind::GetFileTitle() const
{
    const char* const name = Current().cFileName;
    const char* const dot = std::strrchr(name, '.');
    return dot ? CString(name, static_cast<int>(dot - name)) : CString(name);
}

CString CFileFind::GetFileURL() const
{
    return "file://" + GetFilePath();
}

CString CFileFind::GetRoot() const
{
    return m_root;
}

BOOL CFileFind::GetCreationTime(FILETIME* pTimeStamp) const
{
    *pTimeStamp = Current().ftCreationTime;
    return TRUE;
}

BOOL CFileFind::GetLastAccessTime(FILETIME* pTimeStamp) const
{
    *pTimeStamp = Current().ftLastAccessTime;
    return TRUE;
}

BOOL CFileFind::GetLastWriteTime(FILETIME* pTimeStamp) const
{
    *pTimeStamp = Current().ftLastWriteTime;
    return TRUE;
}

BOOL CFileFind::MatchesMask(DWORD dwMask) const
{
    return (Current().dwFileAttributes & dwMask) != 0;
}

BOOL CFileFind::IsDots() const
{
    return IsDirectory() && (std::strcmp(m_current.cFileName, ".") == 0 || std::strcmp(m_current.cFileName, "..") == 0);
}
