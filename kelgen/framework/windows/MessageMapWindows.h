// MessageMapWindows.h: message map entries of windows' messages: ON_WM_SIZE() ties WM_SIZE to the class's OnSize.
#pragma once

#include <kelgen/framework/base/Geometry.h>
#include <kelgen/framework/program/MessageMap.h>
#include <kelgen/framework/windows/DeviceContext.h>
#include <kelgen/framework/windows/Menu.h>

#include <tuple>

class CWnd;

namespace kelgen::detail {

/// CWnd::FromHandle.
KELGEN_FRAMEWORK_API CWnd* WindowOf(HWND handle);

// What handlers take, from wParam and lParam.

inline UINT LowWord(DWORD_PTR value)
{
    return LOWORD(value);
}

inline UINT HighWord(DWORD_PTR value)
{
    return HIWORD(value);
}

inline DWORD_PTR Bits(LPARAM value)
{
    return static_cast<DWORD_PTR>(value);
}

template <class Handle>
Handle AsHandle(WPARAM value)
{
    return reinterpret_cast<Handle>(value);
}

template <class Handle>
Handle AsHandle(LPARAM value)
{
    return reinterpret_cast<Handle>(value);
}

inline auto Nothing(const MappedMessage&)
{
    return std::tuple<>();
}

inline auto WideParameter(const MappedMessage& m)
{
    return std::tuple(m.wParam);
}

inline auto BothParameters(const MappedMessage& m)
{
    return std::tuple(m.wParam, m.lParam);
}

/// wParam and the halves of lParam.
inline auto WithHalves(const MappedMessage& m)
{
    return std::tuple(m.wParam, LowWord(Bits(m.lParam)), HighWord(Bits(m.lParam)));
}

inline auto SignedHalves(const MappedMessage& m)
{
    const CPoint point(m.lParam);
    return std::tuple(static_cast<int>(point.x), static_cast<int>(point.y));
}

inline auto WithPoint(const MappedMessage& m)
{
    return std::tuple(m.wParam, CPoint(m.lParam));
}

inline auto PointOnly(const MappedMessage& m)
{
    return std::tuple(CPoint(m.lParam));
}

inline auto Wheel(const MappedMessage& m)
{
    return std::tuple(LowWord(m.wParam), static_cast<short>(HighWord(m.wParam)), CPoint(m.lParam));
}

inline auto WindowInWide(const MappedMessage& m)
{
    return std::tuple(WindowOf(AsHandle<HWND>(m.wParam)));
}

inline auto WindowInLong(const MappedMessage& m)
{
    return std::tuple(WindowOf(AsHandle<HWND>(m.lParam)));
}

inline auto WindowAndHalves(const MappedMessage& m)
{
    return std::tuple(WindowOf(AsHandle<HWND>(m.wParam)), LowWord(Bits(m.lParam)), HighWord(Bits(m.lParam)));
}

inline auto WindowAndPoint(const MappedMessage& m)
{
    return std::tuple(WindowOf(AsHandle<HWND>(m.wParam)), CPoint(m.lParam));
}

inline auto NumberAndWindow(const MappedMessage& m)
{
    return std::tuple(m.wParam, WindowOf(AsHandle<HWND>(m.lParam)));
}

/// Low half, window, high half: WM_ACTIVATE, WM_CHARTOITEM, WM_VKEYTOITEM.
inline auto HalvesAroundWindow(const MappedMessage& m)
{
    return std::tuple(LowWord(m.wParam), WindowOf(AsHandle<HWND>(m.lParam)), HighWord(m.wParam));
}

/// Low half, high half, window: scroll messages.
inline auto HalvesAndWindow(const MappedMessage& m)
{
    return std::tuple(LowWord(m.wParam), HighWord(m.wParam), WindowOf(AsHandle<HWND>(m.lParam)));
}

inline auto MenuOnly(const MappedMessage& m)
{
    return std::tuple(CMenu::FromHandle(AsHandle<HMENU>(m.wParam)));
}

inline auto MenuAndHalves(const MappedMessage& m)
{
    return std::tuple(CMenu::FromHandle(AsHandle<HMENU>(m.wParam)), LowWord(Bits(m.lParam)), HighWord(Bits(m.lParam)));
}

inline auto HalvesAndMenu(const MappedMessage& m)
{
    return std::tuple(LowWord(m.wParam), HighWord(m.wParam), CMenu::FromHandle(AsHandle<HMENU>(m.lParam)));
}

inline auto HalvesAndMenuHandle(const MappedMessage& m)
{
    return std::tuple(LowWord(m.wParam), HighWord(m.wParam), AsHandle<HMENU>(m.lParam));
}

inline auto ContextOnly(const MappedMessage& m)
{
    return std::tuple(CDC::FromHandle(AsHandle<HDC>(m.wParam)));
}

inline auto ContextWindowAndKind(const MappedMessage& m)
{
    return std::tuple(CDC::FromHandle(AsHandle<HDC>(m.wParam)), WindowOf(AsHandle<HWND>(m.lParam)), m.message - WM_CTLCOLORMSGBOX);
}

inline auto ContextAndKind(const MappedMessage& m)
{
    return std::tuple(CDC::FromHandle(AsHandle<HDC>(m.wParam)), m.message - WM_REFLECT_BASE - WM_CTLCOLORMSGBOX);
}

inline auto DropHandle(const MappedMessage& m)
{
    return std::tuple(AsHandle<HDROP>(m.wParam));
}

template <class Type>
auto Structure(const MappedMessage& m)
{
    return std::tuple(reinterpret_cast<Type>(m.lParam));
}

template <class Type>
auto NumberAndStructure(const MappedMessage& m)
{
    return std::tuple(m.wParam, reinterpret_cast<Type>(m.lParam));
}

inline auto WindowAndCopy(const MappedMessage& m)
{
    return std::tuple(WindowOf(AsHandle<HWND>(m.wParam)), reinterpret_cast<COPYDATASTRUCT*>(m.lParam));
}

template <class Result>
LRESULT AsResult(Result result)
{
    if constexpr (std::is_pointer_v<Result>)
        return reinterpret_cast<LRESULT>(result);
    else
        return static_cast<LRESULT>(result);
}

/// Calls the handler with what @p Arguments takes out of the message.
template <class Target, auto Handler, auto Arguments>
bool OnWindowMessage(CCmdTarget& target, MappedMessage& message)
{
    const auto call = [&](auto... arguments) {
        if constexpr (std::is_void_v<ResultOf<Handler>>)
            CallHandler<Target, Handler>(target, arguments...);
        else
            message.result = AsResult(CallHandler<Target, Handler>(target, arguments...));
    };
    std::apply(call, Arguments(message));
    return true;
}

/// The same, and a result of 0 means not handled.
template <class Target, auto Handler, auto Arguments>
bool OnMessageThatMayPass(CCmdTarget& target, MappedMessage& message)
{
    OnWindowMessage<Target, Handler, Arguments>(target, message);
    return message.result != 0;
}

template <class Target, auto Handler>
bool OnChildActivation(CCmdTarget& target, MappedMessage& message)
{
    const HWND activated = AsHandle<HWND>(message.lParam);
    CallHandler<Target, Handler>(target, activated == static_cast<Target&>(target).m_hWnd ? TRUE : FALSE, WindowOf(activated),
                                 WindowOf(AsHandle<HWND>(message.wParam)));
    return true;
}

}  // namespace kelgen::detail

