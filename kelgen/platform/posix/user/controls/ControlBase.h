// ControlBase.h: what the system's own controls share.
#pragma once

#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/DrawingObjects.h>
#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>
#include <kelgen/platform/support/DesktopPicture.h>

#include <memory>

namespace kelgen::posix::user {

// The most of a control that a picture of it has.
constexpr std::size_t kMostShownRows = 500;
constexpr std::size_t kMostShownColumns = 200;
constexpr std::size_t kLongestShownText = 1000;

/// The state of a control of the calling thread, made at first; null for no window. Holding it keeps it while messages are sent,
/// in which the control may go.
template <class State>
std::shared_ptr<State> ControlState(HWND control)
{
    Window* window = OwnWindow(control);
    if (!window)
        return nullptr;
    if (!window->control)
        window->control = std::make_shared<State>();
    return std::static_pointer_cast<State>(window->control);
}

/// Sends WM_COMMAND with @p code to the control's parent.
void NotifyParent(HWND control, UINT code);

DWORD StyleOf(HWND window);

/// Replaces the bits @p mask of the style, without messages.
void ChangeStyle(HWND window, DWORD mask, DWORD bits);

/// Whether a point of a mouse message lies in the control's client area.
bool IsInClient(HWND control, LPARAM point);

/// Makes the control's vertical bar, if it has one, show that of @p count rows @p page are in view from @p first on.
void SetRowBar(HWND control, int count, int page, int first);

/// The same of its horizontal bar, in pixels.
void SetColumnBar(HWND control, int width, int page, int left);

/// The first row in view after WM_VSCROLL, which was @p first.
int ScrolledRow(HWND control, WPARAM code, int count, int page, int first);

/// The first pixel in view after WM_HSCROLL, which was @p left.
int ScrolledColumn(HWND control, WPARAM code, int width, int page, int left);

/// WM_PAINT of a control that the view draws: takes what is to be painted, and asks the parent for the colours (a WM_CTLCOLOR message).
LRESULT PaintControl(HWND control, UINT colorMessage);

/// WM_PAINT of a control that its owner draws: calls @p draw with the context, which has the control's font.
template <class Draw>
LRESULT PaintByOwner(HWND control, HFONT font, Draw draw)
{
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(control, &paint);
    if (font)
        SelectObject(context, font);
    draw(context, paint.rcPaint);
    EndPaint(control, &paint);
    return 0;
}

// The window procedures of the classes; they take wide text.
LRESULT CALLBACK ButtonProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK EditProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ListBoxProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ScrollBarProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ListViewProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ComboBoxProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
/// For the list of a combo box, which hears of selections instead of the parent.
LRESULT CALLBACK ComboListProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace kelgen::posix::user
