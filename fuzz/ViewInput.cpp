// ViewInput.cpp: any lines of a page as mouse and keyboard: all or none goes in, and what a page has pressed is let go with it.
#include "Input.h"

#include <kelgen/platform/Win32.h>
#include <kelgen/view/internal/Input.h>

using namespace fuzz;
using namespace kelgen::view;

namespace {

LRESULT CALLBACK TakeAll(HWND window, UINT message, WPARAM, LPARAM)
{
    if (message == WM_PAINT)
        ValidateRect(window, nullptr);
    return message == WM_NCHITTEST ? HTCLIENT : message == WM_NCCREATE ? TRUE : 0;
}

/// A window that gets all of it.
HWND Target()
{
    WNDCLASSA type{};
    type.lpfnWndProc = TakeAll;
    type.lpszClassName = "fuzz target";
    RegisterClassA(&type);
    const HWND window =
        CreateWindowExA(0, type.lpszClassName, "", WS_POPUP | WS_VISIBLE, 0, 0, 4000, 4000, nullptr, nullptr, nullptr, nullptr);
    Require(window != nullptr);
    SetForegroundWindow(window);
    SetFocus(window);
    return window;
}

void Feed(const std::vector<INPUT>& events)
{
    std::vector<INPUT> copy = events;
    if (!copy.empty())
        Require(SendInput(static_cast<UINT>(copy.size()), copy.data(), sizeof(INPUT)) == copy.size());
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static const HWND target = Target();
    const std::string lines = Input(data, size).Rest<char>();
    const auto events = detail::ReadInput(lines);
    if (!events)
        return 0;
    Require(events->size() <= lines.size() && events->size() <= 1000);
    detail::HeldInput held;
    held.Note(*events);
    Feed(*events);
    Feed(held.LetGo());
    Require(held.LetGo().empty());
    for (int key = 1; key < 255; ++key)
        Require(GetAsyncKeyState(key) >= 0);
    ReleaseCapture();
    Require(IsWindow(target));
    return 0;
}