#define KELGEN_WINDOW_ENTRY(message, handler, ...)                                                                                         \
    ::kelgen::detail::MessageEntry(message,                                                                                                \
                                   &::kelgen::detail::OnWindowMessage<ThisClass, &ThisClass::handler, &::kelgen::detail::__VA_ARGS__>),

// Life: int OnCreate(LPCREATESTRUCT), BOOL OnNcCreate(LPCREATESTRUCT), the others void().
#define ON_WM_CREATE() KELGEN_WINDOW_ENTRY(WM_CREATE, OnCreate, Structure<LPCREATESTRUCTA>)
#define ON_WM_NCCREATE() KELGEN_WINDOW_ENTRY(WM_NCCREATE, OnNcCreate, Structure<LPCREATESTRUCTA>)
#define ON_WM_DESTROY() KELGEN_WINDOW_ENTRY(WM_DESTROY, OnDestroy, Nothing)
#define ON_WM_NCDESTROY() KELGEN_WINDOW_ENTRY(WM_NCDESTROY, OnNcDestroy, Nothing)
#define ON_WM_CLOSE() KELGEN_WINDOW_ENTRY(WM_CLOSE, OnClose, Nothing)

// Size, place, state.
#define ON_WM_SIZE() KELGEN_WINDOW_ENTRY(WM_SIZE, OnSize, WithHalves)                        // void(UINT type, int, int)
#define ON_WM_MOVE() KELGEN_WINDOW_ENTRY(WM_MOVE, OnMove, SignedHalves)                      // void(int, int)
#define ON_WM_SIZING() KELGEN_WINDOW_ENTRY(WM_SIZING, OnSizing, NumberAndStructure<LPRECT>)  // void(UINT side, LPRECT)
#define ON_WM_MOVING() KELGEN_WINDOW_ENTRY(WM_MOVING, OnMoving, NumberAndStructure<LPRECT>)  // void(UINT, LPRECT)
#define ON_WM_GETMINMAXINFO() KELGEN_WINDOW_ENTRY(WM_GETMINMAXINFO, OnGetMinMaxInfo, Structure<MINMAXINFO*>)
#define ON_WM_WINDOWPOSCHANGING() KELGEN_WINDOW_ENTRY(WM_WINDOWPOSCHANGING, OnWindowPosChanging, Structure<WINDOWPOS*>)
#define ON_WM_WINDOWPOSCHANGED() KELGEN_WINDOW_ENTRY(WM_WINDOWPOSCHANGED, OnWindowPosChanged, Structure<WINDOWPOS*>)
#define ON_WM_STYLECHANGING() KELGEN_WINDOW_ENTRY(WM_STYLECHANGING, OnStyleChanging, NumberAndStructure<LPSTYLESTRUCT>)
#define ON_WM_STYLECHANGED() KELGEN_WINDOW_ENTRY(WM_STYLECHANGED, OnStyleChanged, NumberAndStructure<LPSTYLESTRUCT>)
#define ON_WM_SHOWWINDOW() KELGEN_WINDOW_ENTRY(WM_SHOWWINDOW, OnShowWindow, BothParameters)  // void(BOOL, UINT status)
#define ON_WM_ENABLE() KELGEN_WINDOW_ENTRY(WM_ENABLE, OnEnable, WideParameter)               // void(BOOL)
#define ON_WM_QUERYOPEN() KELGEN_WINDOW_ENTRY(WM_QUERYOPEN, OnQueryOpen, Nothing)            // BOOL()
#define ON_WM_TIMER() KELGEN_WINDOW_ENTRY(WM_TIMER, OnTimer, WideParameter)                  // void(UINT_PTR id)

