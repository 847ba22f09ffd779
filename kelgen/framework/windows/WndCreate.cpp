// WndCreate.cpp: creating windows: classes, the hook that attaches an object before the first message, Create and CreateEx.
#include <kelgen/framework/windows/Wnd.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/ThreadState.h>

#include <set>
#include <string>

namespace {

/// Names of window classes, kept at their places: callers may hold on to them.
LPCSTR Kept(const CString& name)
{
    struct Lock
    {
        Lock() { AfxLockGlobals(CRIT_REGCLASSLIST); }
        ~Lock() { AfxUnlockGlobals(CRIT_REGCLASSLIST); }
    };
    static std::set<std::string>& names = *new std::set<std::string>;
    const Lock lock;
    return names.emplace(name.GetString()).first->c_str();
}

/// The platform makes windows of its own for input methods along with others.
bool IsInputMethodWindow(HWND window)
{
    char name[8];
    return ::GetClassNameA(window, name, sizeof name) > 0 && _stricmp(name, "IME") == 0;
}

void AttachToNew(CWnd* object, HWND window)
{
    object->Attach(window);
    object->PreSubclassWindow();
    const auto before = reinterpret_cast<WNDPROC>(::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (before != &AfxWndProc)
        *object->GetSuperWndProcAddr() = before;
}

LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam)
{
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    const HHOOK hook = state->m_hHookOldCbtFilter;
    const HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_CREATEWND && state->m_pWndInit && !IsInputMethodWindow(window)) {
        CWnd* const object = state->m_pWndInit;
        state->m_pWndInit = nullptr;
        try {
            AttachToNew(object, window);
        } catch (CException* exception) {
            // The platform's frames lie between here and the creator: the window is refused instead.
            exception->Delete();
            object->Detach();
            state->m_pWndInit = object;
            return 1;
        }
    }
    return ::CallNextHookEx(hook, code, wParam, lParam);
}

}  // namespace

void AfxHookWindowCreate(CWnd* pWnd)
{
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    if (state->m_pWndInit == pWnd)
        return;
    if (!state->m_hHookOldCbtFilter)
        state->m_hHookOldCbtFilter = ::SetWindowsHookExA(WH_CBT, &CreationHook, nullptr, ::GetCurrentThreadId());
    if (!state->m_hHookOldCbtFilter)
        AfxThrowMemoryException();
    state->m_pWndInit = pWnd;
}

BOOL AfxUnhookWindowCreate()
{
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    if (state->m_hHookOldCbtFilter)
        ::UnhookWindowsHookEx(state->m_hHookOldCbtFilter);
    state->m_hHookOldCbtFilter = nullptr;
    const BOOL attached = !state->m_pWndInit;
    state->m_pWndInit = nullptr;
    return attached;
}

BOOL AfxRegisterClass(WNDCLASSA* lpWndClass)
{
    WNDCLASSA existing;
    if (::GetClassInfoA(lpWndClass->hInstance, lpWndClass->lpszClassName, &existing))
        return TRUE;
    // Another thread may have been quicker.
    return ::RegisterClassA(lpWndClass) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

LPCSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon)
{
    CString name;
    const HINSTANCE instance = AfxGetInstanceHandle();
    if (!hCursor && !hbrBackground && !hIcon)
        name.Format("Afx:%p:%x", static_cast<void*>(instance), nClassStyle);
    else
        name.Format("Afx:%p:%x:%p:%p:%p", static_cast<void*>(instance), nClassStyle, static_cast<void*>(hCursor),
                    static_cast<void*>(hbrBackground), static_cast<void*>(hIcon));
    WNDCLASSA windowClass{};
    windowClass.style = nClassStyle;
    windowClass.lpfnWndProc = &::DefWindowProcA;
    windowClass.hInstance = instance;
    windowClass.hIcon = hIcon;
    windowClass.hCursor = hCursor;
    windowClass.hbrBackground = hbrBackground;
    windowClass.lpszClassName = Kept(name);
    if (!AfxRegisterClass(&windowClass))
        AfxThrowResourceException();
    return windowClass.lpszClassName;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCTA& cs)
{
    if (!cs.lpszClass)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorA(nullptr, IDC_ARROW));
    return TRUE;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y, int nWidth, int nHeight,
                    HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam)
{
    CREATESTRUCTA create{};
    create.dwExStyle = dwExStyle;
    create.lpszClass = lpszClassName;
    create.lpszName = lpszWindowName;
    create.style = static_cast<LONG>(dwStyle);
    create.x = x;
    create.y = y;
    create.cx = nWidth;
    create.cy = nHeight;
    create.hwndParent = hWndParent;
    create.hMenu = nIDorHMenu;
    create.hInstance = AfxGetInstanceHandle();
    create.lpCreateParams = lpParam;
    if (!PreCreateWindow(create)) {
        PostNcDestroy();
        return FALSE;
    }
    AfxHookWindowCreate(this);
    HWND window = nullptr;
    try {
        window =
            ::CreateWindowExA(create.dwExStyle, create.lpszClass, create.lpszName, static_cast<DWORD>(create.style), create.x, create.y,
                              create.cx, create.cy, create.hwndParent, create.hMenu, create.hInstance, create.lpCreateParams);
    } catch (...) {
        AfxUnhookWindowCreate();
        throw;
    }
    // A window that existed has told its object of its end; the object may be gone.
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    return window != nullptr;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                    UINT nID, LPVOID lpParam)
{
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                    kelgen::detail::HandleOf(pParentWnd), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                  CCreateContext* pContext)
{
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID, pContext);
}
