// WinApp.cpp: the application object's birth and names.
#include <kelgen/framework/program/WinApp.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/frames/DocManager.h>
#include <kelgen/framework/program/ModuleState.h>

#include <cstdlib>
#include <cstring>

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

namespace {

constexpr UINT kTitleId = 0xE000;

LPCSTR Copied(LPCSTR text)
{
    const std::size_t size = std::strlen(text) + 1;
    void* const copy = std::malloc(size);
    if (!copy)
        AfxThrowMemoryException();
    return static_cast<LPCSTR>(std::memcpy(copy, text, size));
}

void Free(LPCSTR text)
{
    std::free(const_cast<LPSTR>(text));
}

CString PathOfModule(HINSTANCE module)
{
    CString path;
    for (DWORD capacity = MAX_PATH;; capacity *= 2) {
        const DWORD length = GetModuleFileNameA(module, path.GetBuffer(static_cast<int>(capacity)), capacity);
        if (length < capacity) {
            path.ReleaseBufferSetLength(static_cast<int>(length));
            return path;
        }
    }
}

CString WithoutExtension(const CString& path)
{
    const int dot = path.ReverseFind('.');
    return dot > path.ReverseFind('\\') ? path.Left(dot) : path;
}

}  // namespace

BOOL AfxWinInit(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int showCommand)
{
    SetErrorMode(SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    AFX_MODULE_STATE* const state = AfxGetModuleState();
    state->m_hCurrentInstanceHandle = instance;
    state->m_hCurrentResourceHandle = instance;
    if (CWinApp* const app = AfxGetApp()) {
        app->m_hInstance = instance;
        app->m_lpCmdLine = commandLine;
        app->m_nCmdShow = showCommand;
        app->SetCurrentHandles();
    }
    AfxInitThread();
    return TRUE;
}

CWinApp::CWinApp(LPCSTR appName) : m_pszAppName(appName ? Copied(appName) : nullptr)
{
    AfxGetModuleState()->m_pCurrentWinApp = this;
    Attach();
    m_bAutoDelete = FALSE;
    m_hThread = ::GetCurrentThread();
    m_nThreadID = ::GetCurrentThreadId();
}

CWinApp::~CWinApp()
{
    delete m_pDocManager;
    AFX_MODULE_STATE* const state = AfxGetModuleState();
    if (state->m_lpszCurrentAppName == m_pszAppName)
        state->m_lpszCurrentAppName = nullptr;
    if (state->m_pCurrentWinApp == this)
        state->m_pCurrentWinApp = nullptr;
    for (LPCSTR name : {m_pszAppName, m_pszRegistryKey, m_pszExeName, m_pszHelpFilePath, m_pszProfileName})
        Free(name);
}

void CWinApp::SetCurrentHandles()
{
    m_hInstance = AfxGetInstanceHandle();
    const CString stem = WithoutExtension(PathOfModule(m_hInstance));
    if (!m_pszExeName)
        m_pszExeName = Copied(stem.Mid(stem.ReverseFind('\\') + 1));
    if (!m_pszAppName) {
        CString title;
        m_pszAppName = Copied(title.LoadString(kTitleId) ? title.GetString() : m_pszExeName);
    }
    AfxGetModuleState()->m_lpszCurrentAppName = m_pszAppName;
    if (!m_pszHelpFilePath)
        m_pszHelpFilePath = Copied(stem + ".HLP");
    if (!m_pszProfileName)
        m_pszProfileName = Copied(CString(m_pszExeName) + ".INI");
}

void CWinApp::SetRegistryKey(LPCSTR registryKey)
{
    if (!registryKey || !m_pszAppName)
        AfxThrowInvalidArgException();
    LPCSTR const key = Copied(registryKey);
    Free(m_pszRegistryKey);
    m_pszRegistryKey = key;
    Free(m_pszProfileName);
    m_pszProfileName = nullptr;
    m_pszProfileName = Copied(m_pszAppName);
}

void CWinApp::SetRegistryKey(UINT registryKeyId)
{
    CString key;
    if (!key.LoadString(registryKeyId))
        AfxThrowInvalidArgException();
    SetRegistryKey(key.GetString());
}
