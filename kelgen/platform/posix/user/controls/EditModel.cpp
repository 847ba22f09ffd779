// EditModel.cpp: editing, undo, lines and words.
#include <kelgen/platform/posix/user/controls/EditModel.h>

#include <algorithm>

namespace kelgen::posix::user {

void EditModel::SetText(std::u16string_view text)
{
    m_text = text;
    m_anchor = m_caret = 0;
    m_canUndo = false;
    isModified = false;
}

void EditModel::Select(std::size_t anchor, std::size_t caret)
{
    m_anchor = std::min(anchor, Length());
    m_caret = std::min(caret, Length());
}

std::u16string_view EditModel::SelectedText() const
{
    return std::u16string_view(m_text).substr(SelectionStart(), SelectionEnd() - SelectionStart());
}

bool EditModel::Replace(std::u16string_view text, bool canUndo)
{
    const std::size_t start = SelectionStart();
    const std::size_t selected = SelectionEnd() - start;
    const std::size_t left = Length() - selected;
    const std::size_t room = limit > left ? limit - left : 0;
    const std::u16string_view fitting = text.substr(0, room);

    // Characters typed one after the other are undone together.
    const bool continues = canUndo && m_canUndo && selected == 0 && m_undoPosition + m_undoLength == start;
    if (continues) {
        m_undoLength += fitting.size();
    } else {
        m_undoText = SelectedText();
        m_undoPosition = start;
        m_undoLength = fitting.size();
    }
    m_canUndo = canUndo && (continues || m_undoLength > 0 || !m_undoText.empty());
    m_text.replace(start, selected, fitting);
    m_anchor = m_caret = start + fitting.size();
    isModified = true;
    return fitting.size() == text.size();
}

bool EditModel::Undo()
{
    if (!m_canUndo)
        return false;
    const std::u16string replaced = m_text.substr(m_undoPosition, m_undoLength);
    m_text.replace(m_undoPosition, m_undoLength, m_undoText);
    m_anchor = m_undoPosition;
    m_caret = m_undoPosition + m_undoText.size();
    m_undoLength = m_undoText.size();
    m_undoText = replaced;
    isModified = true;
    return true;
}

bool EditModel::IsLineEnd(std::size_t position) const
{
    return hasLines && position + 1 < Length() && m_text[position] == u'\r' && m_text[position + 1] == u'\n';
}

std::size_t EditModel::LineCount() const
{
    return LineOf(Length()) + 1;
}

std::size_t EditModel::LineOf(std::size_t position) const
{
    std::size_t line = 0;
    for (std::size_t i = 0; i + 1 < std::min(position, Length()); ++i)
        line += IsLineEnd(i);
    return line;
}

std::size_t EditModel::LineStart(std::size_t line) const
{
    std::size_t start = 0;
    for (std::size_t i = 0; line > 0; ++i) {
        if (i >= Length())
            return std::u16string::npos;
        if (!IsLineEnd(i))
            continue;
        start = i + 2;
        --line;
    }
    return start;
}

std::size_t EditModel::LineLength(std::size_t position) const
{
    const std::size_t start = LineStart(LineOf(position));
    std::size_t end = start;
    while (end < Length() && !IsLineEnd(end))
        ++end;
    return end - start;
}

std::size_t EditModel::Before(std::size_t position) const
{
    if (position >= 2 && IsLineEnd(position - 2))
        return position - 2;
    return position > 0 ? position - 1 : 0;
}

std::size_t EditModel::After(std::size_t position) const
{
    return std::min(Length(), position + (IsLineEnd(position) ? 2 : 1));
}

std::size_t EditModel::WordBefore(std::size_t position) const
{
    while (position > 0 && m_text[position - 1] <= u' ')
        --position;
    while (position > 0 && m_text[position - 1] > u' ')
        --position;
    return position;
}

std::size_t EditModel::WordAfter(std::size_t position) const
{
    while (position < Length() && m_text[position] > u' ')
        ++position;
    while (position < Length() && m_text[position] <= u' ')
        ++position;
    return position;
}

}  // namespace kelgen::posix::user
