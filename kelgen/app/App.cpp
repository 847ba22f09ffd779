// App.cpp: start-up, frames, idle work, messages to threads.
#include <kelgen/app/App.h>

#include <kelgen/framework/base/internal/LinkTable.h>
#include <kelgen/framework/files/File.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/Wnd.h>

namespace {

using ListenerTable = kelgen::detail::LinkTable<CTrackable, CKelGenApp>;

/// Opens when there is an application object.
CEvent& StartGate()
{
    static CEvent gate(FALSE, TRUE);
    return gate;
}

/// Before the program runs, whoever constructs its objects counts as the main thread.
[[maybe_unused]] bool IsMainThread(const CWinThread& app)
{
    return app.m_nThreadID == 0 || app.m_nThreadID == ::GetCurrentThreadId();
}

}  // namespace

CTrackable::~CTrackable()
{
    while (CKelGenApp* const app = ListenerTable::Only().Take(this))
        app->ForgetFunctions(this);
}

const UINT CKelGenApp::APPM_LANGUAGE;
const UINT CKelGenApp::WPARAM_LANGUAGE_UPDATE;

IMPLEMENT_DYNAMIC(CKelGenApp, CWinApp)

BEGIN_MESSAGE_MAP(CKelGenApp, CWinApp)
ON_THREAD_MESSAGE(APPM_LANGUAGE, &CKelGenApp::OnAppLanguage)
END_MESSAGE_MAP()

CKelGenApp* gen::GetApp()
{
    return dynamic_cast<CKelGenApp*>(AfxGetModuleState()->m_pCurrentWinApp);
}

gen::CAppIntegerMap& gen::GetAppIntegerMap()
{
    CKelGenApp* const app = GetApp();
    if (!app)
        AfxThrowInvalidArgException();
    return app->GetIntegerMap();
}

CKelGenApp::CKelGenApp(const char* appName) : CWinApp(appName)
{
    StartGate().SetEvent();
}

CKelGenApp::~CKelGenApp()
{
    ListenerTable::Only().Remove(this);
}

BOOL CKelGenApp::InitInstance()
{
    if (!CWinApp::InitInstance())
        return FALSE;
    ParseCommandLine(m_cmdInfo);
    if (!CreateMessageWindow())
        return FALSE;

    constexpr DWORD kRoom = 521;
    char module[kRoom] = "";
    const DWORD moduleLength = ::GetModuleFileNameA(nullptr, module, kRoom);
    m_strModuleFilePath = CString(module, static_cast<int>(moduleLength < kRoom ? moduleLength : kRoom - 1));
    char path[kRoom] = "";
    char* filePart = nullptr;
    const DWORD length = ::GetFullPathNameA(m_strModuleFilePath, kRoom, path, &filePart);
    m_strModuleFolder = length > 0 && length < kRoom && filePart ? CString(path, static_cast<int>(filePart - path)) : CString();
    return InitAppInstance();
}

int CKelGenApp::ExitInstance()
{
    return CWinApp::ExitInstance();
}

BOOL CKelGenApp::OnIdle(LONG lCount)
{
    ForEachFrame([this](CWnd* frame) {
        if (frame == m_pMainWnd || !frame->m_hWnd || !frame->IsWindowVisible())
            return;
        const HWND handle = frame->m_hWnd;
        AfxCallWndProc(frame, handle, WM_IDLEUPDATECMDUI, TRUE, 0);
        CWnd::SendMessageToDescendants(handle, WM_IDLEUPDATECMDUI, TRUE, 0, TRUE, TRUE);
    });
    return CWinApp::OnIdle(lCount);
}

BOOL CKelGenApp::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->hwnd)
        return CWinApp::PreTranslateMessage(pMsg);

    CThreadForward forward;
    m_forwardsLock.Lock();
    const BOOL isForwarded = m_forwards.Lookup(pMsg->message, forward);
    m_forwardsLock.Unlock();
    if (isForwarded) {
        ::PostThreadMessageA(forward.m_nThreadID, forward.m_nMessage, pMsg->wParam, pMsg->lParam);
        return TRUE;
    }
    CFunction function;
    if (m_functions.Lookup(pMsg->message, function) && function.m_pObject && function.m_pfn) {
        (function.m_pObject->*function.m_pfn)(static_cast<UINT>(pMsg->wParam), pMsg->lParam);
        return TRUE;
    }
    return CWinApp::PreTranslateMessage(pMsg);
}

