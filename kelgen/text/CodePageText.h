// CodePageText.h: the library's strings to and from narrow text of the standard library, in UTF-8 or any other code page.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStr.h>

#include <string>
#include <string_view>

namespace kelgen {

/// The text in code page @p page, zeros inside included. Units that the page lacks become its default character; a lone surrogate becomes
/// U+FFFD in UTF-8. Empty for an unknown page.
/// Throws: the memory exception, even for results beyond 2^31 - 1 bytes. Cost: one pass of the platform's converter for text
/// that is mostly ASCII, else two.
[[nodiscard]] KELGEN_API std::string ToCodePage(const CWStr& text, DWORD page);

/// The text that @p bytes, which are in code page @p page, stand for; zeros inside included. Bytes that are no text become U+FFFD, or what
/// the page has for them. Empty for an unknown page.
/// Throws: the memory exception, even for more than 2^31 - 1 bytes. Cost: as ToCodePage.
[[nodiscard]] KELGEN_API CWStr FromCodePage(std::string_view bytes, DWORD page);

/// A narrow string, which is in the ANSI page, in code page @p page.
[[nodiscard]] KELGEN_API std::string ToCodePage(const CString& text, DWORD page);

/// ToCodePage and FromCodePage for UTF-8.
///
///     std::string line = kelgen::ToUtf8(name);
///     CWStr again = kelgen::FromUtf8(line);
[[nodiscard]] inline std::string ToUtf8(const CWStr& text)
{
    return ToCodePage(text, CP_UTF8);
}
/// The same of text in the ANSI page.
[[nodiscard]] inline std::string ToUtf8(const CString& text)
{
    return ToCodePage(text, CP_UTF8);
}
/// FromCodePage of UTF-8.
[[nodiscard]] inline CWStr FromUtf8(std::string_view bytes)
{
    return FromCodePage(bytes, CP_UTF8);
}

/// Both NarrowFromCodePage and NarrowFromUtf8 convert to the ANSI page.
[[nodiscard]] KELGEN_API CString NarrowFromCodePage(std::string_view bytes, DWORD page);
[[nodiscard]] inline CString NarrowFromUtf8(std::string_view bytes)
{
    return NarrowFromCodePage(bytes, CP_UTF8);
}

}  // namespace kelgen
