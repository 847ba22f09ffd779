// NarrowToSystem.h: system strings of narrow texts.
#pragma once

#include <kelgen/platform/Win32.h>

#include <vector>

namespace kelgen::detail {

/// The text's units by the ANSI code page, or null when there is no memory. A character that is cut at the end takes the terminator
/// with it: the converter's count tells where the text ends.
inline BSTR NewSystemString(LPCSTR text)
{
    const int size = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    std::vector<OLECHAR> units(static_cast<std::size_t>(size > 0 ? size : 0));
    if (size > 0)
        MultiByteToWideChar(CP_ACP, 0, text, -1, units.data(), size);
    if (!units.empty() && units.back() == 0)
        units.pop_back();
    return SysAllocStringLen(units.data(), static_cast<UINT>(units.size()));
}

}  // namespace kelgen::detail
