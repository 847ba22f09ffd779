// ShownMessageBox.h: a message box that somebody sees and answers.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix::user {

struct BoxButton
{
    int id;
    const char16_t* label;
};

struct ShownBox
{
    std::u16string_view text;
    std::u16string_view caption;
    UINT icon = 0;  // MB_ICON flag
    std::vector<BoxButton> buttons;
    int answer = 0;  // when nobody is there any more
};

/// Runs the box as a dialog: the number of the button that was chosen.
int RunMessageBox(HWND owner, const ShownBox& box);

}  // namespace kelgen::posix::user
