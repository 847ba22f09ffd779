// EditKeys.cpp: keys and characters in edit controls.
#include <kelgen/platform/posix/user/controls/EditControl.h>

#include <kelgen/platform/posix/nls/api/LetterCase.h>
#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>
#include <mutex>

namespace kelgen::posix::user {

namespace {

/// What was cut or copied last. There is no clipboard that other programs share.
struct Clipboard
{
    std::mutex mutex;
    std::u16string text;

    static Clipboard& Get()
    {
        static Clipboard& clipboard = *new Clipboard;
        return clipboard;
    }
};

bool IsDown(int key)
{
    return GetKeyState(key) < 0;
}

bool IsReadOnly(HWND edit)
{
    return (StyleOf(edit) & ES_READONLY) != 0;
}

/// The position a line above or below the caret, in the same column as far as the line reaches.
std::size_t OtherLine(const EditModel& model, int step)
{
    const std::size_t line = model.LineOf(model.Caret());
    const std::size_t column = model.Caret() - model.LineStart(line);
    if (step < 0 && line == 0)
        return model.Caret();
    const std::size_t start = model.LineStart(line + static_cast<std::size_t>(step));
    return start == std::u16string::npos ? model.Caret() : start + std::min(column, model.LineLength(start));
}

std::size_t Destination(const EditModel& model, UINT key)
{
    const std::size_t caret = model.Caret();
    const bool isControl = IsDown(VK_CONTROL);
    const std::size_t line = model.LineStart(model.LineOf(caret));
    switch (key) {
    case VK_LEFT:
        return isControl ? model.WordBefore(caret) : model.Before(caret);
    case VK_RIGHT:
        return isControl ? model.WordAfter(caret) : model.After(caret);
    case VK_HOME:
        return isControl ? 0 : line;
    case VK_END:
        return isControl ? model.Length() : line + model.LineLength(caret);
    case VK_UP:
        return model.hasLines ? OtherLine(model, -1) : model.Before(caret);
    default:
        return model.hasLines ? OtherLine(model, 1) : model.After(caret);
    }
}

void Delete(HWND edit, EditState& state, bool isForward)
{
    EditModel& model = state.model;
    if (IsReadOnly(edit))
        return;
    if (!model.HasSelection()) {
        const std::size_t caret = model.Caret();
        model.Select(caret, isForward ? model.After(caret) : model.Before(caret));
    }
    if (model.HasSelection())
        ReplaceSelection(edit, state, u"", true);
}

/// Return, Escape and Tab in an edit control with lines: it asks for all keys, and passes on what the dialog wants.
void PassToDialog(HWND edit, UINT key)
{
    const HWND dialog = GetParent(edit);
    if (key == VK_ESCAPE) {
        PostMessageW(dialog, WM_CLOSE, 0, 0);
    } else if (key == VK_TAB) {
        SendMessageW(dialog, WM_NEXTDLGCTL, IsDown(VK_SHIFT), 0);
    } else if (!(StyleOf(edit) & ES_WANTRETURN)) {
        const LRESULT number = SendMessageW(dialog, DM_GETDEFID, 0, 0);
        const HWND button = HIWORD(number) == DC_HASDEFID ? GetDlgItem(dialog, static_cast<short>(LOWORD(number))) : nullptr;
        if (!button)
            return;
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), TRUE);
        PostMessageW(button, WM_KEYDOWN, VK_RETURN, 0);
    }
}

/// Keys that a combo box's edit control leaves to its list.
bool IsKeyOfCombo(UINT key)
{
    return key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT || key == VK_F4 || key == VK_RETURN || key == VK_ESCAPE;
}

std::u16string InCaseOf(HWND edit, WCHAR character)
{
    const DWORD style = StyleOf(edit);
    if (style & ES_UPPERCASE)
        CharUpperBuffW(&character, 1);
    else if (style & ES_LOWERCASE)
        CharLowerBuffW(&character, 1);
    return {static_cast<char16_t>(character)};
}

}  // namespace

void OnEditKey(HWND edit, EditState& state, UINT key)
{
    EditModel& model = state.model;
    if (state.combo && IsKeyOfCombo(key)) {
        SendMessageW(state.combo, WM_KEYDOWN, key, 0);
        return;
    }
    switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_HOME:
    case VK_END:
    case VK_UP:
    case VK_DOWN: {
        const std::size_t caret = Destination(model, key);
        const std::size_t other = model.Caret() == model.SelectionEnd() ? model.SelectionStart() : model.SelectionEnd();
        model.Select(IsDown(VK_SHIFT) ? other : caret, caret);
        return;
    }
    case VK_DELETE:
        return Delete(edit, state, true);
    case VK_RETURN:
    case VK_ESCAPE:
    case VK_TAB:
        if (model.hasLines && state.isInDialog)
            PassToDialog(edit, key);
        return;
    default:
        return;
    }
}

void OnEditCharacter(HWND edit, EditState& state, WCHAR character)
{
    constexpr WCHAR kCopy = 3;
    constexpr WCHAR kPaste = 22;
    constexpr WCHAR kCut = 24;
    constexpr WCHAR kUndo = 26;
    const DWORD style = StyleOf(edit);
    switch (character) {
    case '\b':
        return Delete(edit, state, false);
    case kCopy:
        SendMessageW(edit, WM_COPY, 0, 0);
        return;
    case kPaste:
        SendMessageW(edit, WM_PASTE, 0, 0);
        return;
    case kCut:
        SendMessageW(edit, WM_CUT, 0, 0);
        return;
    case kUndo:
        SendMessageW(edit, WM_UNDO, 0, 0);
        return;
    case '\r':
    case '\n':
        if (state.model.hasLines && !(style & ES_READONLY) && (!state.isInDialog || (style & ES_WANTRETURN)))
            ReplaceSelection(edit, state, u"\r\n", true);
        return;
    case '\t':
        if (state.model.hasLines && !(style & ES_READONLY) && !state.isInDialog)
            ReplaceSelection(edit, state, u"\t", true);
        return;
    default:
        break;
    }
    if ((style & ES_NUMBER) && (character < '0' || character > '9')) {
        MessageBeep(0xFFFFFFFF);
        return;
    }
    if (!(style & ES_READONLY) && character >= ' ' && character != 0x7F)
        ReplaceSelection(edit, state, InCaseOf(edit, character), true);
}

void OnEditClipboard(HWND edit, EditState& state, UINT message)
{
    Clipboard& clipboard = Clipboard::Get();
    std::u16string pasted;
    {
        const std::lock_guard lock(clipboard.mutex);
        if ((message == WM_CUT || message == WM_COPY) && state.model.HasSelection() && !state.passwordCharacter)
            clipboard.text = state.model.SelectedText();
        if (message == WM_PASTE)
            pasted = clipboard.text;
    }
    if (message == WM_COPY || IsReadOnly(edit) || (message != WM_PASTE && !state.model.HasSelection()))
        return;
    if (!state.model.hasLines)
        pasted = pasted.substr(0, pasted.find(u'\r'));
    ReplaceSelection(edit, state, pasted, true);
}

}  // namespace kelgen::posix::user