// Activation and focus.
#define ON_WM_ACTIVATE() KELGEN_WINDOW_ENTRY(WM_ACTIVATE, OnActivate, HalvesAroundWindow)       // void(UINT, CWnd*, BOOL minimized)
#define ON_WM_ACTIVATEAPP() KELGEN_WINDOW_ENTRY(WM_ACTIVATEAPP, OnActivateApp, BothParameters)  // void(BOOL, DWORD thread)
#define ON_WM_CHILDACTIVATE() KELGEN_WINDOW_ENTRY(WM_CHILDACTIVATE, OnChildActivate, Nothing)
#define ON_WM_NCACTIVATE() KELGEN_WINDOW_ENTRY(WM_NCACTIVATE, OnNcActivate, WideParameter)             // BOOL(BOOL)
#define ON_WM_MOUSEACTIVATE() KELGEN_WINDOW_ENTRY(WM_MOUSEACTIVATE, OnMouseActivate, WindowAndHalves)  // int(CWnd*, UINT, UINT)
#define ON_WM_SETFOCUS() KELGEN_WINDOW_ENTRY(WM_SETFOCUS, OnSetFocus, WindowInWide)                    // void(CWnd*)
#define ON_WM_KILLFOCUS() KELGEN_WINDOW_ENTRY(WM_KILLFOCUS, OnKillFocus, WindowInWide)                 // void(CWnd*)
#define ON_WM_CANCELMODE() KELGEN_WINDOW_ENTRY(WM_CANCELMODE, OnCancelMode, Nothing)
#define ON_WM_CAPTURECHANGED() KELGEN_WINDOW_ENTRY(WM_CAPTURECHANGED, OnCaptureChanged, WindowInLong)  // void(CWnd*)
/// void OnMDIActivate(BOOL bActivate, CWnd* pActivateWnd, CWnd* pDeactivateWnd).
#define ON_WM_MDIACTIVATE()                                                                                                                \
    ::kelgen::detail::MessageEntry(WM_MDIACTIVATE, &::kelgen::detail::OnChildActivation<ThisClass, &ThisClass::OnMDIActivate>),

