// StandardText.h: which texts of the standard library and of the language a CWStr takes as they are.
#pragma once

#include <string_view>
#include <type_traits>

namespace kelgen::detail {

/// Text of the standard library in 16-bit units: a u"" literal, std::u16string, its views; and the platform's where its units have 16 bits.
template <class TEXT>
concept StandardWideText = !std::is_convertible_v<const TEXT&, const unsigned short*> &&
                           (std::is_convertible_v<const TEXT&, std::u16string_view> ||
                            (sizeof(wchar_t) == sizeof(unsigned short) && std::is_convertible_v<const TEXT&, std::wstring_view>));

/// Text in other units, which must be converted and not only copied.
template <class TEXT>
concept OtherText = !StandardWideText<TEXT> && !std::is_convertible_v<const TEXT&, const unsigned short*> &&
                    (std::is_convertible_v<const TEXT&, std::string_view> || std::is_convertible_v<const TEXT&, const char*> ||
                     std::is_convertible_v<const TEXT&, std::wstring_view>);

/// Text that no member for terminated units takes: one that a CWStr can be made of, or one that its constructor refuses.
template <class TEXT>
concept ForeignText = StandardWideText<TEXT> || OtherText<TEXT>;

/// Refuses text in other units with a line that names the way. What it is called with decides; it does nothing.
template <class TEXT>
constexpr void RefuseOtherText()
{
    static_assert(!OtherText<TEXT>,
                  "CWStr holds 16-bit text: write u\"...\"_w, or convert with kelgen::FromUtf8 or kelgen::FromCodePage (kelgen/std.h)");
}

}  // namespace kelgen::detail
