// FileFind.h: CFileFind, the entries of a folder that match a pattern.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

/// A search for files and folders.
///
///     CFileFind find;
///     for (BOOL more = find.FindFile("C:\\logs\\*.txt"); more;) {
///         more = find.FindNextFile();
///         names.Add(find.GetFileName());
///     }
///
/// What is told of an entry is told of the one that FindNextFile made current; before its first call the search is misused.
/// Throws: the invalid-argument exception for questions without a current entry. Threads: one at a time.
class KELGEN_FRAMEWORK_API CFileFind : public CObject
{
    DECLARE_DYNAMIC(CFileFind)

public:
    CFileFind();
    ~CFileFind() override;

    /// Begins a search, ending one that is under way; null means "*.*". FALSE with the platform's last error when nothing
    /// matches. @p dwUnused is not used.
    virtual BOOL FindFile(LPCSTR pstrName = nullptr, DWORD dwUnused = 0);
    /// Makes the next entry current. By contract: FALSE already when that entry is the last one, so a loop uses the entry first and tests
    /// the result afterwards. A failure's last error is ERROR_NO_MORE_FILES when the entry is the last.
    virtual BOOL FindNextFile();
    /// Ends the search.
    void Close();

    /// Bytes; 0 for a folder.
    ULONGLONG GetLength() const;
    /// The name with its extension, without its folder.
    virtual CString GetFileName() const;
    /// The full path.
    virtual CString GetFilePath() const;
    /// The name without its extension.
    virtual CString GetFileTitle() const;
    /// The path as a URL "file://...". By contract: nothing in it is escaped, so a caller does that for names with blanks or signs.
    virtual CString GetFileURL() const;
    /// The full path of the folder that is searched, without a final separator.
    virtual CString GetRoot() const;

    /// When the entry was made, in UTC. Returns TRUE.
    virtual BOOL GetCreationTime(FILETIME* pTimeStamp) const;
    /// When the entry was read or written last, in UTC. Returns TRUE.
    virtual BOOL GetLastAccessTime(FILETIME* pTimeStamp) const;
    /// When the entry was written last, in UTC. Returns TRUE.
    virtual BOOL GetLastWriteTime(FILETIME* pTimeStamp) const;

    /// Whether the entry has any attribute of @p dwMask.
    virtual BOOL MatchesMask(DWORD dwMask) const;
    /// Whether the entry stands for the folder itself or its parent.
    virtual BOOL IsDots() const;
    /// The file's attributes, each by its name; as in MatchesMask.
    BOOL IsReadOnly() const { return MatchesMask(FILE_ATTRIBUTE_READONLY); }
    BOOL IsDirectory() const { return MatchesMask(FILE_ATTRIBUTE_DIRECTORY); }
    BOOL IsCompressed() const { return MatchesMask(FILE_ATTRIBUTE_COMPRESSED); }
    BOOL IsSystem() const { return MatchesMask(FILE_ATTRIBUTE_SYSTEM); }
    BOOL IsHidden() const { return MatchesMask(FILE_ATTRIBUTE_HIDDEN); }
    BOOL IsTemporary() const { return MatchesMask(FILE_ATTRIBUTE_TEMPORARY); }
    BOOL IsNormal() const { return MatchesMask(FILE_ATTRIBUTE_NORMAL); }
    BOOL IsArchived() const { return MatchesMask(FILE_ATTRIBUTE_ARCHIVE); }

protected:
    /// Closes the search's handle and keeps the last error. Calls FindClose.
    virtual void CloseContext();

private:
    const WIN32_FIND_DATAA& Current() const;

    HANDLE m_find = INVALID_HANDLE_VALUE;
    bool m_hasCurrent = false;
    bool m_hasNext = false;
    WIN32_FIND_DATAA m_current{};
    WIN32_FIND_DATAA m_next{};
    CString m_root;
};
