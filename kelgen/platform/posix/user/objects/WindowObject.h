// WindowObject.h: a window's state, finding it by its handle, and calling its procedure.
#pragma once

#include <kelgen/platform/posix/user/api/Messages.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>
#include <kelgen/platform/posix/user/objects/ScrollBar.h>

#include <array>
#include <atomic>
#include <bit>
#include <memory>
#include <string>
#include <vector>

namespace kelgen {
struct ControlPicture;
}

namespace kelgen::posix::user {

class ShapeList;
struct ThreadQueue;
struct WindowClass;

/// A window procedure and the kind of text that it takes. There is one for each pair, made at its first use and never freed.
struct Procedure
{
    WNDPROC call;
    bool wide;
    DWORD index;  // the cookie's, see ProcedureTable.h
};

/// A value that a host keeps with a window. An atom's name is "#number".
struct WindowProperty
{
    std::u16string name;
    std::u16string key;  // the name in lower case
    HANDLE value = nullptr;
};

struct Window;

/// What a control's parent answered to a WM_CTLCOLOR message.
struct ControlColors
{
    bool hasText = false;
    bool hasGround = false;
    COLORREF text = 0;
    COLORREF ground = 0;
};

/// The state of one of the system's own classes.
struct ControlData
{
    virtual ~ControlData() = default;
    /// Adds what the control shows to @p picture. Threads: the window's.
    virtual void Show(const Window&, ControlPicture&) const {}

    std::unique_ptr<ControlColors> colors;  // null for the usual ones
};

/// One window. It belongs to the thread that created it, which alone destroys it, and is freed when its handle is gone and no call
/// of its procedure is in progress.
/// Threads: the links are read and written under the desktop lock. Everything else is written by the window's thread under the
/// desktop lock, and read by that thread without it, by others under it. The procedure is atomic: any thread may change it.
struct Window
{
    HWND handle = nullptr;
    DWORD thread = 0;              // 0 for the two roots
    ThreadQueue* queue = nullptr;  // null for the two roots
    std::shared_ptr<WindowClass> windowClass;
    std::atomic<const Procedure*> procedure{nullptr};
    bool createdWide = false;

    // Links, under the desktop lock. Children are listed from the top of the z-order to the bottom.
    Window* parent = nullptr;
    Window* firstChild = nullptr;
    Window* lastChild = nullptr;
    std::atomic<unsigned> children{0};  // how many; read by the window's thread without the lock
    Window* above = nullptr;
    Window* below = nullptr;
    HWND owner = nullptr;
    unsigned owned = 0;  // how many windows it owns
    unsigned walk = 0;   // the last walk that came by, under the desktop lock

    LONG style = 0;
    LONG exStyle = 0;
    RECT window{};  // in screen coordinates
    RECT client{};  // in screen coordinates
    RECT normal{};  // the placement's restored rectangle, in the parent's client coordinates
    POINT minimizedAt{-1, -1};
    POINT maximizedAt{-1, -1};
    bool restoreToMaximized = false;

    std::u16string text;
    UINT_PTR id = 0;  // a child's id, another window's HMENU
    HMENU systemMenu = nullptr;
    HINSTANCE instance = nullptr;
    LONG_PTR userData = 0;
    std::vector<BYTE> extra;
    HICON bigIcon = nullptr;
    HICON smallIcon = nullptr;
    HICON madeSmallIcon = nullptr;  // of the large one, at the first question for ICON_SMALL2
    HWND lastActivePopup = nullptr;
    DWORD helpId = 0;
    std::vector<WindowProperty> properties;  // in the order of their setting
    std::shared_ptr<void> dialog;            // the dialog manager's state
    std::shared_ptr<ControlData> control;
    std::unique_ptr<ScrollBars> scrollBars;  // null until one is set or used

    // What is to be painted: nothing, or the bounds in client coordinates.
    bool needsPaint = false;
    bool needsErase = false;
    bool internalPaint = false;
    RECT update{};
    std::shared_ptr<ShapeList> drawing;  // null until something is drawn; under the desktop lock

    bool owesSize = false;  // WM_SIZE and WM_MOVE come when it is first shown
    bool hiddenByOwner = false;
    bool beingDestroyed = false;
    bool destroyed = false;  // the handle is gone; freed at the last release
    unsigned uses = 0;       // calls in progress, the window's own thread only

    bool IsChild() const { return (style & (WS_CHILD | static_cast<LONG>(WS_POPUP))) == WS_CHILD; }
    bool IsDesktopOrMessageRoot() const { return thread == 0; }
};

/// An entry of the table of handles. Written under the desktop lock. Only the owner of an entry sees its own thread id in it, so it may
/// read without the lock.
struct WindowEntry
{
    std::atomic<DWORD> handle{0};
    std::atomic<DWORD> thread{0};
    std::atomic<Window*> window{nullptr};
    WORD generation = 0;
};

constexpr DWORD kFirstWindowIndex = 0x20;
constexpr DWORD kWindowEntries = (0x10000 - kFirstWindowIndex) / 2;
extern std::array<WindowEntry, kWindowEntries> windowEntries;

/// The calling thread's id without a system call; 0 until OwnWindow has asked for it.
extern constinit thread_local DWORD ownThread;

/// OwnWindow for a thread's first question, and for handles that are not as they were given out.
Window* OwnWindowByOtherHandle(HWND handle);

/// The calling thread's window; null for a stale or forged handle and for another thread's window. Takes no lock. Every message asks.
inline Window* OwnWindow(HWND handle)
{
    const auto value = reinterpret_cast<ULONG_PTR>(handle);
    // Odd numbers and those below the first become too large.
    const auto index = std::rotr(static_cast<WORD>(value - kFirstWindowIndex), 1);
    if (index < kWindowEntries) [[likely]] {
        const WindowEntry& entry = windowEntries[index];
        const DWORD thread = entry.thread.load(std::memory_order_relaxed);
        if (entry.handle.load(std::memory_order_relaxed) == value && thread == ownThread && thread != 0) [[likely]]
            return entry.window.load(std::memory_order_relaxed);
    }
    return OwnWindowByOtherHandle(handle);
}

/// Any thread's window, even the two roots; null for a stale or forged handle. The desktop lock is held by the caller, and the
/// window stays only while it is.
Window* FindWindowLocked(HWND handle);

/// Keeps a window of the calling thread from being freed.
class WindowUse
{
public:
    explicit WindowUse(Window& window) : m_window(window) { ++window.uses; }
    ~WindowUse()
    {
        if (--m_window.uses == 0 && m_window.destroyed)
            Delete(m_window);
    }
    WindowUse(const WindowUse&) = delete;
    WindowUse& operator=(const WindowUse&) = delete;

private:
    static void Delete(Window& window);

    Window& m_window;
};

}  // namespace kelgen::posix::user
