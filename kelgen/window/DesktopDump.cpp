// DesktopDump.cpp: windows, menus and queues in words, through the system's documented calls.
#include <kelgen/window/DesktopDump.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/framework/windows/internal/WindowQuery.h>
#include <kelgen/platform/support/DesktopState.h>
#include <kelgen/window/WndInterface.h>

#include <array>
#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

namespace kelgen {

/// What stands in a window's lists of hooks.
struct detail::HookReader
{
    static void Read(const C000WndInterface& window, std::vector<std::string>& lines)
    {
        Add("before", window.m_before, lines);
        Add("body", window.m_body, lines);
        Add("after", window.m_after, lines);
    }

private:
    static void Add(const char* stage, const C000WndInterface::Hooks& hooks, std::vector<std::string>& lines)
    {
        for (int i = 0; i < hooks.GetSize(); ++i) {
            char name[200];
            const auto& object = *hooks.GetAt(i).m_pObject;
            WriteClassName(typeid(object), name, sizeof name);
            lines.push_back(std::string("hook ") + stage + ": " + name);
        }
    }
};

namespace {

constexpr UINT kLongestAnswer = 200;  // milliseconds
constexpr int kDeepestMenu = 20;

std::string Hex(unsigned long long number)
{
    char text[20];
    std::snprintf(text, sizeof text, "0x%llX", number);
    return text;
}

template <class HANDLE_TYPE>
std::string Name(HANDLE_TYPE handle)
{
    return Hex(reinterpret_cast<ULONG_PTR>(handle));
}

// UTF-8, in quotation marks; what would break the line is escaped.
std::string Quoted(const WCHAR* text, int length)
{
    std::string narrow(static_cast<std::size_t>(length) * 3, '\0');
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, length, narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(size));
    std::string quoted = "\"";
    for (const char byte : narrow) {
        if (byte == '\n')
            quoted += "\\n";
        else if (byte == '\r')
            quoted += "\\r";
        else if (byte == '\t')
            quoted += "\\t";
        else if (byte == '"' || byte == '\\')
            quoted += {'\\', byte};
        else
            quoted += byte;
    }
    return quoted + '"';
}

// The text as the system keeps it: no message is sent for it.
std::string TextOf(HWND window)
{
    std::array<WCHAR, 256> text;
    return Quoted(text.data(), ::InternalGetWindowText(window, text.data(), static_cast<int>(text.size())));
}

std::string ClassOf(HWND window)
{
    std::array<char, 256> name;
    return {name.data(), static_cast<std::size_t>(::GetClassNameA(window, name.data(), static_cast<int>(name.size())))};
}

bool IsChild(HWND window)
{
    return (::GetWindowLongA(window, GWL_STYLE) & (WS_CHILD | static_cast<LONG>(WS_POPUP))) == WS_CHILD;
}

std::string PlaceOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    POINT corner{place.left, place.top};
    if (IsChild(window))
        ::ScreenToClient(::GetParent(window), &corner);
    char text[100];
    std::snprintf(text, sizeof text, "at (%d, %d) %d x %d", static_cast<int>(corner.x), static_cast<int>(corner.y), width, height);
    return text;
}

struct State
{
    bool is;
    const char* name;
};

