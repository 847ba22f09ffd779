// WideEdit.cpp: copying, appending, case and reversal of 16-bit text.
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <kelgen/platform/posix/nls/RuntimeLocale.h>
#include <kelgen/platform/posix/nls/Units.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace kelgen::posix;

namespace {

void CopyUnits(WCHAR* target, const WCHAR* source, std::size_t count)
{
    // Nothing may be copied to or from null.
    if (count != 0)
        std::memmove(target, source, count * sizeof(WCHAR));
}

}  // namespace

WCHAR* _wcsupr(WCHAR* text)
{
    if (!text)
        return nullptr;

    const std::size_t length = wcslen(text);
    if (!IsPlainLocale(LC_CTYPE)) {
        std::transform(text, text + length, text, UpperByLocale);
        return text;
    }
    std::size_t at = 0;
    for (; length - at >= std::size_t{kBlockUnits}; at += kBlockUnits)
        StoreUnits(text + at, UpperAscii(LoadUnits(text + at)));
    for (; at < length; ++at)
        text[at] = UpperAscii(text[at]);
    return text;
}

WCHAR* _wcslwr(WCHAR* text)
{
    if (!text)
        return nullptr;

    const std::size_t length = wcslen(text);
    if (!IsPlainLocale(LC_CTYPE)) {
        std::transform(text, text + length, text, LowerByLocale);
        return text;
    }
    std::size_t at = 0;
    for (; length - at >= std::size_t{kBlockUnits}; at += kBlockUnits)
        StoreUnits(text + at, LowerAscii(LoadUnits(text + at)));
    for (; at < length; ++at)
        text[at] = LowerAscii(text[at]);
    return text;
}

WCHAR* _wcsrev(WCHAR* text)
{
    std::reverse(text, text + wcslen(text));
    return text;
}

WCHAR* wcscpy(WCHAR* target, const WCHAR* source)
{
    CopyUnits(target, source, wcslen(source) + 1);
    return target;
}

WCHAR* wcsncpy(WCHAR* target, const WCHAR* source, std::size_t count)
{
    const std::size_t length = wcsnlen(source, count);
    CopyUnits(target, source, length);
    std::fill(target + length, target + count, WCHAR{0});
    return target;
}

WCHAR* wcscat(WCHAR* target, const WCHAR* source)
{
    wcscpy(target + wcslen(target), source);
    return target;
}

WCHAR* wcsncat(WCHAR* target, const WCHAR* source, std::size_t count)
{
    WCHAR* end = target + wcslen(target);
    const std::size_t length = wcsnlen(source, count);
    CopyUnits(end, source, length);
    end[length] = 0;
    return target;
}

WCHAR* _wcsdup(const WCHAR* text)
{
    if (!text)
        return nullptr;

    const std::size_t size = (wcslen(text) + 1) * sizeof(WCHAR);
    void* copy = std::malloc(size);
    return copy ? static_cast<WCHAR*>(std::memcpy(copy, text, size)) : nullptr;
}
