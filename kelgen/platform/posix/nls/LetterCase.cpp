// LetterCase.cpp: case mapping and character classes of the ANSI page and of 16-bit text.
#include <kelgen/platform/posix/nls/api/LetterCase.h>

#include <kelgen/platform/posix/nls/Characters.h>
#include <kelgen/platform/posix/nls/MultibyteText.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <algorithm>
#include <cstring>

using namespace kelgen::posix;

namespace {

using MapUnit = WCHAR (Characters::*)(WCHAR) const;

bool IsSingleCharacter(const void* text)
{
    return IS_INTRESOURCE(text);
}

void MapUnits(WCHAR* text, std::size_t length, MapUnit map)
{
    const Characters& characters = Characters::Get();
    std::transform(text, text + length, text, [&](WCHAR unit) { return (characters.*map)(unit); });
}

LPWSTR MapWide(LPWSTR text, MapUnit map)
{
    if (IsSingleCharacter(text)) {
        const auto unit = static_cast<WCHAR>(reinterpret_cast<ULONG_PTR>(text));
        return reinterpret_cast<LPWSTR>(ULONG_PTR{(Characters::Get().*map)(unit)});
    }
    MapUnits(text, wcslen(text), map);
    return text;
}

// Maps each character of the ANSI page whose counterpart has the same number of bytes.
void MapBytes(char* text, std::size_t length, MapUnit map)
{
    const Characters& characters = Characters::Get();
    for (char* at = text; at < text + length;) {
        const auto left = static_cast<std::size_t>(text + length - at);
        const std::size_t size = CharacterSize(GetACP(), at, left);
        ReplaceCharacter(GetACP(), at, size, [&](WCHAR unit) { return (characters.*map)(unit); });
        at += size;
    }
}

template <class Char>
DWORD MapBuffer(Char* text, DWORD length, void (*mapAll)(Char*, std::size_t, MapUnit), MapUnit map)
{
    if (!text)
        return 0;
    mapAll(text, length, map);
    return length;
}

LPSTR MapNarrow(LPSTR text, MapUnit map)
{
    if (IsSingleCharacter(text)) {
        char byte = static_cast<char>(reinterpret_cast<ULONG_PTR>(text));
        MapBytes(&byte, 1, map);
        return reinterpret_cast<LPSTR>(ULONG_PTR{static_cast<BYTE>(byte)});
    }
    MapBytes(text, std::strlen(text), map);
    return text;
}

bool IsByte(CHAR character, unsigned classes)
{
    WCHAR unit = 0;
    MultiByteToWideChar(CP_ACP, 0, &character, 1, &unit, 1);
    return Characters::Get().Is(unit, classes);
}

}  // namespace

LPSTR CharUpperA(LPSTR text)
{
    return MapNarrow(text, &Characters::ToUpper);
}

LPWSTR CharUpperW(LPWSTR text)
{
    return MapWide(text, &Characters::ToUpper);
}

LPSTR CharLowerA(LPSTR text)
{
    return MapNarrow(text, &Characters::ToLower);
}

LPWSTR CharLowerW(LPWSTR text)
{
    return MapWide(text, &Characters::ToLower);
}

DWORD CharUpperBuffA(LPSTR text, DWORD length)
{
    return MapBuffer(text, length, MapBytes, &Characters::ToUpper);
}

DWORD CharUpperBuffW(LPWSTR text, DWORD length)
{
    return MapBuffer(text, length, MapUnits, &Characters::ToUpper);
}

DWORD CharLowerBuffA(LPSTR text, DWORD length)
{
    return MapBuffer(text, length, MapBytes, &Characters::ToLower);
}

DWORD CharLowerBuffW(LPWSTR text, DWORD length)
{
    return MapBuffer(text, length, MapUnits, &Characters::ToLower);
}

LPSTR CharNextA(LPCSTR text)
{
    LPSTR next = const_cast<LPSTR>(text);
    if (*text == 0)
        return next;
    // A lead byte before the terminator is a character of its own.
    return next + (IsDBCSLeadByte(static_cast<BYTE>(text[0])) && text[1] != 0 ? 2 : 1);
}

LPSTR CharPrevA(LPCSTR start, LPCSTR current)
{
    while (*start != 0 && start < current) {
        LPCSTR next = CharNextA(start);
        if (next >= current)
            break;
        start = next;
    }
    return const_cast<LPSTR>(start);
}

LPWSTR CharNextW(LPCWSTR text)
{
    return const_cast<LPWSTR>(text + (*text != 0));
}

LPWSTR CharPrevW(LPCWSTR start, LPCWSTR current)
{
    return const_cast<LPWSTR>(current > start ? current - 1 : start);
}

BOOL IsCharAlphaA(CHAR character)
{
    return IsByte(character, Characters::kLetter);
}

BOOL IsCharAlphaW(WCHAR unit)
{
    return Characters::Get().Is(unit, Characters::kLetter);
}

BOOL IsCharAlphaNumericA(CHAR character)
{
    return IsByte(character, Characters::kLetter | Characters::kDigit);
}

BOOL IsCharAlphaNumericW(WCHAR unit)
{
    return Characters::Get().Is(unit, Characters::kLetter | Characters::kDigit);
}

BOOL IsCharUpperA(CHAR character)
{
    return IsByte(character, Characters::kUpper);
}

BOOL IsCharUpperW(WCHAR unit)
{
    return Characters::Get().Is(unit, Characters::kUpper);
}

BOOL IsCharLowerA(CHAR character)
{
    return IsByte(character, Characters::kLower);
}

BOOL IsCharLowerW(WCHAR unit)
{
    return Characters::Get().Is(unit, Characters::kLower);
}
