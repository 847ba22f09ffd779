// EditControl.cpp: the messages of edit controls.
#include <kelgen/platform/posix/user/controls/EditControl.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/api/LetterCase.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/controls/ComboBoxControl.h>

#include <algorithm>
#include <cstring>

namespace kelgen::posix::user {

namespace {

constexpr LRESULT kNone = -1;

LRESULT Position(std::size_t position)
{
    return position == std::u16string::npos ? kNone : static_cast<LRESULT>(position);
}

bool TellsOfSetText(HWND edit)
{
    return !(StyleOf(edit) & ES_MULTILINE);
}

void Create(HWND edit, EditState& state, const CREATESTRUCTW& create)
{
    const DWORD style = StyleOf(edit);
    state.model.hasLines = (style & ES_MULTILINE) != 0;
    if (style & ES_PASSWORD)
        state.passwordCharacter = '*';
    if (create.lpCreateParams == &kEditOfCombo)
        state.combo = create.hwndParent;
    if (create.lpszName)
        state.model.SetText(WideText(create.lpszName));
}

LRESULT SetText(HWND edit, EditState& state, LPCWSTR text)
{
    std::u16string units(WideText(text));
    const DWORD style = StyleOf(edit);
    if (style & ES_UPPERCASE)
        CharUpperBuffW(reinterpret_cast<LPWSTR>(units.data()), static_cast<DWORD>(units.size()));
    else if (style & ES_LOWERCASE)
        CharLowerBuffW(reinterpret_cast<LPWSTR>(units.data()), static_cast<DWORD>(units.size()));
    state.model.SetText(units);
    state.firstLine = state.firstColumn = 0;
    if (TellsOfSetText(edit))
        TellOfChange(edit);
    return TRUE;
}

LRESULT GetText(const EditState& state, WPARAM size, WCHAR* buffer)
{
    if (!buffer || size == 0)
        return 0;
    const std::size_t count = std::min<std::size_t>(state.model.Length(), size - 1);
    *std::copy_n(state.model.Text().begin(), count, buffer) = 0;
    return static_cast<LRESULT>(count);
}

LRESULT GetSelection(const EditModel& model, DWORD* start, DWORD* end)
{
    const std::size_t first = model.SelectionStart();
    const std::size_t last = model.SelectionEnd();
    if (start)
        *start = static_cast<DWORD>(first);
    if (end)
        *end = static_cast<DWORD>(last);
    return first > 0xFFFF || last > 0xFFFF ? kNone : MAKELONG(first, last);
}

LRESULT SetSelection(EditModel& model, int start, int end)
{
    if (start == -1)
        model.Select(model.Caret(), model.Caret());
    else
        model.Select(static_cast<std::size_t>(start < 0 ? 0 : start), static_cast<unsigned>(end));
    return 1;
}

LRESULT GetLine(const EditModel& model, WPARAM line, WCHAR* buffer)
{
    const std::size_t start = model.LineStart(model.hasLines ? line : 0);
    if (start == std::u16string::npos || !buffer)
        return 0;
    // By contract the buffer starts with its own size, since the message has no room for it, and text that fills it is not terminated.
    const std::size_t size = buffer[0];
    const std::size_t length = model.LineLength(start);
    const std::size_t count = std::min(size, length);
    std::copy_n(model.Text().begin() + static_cast<std::ptrdiff_t>(start), count, buffer);
    if (count < size)
        buffer[count] = 0;
    return static_cast<LRESULT>(count);
}

LRESULT LineLength(const EditModel& model, int position)
{
    if (position == -1) {
        // What of the selection's lines is not selected.
        const std::size_t first = model.LineStart(model.LineOf(model.SelectionStart()));
        const std::size_t last = model.LineStart(model.LineOf(model.SelectionEnd())) + model.LineLength(model.SelectionEnd());
        return static_cast<LRESULT>(last - first - (model.SelectionEnd() - model.SelectionStart()));
    }
    if (!model.hasLines)
        return static_cast<LRESULT>(model.Length());
    return static_cast<LRESULT>(model.LineLength(static_cast<unsigned>(position)));
}

void SetLimit(EditModel& model, WPARAM limit)
{
    constexpr DWORD kMostInLine = 0x7FFFFFFE;
    constexpr DWORD kMost = 0xFFFFFFFF;
    const DWORD most = model.hasLines ? kMost : kMostInLine;
    model.limit = limit == 0 ? most : std::min<std::size_t>(limit, most);
}

LRESULT PositionFromPoint(const EditState& state, LPARAM point)
{
    const EditModel& model = state.model;
    const auto row = static_cast<std::size_t>(std::max<int>(static_cast<short>(HIWORD(point)), 0) / kLineHeight) + state.firstLine;
    const auto column = static_cast<std::size_t>(std::max<int>(static_cast<short>(LOWORD(point)), 0) / kCharacterWidth) + state.firstColumn;
    const std::size_t line = std::min(row, model.LineCount() - 1);
    const std::size_t start = model.LineStart(line);
    const std::size_t position = start + std::min(column, model.LineLength(start));
    return MAKELONG(position, line);
}

LRESULT PointFromPosition(const EditState& state, std::size_t position)
{
    const EditModel& model = state.model;
    if (position >= model.Length())
        return kNone;
    const std::size_t line = model.LineOf(position);
    const auto column = static_cast<int>(position - model.LineStart(line)) - static_cast<int>(state.firstColumn);
    const int row = static_cast<int>(line) - static_cast<int>(state.firstLine);
    return MAKELONG(column * kCharacterWidth, row * kLineHeight);
}

LRESULT GetCode(EditState& state, LPARAM message)
{
    // Only a dialog's keys come with the message.
    if (message)
        state.isInDialog = true;
    return DLGC_WANTCHARS | DLGC_HASSETSEL | DLGC_WANTARROWS | (state.model.hasLines ? DLGC_WANTALLKEYS : 0);
}

LRESULT EditMessage(HWND edit, EditState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    EditModel& model = state.model;
    const auto number = static_cast<int>(wParam);
    switch (message) {
    case EM_GETSEL:
        return GetSelection(model, reinterpret_cast<DWORD*>(wParam), reinterpret_cast<DWORD*>(lParam));
    case EM_SETSEL:
        return SetSelection(model, number, static_cast<int>(lParam));
    case EM_REPLACESEL:
        ReplaceSelection(edit, state, WideText(reinterpret_cast<LPCWSTR>(lParam)), wParam != 0);
        return 1;
    case EM_GETMODIFY:
        return model.isModified;
    case EM_SETMODIFY:
        model.isModified = wParam != 0;
        return 0;
    case EM_GETLINECOUNT:
        return static_cast<LRESULT>(model.LineCount());
    case EM_LINEINDEX:
        return Position(model.LineStart(number == -1 ? model.LineOf(model.Caret()) : wParam));
    case EM_LINEFROMCHAR:
        return static_cast<LRESULT>(model.LineOf(number == -1 ? model.SelectionStart() : wParam));
    case EM_LINELENGTH:
        return LineLength(model, number);
    case EM_GETLINE:
        return GetLine(model, wParam, reinterpret_cast<WCHAR*>(lParam));
    case EM_LIMITTEXT:
        SetLimit(model, wParam);
        return 0;
    case EM_GETLIMITTEXT:
        return static_cast<LRESULT>(model.limit);
    case EM_CANUNDO:
        return model.CanUndo();
    case EM_UNDO:
    case WM_UNDO:
        if ((StyleOf(edit) & ES_READONLY) || !model.Undo())
            return FALSE;
        TellOfChange(edit);
        return TRUE;
    case EM_EMPTYUNDOBUFFER:
        model.ForgetUndo();
        return 0;
    case EM_SETREADONLY:
        ChangeStyle(edit, ES_READONLY, wParam ? ES_READONLY : 0);
        return 1;
    case EM_SETPASSWORDCHAR:
        state.passwordCharacter = static_cast<WCHAR>(wParam);
        ChangeStyle(edit, ES_PASSWORD, wParam ? ES_PASSWORD : 0);
        return 1;
    case EM_GETPASSWORDCHAR:
        return state.passwordCharacter;
    case EM_SETMARGINS:
        state.margins = static_cast<DWORD>(lParam);
        return 0;
    case EM_GETMARGINS:
        return static_cast<LRESULT>(state.margins);
    case EM_SCROLLCARET:
        ShowCaret(edit, state);
        return 1;
    case EM_LINESCROLL:
        if (model.hasLines)
            state.firstLine = static_cast<std::size_t>(std::clamp<LPARAM>(static_cast<LPARAM>(state.firstLine) + static_cast<int>(lParam),
                                                                          0, static_cast<LPARAM>(model.LineCount()) - 1));
        return model.hasLines;
    case EM_GETFIRSTVISIBLELINE:
        return static_cast<LRESULT>(model.hasLines ? state.firstLine : state.firstColumn);
    case EM_GETRECT:
        GetClientRect(edit, reinterpret_cast<LPRECT>(lParam));
        return 1;
    case EM_CHARFROMPOS:
        return PositionFromPoint(state, lParam);
    case EM_POSFROMCHAR:
        return PointFromPosition(state, wParam);
    default:
        return 0;
    }
}

}  // namespace

void TellOfChange(HWND edit)
{
    NotifyParent(edit, EN_UPDATE);
    NotifyParent(edit, EN_CHANGE);
}

void ReplaceSelection(HWND edit, EditState& state, std::u16string_view text, bool canUndo)
{
    const bool fits = state.model.Replace(text, canUndo);
    if (!fits)
        NotifyParent(edit, EN_MAXTEXT);
    TellOfChange(edit);
}

namespace {

/// How many lines are wholly in view, at least one.
int LinesIn(HWND edit)
{
    RECT client{};
    GetClientRect(edit, &client);
    return std::max<int>(client.bottom / kLineHeight, 1);
}

LRESULT HandleMessage(HWND edit, EditState& state, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message >= EM_GETSEL && message <= EM_GETLIMITTEXT + 2)
        return EditMessage(edit, state, message, wParam, lParam);
    switch (message) {
    case WM_CREATE:
        Create(edit, state, *reinterpret_cast<const CREATESTRUCTW*>(lParam));
        return 0;
    case WM_SETTEXT:
        return SetText(edit, state, reinterpret_cast<LPCWSTR>(lParam));
    case WM_GETTEXT:
        return GetText(state, wParam, reinterpret_cast<WCHAR*>(lParam));
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(state.model.Length());
    case WM_GETDLGCODE:
        return GetCode(state, lParam);
    case WM_KEYDOWN:
        OnEditKey(edit, state, static_cast<UINT>(wParam));
        ShowCaret(edit, state);
        return 0;
    case WM_CHAR:
        OnEditCharacter(edit, state, static_cast<WCHAR>(wParam));
        ShowCaret(edit, state);
        return 0;
    case WM_CUT:
    case WM_COPY:
    case WM_PASTE:
    case WM_CLEAR:
        OnEditClipboard(edit, state, message);
        ShowCaret(edit, state);
        return 0;
    case WM_UNDO:
        return EditMessage(edit, state, message, wParam, lParam);
    case WM_SETFOCUS:
        NotifyParent(edit, EN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        NotifyParent(edit, EN_KILLFOCUS);
        return 0;
    case WM_VSCROLL:
        state.firstLine = static_cast<std::size_t>(
            ScrolledRow(edit, wParam, static_cast<int>(state.model.LineCount()), LinesIn(edit), static_cast<int>(state.firstLine)));
        return 0;
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
        if (GetCapture() != edit)
            return 0;
        [[fallthrough]];
    case WM_LBUTTONDOWN:
        SelectByMouse(edit, state, message, LOWORD(PositionFromPoint(state, lParam)));
        return 0;
    case WM_LBUTTONDBLCLK:
        state.model.Select(state.model.WordBefore(state.model.Caret()), state.model.WordAfter(state.model.Caret()));
        return 0;
    case WM_PAINT: {
        // By contract text that cannot be changed has the colours of labels.
        const DWORD style = StyleOf(edit);
        return PaintControl(edit, style & WS_DISABLED || style & ES_READONLY ? WM_CTLCOLORSTATIC : WM_CTLCOLOREDIT);
    }
    case WM_SETFONT:
        state.font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(state.font);
    default:
        return DefWindowProcW(edit, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK EditProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto holder = ControlState<EditState>(edit);
    if (!holder)
        return 0;
    const LRESULT result = HandleMessage(edit, *holder, message, wParam, lParam);
    const EditModel& model = holder->model;
    if (const Window* const window = OwnWindow(edit); window && (window->style & WS_VSCROLL) && model.hasLines)
        SetRowBar(edit, static_cast<int>(model.LineCount()), LinesIn(edit), static_cast<int>(holder->firstLine));
    return result;
}

}  // namespace kelgen::posix::user
