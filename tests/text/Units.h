// Units.h: 16-bit texts of tests, between the library's type and the standard library's.
#pragma once

#include <kelgen/text/WStr.h>

#include <ostream>
#include <string>

namespace kelgen::test {

inline const unsigned short* Units(const std::u16string& text)
{
    return reinterpret_cast<const unsigned short*>(text.c_str());
}

inline std::u16string Units(const CWStr& text)
{
    const unsigned short* const units = text;
    return std::u16string(units, units + text.GetLength());
}

/// A string of all the units, zeros among them.
inline CWStr Text(const std::u16string& text)
{
    return CWStr(Units(text), static_cast<int>(text.size()));
}

/// Where a string has its units: equal for two that share a block.
inline const unsigned short* BlockOf(const CWStr& text)
{
    return text;
}

}  // namespace kelgen::test

/// Failures show the text, with unusual units as numbers.
inline void PrintTo(const CWStr& text, std::ostream* out)
{
    *out << '"';
    for (int i = 0; i < text.GetLength(); ++i) {
        if (text[i] >= 0x20 && text[i] < 0x7F)
            *out << static_cast<char>(text[i]);
        else
            *out << "\\x" << std::hex << text[i] << std::dec << ' ';
    }
    *out << '"';
}
