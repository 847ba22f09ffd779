// Windows.h: windows for tests of the view, and what a user does with them.
#pragma once

#include <kelgen/platform/Win32.h>
#include <kelgen/platform/support/DesktopPicture.h>

#include <initializer_list>
#include <string>

namespace kelgen::test {

inline LPCWSTR Wide(const char16_t* text)
{
    return reinterpret_cast<LPCWSTR>(text);
}

/// Handles the thread's messages until none waits.
inline void Serve()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

inline HWND AddChild(HWND parent, const char16_t* type, const char16_t* text, DWORD style, int id, RECT place, DWORD exStyle = 0)
{
    return CreateWindowExW(exStyle, Wide(type), Wide(text), WS_CHILD | WS_VISIBLE | style, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, parent, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)), nullptr, nullptr);
}

/// A shown dialog without a template, destroyed with the object.
class Frame
{
public:
    explicit Frame(const char16_t* title, HMENU menu = nullptr)
        : m_window(CreateWindowExW(0, Wide(u"#32770"), Wide(title), WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_VISIBLE,
                                   100, 50, 400, 300, nullptr, menu, nullptr, nullptr))
    {
        SetForegroundWindow(m_window);
    }
    ~Frame()
    {
        if (IsWindow(m_window))
            DestroyWindow(m_window);
        Serve();
    }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    operator HWND() const { return m_window; }

private:
    HWND m_window;
};

inline void Mouse(DWORD flags)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

inline void Click(POINT point)
{
    SetCursorPos(point.x, point.y);
    Mouse(MOUSEEVENTF_LEFTDOWN);
    Mouse(MOUSEEVENTF_LEFTUP);
}

inline POINT MiddleOf(const RECT& area)
{
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

}  // namespace kelgen::test
