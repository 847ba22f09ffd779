// DialogText.h: how wide texts of the dialog font are: the same numbers on every machine.
#pragma once

#include <kelgen/platform/Export.h>

#include <string>
#include <string_view>
#include <vector>

namespace kelgen {

constexpr int kDialogTextHeight = 13;  ///< Of a line, in pixels.

/// The width in pixels of @p text in one line. Characters outside of Latin-1 are 7 wide, those of East Asia and all above U+FFFF 11.
/// Source: the advance widths of the font DejaVu Sans at a height of 11 pixels, rounded each.
KELGEN_PLATFORM_API int DialogTextWidth(std::u16string_view text);

/// The lines of @p text, at most @p most of them: broken where it says so, and between words where it would be wider than @p width. A word
/// that is wider has a line of its own.
KELGEN_PLATFORM_API std::vector<std::u16string> WrapDialogText(std::u16string_view text, int width, std::size_t most = 100);

/// @p text as a menu or a control shows it: a single '&' goes, two of them are one. @p underlined: the place of the character after the
/// first single one, or -1.
KELGEN_PLATFORM_API std::u16string WithoutMnemonic(std::u16string_view text, int* underlined = nullptr);

}  // namespace kelgen
