// WideText.h: 16-bit text is unsigned short* above the platform and WCHAR* in its calls; these cross the border.
#pragma once

#include <kelgen/platform/Win32.h>

#include <cstddef>

/// u"text"_w: a literal as the 16-bit text that the library's signatures take.
inline const unsigned short* operator""_w(const char16_t* text, std::size_t)
{
    return reinterpret_cast<const unsigned short*>(text);
}

namespace kelgen {

/// The same text as the platform's calls take it; null stays null.
inline WCHAR* AsWide(unsigned short* text)
{
    return reinterpret_cast<WCHAR*>(text);
}

/// The same text as the platform's calls take it; null stays null.
inline const WCHAR* AsWide(const unsigned short* text)
{
    return reinterpret_cast<const WCHAR*>(text);
}

}  // namespace kelgen
