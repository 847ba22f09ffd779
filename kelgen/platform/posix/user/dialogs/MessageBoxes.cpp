// MessageBoxes.cpp: message boxes without a screen.
#include <kelgen/platform/posix/user/api/MessageBoxes.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/dialogs/ShownMessageBox.h>
#include <kelgen/platform/posix/user/messages/ChangeMark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <strings.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr LPCSTR kErrorCaption = "Error";

struct Button
{
    int id;
    const char* name;
    const char16_t* label;
};

constexpr Button kOk = {IDOK, "ok", u"OK"};
constexpr Button kCancel = {IDCANCEL, "cancel", u"Cancel"};
constexpr Button kAbort = {IDABORT, "abort", u"&Abort"};
constexpr Button kRetry = {IDRETRY, "retry", u"&Retry"};
constexpr Button kIgnore = {IDIGNORE, "ignore", u"&Ignore"};
constexpr Button kYes = {IDYES, "yes", u"&Yes"};
constexpr Button kNo = {IDNO, "no", u"&No"};
constexpr Button kTry = {IDTRYAGAIN, "try", u"&Try Again"};
constexpr Button kContinue = {IDCONTINUE, "continue", u"&Continue"};

/// The buttons of a kind of box, from the left; none for an unknown kind.
std::span<const Button> ButtonsOf(UINT type)
{
    static constexpr std::array kOkBox = {kOk};
    static constexpr std::array kOkCancelBox = {kOk, kCancel};
    static constexpr std::array kAbortBox = {kAbort, kRetry, kIgnore};
    static constexpr std::array kYesNoCancelBox = {kYes, kNo, kCancel};
    static constexpr std::array kYesNoBox = {kYes, kNo};
    static constexpr std::array kRetryBox = {kRetry, kCancel};
    static constexpr std::array kTryBox = {kCancel, kTry, kContinue};
    switch (type & MB_TYPEMASK) {
    case MB_OK:
        return kOkBox;
    case MB_OKCANCEL:
        return kOkCancelBox;
    case MB_ABORTRETRYIGNORE:
        return kAbortBox;
    case MB_YESNOCANCEL:
        return kYesNoCancelBox;
    case MB_YESNO:
        return kYesNoBox;
    case MB_RETRYCANCEL:
        return kRetryBox;
    case MB_CANCELTRYCONTINUE:
        return kTryBox;
    default:
        return {};
    }
}

int AnswerOf(std::span<const Button> buttons, UINT type)
{
    if (const char* name = secure_getenv("KELGEN_MESSAGEBOX"))
        for (const Button& button : buttons)
            if (strcasecmp(button.name, name) == 0)
                return button.id;
    const std::size_t number = (type & MB_DEFMASK) >> 8;
    return number < buttons.size() ? buttons[number].id : buttons.front().id;
}

// For the terminal, which takes UTF-8.
std::string Utf8(std::u16string_view text)
{
    const auto* units = reinterpret_cast<LPCWSTR>(text.data());
    const int length = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0');
    const int size = length == 0 ? 0 : WideCharToMultiByte(CP_UTF8, 0, units, length, bytes.data(), length * 3, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

/// Waits for whoever sees the box.
int Show(HWND owner, std::u16string_view text, std::u16string_view caption, std::span<const Button> buttons, UINT type)
{
    ShownBox box;
    box.text = text;
    box.caption = caption;
    box.icon = type & MB_ICONMASK;
    box.answer = AnswerOf(buttons, type);
    for (const Button& button : buttons)
        box.buttons.push_back({button.id, button.label});
    return RunMessageBox(owner, box);
}

int Ask(HWND owner, std::u16string_view text, std::u16string_view caption, UINT type)
{
    if (owner && !IsWindow(owner))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, 0);
    const auto buttons = ButtonsOf(type);
    if (buttons.empty())
        return Fail(ERROR_INVALID_MSGBOX_STYLE, 0);
    const bool disables = owner && IsWindowEnabled(owner);
    if (disables)
        EnableWindow(owner, FALSE);
    std::fprintf(stderr, "%s: %s\n", Utf8(caption).c_str(), Utf8(text).c_str());
    const int answer = IsDesktopAttended() ? Show(owner, text, caption, buttons, type) : AnswerOf(buttons, type);
    if (disables)
        EnableWindow(owner, TRUE);
    return answer;
}

}  // namespace

int MessageBoxExA(HWND owner, LPCSTR text, LPCSTR caption, UINT type, WORD)
{
    return Ask(owner, WideText(text), WideText(caption ? caption : kErrorCaption), type);
}

int MessageBoxExW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type, WORD)
{
    return Ask(owner, WideText(text), caption ? std::u16string(WideText(caption)) : WideText(kErrorCaption), type);
}

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type)
{
    return MessageBoxExA(owner, text, caption, type, 0);
}

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    return MessageBoxExW(owner, text, caption, type, 0);
}

BOOL MessageBeep(UINT)
{
    return TRUE;
}
