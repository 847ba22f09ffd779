// DocumentFile.cpp: loading and saving documents, and asking about it.
#include <kelgen/framework/frames/Document.h>

#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/File.h>
#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/program/internal/StandardTexts.h>
#include <kelgen/platform/support/ScratchFile.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

using kelgen::detail::StandardText;

namespace {

// What DoPromptFileName is given: the platform's OFN_HIDEREADONLY and OFN_PATHMUSTEXIST.
constexpr DWORD kSaveFlags = 0x00000004 | 0x00000800;

/// A file that is written beside the one it replaces: until Close, and after Abort, that one stays as it was.
class MirrorFile : public CFile
{
public:
    BOOL Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError) override
    {
        const CString path(lpszFileName);
        const Way way = nOpenFlags & modeCreate ? WayTo(path) : Way::inPlace;
        if (way == Way::inPlace)
            return CFile::Open(path, nOpenFlags, pError);
        if (way == Way::none) {
            if (pError) {
                pError->m_lOsError = static_cast<LONG>(::GetLastError());
                pError->m_cause = CFileException::OsErrorToException(pError->m_lOsError);
                pError->m_strFileName = path;
            }
            return FALSE;
        }
        m_bCloseOnDelete = TRUE;
        m_strFileName = path;
        return TRUE;
    }

    void Close() override
    {
        if (*m_copy) {
            // Renamed before its bytes are on the disk it might come out of a crash of the system empty.
            Flush();
            // Before it is closed: from then on the next writer may have it.
            if (!::MoveFileExA(m_copy, m_target, MOVEFILE_REPLACE_EXISTING)) {
                const DWORD error = ::GetLastError();
                Abort();
                CFileException::ThrowOsError(static_cast<LONG>(error), m_target);
            }
            *m_copy = '\0';
        }
        CFile::Close();
    }

    void Abort() override
    {
        if (*m_copy)
            ::DeleteFileA(m_copy);
        *m_copy = '\0';
        CFile::Abort();
    }

    ~MirrorFile() override { MirrorFile::Abort(); }

private:
    enum class Way
    {
        beside,
        inPlace,
        none,  // with the last error
    };

    /// How to write @p path. Beside an existing plain file that may be written a copy is made, unless its folder takes no new one.
    Way WayTo(const CString& path)
    {
        const DWORD attributes = ::GetFileAttributesA(path);
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            const DWORD error = ::GetLastError();
            return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ? Way::inPlace : Way::none;
        }
        if (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY))
            return Way::inPlace;
        char full[MAX_PATH];
        LPSTR name = nullptr;
        const DWORD length = ::GetFullPathNameA(path, MAX_PATH, full, &name);
        if (length == 0 || length >= MAX_PATH || !name)
            return Way::inPlace;
        m_target = full;
        const int folder = static_cast<int>(name - full);
        // Under the same name each time: what a killed writer has left is used by the next. Several may write at once.
        for (int number = 0; number < kMostWriters; ++number) {
            const int size = std::snprintf(m_copy, sizeof m_copy, "%.*sdoc%d-%.200s.tmp", folder, full, number, name);
            const bool fits = size > 0 && size < static_cast<int>(sizeof m_copy);
            m_hFile = fits ? kelgen::OpenScratchFile(m_copy, full) : hFileNull;
            if (m_hFile != hFileNull)
                return Way::beside;
            if (!fits || ::GetLastError() != ERROR_SHARING_VIOLATION) {
                *m_copy = '\0';
                return !fits || ::GetLastError() == ERROR_ACCESS_DENIED ? Way::inPlace : Way::none;
            }
        }
        *m_copy = '\0';
        return Way::none;
    }

    static constexpr int kMostWriters = 10;

    CString m_target;
    char m_copy[MAX_PATH] = "";  // takes no memory, or the file would stay without it
};

/// Gives the document its file back: aborted, unless Release was called.
class DocumentFile
{
public:
    DocumentFile(CDocument& document, CFile* file) : m_document(document), m_file(file) {}
    ~DocumentFile()
    {
        if (m_file)
            m_document.ReleaseFile(m_file, TRUE);
    }
    DocumentFile(const DocumentFile&) = delete;
    DocumentFile& operator=(const DocumentFile&) = delete;

    CFile* operator->() const { return m_file; }
    CFile* Get() const { return m_file; }
    void Release()
    {
        // When closing throws, the file is still there to be aborted.
        m_document.ReleaseFile(m_file, FALSE);
        m_file = nullptr;
    }

private:
    CDocument& m_document;
    CFile* m_file;
};

}  // namespace

CFile* CDocument::GetFile(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    auto file = std::make_unique<MirrorFile>();
    return file->Open(lpszFileName, nOpenFlags, pError) ? file.release() : nullptr;
}

void CDocument::ReleaseFile(CFile* pFile, BOOL bAbort)
{
    if (bAbort)
        pFile->Abort();
    else
        pFile->Close();
    delete pFile;
}

BOOL CDocument::OnNewDocument()
{
    DeleteContents();
    m_strPathName.Empty();
    SetModifiedFlag(FALSE);
    return TRUE;
}

