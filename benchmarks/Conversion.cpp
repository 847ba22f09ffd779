// Conversion.cpp: the platform's code pages, as the library calls them, beside the C library's.
#include "ConversionOperations.h"

#include <kelgen/platform/Win32.h>

using namespace bench;

namespace {

struct Kelgen
{
    UINT page;

    explicit Kelgen(const char* name) : page(std::string(name) == "windows-1252" ? 1252 : 932) {}
    std::size_t encode(std::u16string_view s, char* to, std::size_t room)
    {
        return static_cast<std::size_t>(WideCharToMultiByte(page, 0, reinterpret_cast<const WCHAR*>(s.data()), static_cast<int>(s.size()),
                                                            to, static_cast<int>(room), nullptr, nullptr));
    }
    std::size_t decode(std::string_view s, char16_t* to, std::size_t room)
    {
        return static_cast<std::size_t>(
            MultiByteToWideChar(page, 0, s.data(), static_cast<int>(s.size()), reinterpret_cast<WCHAR*>(to), static_cast<int>(room)));
    }
};

#define CONVERTERS(op, sizes)                                                                                                              \
    COUNTED(op<IconvConv>)->Name("Convert/" #op "/iconv") sizes;                                                                           \
    COUNTED(op<Kelgen>)->Name("Convert/" #op "/kelgen") sizes;

CONVERTERS(Cp1252Encode, WESTERN)
CONVERTERS(Cp1252Decode, WESTERN)
CONVERTERS(ShiftJisDecode, JAPANESE)
CONVERTERS(ShiftJisEncode, JAPANESE)

}  // namespace
