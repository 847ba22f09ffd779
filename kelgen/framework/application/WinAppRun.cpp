// WinAppRun.cpp: an application's start and loop, message boxes, cursors and icons, and automation's hold on the application.
#include <kelgen/framework/program/WinApp.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/Wnd.h>

#include <atomic>

namespace {

constexpr LPCSTR kNoText = "No error message is available.";

std::atomic<LONG> automationLocks{0};
std::atomic<BOOL> userControls{TRUE};

}  // namespace

void AfxWinTerm()
{
    AfxUnhookWindowCreate();
    AfxTermThread();
}

BOOL CWinApp::InitApplication()
{
    return TRUE;
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::Run()
{
    if (!m_pMainWnd && AfxOleGetUserCtrl())
        AfxPostQuitMessage(0);
    return CWinThread::Run();
}

LRESULT CWinApp::ProcessWndProcException(CException* exception, const MSG* message)
{
    const bool toldBefore = exception->IsKindOf(RUNTIME_CLASS(CUserException));
    if (message->message != WM_CREATE && message->message != WM_PAINT && !toldBefore)
        exception->ReportError(MB_ICONEXCLAMATION | MB_SYSTEMMODAL);
    return CWinThread::ProcessWndProcException(exception, message);
}

int CWinApp::DoMessageBox(LPCSTR prompt, UINT type, UINT idPrompt)
{
    return ShowAppMessageBox(this, prompt, type, idPrompt);
}

int CWinApp::ShowAppMessageBox(CWinApp* app, LPCSTR prompt, UINT type, UINT)
{
    if ((type & MB_ICONMASK) == 0) {
        switch (type & MB_TYPEMASK) {
        case MB_OK:
        case MB_OKCANCEL:
            type |= MB_ICONEXCLAMATION;
            break;
        case MB_YESNO:
        case MB_YESNOCANCEL:
            type |= MB_ICONQUESTION;
            break;
        default:
            break;
        }
    }
    HWND disabled = nullptr;
    const HWND owner = CWnd::GetSafeOwner_(nullptr, &disabled);
    CString program;
    LPCSTR caption = app ? app->m_pszAppName : nullptr;
    if (!caption) {
        ::GetModuleFileNameA(nullptr, program.GetBuffer(MAX_PATH), MAX_PATH);
        program.ReleaseBuffer();
        caption = program;
    }
    const int button = ::MessageBoxA(owner, prompt, caption, type);
    if (disabled)
        ::EnableWindow(disabled, TRUE);
    return button;
}

int AfxMessageBox(LPCSTR lpszText, UINT nType, UINT nIDHelp)
{
    CWinApp* const app = AfxGetApp();
    return app ? app->DoMessageBox(lpszText, nType, nIDHelp) : CWinApp::ShowAppMessageBox(nullptr, lpszText, nType, nIDHelp);
}

int AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    text.LoadString(nIDPrompt);
    return AfxMessageBox(text, nType, nIDHelp == 0xFFFFFFFF ? nIDPrompt : nIDHelp);
}

int CException::ReportError(UINT type, UINT errorId)
{
    char text[512];
    if (GetErrorMessage(text, sizeof text))
        return AfxMessageBox(text, type);
    CString general;
    if (errorId == 0 || !general.LoadString(errorId))
        general = kNoText;
    return AfxMessageBox(general, type);
}

void CWinApp::DoWaitCursor(int code)
{
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    state->m_nWaitCursorCount += code;
    if (state->m_nWaitCursorCount > 0) {
        const HCURSOR before = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
        if (code > 0 && state->m_nWaitCursorCount == 1)
            state->m_hcurWaitCursorRestore = before;
    } else {
        state->m_nWaitCursorCount = 0;
        ::SetCursor(state->m_hcurWaitCursorRestore);
    }
}

CWaitCursor::CWaitCursor()
{
    if (CWinApp* const app = AfxGetApp())
        app->DoWaitCursor(1);
}

CWaitCursor::~CWaitCursor()
{
    if (CWinApp* const app = AfxGetApp())
        app->DoWaitCursor(-1);
}

void CWaitCursor::Restore()
{
    if (CWinApp* const app = AfxGetApp())
        app->DoWaitCursor(0);
}

void CWinApp::ParseCommandLine(CCommandLineInfo& info)
{
    kelgen::detail::CommandLineSplitter arguments(m_lpCmdLine);
    CString argument;
    while (arguments.Next(argument)) {
        const bool flag = argument[0] == '/' || argument[0] == '-';
        info.ParseParam(argument.GetString() + (flag ? 1 : 0), flag, arguments.AtEnd());
    }
}

HCURSOR CWinApp::LoadCursor(LPCSTR resourceName) const
{
    return ::LoadCursorA(AfxFindResourceHandle(resourceName, RT_GROUP_CURSOR), resourceName);
}

HCURSOR CWinApp::LoadCursor(UINT resourceId) const
{
    return LoadCursor(MAKEINTRESOURCEA(resourceId));
}

HICON CWinApp::LoadIcon(LPCSTR resourceName) const
{
    return ::LoadIconA(AfxFindResourceHandle(resourceName, RT_GROUP_ICON), resourceName);
}

HICON CWinApp::LoadIcon(UINT resourceId) const
{
    return LoadIcon(MAKEINTRESOURCEA(resourceId));
}

HCURSOR CWinApp::LoadStandardCursor(LPCSTR name) const
{
    return ::LoadCursorA(nullptr, name);
}

HICON CWinApp::LoadStandardIcon(LPCSTR name) const
{
    return ::LoadIconA(nullptr, name);
}

void AfxOleLockApp()
{
    ++automationLocks;
}

void AfxOleUnlockApp()
{
    if (--automationLocks != 0 || AfxOleGetUserCtrl())
        return;
    if (const CWinApp* const app = AfxGetApp())
        ::PostThreadMessageA(app->m_nThreadID, WM_QUIT, 0, 0);
}

BOOL AfxOleCanExitApp()
{
    return automationLocks == 0;
}

BOOL AfxOleGetUserCtrl()
{
    return userControls;
}

void AfxOleSetUserCtrl(BOOL userControl)
{
    userControls = userControl;
}
