// DialogKeys.cpp: what keys do in a dialog.
#include <kelgen/platform/posix/user/api/Dialogs.h>

#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/dialogs/DialogState.h>
#include <kelgen/platform/posix/user/objects/Mnemonics.h>

#include <vector>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

bool IsDown(int key)
{
    return GetKeyState(key) < 0;
}

void Tab(HWND dialog)
{
    SendMessageA(dialog, WM_NEXTDLGCTL, IsDown(VK_SHIFT), 0);
}

/// Moves within the group: radio buttons are pressed as they get the focus.
void Arrow(HWND dialog, const MSG& message)
{
    const bool isBackward = message.wParam == VK_LEFT || message.wParam == VK_UP;
    const HWND next = GetNextDlgGroupItem(dialog, message.hwnd, isBackward);
    if (!next)
        return;
    if (!(DialogCode(next, &message) & DLGC_RADIOBUTTON)) {
        SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), 1);
        return;
    }
    SetFocus(next);
    if ((GetWindowLongA(next, GWL_STYLE) & BS_TYPEMASK) == BS_AUTORADIOBUTTON && SendMessageA(next, BM_GETCHECK, 0, 0) != BST_CHECKED)
        SendMessageA(next, BM_CLICK, TRUE, 0);
}

void Command(HWND dialog, int id, HWND control)
{
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(control));
}

void Return(HWND dialog)
{
    const HWND focus = GetFocus();
    if (focus && IsChild(dialog, focus) && (DialogCode(focus) & DLGC_DEFPUSHBUTTON))
        return Command(dialog, GetDlgCtrlID(focus), focus);
    const LRESULT number = SendMessageA(dialog, DM_GETDEFID, 0, 0);
    const int id = HIWORD(number) == DC_HASDEFID ? static_cast<short>(LOWORD(number)) : IDOK;
    const HWND button = GetDlgItem(dialog, id);
    // A disabled default button swallows the key.
    if (!button || IsWindowEnabled(button))
        Command(dialog, id, button);
}

/// The controls below @p window, depth first, from @p first on and around the end.
void CollectFrom(HWND window, std::vector<HWND>& controls)
{
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        controls.push_back(child);
        CollectFrom(child, controls);
    }
}

bool HasMnemonic(HWND control, char16_t letter)
{
    constexpr DWORD kUsable = WS_VISIBLE;
    if ((static_cast<DWORD>(GetWindowLongA(control, GWL_STYLE)) & (WS_VISIBLE | WS_DISABLED)) != kUsable)
        return false;
    if (DialogCode(control) & DLGC_WANTCHARS)
        return false;
    WCHAR text[128] = {};
    SendMessageW(control, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return MnemonicOf(reinterpret_cast<const char16_t*>(text)) == letter;
}

/// Presses or focuses the control whose text has @p letter underlined; false when there is none.
bool Mnemonic(HWND dialog, HWND from, char16_t letter)
{
    if (!letter)
        return false;
    std::vector<HWND> controls;
    CollectFrom(dialog, controls);
    std::size_t start = 0;
    while (start < controls.size() && controls[start] != from)
        ++start;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const HWND control = controls[(start + i) % controls.size()];
        if (!HasMnemonic(control, letter))
            continue;
        const UINT code = DialogCode(control);
        if (code & (DLGC_BUTTON | DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) {
            SendMessageA(control, BM_CLICK, 0, 0);
            return true;
        }
        SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), 1);
        // A label stands for the control after it.
        if (code & DLGC_STATIC)
            SendMessageA(dialog, WM_NEXTDLGCTL, 0, 0);
        return true;
    }
    return false;
}

/// Handles a key that means something in a dialog; false for others.
bool Key(HWND dialog, const MSG& message)
{
    const UINT code = DialogCode(message.hwnd, &message);
    if (code & DLGC_WANTMESSAGE)
        return false;
    switch (message.wParam) {
    case VK_TAB:
        if (code & DLGC_WANTTAB)
            return false;
        Tab(dialog);
        return true;
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
        if (code & DLGC_WANTARROWS)
            return false;
        Arrow(dialog, message);
        return true;
    case VK_ESCAPE:
    case VK_CANCEL:
        Command(dialog, IDCANCEL, GetDlgItem(dialog, IDCANCEL));
        return true;
    case VK_RETURN:
    case VK_EXECUTE:
        Return(dialog);
        return true;
    default:
        return false;
    }
}

char16_t LetterOf(WPARAM character, bool wide)
{
    return UpperUnit(wide ? static_cast<char16_t>(character) : WideUnitOf(character));
}

BOOL Handle(HWND dialog, MSG* message, bool wide)
{
    if (!message || (wide ? CallMsgFilterW(message, MSGF_DIALOGBOX) : CallMsgFilterA(message, MSGF_DIALOGBOX)))
        return message != nullptr;
    if (!dialog || dialog == GetDesktopWindow() || (message->hwnd != dialog && !IsChild(dialog, message->hwnd)))
        return FALSE;
    switch (message->message) {
    case WM_KEYDOWN:
        if (Key(dialog, *message))
            return TRUE;
        TranslateMessage(message);
        break;
    case WM_CHAR:
        if (!(DialogCode(message->hwnd, message) & (DLGC_WANTCHARS | DLGC_WANTMESSAGE)) &&
            Mnemonic(dialog, message->hwnd, LetterOf(message->wParam, wide)))
            return TRUE;
        break;
    case WM_SYSCHAR:
        if (Mnemonic(dialog, message->hwnd, LetterOf(message->wParam, wide)))
            return TRUE;
        break;
    default:
        TranslateMessage(message);
        break;
    }
    wide ? DispatchMessageW(message) : DispatchMessageA(message);
    return TRUE;
}

}  // namespace

BOOL IsDialogMessageA(HWND dialog, LPMSG message)
{
    return Handle(dialog, message, false);
}

BOOL IsDialogMessageW(HWND dialog, LPMSG message)
{
    return Handle(dialog, message, true);
}
