// Input.h: what a page says of mouse and keyboard, as input of the platform.
#pragma once

#include <kelgen/platform/Win32.h>
#include <kelgen/view/Export.h>

#include <optional>
#include <string_view>
#include <vector>

namespace kelgen::view::detail {

/// The events of a request's lines:
///
///     move X Y          the cursor's place on the desktop
///     down BUTTON       left, middle or right
///     up BUTTON
///     wheel STEPS       away from the user, or towards them when negative
///     press KEY         a virtual key's number
///     release KEY
///     text UNIT         a character's UTF-16 unit, as hexadecimal digits
///
/// Nothing when one of the lines is none of these, or there are more than 500.
KELGEN_VIEW_TESTED_API std::optional<std::vector<INPUT>> ReadInput(std::string_view lines);

/// What the page has pressed and not let go.
class KELGEN_VIEW_TESTED_API HeldInput
{
public:
    /// Notes what @p inputs press and let go.
    void Note(const std::vector<INPUT>& inputs);
    /// The events that let everything go; nothing is held then.
    std::vector<INPUT> LetGo();

private:
    bool m_keys[256]{};
    DWORD m_buttons = 0;  // MOUSEEVENTF_ flags of presses
};

}  // namespace kelgen::view::detail