/// Calls @p visit with each frame; handlers may change the list at any time.
template <class VISIT>
void CKelGenApp::ForEachFrame(VISIT visit)
{
    kelgen::detail::ListWalk<Frames> walk(m_frameWalks, GetWndArray());
    walk.Until([&](CWnd* frame) {
        if (frame)
            visit(frame);
        return false;
    });
}

/// The object has ended; a later one may lie at its place.
void CKelGenApp::ForgetFrame(const CWnd* pFrame)
{
    m_frameWalks.Forget([&](const CWnd* frame) { return frame == pFrame; });
}

void CKelGenApp::AddFrame(CWnd* pFrame)
{
    GetWndArray().AddUnique(pFrame);
}

void CKelGenApp::RemoveFrame(CWnd* pFrame)
{
    Frames& frames = GetWndArray();
    for (int i = frames.GetUpperBound(); i >= 0; --i) {
        if (frames[i] == pFrame)
            m_frameWalks.Remove(frames, i);
    }
    if (m_pMainWnd == pFrame && !frames.IsEmpty())
        m_pMainWnd = frames[0];
}

int CKelGenApp::GetVisibleFrameCount() const
{
    return GetVisibleFrameCountExcept(nullptr);
}

int CKelGenApp::GetVisibleFrameCountExcept(const CWnd* pExcept) const
{
    const Frames& frames = GetWndArray();
    int count = 0;
    for (int i = 0; i < frames.GetSize(); ++i) {
        if (frames[i] && frames[i] != pExcept && ::IsWindowVisible(frames[i]->m_hWnd))
            ++count;
    }
    return count;
}

void CKelGenApp::SendMessageToWindows(UINT message, WPARAM wParam, LPARAM lParam)
{
    ForEachFrame([&](const CWnd* frame) {
        const HWND handle = frame->m_hWnd;
        if (!::IsWindow(handle))
            return;
        ::SendMessageA(handle, message, wParam, lParam);
        CWnd::SendMessageToDescendants(handle, message, wParam, lParam, TRUE, FALSE);
    });
}

void CKelGenApp::OnAppLanguage(UINT wParam, LPARAM lParam)
{
    SendMessageToWindows(APPM_LANGUAGE, wParam, lParam);
}

void CKelGenApp::AddFunction(UINT message, CTrackable* object, Function fn)
{
    CFunction function;
    function.m_pObject = object;
    function.m_pfn = fn;
    // What is left of an object that has ended is its base.
    KELGEN_CHECK(!object || typeid(*object) != typeid(CTrackable), "CKelGenApp::AddFunction: the object for message %u has been destroyed",
                 message);
    KELGEN_CHECK(IsMainThread(*this), "CKelGenApp::AddFunction: the function for message %u is set on another thread than the main one",
                 message);
    m_functions.SetAt(message, function);
    if (object)
        ListenerTable::Only().Add(object, this);
}

/// @p object has ended; a later one may lie at its place.
void CKelGenApp::ForgetFunctions(const CTrackable* object)
{
    KELGEN_CHECK(IsMainThread(*this), "CTrackable: destroyed on another thread than the main one, with a function set");
    POSITION position = m_functions.GetStartPosition();
    while (position) {
        UINT message = 0;
        CFunction function;
        m_functions.GetNextAssoc(position, message, function);
        if (function.m_pObject == object)
            m_functions.RemoveKey(message);
    }
}

void CKelGenApp::ForwardMessageToThread(DWORD threadId, UINT message)
{
    StartGate().Lock();
    CThreadForward forward;
    forward.m_nThreadID = threadId;
    forward.m_nMessage = message;
    m_forwardsLock.Lock();
    m_forwards.SetAt(message, forward);
    m_forwardsLock.Unlock();
}

bool CKelGenApp::CreateFileFromRawResource(UINT id, const char* type, const char* path)
{
    const LPCSTR name = MAKEINTRESOURCEA(id);
    const HINSTANCE module = AfxFindResourceHandle(name, type);
    const HRSRC resource = ::FindResourceA(module, name, type);
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    if (!data)
        return false;
    const DWORD size = ::SizeofResource(module, resource);
    const void* const bytes = ::LockResource(data);
    try {
        CFile file(path, CFile::modeCreate | CFile::modeWrite);
        file.Write(bytes, size);
        file.Flush();
        file.Close();
    } catch (CFileException* e) {
        e->Delete();
    }
    return true;
}

LRESULT CKelGenApp::GetPaintMsgProc(int, UINT, LPARAM)
{
    return 0;
}

bool CKelGenApp::OnMessageWindowMessage(UINT, WPARAM, LPARAM, LRESULT&)
{
    return false;
}
