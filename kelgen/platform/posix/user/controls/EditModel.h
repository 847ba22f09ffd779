// EditModel.h: the text of an edit control, its selection, limit and undo.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <string>
#include <string_view>

namespace kelgen::posix::user {

/// Text with a selection from the anchor to the caret. Positions are units from 0 to the text's length.
class EditModel
{
public:
    const std::u16string& Text() const { return m_text; }
    std::size_t Length() const { return m_text.size(); }

    /// Replaces everything; the selection is at the start, nothing can be undone, the text is unmodified.
    void SetText(std::u16string_view text);

    std::size_t SelectionStart() const { return m_anchor < m_caret ? m_anchor : m_caret; }
    std::size_t SelectionEnd() const { return m_anchor < m_caret ? m_caret : m_anchor; }
    std::size_t Caret() const { return m_caret; }
    bool HasSelection() const { return m_anchor != m_caret; }
    /// Positions behind the text are its end.
    void Select(std::size_t anchor, std::size_t caret);
    std::u16string_view SelectedText() const;

    /// Replaces the selection by as much of @p text as the limit leaves room for, and puts the caret behind it. False when some
    /// was cut off.
    bool Replace(std::u16string_view text, bool canUndo);
    /// Swaps the last replacement with what it replaced. False when there is none.
    bool Undo();
    bool CanUndo() const { return m_canUndo; }
    void ForgetUndo() { m_canUndo = false; }

    std::size_t limit = 30000;
    bool isModified = false;
    bool hasLines = false;  // CR LF ends a line

    // Lines, of which a text without lines is the only one.
    std::size_t LineCount() const;
    std::size_t LineOf(std::size_t position) const;
    /// The position at which @p line starts; npos when there is none.
    std::size_t LineStart(std::size_t line) const;
    /// The length of the line that holds @p position, without its end.
    std::size_t LineLength(std::size_t position) const;

    /// One step from @p position; a line's end is one character.
    std::size_t Before(std::size_t position) const;
    std::size_t After(std::size_t position) const;
    std::size_t WordBefore(std::size_t position) const;
    std::size_t WordAfter(std::size_t position) const;

private:
    bool IsLineEnd(std::size_t position) const;

    std::u16string m_text;
    std::size_t m_anchor = 0;
    std::size_t m_caret = 0;
    bool m_canUndo = false;
    std::size_t m_undoPosition = 0;
    std::size_t m_undoLength = 0;  // of what was put in
    std::u16string m_undoText;     // what it replaced
};

}  // namespace kelgen::posix::user
