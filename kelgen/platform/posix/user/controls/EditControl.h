// EditControl.h: an edit control's state, for its messages and its keys.
#pragma once

#include <kelgen/platform/posix/user/controls/ControlBase.h>
#include <kelgen/platform/posix/user/controls/EditModel.h>

namespace kelgen::posix::user {

// What a character takes when a point stands for a position.
constexpr int kCharacterWidth = 7;
constexpr int kLineHeight = 13;

struct EditState final : ControlData
{
    void Show(const Window& edit, ControlPicture& picture) const override;

    EditModel model;
    std::size_t firstLine = 0;    // in view
    std::size_t firstColumn = 0;  // in view
    HFONT font = nullptr;
    WCHAR passwordCharacter = 0;
    DWORD margins = 0;
    HWND combo = nullptr;     // the combo box whose edit control this is
    bool isInDialog = false;  // the dialog manager has asked what keys it wants
};

/// Replaces the selection and tells the parent: EN_UPDATE and EN_CHANGE, EN_MAXTEXT when some did not fit.
void ReplaceSelection(HWND edit, EditState& state, std::u16string_view text, bool canUndo);

/// Sends EN_UPDATE and EN_CHANGE to the parent.
void TellOfChange(HWND edit);

/// Scrolls so that the caret is in view, as far as the style lets it.
void ShowCaret(HWND edit, EditState& state);

/// A press, a move with the mouse captured, or a release at @p position of the text.
void SelectByMouse(HWND edit, EditState& state, UINT message, std::size_t position);

void OnEditKey(HWND edit, EditState& state, UINT key);
void OnEditCharacter(HWND edit, EditState& state, WCHAR character);
/// WM_CUT, WM_COPY, WM_PASTE, WM_CLEAR: between edit controls of the process.
void OnEditClipboard(HWND edit, EditState& state, UINT message);

}  // namespace kelgen::posix::user
