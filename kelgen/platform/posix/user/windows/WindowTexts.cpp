// WindowTexts.cpp: texts of windows by messages, and of a dialog's items.
#include <kelgen/platform/posix/user/api/WindowTexts.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/api/MessageCalls.h>
#include <kelgen/platform/posix/user/api/WindowTree.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>
#include <cstdlib>
#include <string>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// Sends to a window, which may be a number that is none: then the error is set.
LRESULT SendText(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool wide)
{
    return wide ? SendMessageW(window, message, wParam, lParam) : SendMessageA(window, message, wParam, lParam);
}

template <class Char>
int GetText(HWND window, Char* text, int size)
{
    if (!text || size <= 0)
        return 0;
    text[0] = 0;
    return static_cast<int>(SendText(window, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(text), sizeof(Char) == 2));
}

template <class Char>
UINT GetItemText(HWND dialog, int id, Char* text, int size)
{
    if (text && size > 0)
        text[0] = 0;
    const HWND item = GetDlgItem(dialog, id);
    return item ? static_cast<UINT>(GetText(item, text, size)) : 0;
}

// The number in a text, with blanks around it and nothing else. An unsigned one may have a '-' too, as of strtoul.
bool ParseNumber(const char* text, bool isSigned, UINT& number)
{
    char* end = nullptr;
    while (*text == ' ')
        ++text;
    const long long value = std::strtoll(text, &end, 10);
    while (*end == ' ')
        ++end;
    const long long lowest = isSigned ? -0x80000000LL : -0xFFFFFFFFLL;
    const long long highest = isSigned ? 0x7FFFFFFFLL : 0xFFFFFFFFLL;
    if (end == text || *end != '\0' || value < lowest || value > highest)
        return false;
    number = static_cast<UINT>(value);
    return true;
}

}  // namespace

BOOL SetWindowTextA(HWND window, LPCSTR text)
{
    return static_cast<BOOL>(SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)));
}

BOOL SetWindowTextW(HWND window, LPCWSTR text)
{
    return static_cast<BOOL>(SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)));
}

int GetWindowTextA(HWND window, LPSTR text, int size)
{
    return GetText(window, text, size);
}

int GetWindowTextW(HWND window, LPWSTR text, int size)
{
    return GetText(window, text, size);
}

int GetWindowTextLengthA(HWND window)
{
    return static_cast<int>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0));
}

int GetWindowTextLengthW(HWND window)
{
    return static_cast<int>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
}

int InternalGetWindowText(HWND window, LPWSTR text, int size)
{
    if (!text || size <= 0)
        return 0;
    text[0] = 0;
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, 0);
    const std::size_t length = std::min<std::size_t>(found->text.size(), static_cast<std::size_t>(size) - 1);
    std::copy_n(found->text.data(), length, text);
    text[length] = 0;
    return static_cast<int>(length);
}

BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text)
{
    const HWND item = GetDlgItem(dialog, id);
    return item ? SetWindowTextA(item, text) : FALSE;
}

BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text)
{
    const HWND item = GetDlgItem(dialog, id);
    return item ? SetWindowTextW(item, text) : FALSE;
}

UINT GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size)
{
    return GetItemText(dialog, id, text, size);
}

UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int size)
{
    return GetItemText(dialog, id, text, size);
}

BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned)
{
    const std::string text = isSigned ? std::to_string(static_cast<int>(value)) : std::to_string(value);
    SetDlgItemTextA(dialog, id, text.c_str());
    return TRUE;
}

UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned)
{
    char text[30] = "";
    UINT number = 0;
    const bool good = GetDlgItemTextA(dialog, id, text, sizeof text) != 0 && ParseNumber(text, isSigned != FALSE, number);
    if (translated)
        *translated = good;
    return good ? number : 0;
}

LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND item = GetDlgItem(dialog, id);
    return item ? SendMessageA(item, message, wParam, lParam) : 0;
}

LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND item = GetDlgItem(dialog, id);
    return item ? SendMessageW(item, message, wParam, lParam) : 0;
}
