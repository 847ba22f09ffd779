// NarrowText.h: the runtime's rules for narrow text of the multibyte code page, over plain pointers. Internal to the framework.
#pragma once

#include <kelgen/platform/Win32.h>

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace kelgen::detail {

inline LPCSTR OrEmpty(LPCSTR text)
{
    return text ? text : "";
}

inline int CompareText(LPCSTR left, LPCSTR right)
{
    return std::strcmp(left, right);
}

inline char FoldLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

inline int CompareTextNoCase(LPCSTR left, LPCSTR right)
{
    while (*left && FoldLower(*left) == FoldLower(*right)) {
        ++left;
        ++right;
    }
    return static_cast<unsigned char>(FoldLower(*left)) - static_cast<unsigned char>(FoldLower(*right));
}

inline int CollateText(LPCSTR left, LPCSTR right)
{
    return std::strcoll(left, right);
}

inline int CollateTextNoCase(LPCSTR left, LPCSTR right)
{
    return CompareTextNoCase(left, right);
}

inline LPCSTR NextCharacter(LPCSTR text)
{
    return text + 1;
}

inline bool IsSpaceAt(LPCSTR text)
{
    return std::isspace(static_cast<unsigned char>(*text)) != 0;
}

inline LPCSTR FindCharacter(LPCSTR text, char character)
{
    return std::strchr(text, character);
}

inline LPCSTR FindLastCharacter(LPCSTR text, char character)
{
    return std::strrchr(text, character);
}

inline LPCSTR FindText(LPCSTR text, LPCSTR sought)
{
    return std::strstr(text, sought);
}

inline LPCSTR FindInSet(LPCSTR text, LPCSTR set)
{
    return std::strpbrk(text, set);
}

inline int SpanInSet(LPCSTR text, LPCSTR set)
{
    return static_cast<int>(std::strspn(text, set));
}

inline int SpanOutsideSet(LPCSTR text, LPCSTR set)
{
    return static_cast<int>(std::strcspn(text, set));
}

inline void UpperText(char* text)
{
    for (; *text; ++text)
        *text = *text >= 'a' && *text <= 'z' ? static_cast<char>(*text - 'a' + 'A') : *text;
}

inline void LowerText(char* text)
{
    for (; *text; ++text)
        *text = FoldLower(*text);
}

inline void ReverseText(char* text)
{
    std::reverse(text, text + std::strlen(text));
}

inline int FormattedLength(LPCSTR format, va_list arguments)
{
    return std::vsnprintf(nullptr, 0, format, arguments);
}

inline void FormatText(char* text, int capacity, LPCSTR format, va_list arguments)
{
    std::vsnprintf(text, static_cast<std::size_t>(capacity), format, arguments);
}

} // namespace kelgen::detail