// Painting.
#define ON_WM_PAINT() KELGEN_WINDOW_ENTRY(WM_PAINT, OnPaint, Nothing)
#define ON_WM_NCPAINT() KELGEN_WINDOW_ENTRY(WM_NCPAINT, OnNcPaint, Nothing)
#define ON_WM_ERASEBKGND() KELGEN_WINDOW_ENTRY(WM_ERASEBKGND, OnEraseBkgnd, ContextOnly)  // BOOL(CDC*)
#define ON_WM_ICONERASEBKGND() KELGEN_WINDOW_ENTRY(WM_ICONERASEBKGND, OnIconEraseBkgnd, ContextOnly)
#define ON_WM_QUERYDRAGICON() KELGEN_WINDOW_ENTRY(WM_QUERYDRAGICON, OnQueryDragIcon, Nothing)  // HCURSOR()
#define ON_WM_NCCALCSIZE() KELGEN_WINDOW_ENTRY(WM_NCCALCSIZE, OnNcCalcSize, NumberAndStructure<NCCALCSIZE_PARAMS*>)
#define ON_WM_DRAWITEM() KELGEN_WINDOW_ENTRY(WM_DRAWITEM, OnDrawItem, NumberAndStructure<LPDRAWITEMSTRUCT>)
#define ON_WM_MEASUREITEM() KELGEN_WINDOW_ENTRY(WM_MEASUREITEM, OnMeasureItem, NumberAndStructure<LPMEASUREITEMSTRUCT>)
#define ON_WM_DELETEITEM() KELGEN_WINDOW_ENTRY(WM_DELETEITEM, OnDeleteItem, NumberAndStructure<LPDELETEITEMSTRUCT>)
#define ON_WM_COMPAREITEM() KELGEN_WINDOW_ENTRY(WM_COMPAREITEM, OnCompareItem, NumberAndStructure<LPCOMPAREITEMSTRUCT>)
#define KELGEN_COLOR_ENTRY(message) KELGEN_WINDOW_ENTRY(message, OnCtlColor, ContextWindowAndKind)
/// HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor): message boxes, edit boxes, list boxes, buttons, dialogs, scroll bars
/// and static texts, in this order from 0.
#define ON_WM_CTLCOLOR()                                                                                                                   \
    KELGEN_COLOR_ENTRY(WM_CTLCOLORMSGBOX)                                                                                                  \
    KELGEN_COLOR_ENTRY(WM_CTLCOLOREDIT)                                                                                                    \
    KELGEN_COLOR_ENTRY(WM_CTLCOLORLISTBOX)                                                                                                 \
    KELGEN_COLOR_ENTRY(WM_CTLCOLORBTN)                                                                                                     \
    KELGEN_COLOR_ENTRY(WM_CTLCOLORDLG)                                                                                                     \
    KELGEN_COLOR_ENTRY(WM_CTLCOLORSCROLLBAR)                                                                                               \
    KELGEN_COLOR_ENTRY(WM_CTLCOLORSTATIC)
#define KELGEN_REFLECTED_COLOR_ENTRY(message)                                                                                              \
    ::kelgen::detail::MessageEntry(                                                                                                        \
        message + WM_REFLECT_BASE,                                                                                                         \
        &::kelgen::detail::OnMessageThatMayPass<ThisClass, &ThisClass::CtlColor, &::kelgen::detail::ContextAndKind>),
