// CreateWindow.cpp: making windows, with the messages in their order.
#include <kelgen/platform/posix/user/api/WindowCalls.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/modules/ModuleTable.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/api/Menus.h>
#include <kelgen/platform/posix/user/messages/HookChains.h>
#include <kelgen/platform/posix/user/messages/Sends.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>
#include <kelgen/platform/posix/user/windows/Borders.h>
#include <kelgen/platform/posix/user/windows/Destruction.h>
#include <kelgen/platform/posix/user/windows/Positions.h>

#include <algorithm>
#include <exception>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr LONG kPopup = static_cast<LONG>(WS_POPUP);

template <class Char>
struct CreateTypes;
template <>
struct CreateTypes<CHAR>
{
    using Struct = CREATESTRUCTA;
    using Hook = CBT_CREATEWNDA;
};
template <>
struct CreateTypes<WCHAR>
{
    using Struct = CREATESTRUCTW;
    using Hook = CBT_CREATEWNDW;
};

// Where the new window belongs; the last error is set when it can be nowhere.
struct Surroundings
{
    HWND parent = nullptr;
    HWND owner = nullptr;
};

bool FindSurroundings(LONG style, HWND parent, Surroundings& result)
{
    const bool child = (style & WS_CHILD) && !(style & kPopup);
    HWND root = DesktopRoot().handle;
    HWND messages = MessageRoot().handle;
    DesktopGuard guard;
    if (parent == HWND_MESSAGE || parent == messages) {
        result.parent = messages;
        return true;
    }
    if (!parent) {
        if (child)
            return Fail(ERROR_TLW_WITH_WSCHILD, false);
        result.parent = root;
        return true;
    }
    Window* found = FindWindowLocked(parent);
    if (!found || found->beingDestroyed)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, false);
    result.parent = child ? found->handle : root;
    if (!child && !found->IsDesktopOrMessageRoot())
        result.owner = TopLevelOf(*found).handle;
    return true;
}

// By contract only overlapped windows have default places and sizes; others are placed by whoever makes them.
void ResolveDefaults(LONG style, int& x, int& y, int& width, int& height)
{
    const bool overlapped = !(style & (WS_CHILD | kPopup));
    if (x == CW_USEDEFAULT)
        x = y = 0;
    if (width == CW_USEDEFAULT) {
        width = overlapped ? kScreenWidth * 3 / 4 : 0;
        height = overlapped ? kScreenHeight * 3 / 4 : 0;
    }
    if (height == CW_USEDEFAULT)
        height = overlapped ? kScreenHeight * 3 / 4 : 0;
    if (y == CW_USEDEFAULT)
        y = 0;
}

bool IsMdiClient(HWND window)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    return found && found->windowClass == FindSystemClass(u"MDIClient");
}

HMENU ClassMenu(const WindowClass& from, HINSTANCE module)
{
    if (from.menuNumber != 0)
        return LoadMenuW(module, reinterpret_cast<LPCWSTR>(from.menuNumber));
    return from.menuName.empty() ? nullptr : LoadMenuW(module, reinterpret_cast<LPCWSTR>(from.menuName.c_str()));
}

// The window as an object in the tree, not yet known to its procedure; null with the last error set.
Window* MakeObject(const std::shared_ptr<WindowClass>& windowClass, const Surroundings& around, LONG style, LONG exStyle, bool wide)
{
    auto window = std::make_unique<Window>();
    ThreadQueue& queue = CurrentQueue();
    window->thread = queue.thread;
    window->queue = &queue;
    window->windowClass = windowClass;
    window->procedure = windowClass->procedure;
    window->createdWide = wide;
    window->style = style;
    window->exStyle = exStyle;
    window->extra.resize(static_cast<std::size_t>(windowClass->windowExtra));

    DesktopGuard guard;
    Window* parent = FindWindowLocked(around.parent);
    if (!parent)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, static_cast<Window*>(nullptr));
    if (!InsertWindow(*window))
        return Fail(ERROR_NOT_ENOUGH_MEMORY, static_cast<Window*>(nullptr));
    SetOwner(*window, around.owner);
    ++windowClass->windows;
    LinkWindow(*window, *parent, parent->IsDesktopOrMessageRoot() ? Place::Top : Place::Bottom);
    return window.release();
}

template <class Struct>
LRESULT SendCreate(Window& window, UINT message, Struct& create, bool wide)
{
    return SendToOwn(window, message, 0, reinterpret_cast<LPARAM>(&create), wide);
}

// Gives the window its first place; the client area is asked for in screen coordinates.
void Place(Window& window, int x, int y, int width, int height)
{
    DesktopGuard guard;
    const POINT origin = ParentOrigin(window);
    window.normal = {x, y, x + width, y + height};
    window.window = {origin.x + x, origin.y + y, origin.x + x + width, origin.y + y + height};
    window.client = window.window;
}

void AskFirstClient(Window& window)
{
    RECT client = window.window;
    Send(window, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&client));
    DesktopGuard guard;
    window.client = client;
}

// False when the procedure or a hook does not want the window, or has destroyed it.
template <class Struct>
bool Introduce(Window& window, Struct& create, bool wide)
{
    if (!SendCreate(window, WM_NCCREATE, create, wide) || window.destroyed)
        return false;
    AskFirstClient(window);
    if (window.destroyed)
        return false;
    return SendCreate(window, WM_CREATE, create, wide) != -1 && !window.destroyed;
}

