// DialogProcedure.cpp: the window procedure of dialogs, their focus and their default button.
#include <kelgen/platform/posix/user/api/Dialogs.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/dialogs/DialogState.h>
#include <kelgen/platform/posix/user/drawing/Erase.h>
#include <kelgen/platform/posix/user/messages/MessageText.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/ProcedureTable.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr UINT kPushButton = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;

/// Whether the dialog procedure's own result is the message's.
bool ReturnsDirectly(UINT message)
{
    switch (message) {
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_QUERYDRAGICON:
    case WM_INITDIALOG:
        return true;
    default:
        return false;
    }
}

void SaveFocus(HWND dialog, DialogState& state)
{
    const HWND focus = GetFocus();
    if (focus && IsChild(dialog, focus))
        state.focus = focus;
}

void RestoreFocus(HWND dialog, DialogState& state)
{
    if (IsIconic(dialog))
        return;
    HWND focus = state.focus && IsWindow(state.focus) ? state.focus : nullptr;
    if (!focus)
        focus = GetNextDlgTabItem(dialog, nullptr, FALSE);
    if (focus)
        SetFocus(focus);
    state.focus = nullptr;
}

/// The visible push button that looks like the default one, or null.
HWND FindDefaultButton(HWND dialog)
{
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (DialogCode(child) & DLGC_DEFPUSHBUTTON)
            return child;
    return nullptr;
}

void SetButtonStyle(HWND button, UINT style)
{
    SendMessageA(button, BM_SETSTYLE, style, TRUE);
}

/// Gives the look of the default button to @p next and takes it from the one that has it. Null: nobody has it then.
void MoveDefault(HWND dialog, HWND next)
{
    const UINT code = next ? DialogCode(next) : 0;
    if (code & DLGC_DEFPUSHBUTTON)
        return;
    if (const HWND current = FindDefaultButton(dialog))
        SetButtonStyle(current, BS_PUSHBUTTON);
    if (code & DLGC_UNDEFPUSHBUTTON)
        SetButtonStyle(next, BS_DEFPUSHBUTTON);
}

void NextControl(HWND dialog, WPARAM wParam, bool isHandle)
{
    HWND control = reinterpret_cast<HWND>(wParam);
    if (!isHandle) {
        HWND focus = GetFocus();
        if (focus && !IsChild(dialog, focus))
            focus = nullptr;
        control = GetNextDlgTabItem(dialog, focus, wParam != 0);
    }
    if (control)
        FocusAndMarkDefault(dialog, control);
}

/// What is left of a message to a dialog after its procedure.
LRESULT DefaultAction(HWND dialog, DialogState& state, UINT message, WPARAM wParam, LPARAM lParam, bool wide)
{
    switch (message) {
    case WM_SHOWWINDOW:
        if (!wParam)
            SaveFocus(dialog, state);
        break;
    case WM_ACTIVATE:
        if (wParam)
            RestoreFocus(dialog, state);
        else
            SaveFocus(dialog, state);
        return 0;
    case WM_SETFOCUS:
        if (!state.hasEnded)
            RestoreFocus(dialog, state);
        return 0;
    case DM_SETDEFID:
        if (state.hasEnded)
            return 1;
        state.result = static_cast<INT_PTR>(wParam);
        MoveDefault(dialog, wParam ? GetDlgItem(dialog, static_cast<int>(wParam)) : nullptr);
        return 1;
    case DM_GETDEFID:
        if (state.hasEnded || state.result == 0)
            return 0;
        return MAKELONG(state.result, DC_HASDEFID);
    case WM_NEXTDLGCTL:
        NextControl(dialog, wParam, LOWORD(lParam) != 0);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(state.font);
    case WM_SETFONT:
        state.font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_ERASEBKGND:
        // By contract the dialog itself is asked for its colour.
        if (const Window* const window = OwnWindow(dialog)) {
            const LRESULT brush = SendMessageW(dialog, WM_CTLCOLORDLG, wParam, reinterpret_cast<LPARAM>(dialog));
            if (brush && OwnWindow(dialog) == window)
                Erase(*window, reinterpret_cast<HDC>(wParam), reinterpret_cast<HBRUSH>(brush));
        }
        return 1;
    case WM_CLOSE:
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDCANCEL)));
        return 0;
    default:
        break;
    }
    return wide ? DefWindowProcW(dialog, message, wParam, lParam) : DefWindowProcA(dialog, message, wParam, lParam);
}

LRESULT CallDialogProcedure(HWND dialog, const DialogState& state, UINT message, WPARAM wParam, LPARAM lParam, bool wide)
{
    const auto procedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(dialog, DWLP_DLGPROC));
    if (!procedure)
        return 0;
    const MemoryMode ofHost(false);
    if (wide == state.hasWideProcedure || !CarriesText(message))
        return procedure(dialog, message, wParam, lParam);
    return CallConverted(*ProcedureOf(procedure, state.hasWideProcedure), dialog, message, wParam, lParam);
}

LRESULT DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, bool wide)
{
    const auto state = MakeDialogState(dialog);
    if (!state)
        return 0;
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, 0);
    LRESULT result = CallDialogProcedure(dialog, *state, message, wParam, lParam, wide);
    if (!result && IsWindow(dialog)) {
        result = DefaultAction(dialog, *state, message, wParam, lParam, wide);
        return result;
    }
    return ReturnsDirectly(message) ? result : GetWindowLongPtrW(dialog, DWLP_MSGRESULT);
}

}  // namespace

namespace kelgen::posix::user {

std::shared_ptr<DialogState> MakeDialogState(HWND dialog)
{
    Window* window = OwnWindow(dialog);
    if (!window)
        return nullptr;
    if (!window->dialog)
        window->dialog = std::make_shared<DialogState>();
    return std::static_pointer_cast<DialogState>(window->dialog);
}

std::shared_ptr<DialogState> DialogStateOf(HWND dialog)
{
    const Window* window = OwnWindow(dialog);
    if (!window) {
        IsWindow(dialog);
        return nullptr;
    }
    if (!window->dialog && window->windowClass->name != u"#32770")
        return nullptr;
    return MakeDialogState(dialog);
}

UINT DialogCode(HWND control, const MSG* message)
{
    return static_cast<UINT>(SendMessageA(control, WM_GETDLGCODE, message ? message->wParam : 0, reinterpret_cast<LPARAM>(message)));
}

void FocusControl(HWND control)
{
    if (DialogCode(control) & DLGC_HASSETSEL)
        SendMessageA(control, EM_SETSEL, 0, -1);
    SetFocus(control);
}

void FocusAndMarkDefault(HWND dialog, HWND control)
{
    FocusControl(control);
    if (DialogCode(control) & kPushButton) {
        MoveDefault(dialog, control);
        return;
    }
    const LRESULT number = SendMessageA(dialog, DM_GETDEFID, 0, 0);
    if (HIWORD(number) == DC_HASDEFID)
        MoveDefault(dialog, GetDlgItem(dialog, static_cast<short>(LOWORD(number))));
}

}  // namespace kelgen::posix::user

LRESULT DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory(LRESULT{0}, [&] { return DialogProcedure(dialog, message, wParam, lParam, false); });
}

LRESULT DefDlgProcW(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    return OrNoMemory(LRESULT{0}, [&] { return DialogProcedure(dialog, message, wParam, lParam, true); });
}