/// HBRUSH CtlColor(CDC* pDC, UINT nCtlColor): in the control's own class; null leaves it to the parent.
#define ON_WM_CTLCOLOR_REFLECT()                                                                                                           \
    KELGEN_REFLECTED_COLOR_ENTRY(WM_CTLCOLOREDIT)                                                                                          \
    KELGEN_REFLECTED_COLOR_ENTRY(WM_CTLCOLORLISTBOX)                                                                                       \
    KELGEN_REFLECTED_COLOR_ENTRY(WM_CTLCOLORBTN)                                                                                           \
    KELGEN_REFLECTED_COLOR_ENTRY(WM_CTLCOLORDLG)                                                                                           \
    KELGEN_REFLECTED_COLOR_ENTRY(WM_CTLCOLORSCROLLBAR)                                                                                     \
    KELGEN_REFLECTED_COLOR_ENTRY(WM_CTLCOLORSTATIC)

// Commands and menus.
#define ON_WM_SYSCOMMAND() KELGEN_WINDOW_ENTRY(WM_SYSCOMMAND, OnSysCommand, BothParameters)          // void(UINT id, LPARAM)
#define ON_WM_INITMENU() KELGEN_WINDOW_ENTRY(WM_INITMENU, OnInitMenu, MenuOnly)                      // void(CMenu*)
#define ON_WM_INITMENUPOPUP() KELGEN_WINDOW_ENTRY(WM_INITMENUPOPUP, OnInitMenuPopup, MenuAndHalves)  // void(CMenu*, UINT, BOOL)
#define ON_WM_MENUSELECT() KELGEN_WINDOW_ENTRY(WM_MENUSELECT, OnMenuSelect, HalvesAndMenuHandle)     // void(UINT id, UINT, HMENU)
#define ON_WM_MENUCHAR() KELGEN_WINDOW_ENTRY(WM_MENUCHAR, OnMenuChar, HalvesAndMenu)                 // LRESULT(UINT, UINT, CMenu*)
#define ON_WM_ENTERMENULOOP() KELGEN_WINDOW_ENTRY(WM_ENTERMENULOOP, OnEnterMenuLoop, WideParameter)  // void(BOOL)
#define ON_WM_EXITMENULOOP() KELGEN_WINDOW_ENTRY(WM_EXITMENULOOP, OnExitMenuLoop, WideParameter)     // void(BOOL)
#define ON_WM_ENTERIDLE() KELGEN_WINDOW_ENTRY(WM_ENTERIDLE, OnEnterIdle, NumberAndWindow)            // void(UINT why, CWnd*)
#define ON_WM_CONTEXTMENU() KELGEN_WINDOW_ENTRY(WM_CONTEXTMENU, OnContextMenu, WindowAndPoint)       // void(CWnd*, CPoint)
#define ON_WM_HELPINFO() KELGEN_WINDOW_ENTRY(WM_HELP, OnHelpInfo, Structure<HELPINFO*>)              // BOOL(HELPINFO*)
#define ON_WM_PARENTNOTIFY() KELGEN_WINDOW_ENTRY(WM_PARENTNOTIFY, OnParentNotify, BothParameters)    // void(UINT message, LPARAM)
#define ON_WM_HSCROLL() KELGEN_WINDOW_ENTRY(WM_HSCROLL, OnHScroll, HalvesAndWindow)                  // void(UINT code, UINT pos, CWnd*)
#define ON_WM_VSCROLL() KELGEN_WINDOW_ENTRY(WM_VSCROLL, OnVScroll, HalvesAndWindow)
#define ON_WM_CHARTOITEM() KELGEN_WINDOW_ENTRY(WM_CHARTOITEM, OnCharToItem, HalvesAroundWindow)  // int(UINT key, CWnd*, UINT index)
#define ON_WM_VKEYTOITEM() KELGEN_WINDOW_ENTRY(WM_VKEYTOITEM, OnVKeyToItem, HalvesAroundWindow)
#define ON_WM_GETDLGCODE() KELGEN_WINDOW_ENTRY(WM_GETDLGCODE, OnGetDlgCode, Nothing)  // UINT()
#define ON_WM_DROPFILES() KELGEN_WINDOW_ENTRY(WM_DROPFILES, OnDropFiles, DropHandle)  // void(HDROP)
#define ON_WM_COPYDATA() KELGEN_WINDOW_ENTRY(WM_COPYDATA, OnCopyData, WindowAndCopy)  // BOOL(CWnd*, COPYDATASTRUCT*)

