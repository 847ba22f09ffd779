// CreateDialog.cpp: dialogs and their controls from templates.
#include <kelgen/platform/posix/user/dialogs/CreateDialog.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/resources/api/Resources.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/dialogs/DialogState.h>
#include <kelgen/platform/posix/user/dialogs/DialogTemplates.h>

#include <algorithm>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

int Scale(int units, int base, int parts)
{
    // Halves are rounded away from zero.
    const int product = units * base * 2;
    return (product + (product < 0 ? -parts : parts)) / (parts * 2);
}

RECT InPixels(const DialogState& state, int x, int y, int width, int height)
{
    return {Scale(x, state.baseWidth, 4), Scale(y, state.baseHeight, 8), Scale(width, state.baseWidth, 4),
            Scale(height, state.baseHeight, 8)};
}

/// The em of a font on a screen with 96 pixels in an inch.
int PixelsOf(int points)
{
    return (std::clamp(points, 1, 200) * 96 + 36) / 72;
}

/// Makes the template's font.
void SetFont(DialogState& state, const DialogTemplate& dialog)
{
    const std::u16string_view face = dialog.face.empty() ? std::u16string_view(u"MS Shell Dlg") : std::u16string_view(dialog.face);
    state.font = CreateFontW(-PixelsOf(dialog.points), 0, 0, 0, FW_DONTCARE, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                             CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, reinterpret_cast<LPCWSTR>(face.data()));
    state.ownFont = std::shared_ptr<void>(state.font, [](void* font) { DeleteObject(font); });
}

/// An average character of a font, in pixels.
void SetFontSize(DialogState& state, int points)
{
    const int height = PixelsOf(points);
    state.baseWidth = std::max((height * 61 + 50) / 100, 1);
    state.baseHeight = (height * 19 + 8) / 16;
}

std::u16string ClassOf(const TemplateName& name)
{
    static constexpr const char16_t* kClasses[] = {u"Button", u"Edit", u"Static", u"ListBox", u"ScrollBar", u"ComboBox"};
    constexpr WORD kFirst = 0x80;
    if (!name.number)
        return name.text;
    const auto index = static_cast<std::size_t>(name.number - kFirst);
    return index < std::size(kClasses) ? kClasses[index] : u"";
}

struct Creation
{
    DWORD exStyle;
    std::u16string className;
    std::u16string text;
    DWORD style;
    RECT place;  // position and size
    HWND parent;
    HMENU menu;
    HINSTANCE module;
    const void* parameter;
};

HWND Create(const Creation& window, bool wide)
{
    void* parameter = const_cast<void*>(window.parameter);
    const RECT& place = window.place;
    if (wide)
        return CreateWindowExW(window.exStyle, reinterpret_cast<LPCWSTR>(window.className.c_str()),
                               reinterpret_cast<LPCWSTR>(window.text.c_str()), window.style, place.left, place.top, place.right,
                               place.bottom, window.parent, window.menu, window.module, parameter);
    return CreateWindowExA(window.exStyle, AnsiText(window.className).c_str(), AnsiText(window.text).c_str(), window.style, place.left,
                           place.top, place.right, place.bottom, window.parent, window.menu, window.module, parameter);
}

HMENU LoadDialogMenu(HINSTANCE module, const TemplateName& menu)
{
    if (menu.number)
        return LoadMenuW(module, MAKEINTRESOURCEW(menu.number));
    return menu.text.empty() ? nullptr : LoadMenuW(module, reinterpret_cast<LPCWSTR>(menu.text.c_str()));
}

