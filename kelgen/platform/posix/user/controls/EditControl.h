// EditControl.h: an edit control's state, for its messages and its keys.
#pragma once

#include <kelgen/platform/posix/user/controls/ControlBase.h>
#include <kelgen/platform/posix/user/controls/EditModel.h>

namespace kelgen::posix::user {

struct EditState
{
    EditModel model;
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

void OnEditKey(HWND edit, EditState& state, UINT key);
void OnEditCharacter(HWND edit, EditState& state, WCHAR character);
/// WM_CUT, WM_COPY, WM_PASTE, WM_CLEAR: between edit controls of the process.
void OnEditClipboard(HWND edit, EditState& state, UINT message);

}  // namespace kelgen::posix::user
