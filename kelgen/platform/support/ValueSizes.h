// ValueSizes.h: how many bytes automation's plain values take.
#pragma once

#include <kelgen/platform/Win32.h>

#include <cstddef>

namespace kelgen {

/// The bytes that a value of @p type takes when it is a number, a date, a boolean or an error; 0 for every other type.
constexpr std::size_t PlainValueSize(VARTYPE type)
{
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_DATE:
    case VT_CY:
        return 8;
    default:
        return 0;
    }
}

}  // namespace kelgen
