// FormatCheck.h: formats held against the types of their arguments, in checked builds.
#pragma once

#include <kelgen/platform/Export.h>

#include <cstddef>
#include <type_traits>

// What declares a function with a narrow format: where the format and its first argument stand, from 1 on, an object before them counts.
// Compilers for Windows know the runtime's rules. On Linux they know the system's alone, whose "%lu" is no DWORD and whose "%I64d" is no
// number: there checked builds look at narrow formats as at wide ones.
#ifdef _WIN32
#define KELGEN_NARROW_FORMAT(formatAt, firstAt) [[gnu::format(ms_printf, formatAt, firstAt)]]
#else
#define KELGEN_NARROW_FORMAT(formatAt, firstAt)
#ifdef KELGEN_CHECKED
#define KELGEN_CHECKS_NARROW_FORMATS
#endif
#endif

namespace kelgen::detail {

/// What an argument is as variable argument lists pass it.
enum class FormatArgument : unsigned char
{
    Int,
    Int64,
    Double,
    NarrowText,
    WideText,
    Untyped,  ///< A null or void pointer, which may be meant as any.
    Pointer,
    Other
};

/// A pointer to what may be text of 16-bit units is taken for that, whatever the units' type.
template <class TYPE>
constexpr FormatArgument FormatArgumentOf()
{
    if constexpr (std::is_null_pointer_v<TYPE>) {
        return FormatArgument::Untyped;
    } else if constexpr (std::is_pointer_v<TYPE>) {
        using Element = std::remove_cv_t<std::remove_pointer_t<TYPE>>;
        if constexpr (std::is_void_v<Element>)
            return FormatArgument::Untyped;
        else if constexpr (std::is_integral_v<Element> && sizeof(Element) <= 2)
            return sizeof(Element) == 1 ? FormatArgument::NarrowText : FormatArgument::WideText;
        else
            return FormatArgument::Pointer;
    } else if constexpr (std::is_same_v<TYPE, double> || std::is_same_v<TYPE, float>) {
        return FormatArgument::Double;
    } else if constexpr (std::is_integral_v<TYPE> || std::is_enum_v<TYPE>) {
        return sizeof(TYPE) <= 4 ? FormatArgument::Int : FormatArgument::Int64;
    } else {
        return FormatArgument::Other;
    }
}

/// Tells of a misuse for each conversion of @p format that takes something else than its argument, or has none: the conversion,
/// the argument's number, which counts those of stars and begins with 1, and both types. Arguments that are left over are harmless.
KELGEN_PLATFORM_API void CheckFormat(const char* caller, const char* format, const FormatArgument* arguments, std::size_t count);
KELGEN_PLATFORM_API void CheckFormat(const char* caller, const unsigned short* format, const FormatArgument* arguments, std::size_t count);

template <class... ARGUMENTS, class UNIT>
void CheckFormatOf(const char* caller, const UNIT* format)
{
    static constexpr FormatArgument kArguments[] = {FormatArgumentOf<ARGUMENTS>()...};
    if (format)
        CheckFormat(caller, format, kArguments, sizeof...(ARGUMENTS));
}

}  // namespace kelgen::detail