std::string StateOf(HWND window)
{
    const LONG style = ::GetWindowLongA(window, GWL_STYLE);
    std::string states;
    for (const State& state : {
             State{(style & static_cast<LONG>(WS_VISIBLE)) != 0, "visible"},
             State{(style & WS_DISABLED) != 0, "disabled"},
             State{(style & WS_MINIMIZE) != 0, "minimized"},
             State{(style & WS_MAXIMIZE) != 0, "maximized"},
             State{(::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0, "topmost"},
         }) {
        if (state.is)
            states += std::string(", ") + state.name;
    }
    return states;
}

// On the window's own thread, which is never waited for.
std::string FocusOf(HWND window)
{
    std::string states;
    for (const State& state : {
             State{::GetActiveWindow() == window, "active"},
             State{::GetFocus() == window, "focus"},
             State{::GetCapture() == window, "capture"},
         }) {
        if (state.is)
            states += std::string(", ") + state.name;
    }
    return states;
}

class Dump
{
public:
    explicit Dump(std::ostream& out) : m_out(out) {}

    void Write()
    {
        // The callback may run on a stack that no exception crosses.
        std::vector<HWND> windows;
        ::EnumWindows(
            [](HWND window, LPARAM list) -> BOOL {
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&windows));
        for (const HWND window : windows)
            WriteOwn(window, "window");
        for (HWND window = nullptr; (window = ::FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
            WriteOwn(window, "message-only window");
        for (const QueueState& queue : QueuesOfProcess())
            WriteQueue(queue);
    }

private:
    void Line(int depth, const std::string& text) { m_out << std::string(static_cast<std::size_t>(depth) * 2, ' ') << text << '\n'; }

    void WriteOwn(HWND window, const char* kind)
    {
        DWORD process = 0;
        ::GetWindowThreadProcessId(window, &process);
        const std::string name = ClassOf(window);
        if (process == ::GetCurrentProcessId() && name != "IME" && name != "MSCTFIME UI")
            WriteWindow(window, kind, 0);
    }

    void WriteWindow(HWND window, const char* kind, int depth)
    {
        const DWORD thread = ::GetWindowThreadProcessId(window, nullptr);
        std::string focus = thread == ::GetCurrentThreadId() ? FocusOf(window) : "";
        std::string object;
        std::vector<std::string> hooks;
        detail::VisitObjectOf(window, kLongestAnswer, [&](CWnd& attached) {
            focus = FocusOf(window);
            char name[200];
            detail::WriteClassName(typeid(attached), name, sizeof name);
            object = std::string(", object ") + name;
            if (const auto* const hooked = dynamic_cast<const C000WndInterface*>(&attached))
                detail::HookReader::Read(*hooked, hooks);
        });
        std::string line = std::string(kind) + ' ' + TextOf(window) + " of " + ClassOf(window);
        if (IsChild(window))
            line += ' ' + std::to_string(::GetDlgCtrlID(window));
        line += ' ' + PlaceOf(window) + StateOf(window) + focus + object + " [" + Name(window);
        const HWND owner = ::GetWindow(window, GW_OWNER);
        if (owner)
            line += " of " + Name(owner);
        Line(depth, line + ", thread " + std::to_string(thread) + ']');
        for (const std::string& hook : hooks)
            Line(depth + 1, hook);
        if (const HMENU menu = IsChild(window) ? nullptr : ::GetMenu(window)) {
            Line(depth + 1, "menu");
            WriteItems(menu, depth + 2, 0);
        }
        for (HWND child = ::GetWindow(window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
            WriteWindow(child, "child", depth + 1);
    }

    void WriteItems(HMENU menu, int depth, int level)
    {
        const int count = level < kDeepestMenu ? ::GetMenuItemCount(menu) : 0;
        for (int i = 0; i < count; ++i) {
            const auto position = static_cast<UINT>(i);
            std::array<WCHAR, 256> text;
            MENUITEMINFOW item{};
            item.cbSize = sizeof item;
            item.fMask = MIIM_STATE | MIIM_ID | MIIM_FTYPE | MIIM_SUBMENU | MIIM_STRING;
            item.dwTypeData = text.data();
            item.cch = static_cast<UINT>(text.size());
            if (!::GetMenuItemInfoW(menu, position, TRUE, &item))
                continue;
            if (item.fType & MFT_SEPARATOR) {
                Line(depth, "separator");
                continue;
            }
            std::string line = Quoted(text.data(), static_cast<int>(item.cch));
            if (!item.hSubMenu)
                line += ' ' + std::to_string(item.wID);
            if (item.fState & MFS_GRAYED)
                line += ", grayed";
            if (item.fState & MFS_CHECKED)
                line += ", checked";
            Line(depth, line);
            if (item.hSubMenu)
                WriteItems(item.hSubMenu, depth + 1, level + 1);
        }
    }

    void WriteQueue(const QueueState& queue)
    {
        if (queue.posted.empty() && queue.sent == 0 && queue.input == 0 && !queue.quits && queue.timers.empty() && queue.hooks.empty())
            return;
        std::string line = "thread: " + std::to_string(queue.posted.size()) + " posted";
        if (queue.sent)
            line += ", " + std::to_string(queue.sent) + " sent";
        if (queue.input)
            line += ", " + std::to_string(queue.input) + " of input";
        if (queue.quits)
            line += ", quits with " + std::to_string(queue.exitCode);
        Line(0, line + " [" + std::to_string(queue.thread) + ']');
        for (const MSG& message : queue.posted) {
            const auto lParam = static_cast<ULONG_PTR>(message.lParam);
            Line(1, "message " + Hex(message.message) + " (" + Hex(message.wParam) + ", " + Hex(lParam) + ")" + For(message.hwnd));
        }
        for (const TimerState& timer : queue.timers)
            Line(1, "timer " + std::to_string(timer.id) + " every " + std::to_string(timer.period) + " ms" + For(timer.window));
        for (const int hook : queue.hooks)
            Line(1, "hook of type " + std::to_string(hook));
    }

    static std::string For(HWND window) { return window ? " for [" + Name(window) + ']' : ""; }

    std::ostream& m_out;
};

}  // namespace

void DumpDesktop(std::ostream& out)
{
    Dump(out).Write();
}

}  // namespace kelgen