// Keys: void(UINT key, UINT repeat, UINT flags).
#define ON_WM_KEYDOWN() KELGEN_WINDOW_ENTRY(WM_KEYDOWN, OnKeyDown, WithHalves)
#define ON_WM_KEYUP() KELGEN_WINDOW_ENTRY(WM_KEYUP, OnKeyUp, WithHalves)
#define ON_WM_CHAR() KELGEN_WINDOW_ENTRY(WM_CHAR, OnChar, WithHalves)
#define ON_WM_DEADCHAR() KELGEN_WINDOW_ENTRY(WM_DEADCHAR, OnDeadChar, WithHalves)
#define ON_WM_SYSKEYDOWN() KELGEN_WINDOW_ENTRY(WM_SYSKEYDOWN, OnSysKeyDown, WithHalves)
#define ON_WM_SYSKEYUP() KELGEN_WINDOW_ENTRY(WM_SYSKEYUP, OnSysKeyUp, WithHalves)
#define ON_WM_SYSCHAR() KELGEN_WINDOW_ENTRY(WM_SYSCHAR, OnSysChar, WithHalves)
#define ON_WM_SYSDEADCHAR() KELGEN_WINDOW_ENTRY(WM_SYSDEADCHAR, OnSysDeadChar, WithHalves)

// Mouse: void(UINT keys or hit test, CPoint).
#define ON_WM_MOUSEMOVE() KELGEN_WINDOW_ENTRY(WM_MOUSEMOVE, OnMouseMove, WithPoint)
#define ON_WM_MOUSELEAVE() KELGEN_WINDOW_ENTRY(WM_MOUSELEAVE, OnMouseLeave, Nothing)
/// BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt): FALSE passes the message on to default processing.
#define ON_WM_MOUSEWHEEL()                                                                                                                 \
    ::kelgen::detail::MessageEntry(                                                                                                        \
        WM_MOUSEWHEEL, &::kelgen::detail::OnMessageThatMayPass<ThisClass, &ThisClass::OnMouseWheel, &::kelgen::detail::Wheel>),
#define ON_WM_LBUTTONDOWN() KELGEN_WINDOW_ENTRY(WM_LBUTTONDOWN, OnLButtonDown, WithPoint)
#define ON_WM_LBUTTONUP() KELGEN_WINDOW_ENTRY(WM_LBUTTONUP, OnLButtonUp, WithPoint)
#define ON_WM_LBUTTONDBLCLK() KELGEN_WINDOW_ENTRY(WM_LBUTTONDBLCLK, OnLButtonDblClk, WithPoint)
#define ON_WM_RBUTTONDOWN() KELGEN_WINDOW_ENTRY(WM_RBUTTONDOWN, OnRButtonDown, WithPoint)
#define ON_WM_RBUTTONUP() KELGEN_WINDOW_ENTRY(WM_RBUTTONUP, OnRButtonUp, WithPoint)
#define ON_WM_RBUTTONDBLCLK() KELGEN_WINDOW_ENTRY(WM_RBUTTONDBLCLK, OnRButtonDblClk, WithPoint)
#define ON_WM_MBUTTONDOWN() KELGEN_WINDOW_ENTRY(WM_MBUTTONDOWN, OnMButtonDown, WithPoint)
#define ON_WM_MBUTTONUP() KELGEN_WINDOW_ENTRY(WM_MBUTTONUP, OnMButtonUp, WithPoint)
#define ON_WM_MBUTTONDBLCLK() KELGEN_WINDOW_ENTRY(WM_MBUTTONDBLCLK, OnMButtonDblClk, WithPoint)
#define ON_WM_NCMOUSEMOVE() KELGEN_WINDOW_ENTRY(WM_NCMOUSEMOVE, OnNcMouseMove, WithPoint)
#define ON_WM_NCLBUTTONDOWN() KELGEN_WINDOW_ENTRY(WM_NCLBUTTONDOWN, OnNcLButtonDown, WithPoint)
#define ON_WM_NCLBUTTONUP() KELGEN_WINDOW_ENTRY(WM_NCLBUTTONUP, OnNcLButtonUp, WithPoint)
#define ON_WM_NCLBUTTONDBLCLK() KELGEN_WINDOW_ENTRY(WM_NCLBUTTONDBLCLK, OnNcLButtonDblClk, WithPoint)
#define ON_WM_NCRBUTTONDOWN() KELGEN_WINDOW_ENTRY(WM_NCRBUTTONDOWN, OnNcRButtonDown, WithPoint)
#define ON_WM_NCRBUTTONUP() KELGEN_WINDOW_ENTRY(WM_NCRBUTTONUP, OnNcRButtonUp, WithPoint)
#define ON_WM_NCRBUTTONDBLCLK() KELGEN_WINDOW_ENTRY(WM_NCRBUTTONDBLCLK, OnNcRButtonDblClk, WithPoint)
#define ON_WM_NCMBUTTONDOWN() KELGEN_WINDOW_ENTRY(WM_NCMBUTTONDOWN, OnNcMButtonDown, WithPoint)
#define ON_WM_NCMBUTTONUP() KELGEN_WINDOW_ENTRY(WM_NCMBUTTONUP, OnNcMButtonUp, WithPoint)
#define ON_WM_NCMBUTTONDBLCLK() KELGEN_WINDOW_ENTRY(WM_NCMBUTTONDBLCLK, OnNcMButtonDblClk, WithPoint)
#define ON_WM_NCHITTEST() KELGEN_WINDOW_ENTRY(WM_NCHITTEST, OnNcHitTest, PointOnly)        // LRESULT(CPoint)
#define ON_WM_SETCURSOR() KELGEN_WINDOW_ENTRY(WM_SETCURSOR, OnSetCursor, WindowAndHalves)  // BOOL(CWnd*, UINT hit, UINT message)

