// DialogState.h: what a dialog remembers.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <memory>

namespace kelgen::posix::user {

struct DialogState
{
    INT_PTR result = 1;  // by contract the default button's number until the dialog ends
    bool hasEnded = false;
    bool hasWideProcedure = false;
    HWND focus = nullptr;  // while another window is active
    HFONT font = nullptr;
    std::shared_ptr<void> ownFont;  // of the template: deleted with the dialog
    int baseWidth = 9;              // of an average character, in pixels
    int baseHeight = 16;
};

/// The state of a dialog of the calling thread; a window of the dialog class gets one at first. Null for others.
std::shared_ptr<DialogState> DialogStateOf(HWND dialog);

/// The state of any window of the calling thread that uses DefDlgProcA.
std::shared_ptr<DialogState> MakeDialogState(HWND dialog);

/// Sets the focus as moving through a dialog does: the whole text of an edit control is selected.
void FocusControl(HWND control);

/// FocusControl, and the focused push button becomes the default one; without one the dialog's own is it again.
void FocusAndMarkDefault(HWND dialog, HWND control);

/// The low 16 bits of WM_GETDLGCODE's answer; with the message that is asked about.
UINT DialogCode(HWND control, const MSG* message = nullptr);

}  // namespace kelgen::posix::user
