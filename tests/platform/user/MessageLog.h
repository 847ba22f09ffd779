// MessageLog.h: windows whose messages are written down as text, so that a test compares a whole recorded sequence.
#pragma once

#include <kelgen/platform/Win32.h>

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace kelgen::test {

/// The calling thread's log: items with a blank between them.
inline std::string& ThreadLog()
{
    static thread_local std::string log;
    return log;
}

inline void Note(const char* format, ...)
{
    char text[200];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    ThreadLog() += (ThreadLog().empty() ? "" : " ") + std::string(text);
}

inline std::string TakeLog()
{
    return std::exchange(ThreadLog(), std::string());
}

inline std::string NameOf(UINT message)
{
    static const std::map<UINT, const char*> names = {{WM_PARENTNOTIFY, "parentnotify"},
                                                      {WM_MOUSEACTIVATE, "mouseactivate"},
                                                      {WM_SETCURSOR, "setcursor"},
                                                      {WM_NCHITTEST, "hittest"},
                                                      {WM_MOUSEMOVE, "move"},
                                                      {WM_LBUTTONDOWN, "ldown"},
                                                      {WM_LBUTTONUP, "lup"},
                                                      {WM_LBUTTONDBLCLK, "ldouble"},
                                                      {WM_RBUTTONDOWN, "rdown"},
                                                      {WM_RBUTTONUP, "rup"},
                                                      {WM_MBUTTONDOWN, "mdown"},
                                                      {WM_MBUTTONUP, "mup"},
                                                      {WM_XBUTTONDOWN, "xdown"},
                                                      {WM_XBUTTONUP, "xup"},
                                                      {WM_MOUSEWHEEL, "wheel"},
                                                      {WM_MOUSEHWHEEL, "hwheel"},
                                                      {WM_NCMOUSEMOVE, "ncmove"},
                                                      {WM_NCRBUTTONDOWN, "ncrdown"},
                                                      {WM_NCRBUTTONUP, "ncrup"},
                                                      {WM_NCRBUTTONDBLCLK, "ncrdouble"},
                                                      {WM_KEYDOWN, "keydown"},
                                                      {WM_KEYUP, "keyup"},
                                                      {WM_CHAR, "char"},
                                                      {WM_SYSKEYDOWN, "syskeydown"},
                                                      {WM_SYSKEYUP, "syskeyup"},
                                                      {WM_SYSCHAR, "syschar"},
                                                      {WM_TIMER, "timer"},
                                                      {WM_PAINT, "paint"},
                                                      {WM_QUIT, "quit"},
                                                      {WM_ACTIVATE, "activate"},
                                                      {WM_DESTROY, "destroy"},
                                                      {WM_NCDESTROY, "ncdestroy"},
                                                      {WM_NULL, "null"}};
    const auto found = names.find(message);
    if (found != names.end())
        return found->second;
    char text[20];
    std::snprintf(text, sizeof text, message >= WM_USER && message < 0xC000 ? "u%u" : "0x%x",
                  message >= WM_USER ? message - WM_USER : message);
    return text;
}

/// A window with a name and a procedure. Destroyed by its owner if it still lives.
class NamedWindow
{
public:
    /// Handles a message: true with @p result set, or false to leave it to DefWindowProcA.
    using Handler = std::function<bool(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)>;

    explicit NamedWindow(const char* name, DWORD style = WS_POPUP, HWND parent = nullptr, RECT place = {0, 0, 50, 50}, UINT classStyle = 0)
    {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = Procedure;
        windowClass.style = classStyle;
        windowClass.lpszClassName = classStyle ? "NamedWindowDouble" : "NamedWindow";
        RegisterClassA(&windowClass);
        m_window = CreateWindowExA(0, windowClass.lpszClassName, name, style, place.left, place.top, place.right - place.left,
                                   place.bottom - place.top, parent, nullptr, nullptr, nullptr);
        SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        const std::lock_guard lock(Lock());
        Names()[m_window] = name;
    }

    ~NamedWindow()
    {
        if (IsWindow(m_window)) {
            SetWindowLongPtrA(m_window, GWLP_USERDATA, 0);
            DestroyWindow(m_window);
        }
        const std::lock_guard lock(Lock());
        Names().erase(m_window);
    }

    NamedWindow(NamedWindow&&) = delete;

    operator HWND() const { return m_window; }

    Handler handler;

    /// The name of a window; "-" for null, "?" for an unknown one.
    static std::string Name(HWND window)
    {
        const std::lock_guard lock(Lock());
        const auto found = Names().find(window);
        return found != Names().end() ? found->second : window ? "?" : "-";
    }

private:
    static std::map<HWND, std::string>& Names()
    {
        static std::map<HWND, std::string> names;
        return names;
    }

    static std::mutex& Lock()
    {
        static std::mutex lock;
        return lock;
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* self = reinterpret_cast<NamedWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        LRESULT result = 0;
        if (self && self->handler && self->handler(message, wParam, lParam, result))
            return result;
        return DefWindowProcA(window, message, wParam, lParam);
    }

    HWND m_window;
};

/// Takes what is in the queue, without running it: "window:message" each.
inline std::string Drain(HWND window = nullptr, UINT first = 0, UINT last = 0, UINT flags = PM_REMOVE)
{
    std::string all;
    MSG message;
    for (int i = 0; i < 50 && PeekMessageA(&message, window, first, last, flags | PM_REMOVE); ++i) {
        if (message.message == WM_PAINT)
            ValidateRect(message.hwnd, nullptr);
        all += (all.empty() ? "" : " ") + NamedWindow::Name(message.hwnd) + ":" + NameOf(message.message);
    }
    return all;
}

}  // namespace kelgen::test
