// WinAppDocuments.cpp: the application's documents, and what its command line asks for.
#include <kelgen/framework/program/WinApp.h>

#include <kelgen/framework/frames/DocManager.h>
#include <kelgen/framework/frames/FrameWnd.h>
#include <kelgen/framework/program/MessageMap.h>
#include <kelgen/framework/program/StandardIds.h>

BEGIN_MESSAGE_MAP(CWinApp, CWinThread)
ON_COMMAND(ID_APP_EXIT, &CWinApp::OnAppExit)
END_MESSAGE_MAP()

void CWinApp::AddDocTemplate(CDocTemplate* pTemplate)
{
    if (!m_pDocManager)
        m_pDocManager = new CDocManager;
    m_pDocManager->AddDocTemplate(pTemplate);
}

POSITION CWinApp::GetFirstDocTemplatePosition() const
{
    return m_pDocManager ? m_pDocManager->GetFirstDocTemplatePosition() : nullptr;
}

CDocTemplate* CWinApp::GetNextDocTemplate(POSITION& pos) const
{
    return m_pDocManager->GetNextDocTemplate(pos);
}

CDocument* CWinApp::OpenDocumentFile(LPCSTR lpszFileName)
{
    return m_pDocManager ? m_pDocManager->OpenDocumentFile(lpszFileName) : nullptr;
}

int CWinApp::GetOpenDocumentCount() const
{
    return m_pDocManager ? m_pDocManager->GetOpenDocumentCount() : 0;
}

BOOL CWinApp::SaveAllModified()
{
    return !m_pDocManager || m_pDocManager->SaveAllModified();
}

void CWinApp::CloseAllDocuments(BOOL bEndSession)
{
    if (m_pDocManager)
        m_pDocManager->CloseAllDocuments(bEndSession);
}

void CWinApp::HideApplication()
{
    if (!m_pMainWnd)
        return;
    m_pMainWnd->ShowWindow(SW_HIDE);
    ::ShowOwnedPopups(m_pMainWnd->m_hWnd, FALSE);
    m_pMainWnd->SetWindowPos(&CWnd::wndBottom, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

BOOL CWinApp::DoPromptFileName(CString&, UINT, DWORD, BOOL, CDocTemplate*)
{
    return FALSE;
}

void CWinApp::AddToRecentFileList(LPCSTR) {}

void CWinApp::OnFileNew()
{
    if (m_pDocManager)
        m_pDocManager->OnFileNew();
}

void CWinApp::OnFileOpen()
{
    if (m_pDocManager)
        m_pDocManager->OnFileOpen();
}

void CWinApp::OnAppExit()
{
    if (m_pMainWnd)
        m_pMainWnd->SendMessage(WM_CLOSE);
}

BOOL CWinApp::OnIdle(LONG count)
{
    const BOOL more = CWinThread::OnIdle(count);
    if (count <= 0 && m_pDocManager)
        m_pDocManager->OnIdle();
    return more;
}

BOOL CWinApp::Register()
{
    return TRUE;
}

BOOL CWinApp::Unregister()
{
    if (!m_pszRegistryKey || !m_pszProfileName)
        return TRUE;
    CString key;
    key.Format("Software\\%s\\%s", m_pszRegistryKey, m_pszProfileName);
    const LONG error = DelRegTree(HKEY_CURRENT_USER, key);
    return error == ERROR_SUCCESS || error == ERROR_FILE_NOT_FOUND;
}

BOOL CWinApp::ProcessShellCommand(CCommandLineInfo& info)
{
    switch (info.m_nShellCommand) {
    case CCommandLineInfo::FileNew:
        if (!OnCmdMsg(ID_FILE_NEW, CN_COMMAND, nullptr, nullptr))
            OnFileNew();
        return m_pMainWnd != nullptr;
    case CCommandLineInfo::FileOpen:
        return OpenDocumentFile(info.m_strFileName) != nullptr;
    case CCommandLineInfo::FilePrint:
    case CCommandLineInfo::FilePrintTo:
        m_nCmdShow = SW_HIDE;
        m_pCmdInfo = &info;
        if (OpenDocumentFile(info.m_strFileName) && m_pMainWnd)
            m_pMainWnd->SendMessage(WM_COMMAND, ID_FILE_PRINT_DIRECT);
        m_pCmdInfo = nullptr;
        return FALSE;
    case CCommandLineInfo::FileDDE:
        m_pCmdInfo = &info;
        m_nCmdShow = SW_HIDE;
        return TRUE;
    case CCommandLineInfo::AppRegister:
        Register();
        return FALSE;
    case CCommandLineInfo::AppUnregister:
        Unregister();
        return FALSE;
    default:
        return TRUE;
    }
}