// The session and the system.
#define ON_WM_QUERYENDSESSION() KELGEN_WINDOW_ENTRY(WM_QUERYENDSESSION, OnQueryEndSession, Nothing)  // BOOL()
#define ON_WM_ENDSESSION() KELGEN_WINDOW_ENTRY(WM_ENDSESSION, OnEndSession, WideParameter)           // void(BOOL)
#define ON_WM_SYSCOLORCHANGE() KELGEN_WINDOW_ENTRY(WM_SYSCOLORCHANGE, OnSysColorChange, Nothing)
#define ON_WM_WININICHANGE() KELGEN_WINDOW_ENTRY(WM_WININICHANGE, OnWinIniChange, Structure<LPCSTR>)
#define ON_WM_SETTINGCHANGE() KELGEN_WINDOW_ENTRY(WM_SETTINGCHANGE, OnSettingChange, NumberAndStructure<LPCSTR>)
#define ON_WM_DEVMODECHANGE() KELGEN_WINDOW_ENTRY(WM_DEVMODECHANGE, OnDevModeChange, Structure<LPSTR>)
#define ON_WM_DEVICECHANGE() KELGEN_WINDOW_ENTRY(WM_DEVICECHANGE, OnDeviceChange, BothParameters)        // BOOL(UINT, DWORD_PTR)
#define ON_WM_POWERBROADCAST() KELGEN_WINDOW_ENTRY(WM_POWERBROADCAST, OnPowerBroadcast, BothParameters)  // UINT(UINT, LPARAM)
#define ON_WM_FONTCHANGE() KELGEN_WINDOW_ENTRY(WM_FONTCHANGE, OnFontChange, Nothing)
#define ON_WM_TIMECHANGE() KELGEN_WINDOW_ENTRY(WM_TIMECHANGE, OnTimeChange, Nothing)
#define ON_WM_PALETTECHANGED() KELGEN_WINDOW_ENTRY(WM_PALETTECHANGED, OnPaletteChanged, WindowInWide)  // void(CWnd*)
#define ON_WM_PALETTEISCHANGING() KELGEN_WINDOW_ENTRY(WM_PALETTEISCHANGING, OnPaletteIsChanging, WindowInWide)
#define ON_WM_QUERYNEWPALETTE() KELGEN_WINDOW_ENTRY(WM_QUERYNEWPALETTE, OnQueryNewPalette, Nothing)  // BOOL()