BOOL CDocument::OnOpenDocument(LPCSTR lpszPathName)
{
    CFileException failure;
    failure.m_bAutoDelete = FALSE;
    CFile* const opened = GetFile(lpszPathName, CFile::modeRead | CFile::shareDenyWrite, &failure);
    if (!opened) {
        ReportSaveLoadException(lpszPathName, &failure, FALSE, AFX_IDP_FAILED_TO_OPEN_DOC);
        return FALSE;
    }
    DeleteContents();
    // Whoever finds the document half loaded must not take it for the file's content.
    SetModifiedFlag();
    try {
        DocumentFile file(*this, opened);
        const CWaitCursor wait;
        CArchive archive(file.Get(), CArchive::load | CArchive::bNoFlushOnDelete);
        archive.m_pDocument = this;
        if (file->GetLength() != 0)
            Serialize(archive);
        archive.Close();
        file.Release();
    } catch (CException* exception) {
        DeleteContents();
        ReportSaveLoadException(lpszPathName, exception, FALSE, AFX_IDP_FAILED_TO_OPEN_DOC);
        exception->Delete();
        return FALSE;
    }
    SetModifiedFlag(FALSE);
    return TRUE;
}

BOOL CDocument::OnSaveDocument(LPCSTR lpszPathName)
{
    CFileException failure;
    failure.m_bAutoDelete = FALSE;
    CFile* const opened = GetFile(lpszPathName, CFile::modeCreate | CFile::modeReadWrite | CFile::shareExclusive, &failure);
    if (!opened) {
        ReportSaveLoadException(lpszPathName, &failure, TRUE, AFX_IDP_INVALID_FILENAME);
        return FALSE;
    }
    try {
        DocumentFile file(*this, opened);
        const CWaitCursor wait;
        CArchive archive(file.Get(), CArchive::store | CArchive::bNoFlushOnDelete);
        archive.m_pDocument = this;
        Serialize(archive);
        archive.Close();
        file.Release();
    } catch (CException* exception) {
        ReportSaveLoadException(lpszPathName, exception, TRUE, AFX_IDP_FAILED_TO_SAVE_DOC);
        exception->Delete();
        return FALSE;
    }
    SetModifiedFlag(FALSE);
    return TRUE;
}

void CDocument::ReportSaveLoadException(LPCSTR lpszPathName, CException* e, BOOL, UINT nIDPDefault)
{
    if (e && e->IsKindOf(RUNTIME_CLASS(CUserException)))
        return;
    const auto fileFailure = DYNAMIC_DOWNCAST(CFileException, e);
    if (fileFailure && fileFailure->m_strFileName.IsEmpty())
        fileFailure->m_strFileName = lpszPathName;
    char text[512] = {};
    const bool ownText = e && (fileFailure || e->IsKindOf(RUNTIME_CLASS(CArchiveException))) && e->GetErrorMessage(text, sizeof text);
    AfxMessageBox(ownText ? text : StandardText(nIDPDefault, lpszPathName).GetString(), MB_ICONEXCLAMATION, nIDPDefault);
}

BOOL CDocument::SaveModified()
{
    if (!IsModified())
        return TRUE;
    CString name = m_strPathName.IsEmpty()
                       ? m_strTitle
                       : m_strPathName.Mid(std::max(m_strPathName.ReverseFind('\\'), m_strPathName.ReverseFind('/')) + 1);
    if (name.IsEmpty())
        name = StandardText(AFX_IDS_UNTITLED);
    switch (AfxMessageBox(StandardText(AFX_IDP_ASK_TO_SAVE, name), MB_YESNOCANCEL, AFX_IDP_ASK_TO_SAVE)) {
    case IDYES:
        return DoFileSave();
    case IDNO:
        return TRUE;
    default:
        return FALSE;
    }
}

BOOL CDocument::DoFileSave()
{
    const DWORD attributes = m_strPathName.IsEmpty() ? INVALID_FILE_ATTRIBUTES : ::GetFileAttributesA(m_strPathName);
    const bool readOnly = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
    return DoSave(m_strPathName.IsEmpty() || readOnly ? nullptr : m_strPathName.GetString());
}

BOOL CDocument::DoSave(LPCSTR lpszPathName, BOOL bReplace)
{
    CString path(lpszPathName);
    const bool asked = path.IsEmpty();
    if (asked) {
        path = m_strPathName;
        if (bReplace && path.IsEmpty()) {
            // The title up to the first character that names of files had better not have.
            const int end = m_strTitle.FindOneOf(" #%;/\\");
            path = end >= 0 ? m_strTitle.Left(end) : m_strTitle;
            CString extension;
            if (m_pDocTemplate && m_pDocTemplate->GetDocString(extension, CDocTemplate::filterExt))
                path += extension;
        }
        CWinApp* const app = AfxGetApp();
        const UINT title = bReplace ? AFX_IDS_SAVEFILE : AFX_IDS_SAVEFILECOPY;
        if (!app || !app->DoPromptFileName(path, title, kSaveFlags, FALSE, m_pDocTemplate))
            return FALSE;
    }
    const bool existed = ::GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
    if (!OnSaveDocument(path)) {
        if (asked && !existed)
            ::DeleteFileA(path);
        return FALSE;
    }
    if (bReplace)
        SetPathName(path);
    return TRUE;
}
