// CodePages.cpp: any bytes as text of every code page, and any units into it.
#include "Input.h"

#include <kelgen/platform/Win32.h>

#include <vector>

using namespace fuzz;

namespace {

constexpr UINT kGb18030 = 54936;
constexpr DWORD kDecoding[] = {
    0, MB_ERR_INVALID_CHARS, MB_PRECOMPOSED, MB_COMPOSITE, MB_USEGLYPHCHARS, MB_COMPOSITE | MB_ERR_INVALID_CHARS};
constexpr DWORD kEncoding[] = {
    0, WC_NO_BEST_FIT_CHARS, WC_COMPOSITECHECK, WC_COMPOSITECHECK | WC_SEPCHARS, WC_ERR_INVALID_CHARS, WC_COMPOSITECHECK | WC_DISCARDNS};

const std::vector<UINT>& Pages()
{
    static const std::vector<UINT> pages = [] {
        std::vector<UINT> known = {CP_ACP, CP_OEMCP, CP_SYMBOL};
        for (UINT page = 37; page <= 0xFFFF; ++page)
            if (IsValidCodePage(page))
                known.push_back(page);
        return known;
    }();
    return pages;
}

/// Runs @p convert without room, with as much as it asks for and with one element less; what it made.
template <class Element, class CONVERT>
std::basic_string<Element> Converted(CONVERT convert)
{
    const int needed = convert(nullptr, 0);
    Require(needed >= 0);
    if (needed == 0)
        return {};
    if (needed > 1) {
        Exact<Element> less(static_cast<std::size_t>(needed) - 1);
        SetLastError(0);
        Require(convert(less.Get(), needed - 1) == 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER);
    }
    Exact<Element> room(static_cast<std::size_t>(needed));
    Require(convert(room.Get(), needed) == needed);
    return {room.Get(), room.Get() + room.Size()};
}

std::basic_string<WCHAR> Decode(UINT page, DWORD flags, const std::string& bytes)
{
    Exact<char> text(bytes.size());
    std::copy(bytes.begin(), bytes.end(), text.Get());
    return Converted<WCHAR>([&](WCHAR* wide, int capacity) {
        return MultiByteToWideChar(page, flags, text.Get(), static_cast<int>(text.Size()), wide, capacity);
    });
}

std::string Encode(UINT page, DWORD flags, const std::basic_string<WCHAR>& units, BOOL* usedDefault)
{
    Exact<WCHAR> wide(units.size());
    std::copy(units.begin(), units.end(), wide.Get());
    return Converted<char>([&](char* text, int capacity) {
        return WideCharToMultiByte(page, flags, wide.Get(), static_cast<int>(wide.Size()), text, capacity, nullptr, usedDefault);
    });
}

bool TellsDefault(UINT page)
{
    return page != CP_UTF7 && page != CP_SYMBOL;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    const UINT page = Pages()[input.Take<unsigned char>() % Pages().size()];
    const unsigned flags = input.Below(6);
    if (input.Below(2) == 0) {
        const std::string bytes = input.Rest<char>();
        const auto units = Decode(page, kDecoding[flags], bytes);
        Require(units.size() <= 3 * bytes.size() + 1);
        // What is valid comes back, unless the page has no bytes for it: other bytes may, the text may not.
        if (kDecoding[flags] == MB_ERR_INVALID_CHARS && !units.empty()) {
            BOOL usedDefault = FALSE;
            const bool isTable = page != CP_UTF8 && page != kGb18030 && TellsDefault(page);
            const std::string again = Encode(page, isTable ? WC_NO_BEST_FIT_CHARS : 0, units, TellsDefault(page) ? &usedDefault : nullptr);
            Require((usedDefault && isTable) || Decode(page, MB_ERR_INVALID_CHARS, again) == units);
        }
    } else {
        const auto units = input.Rest<WCHAR>();
        BOOL usedDefault = FALSE;
        const std::string bytes = Encode(page, kEncoding[flags], units, TellsDefault(page) ? &usedDefault : nullptr);
        Require(bytes.size() <= 8 * units.size() + 8);
        if (kEncoding[flags] == WC_NO_BEST_FIT_CHARS && !usedDefault && !bytes.empty() && TellsDefault(page))
            Require(Decode(page, 0, bytes) == units);
    }
    return 0;
}
