// ComboBoxControl.h: a combo box's state: its edit control and its list are windows of their own.
#pragma once

#include <kelgen/platform/posix/user/controls/ControlBase.h>

namespace kelgen::posix::user {

struct ComboBoxState final : ControlData
{
    void Show(const Window& combo, ControlPicture& picture) const override;

    HWND edit = nullptr;  // null for CBS_DROPDOWNLIST
    HWND list = nullptr;
    HFONT font = nullptr;
    int itemHeight = 16;
    int dropHeight = 0;
    int dropWidth = 0;
    bool takesKey = false;  // a key goes to the list
    bool isDropped = false;
    bool hasFocus = false;
    bool isQuiet = false;  // the edit control's changes are our own
    bool hasExtendedKeys = false;
};

/// What the creation parameter of an edit control says that belongs to a combo box.
inline const char kEditOfCombo = 0;

/// Shows or hides the list; @p chooses: what is selected in it counts.
void ShowList(HWND combo, ComboBoxState& state, bool isShown, bool chooses);

/// Puts the text of the list's current item into the edit control.
void TakeListText(HWND combo, ComboBoxState& state);

/// A key, even one that the edit control passes on.
void OnComboKey(HWND combo, ComboBoxState& state, UINT key);
/// WM_COMMAND from the edit control or the list.
void OnComboCommand(HWND combo, ComboBoxState& state, UINT code, HWND from);
void OnComboFocus(HWND combo, ComboBoxState& state, bool hasIt);

}  // namespace kelgen::posix::user