/// Where the dialog's window goes: its client area where the template says, from the owner's client area, within the work area.
RECT WindowPlace(const DialogTemplate& dialog, const DialogState& state, DWORD style, DWORD exStyle, HWND owner, bool hasMenu)
{
    constexpr int kUseDefault = -0x8000;
    const RECT client = InPixels(state, dialog.x, dialog.y, dialog.width, dialog.height);
    RECT frame = {0, 0, client.right, client.bottom};
    AdjustWindowRectEx(&frame, style, hasMenu, exStyle);
    RECT place = {client.left + frame.left, client.top + frame.top, frame.right - frame.left, frame.bottom - frame.top};
    const bool isChild = (style & WS_CHILD) != 0;
    if (dialog.x == kUseDefault) {
        place.left = place.top = CW_USEDEFAULT;
        return place;
    }
    RECT work = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (style & DS_CENTER) {
        place.left = (work.right - place.right) / 2;
        place.top = (work.bottom - place.bottom) / 2;
    } else if (!isChild && !(style & DS_ABSALIGN) && owner) {
        POINT origin = {0, 0};
        ClientToScreen(owner, &origin);
        place.left += origin.x;
        place.top += origin.y;
    }
    if (!isChild) {
        place.left = std::max(std::min(place.left, work.right - place.right), work.left);
        place.top = std::max(std::min(place.top, work.bottom - place.bottom), work.top);
    }
    return place;
}

/// A text as CreateWindow takes it: a number becomes 0xFFFF and the number.
std::u16string ControlText(const TemplateName& text)
{
    if (!text.number)
        return text.text;
    return std::u16string{u'\xFFFF', static_cast<char16_t>(text.number)};
}

bool CreateControl(const TemplateControl& control, HWND dialog, DialogState& state, DWORD dialogStyle, HINSTANCE module, bool wide)
{
    // A border is a sunken edge where dialogs are drawn in relief.
    const bool isSunken = (dialogStyle & DS_3DLOOK) && (control.style & WS_BORDER);
    const HWND window = Create({control.exStyle | WS_EX_NOPARENTNOTIFY | (isSunken ? WS_EX_CLIENTEDGE : 0), ClassOf(control.className),
                                ControlText(control.text), (isSunken ? control.style & ~WS_BORDER : control.style) | WS_CHILD,
                                InPixels(state, control.x, control.y, control.width, control.height), dialog,
                                reinterpret_cast<HMENU>(static_cast<LONG_PTR>(static_cast<int>(control.id))), module, control.data},
                               wide);
    if (!window)
        return (dialogStyle & DS_NOFAILCREATE) != 0;
    if (control.helpId)
        SetWindowContextHelpId(window, control.helpId);
    if (state.font)
        SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(state.font), FALSE);
    if (DialogCode(window) & DLGC_DEFPUSHBUTTON)
        state.result = GetDlgCtrlID(window);
    return true;
}

/// Sends WM_INITDIALOG and sets the focus as its answer asks.
void Initialize(HWND dialog, DialogState& state, DWORD style, LPARAM parameter)
{
    HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
    if (!first)
        first = GetNextDlgGroupItem(dialog, nullptr, FALSE);
    const bool wantsFocus = SendMessageA(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), parameter) != 0;
    if (wantsFocus && IsWindow(dialog) && (!(style & DS_CONTROL) || (style & WS_VISIBLE))) {
        // The procedure may have changed which controls can take it.
        state.focus = GetNextDlgTabItem(dialog, nullptr, FALSE);
        if (!state.focus)
            state.focus = GetNextDlgGroupItem(dialog, nullptr, FALSE);
        FocusControl(state.focus ? state.focus : dialog);
    }
}

struct MenuDestroyer
{
    using pointer = HMENU;
    void operator()(HMENU menu) const
    {
        const DWORD error = GetLastError();
        DestroyMenu(menu);
        SetLastError(error);
    }
};

/// The dialog's window, without its controls. It owns its menu.
HWND CreateFrame(const DialogTemplate& dialog, const DialogCreation& creation, DialogState& sizes, DWORD& style)
{
    if (dialog.style & DS_SETFONT)
        SetFontSize(sizes, dialog.points);
    style = (dialog.style | DS_3DLOOK) & ~static_cast<DWORD>(WS_VISIBLE);
    DWORD exStyle = dialog.exStyle | WS_EX_CONTROLPARENT;
    if (style & DS_MODALFRAME)
        exStyle |= WS_EX_DLGMODALFRAME;
    if (style & DS_CONTROL)
        style &= ~static_cast<DWORD>(WS_CAPTION | WS_SYSMENU);
    std::unique_ptr<HMENU, MenuDestroyer> menu(LoadDialogMenu(creation.module, dialog.menu));
    const bool hasClass = !dialog.className.IsEmpty();
    const std::u16string className =
        hasClass ? dialog.className.number ? u"#" + WideText(std::to_string(dialog.className.number).c_str()) : dialog.className.text
                 : u"#32770";
    const HWND window =
        Create({exStyle, className, dialog.title, style, WindowPlace(dialog, sizes, style, exStyle, creation.owner, menu != nullptr),
                creation.owner, menu.get(), creation.module, nullptr},
               creation.wide);
    if (window)
        static_cast<void>(menu.release());
    return window;
}

