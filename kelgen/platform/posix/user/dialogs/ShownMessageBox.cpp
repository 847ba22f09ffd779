// ShownMessageBox.cpp: the dialog of a message box, as large as its text.
#include <kelgen/platform/posix/user/dialogs/ShownMessageBox.h>

#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/messages/ChangeMark.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>
#include <kelgen/platform/support/DialogText.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr int kMargin = 12;
constexpr int kIconSize = 32;
constexpr int kWidestText = 420;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 23;
constexpr int kButtonGap = 8;
constexpr UINT_PTR kLookTimer = 1;
constexpr UINT kLookEvery = 200;  // milliseconds
constexpr DWORD kFrame = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

LPCWSTR Wide(const char16_t* text)
{
    return reinterpret_cast<LPCWSTR>(text);
}

WORD IconOf(UINT flag)
{
    switch (flag) {
    case MB_ICONHAND:
        return 32513;
    case MB_ICONQUESTION:
        return 32514;
    case MB_ICONEXCLAMATION:
        return 32515;
    case MB_ICONASTERISK:
        return 32516;
    default:
        return 0;
    }
}

HWND AddItem(HWND dialog, const char16_t* type, const char16_t* text, DWORD style, int id, RECT place)
{
    return CreateWindowExW(0, Wide(type), Wide(text), WS_CHILD | WS_VISIBLE | style, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, dialog, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)), nullptr, nullptr);
}

void Fill(HWND dialog, const ShownBox& box)
{
    const std::u16string text(box.text);
    const auto lines = WrapDialogText(text, kWidestText);
    int textWidth = 0;
    for (const std::u16string& line : lines)
        textWidth = std::max(textWidth, DialogTextWidth(line));
    textWidth += 4;
    const int textHeight = static_cast<int>(lines.size()) * kDialogTextHeight;
    const WORD icon = IconOf(box.icon);
    const int textLeft = kMargin + (icon ? kIconSize + kMargin : 0);
    const auto count = static_cast<int>(box.buttons.size());
    const int buttons = count * (kButtonWidth + kButtonGap) - kButtonGap;
    const int width = std::max({textLeft + textWidth + kMargin, buttons + 2 * kMargin, DialogTextWidth(box.caption) + 60});
    const int bodyHeight = std::max(textHeight, icon ? kIconSize : 0);
    const int buttonTop = kMargin + bodyHeight + kMargin;
    const int height = buttonTop + kButtonHeight + kMargin;
    if (icon) {
        const HWND label = AddItem(dialog, u"Static", u"", SS_ICON, -1, {kMargin, kMargin, kMargin + kIconSize, kMargin + kIconSize});
        SendMessageW(label, STM_SETICON, reinterpret_cast<WPARAM>(LoadIconW(nullptr, MAKEINTRESOURCEW(icon))), 0);
    }
    const int textTop = kMargin + (bodyHeight - textHeight) / 2;
    AddItem(dialog, u"Static", text.c_str(), SS_LEFT | SS_NOPREFIX, -1, {textLeft, textTop, textLeft + textWidth, textTop + textHeight});
    int left = (width - buttons) / 2;
    for (const BoxButton& button : box.buttons) {
        const HWND made =
            AddItem(dialog, u"Button", button.label, WS_TABSTOP | (button.id == box.answer ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), button.id,
                    {left, buttonTop, left + kButtonWidth, buttonTop + kButtonHeight});
        if (button.id == box.answer) {
            SendMessageW(dialog, DM_SETDEFID, static_cast<WPARAM>(button.id), 0);
            SetFocus(made);
        }
        left += kButtonWidth + kButtonGap;
    }
    RECT place{0, 0, width, height};
    AdjustWindowRectEx(&place, kFrame, FALSE, WS_EX_DLGMODALFRAME);
    const int outerWidth = place.right - place.left;
    const int outerHeight = place.bottom - place.top;
    SetWindowPos(dialog, nullptr, std::max((kScreenWidth - outerWidth) / 2, 0), std::max((kScreenHeight - outerHeight) / 2, 0), outerWidth,
                 outerHeight, SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Has(const ShownBox& box, int id)
{
    return std::ranges::any_of(box.buttons, [id](const BoxButton& button) { return button.id == id; });
}

INT_PTR CALLBACK BoxProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        const ShownBox& box = *reinterpret_cast<const ShownBox*>(lParam);
        SetWindowTextW(dialog, Wide(std::u16string(box.caption).c_str()));
        Fill(dialog, box);
        SetTimer(dialog, kLookTimer, kLookEvery, nullptr);
        return FALSE;
    }
    const auto* const box = reinterpret_cast<const ShownBox*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!box)
        return FALSE;
    if (message == WM_TIMER && wParam == kLookTimer && !IsDesktopAttended()) {
        EndDialog(dialog, box->answer);
        return TRUE;
    }
    if (message != WM_COMMAND)
        return FALSE;
    const int id = LOWORD(wParam);
    if (Has(*box, id))
        EndDialog(dialog, id);
    else if (id == IDCANCEL && box->buttons.size() == 1)
        EndDialog(dialog, box->buttons.front().id);
    return TRUE;
}

}  // namespace

int RunMessageBox(HWND owner, const ShownBox& box)
{
    // Behind the fixed part: no menu, no class, no caption.
    struct
    {
        DLGTEMPLATE head;
        WORD rest[3];
    } const dialog{{kFrame | WS_VISIBLE, 0, 0, 0, 0, 10, 10}, {0, 0, 0}};
    const INT_PTR answer = DialogBoxIndirectParamW(nullptr, &dialog.head, owner, BoxProcedure, reinterpret_cast<LPARAM>(&box));
    return answer > 0 && Has(box, static_cast<int>(answer)) ? static_cast<int>(answer) : box.answer;
}

}  // namespace kelgen::posix::user
