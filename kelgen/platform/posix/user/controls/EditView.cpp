// EditView.cpp: what of an edit control's text is in view, and the mouse that selects in it.
#include <kelgen/platform/posix/user/controls/EditControl.h>

#include <kelgen/platform/posix/user/api/User.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

std::size_t CellsIn(LONG pixels, int cell)
{
    return static_cast<std::size_t>(std::max<LONG>(pixels / cell, 1));
}

/// The first cell in view when @p wanted is to be among @p count of them.
std::size_t FirstFor(std::size_t first, std::size_t wanted, std::size_t count)
{
    if (wanted < first)
        return wanted;
    return wanted >= first + count ? wanted - count + 1 : first;
}

}  // namespace

void ShowCaret(HWND edit, EditState& state)
{
    RECT client{};
    if (!GetClientRect(edit, &client))
        return;
    const EditModel& model = state.model;
    const std::size_t line = model.LineOf(model.Caret());
    const std::size_t column = model.Caret() - model.LineStart(line);
    const DWORD style = StyleOf(edit);
    if (style & ES_AUTOHSCROLL)
        state.firstColumn = FirstFor(state.firstColumn, column, CellsIn(client.right - 2, kCharacterWidth));
    if (model.hasLines && (style & (ES_AUTOVSCROLL | WS_VSCROLL)))
        state.firstLine = FirstFor(state.firstLine, line, CellsIn(client.bottom, kLineHeight));
}

void SelectByMouse(HWND edit, EditState& state, UINT message, std::size_t position)
{
    EditModel& model = state.model;
    switch (message) {
    case WM_LBUTTONDOWN:
        model.Select(position, position);
        SetFocus(edit);
        SetCapture(edit);
        return;
    case WM_MOUSEMOVE:
        model.Select(model.Caret() == model.SelectionEnd() ? model.SelectionStart() : model.SelectionEnd(), position);
        return;
    default:
        ReleaseCapture();
    }
}

void EditState::Show(const Window& edit, ControlPicture& picture) const
{
    picture.kind = EControlKind::edit;
    picture.cellWidth = kCharacterWidth;
    picture.cellHeight = kLineHeight;
    const std::u16string& text = model.Text();
    const auto height = static_cast<std::size_t>(std::max<LONG>(edit.client.bottom - edit.client.top, 0));
    const std::size_t most = model.hasLines ? std::min(height / kLineHeight + 1, kMostShownRows) : 1;
    const auto width = static_cast<std::size_t>(std::max<LONG>(edit.client.right - edit.client.left, 0));
    const std::size_t columns = std::min(width / kCharacterWidth + 1, kLongestShownText);
    std::size_t start = model.LineStart(firstLine);
    for (std::size_t i = 0; i < most && start != text.npos; ++i) {
        std::size_t end = model.hasLines ? text.find(u"\r\n", start) : text.npos;
        end = std::min(end, text.size());
        const std::size_t from = std::min(start + firstColumn, end);
        const std::size_t to = std::min(end, from + columns);
        LinePicture line;
        line.text = passwordCharacter ? std::u16string(to - from, static_cast<char16_t>(passwordCharacter)) : text.substr(from, to - from);
        line.selectionStart = static_cast<int>(std::clamp(model.SelectionStart(), from, to) - from);
        line.selectionEnd = static_cast<int>(std::clamp(model.SelectionEnd(), from, to) - from);
        if (model.Caret() >= from && model.Caret() <= to && picture.caretLine < 0) {
            picture.caretLine = static_cast<int>(i);
            picture.caretColumn = static_cast<int>(model.Caret() - from);
        }
        picture.lines.push_back(std::move(line));
        start = end < text.size() ? end + 2 : text.npos;
    }
}

}  // namespace kelgen::posix::user