// Ends a window whose creation an exception has ended.
class Unfinished
{
public:
    explicit Unfinished(Window& window) : m_window(window), m_exceptions(std::uncaught_exceptions()) {}
    ~Unfinished()
    {
        if (std::uncaught_exceptions() > m_exceptions)
            AbandonAfterException(m_window);
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

private:
    Window& m_window;
    int m_exceptions;
};

template <class Char>
HWND MakeWindow(const Char* className, typename CreateTypes<Char>::Struct create)
{
    constexpr bool kWide = sizeof(Char) == 2;
    const HINSTANCE module = create.hInstance ? create.hInstance : ProgramModule();
    std::shared_ptr<WindowClass> windowClass;
    {
        DesktopGuard guard;
        windowClass = FindClass(NameOfClass(className), module);
    }
    if (!windowClass)
        return Fail(ERROR_CLASS_DOES_NOT_EXIST, static_cast<HWND>(nullptr));
    Surroundings around;
    if (!FindSurroundings(create.style, create.hwndParent, around))
        return nullptr;
    if ((create.dwExStyle & WS_EX_MDICHILD) && !IsMdiClient(create.hwndParent))
        return nullptr;
    const bool isChild = (create.style & (WS_CHILD | kPopup)) == WS_CHILD;
    if (!isChild && create.hMenu && !IsMenu(create.hMenu))
        return Fail(ERROR_INVALID_MENU_HANDLE, static_cast<HWND>(nullptr));

    ResolveDefaults(create.style, create.x, create.y, create.cx, create.cy);
    create.hwndParent = create.hwndParent == HWND_MESSAGE ? around.parent : create.hwndParent;
    create.dwExStyle = static_cast<DWORD>(WithWindowEdge(create.style, static_cast<LONG>(create.dwExStyle)));
    // The window is shown at the end, and gets its state before that.
    const LONG start = create.style & (WS_MINIMIZE | WS_MAXIMIZE);
    LONG style = create.style & ~WS_VISIBLE;
    if (!isChild)
        style |= WS_CLIPSIBLINGS;
    const bool overlapped = !(create.style & (WS_CHILD | kPopup));
    if (overlapped)
        style |= WS_CAPTION;
    const LONG exStyle = WithWindowEdge(style, static_cast<LONG>(create.dwExStyle));

    Window* window = MakeObject(windowClass, around, style, exStyle, kWide);
    if (!window)
        return nullptr;
    const WindowUse use(*window);
    const Unfinished unfinished(*window);
    const HWND handle = window->handle;
    window->instance = create.hInstance;
    if (HasHooks(HookChains::BitOf(WH_CBT))) {
        typename CreateTypes<Char>::Hook about{&create, HWND_TOP};
        if (CallHooks(WH_CBT, HCBT_CREATEWND, AsFirstParameter(handle), reinterpret_cast<LPARAM>(&about))) {
            UnlistWindow(*window);
            return nullptr;
        }
    }
    if (window->destroyed)
        return nullptr;
    if (isChild)
        window->id = reinterpret_cast<UINT_PTR>(create.hMenu);
    else
        window->id = reinterpret_cast<UINT_PTR>(create.hMenu ? create.hMenu : ClassMenu(*windowClass, module));

    create.cx = std::max(create.cx, 0);
    create.cy = std::max(create.cy, 0);
    int width = create.cx;
    int height = create.cy;
    if (HasSizeLimits(create.style)) {
        Place(*window, create.x, create.y, width, height);
        const MINMAXINFO limits = SizeLimits(*window);
        width = std::max<int>(limits.ptMinTrackSize.x, std::min<int>(width, limits.ptMaxTrackSize.x));
        height = std::max<int>(limits.ptMinTrackSize.y, std::min<int>(height, limits.ptMaxTrackSize.y));
    }
    Place(*window, create.x, create.y, width, height);
    if (window->destroyed)
        return nullptr;
    if (!Introduce(*window, create, kWide)) {
        const bool lacksMemory = GetLastError() == ERROR_NOT_ENOUGH_MEMORY;
        AbandonCreation(*window);
        return Fail(lacksMemory ? ERROR_NOT_ENOUGH_MEMORY : ERROR_INVALID_WINDOW_HANDLE, static_cast<HWND>(nullptr));
    }

    window->owesSize = overlapped;
    if (!overlapped && !SendSizeAndMove(*window))
        return nullptr;
    ApplyStartState(*window, start);
    if (!window->destroyed)
        SendParentNotify(*window, WM_CREATE);
    if (!window->destroyed && (create.style & WS_VISIBLE))
        Show(*window, SW_SHOW);
    return window->destroyed ? nullptr : handle;
}

}  // namespace

HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, int x, int y, int width, int height, HWND parent,
                     HMENU menu, HINSTANCE module, LPVOID parameter)
{
    return OrNoMemory(HWND{}, [&] {
        return MakeWindow<CHAR>(className,
                                {parameter, module, menu, parent, height, width, y, x, static_cast<LONG>(style), name, className, exStyle});
    });
}

HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR name, DWORD style, int x, int y, int width, int height, HWND parent,
                     HMENU menu, HINSTANCE module, LPVOID parameter)
{
    return OrNoMemory(HWND{}, [&] {
        return MakeWindow<WCHAR>(
            className, {parameter, module, menu, parent, height, width, y, x, static_cast<LONG>(style), name, className, exStyle});
    });
}
