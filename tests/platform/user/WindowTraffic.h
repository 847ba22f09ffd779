// WindowTraffic.h: windows that write down what they are sent, nested calls marked with ">", so that whole sequences are compared.
#pragma once

#include <kelgen/platform/Win32.h>

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <utility>

namespace kelgen::test {

/// Windows of the calling thread by name, and their traffic. One at a time.
class Traffic
{
public:
    /// Called with each message before DefWindowProcA: true when it has handled it and set @p result.
    using Handler = std::function<bool(const std::string& name, HWND window, UINT message, LRESULT& result)>;

    Traffic()
    {
        Current() = this;
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "Traffic";
        RegisterClassA(&windowClass);
    }

    ~Traffic()
    {
        m_quiet = true;
        for (const auto& [window, name] : m_names)
            DestroyWindow(window);
        Current() = nullptr;
    }

    Traffic(Traffic&&) = delete;

    HWND Make(const char* name, DWORD style, RECT place, HWND parent = nullptr, int id = 0, DWORD exStyle = 0)
    {
        m_making = name;
        const HWND window = CreateWindowExA(exStyle, "Traffic", name, style, place.left, place.top, place.right, place.bottom, parent,
                                            reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
        m_making.clear();
        return window;
    }

    std::string Take() { return std::exchange(m_log, std::string()); }

    std::string Name(HWND window) const
    {
        const auto found = m_names.find(window);
        return found != m_names.end() ? found->second : window ? "?" : "-";
    }

    Handler handler;

private:
    static Traffic*& Current()
    {
        static Traffic* current = nullptr;
        return current;
    }

    static std::string Text(const char* format, ...)
    {
        char text[160];
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        return text;
    }

    // The message with what is the same on every screen; empty for what comes by drawing and by the mouse that happens to be there.
    std::string Describe(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const
    {
        const auto point = [lParam] { return Text("%d,%d", static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))); };
        const auto other = [this](auto handle) { return Name(reinterpret_cast<HWND>(handle)); };
        switch (message) {
        case WM_GETMINMAXINFO:
            return "minmax";
        case WM_NCCREATE:
            return "nccreate";
        case WM_CREATE:
            return "create";
        case WM_NCCALCSIZE:
            return Text("nccalcsize %d", static_cast<int>(wParam));
        case WM_SIZE:
            return Text("size %d ", static_cast<int>(wParam)) + (wParam == SIZE_MAXIMIZED ? "max" : point());
        case WM_MOVE:
            return "move " + point();
        case WM_SHOWWINDOW:
            return Text("show %d %d", static_cast<int>(wParam), static_cast<int>(lParam));
        case WM_WINDOWPOSCHANGING:
        case WM_WINDOWPOSCHANGED: {
            const auto& position = *reinterpret_cast<const WINDOWPOS*>(lParam);
            const bool zoomed = IsZoomed(window) != FALSE;
            return (message == WM_WINDOWPOSCHANGING ? "changing " : "changed ") +
                   Text("%04x %d,%d ", position.flags, position.x, position.y) + (zoomed ? "max" : Text("%dx%d", position.cx, position.cy));
        }
        case WM_ACTIVATEAPP:
            return Text("activateapp %d", static_cast<int>(wParam));
        case WM_NCACTIVATE:
            return Text("ncactivate %d", static_cast<int>(wParam));
        case WM_ACTIVATE:
            return Text("activate %d ", LOWORD(wParam)) + other(lParam);
        case WM_SETFOCUS:
            return "setfocus " + other(wParam);
        case WM_KILLFOCUS:
            return "killfocus " + other(wParam);
        case WM_CAPTURECHANGED:
            return "capturechanged " + other(lParam);
        case WM_PARENTNOTIFY:
            return Text("parentnotify %d id %d ", LOWORD(wParam), HIWORD(wParam)) + other(lParam);
        case WM_STYLECHANGING:
        case WM_STYLECHANGED: {
            const auto& styles = *reinterpret_cast<const STYLESTRUCT*>(lParam);
            return (message == WM_STYLECHANGING ? "stylechanging " : "stylechanged ") +
                   Text("%08x>%08x", static_cast<unsigned>(styles.styleOld), static_cast<unsigned>(styles.styleNew));
        }
        case WM_ENABLE:
            return Text("enable %d", static_cast<int>(wParam));
        case WM_CANCELMODE:
            return "cancelmode";
        case WM_CHILDACTIVATE:
            return "childactivate";
        case WM_QUERYOPEN:
            return "queryopen";
        case WM_SYSCOMMAND:
            return Text("syscommand %04x", static_cast<unsigned>(wParam));
        case WM_CLOSE:
            return "close";
        case WM_DESTROY:
            return "destroy";
        case WM_NCDESTROY:
            return "ncdestroy";
        case WM_QUERYNEWPALETTE:
            return "palette";
        default:
            return message >= WM_USER && message < 0xC000 ? Text("user %u", message - WM_USER) : "";
        }
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        Traffic* self = Current();
        if (!self)
            return DefWindowProcA(window, message, wParam, lParam);
        if (!self->m_making.empty() && !self->m_names.count(window))
            self->m_names[window] = std::exchange(self->m_making, std::string());
        const std::string name = self->Name(window);
        const std::string text = self->m_quiet ? "" : self->Describe(window, message, wParam, lParam);
        if (!text.empty())
            self->m_log += (self->m_log.empty() ? "" : "; ") + std::string(self->m_depth, '>') + name + " " + text;
        ++self->m_depth;
        LRESULT result = 0;
        if (!self->handler || !self->handler(name, window, message, result))
            result = DefWindowProcA(window, message, wParam, lParam);
        --self->m_depth;
        return result;
    }

    std::string m_log;
    std::size_t m_depth = 0;
    bool m_quiet = false;
    std::string m_making;
    std::map<HWND, std::string> m_names;
};

}  // namespace kelgen::test