/// Fills the dialog; false with the last error.
bool Fill(HWND window, const DialogTemplate& dialog, const DialogCreation& creation, const DialogState& sizes, DWORD style)
{
    const auto state = MakeDialogState(window);
    if (!state)
        return false;
    state->baseWidth = sizes.baseWidth;
    state->baseHeight = sizes.baseHeight;
    state->hasWideProcedure = creation.wide;
    if (dialog.style & DS_SETFONT)
        SetFont(*state, dialog);
    if (dialog.helpId)
        SetWindowContextHelpId(window, dialog.helpId);
    SetWindowLongPtrW(window, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(creation.procedure));
    if (creation.procedure && state->font)
        SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(state->font), FALSE);
    for (const TemplateControl& control : dialog.controls) {
        if (CreateControl(control, window, *state, style, creation.module, creation.wide))
            continue;
        return false;
    }
    if (creation.procedure)
        Initialize(window, *state, style, creation.parameter);
    if ((dialog.style & WS_VISIBLE) && IsWindow(window) && !state->hasEnded && !(GetWindowLongA(window, GWL_STYLE) & WS_VISIBLE))
        ShowWindow(window, SW_SHOWNORMAL);
    return true;
}

}  // namespace

namespace kelgen::posix::user {

HWND CreateDialogWindow(TemplateReader reader, const DialogCreation& creation)
{
    HWND window = nullptr;
    const HWND filled = OrNoMemory(HWND(), [&]() -> HWND {
        const auto dialog = ReadDialogTemplate(reader);
        if (!dialog)
            return Fail(ERROR_INVALID_DATA, HWND());
        DialogState sizes;
        DWORD style = 0;
        window = CreateFrame(*dialog, creation, sizes, style);
        return window && Fill(window, *dialog, creation, sizes, style) ? window : nullptr;
    });
    if (!filled && window) {
        const DWORD error = GetLastError();
        DestroyWindow(window);
        SetLastError(error);
    }
    return filled;
}

}  // namespace kelgen::posix::user

HWND CreateDialogParamA(HINSTANCE module, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    const auto reader = DialogResource(module, FindResourceA(module, name, RT_DIALOG));
    return reader ? CreateDialogWindow(*reader, {module, owner, procedure, parameter, false}) : nullptr;
}

HWND CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    const auto reader = DialogResource(module, FindResourceW(module, name, MAKEINTRESOURCEW(5)));
    return reader ? CreateDialogWindow(*reader, {module, owner, procedure, parameter, true}) : nullptr;
}

HWND CreateDialogIndirectParamA(HINSTANCE module, LPCDLGTEMPLATEA dialogTemplate, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    const auto reader = DialogMemory(dialogTemplate);
    return reader ? CreateDialogWindow(*reader, {module, owner, procedure, parameter, false}) : nullptr;
}

HWND CreateDialogIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialogTemplate, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    const auto reader = DialogMemory(dialogTemplate);
    return reader ? CreateDialogWindow(*reader, {module, owner, procedure, parameter, true}) : nullptr;
}

BOOL MapDialogRect(HWND dialog, LPRECT rectangle)
{
    const auto state = DialogStateOf(dialog);
    if (!state || !rectangle)
        return FALSE;
    *rectangle = InPixels(*state, rectangle->left, rectangle->top, rectangle->right, rectangle->bottom);
    return TRUE;
}

LONG GetDialogBaseUnits()
{
    const DialogState plain;
    return MAKELONG(plain.baseWidth, plain.baseHeight);
}
