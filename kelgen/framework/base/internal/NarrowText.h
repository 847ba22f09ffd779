// NarrowText.h: the runtime's rules for narrow text of the multibyte code page, over plain pointers. Internal to the framework.
#pragma once

#include <kelgen/platform/Win32.h>

#include <cstring>

namespace kelgen::detail {

inline LPCSTR OrEmpty(LPCSTR text)
{
    return text ? text : "";
}

inline const unsigned char* Bytes(LPCSTR text)
{
    return reinterpret_cast<const unsigned char*>(text);
}

inline unsigned char* Bytes(char* text)
{
    return reinterpret_cast<unsigned char*>(text);
}

inline unsigned char Byte(char character)
{
    return static_cast<unsigned char>(character);
}

/// Whether characters of the multibyte code page may have two bytes.
inline bool HasTwoByteCharacters()
{
    switch (_getmbcp()) {
    case 932:
    case 936:
    case 949:
    case 950:
    case 1361:
        return true;
    default:
        return false;
    }
}

/// The character after the one at @p text, which is not the terminator. A lead byte at the end is a character of its own.
inline LPCSTR NextCharacter(LPCSTR text)
{
    return text + (_ismbblead(Byte(*text)) && text[1] ? 2 : 1);
}

inline bool IsSpaceAt(LPCSTR text)
{
    if (Byte(*text) < 0x80)
        return *text == ' ' || (*text >= '\t' && *text <= '\r');
    if (_ismbblead(Byte(text[0])) && text[1])
        return _ismbcspace(static_cast<unsigned>(Byte(text[0]) << 8 | Byte(text[1]))) != 0;
    return _ismbcspace(Byte(*text)) != 0;
}

inline int CompareText(LPCSTR left, LPCSTR right)
{
    return _mbscmp(Bytes(left), Bytes(right));
}

inline int CompareTextNoCase(LPCSTR left, LPCSTR right)
{
    return _mbsicmp(Bytes(left), Bytes(right));
}

inline int CollateText(LPCSTR left, LPCSTR right)
{
    return std::strcoll(left, right);
}

inline int CollateTextNoCase(LPCSTR left, LPCSTR right)
{
    return _stricoll(left, right);
}

/// The first occurrence at a character's start, or null.
LPCSTR FindCharacter(LPCSTR text, char character);
/// The last occurrence at a character's start, or null.
LPCSTR FindLastCharacter(LPCSTR text, char character);
/// The first occurrence at a character's start, or null. The empty text is found at once.
LPCSTR FindText(LPCSTR text, LPCSTR sought);
/// The first character that is in @p set, or null.
LPCSTR FindInSet(LPCSTR text, LPCSTR set);
/// The bytes of the leading run of characters that are in @p set.
int SpanInSet(LPCSTR text, LPCSTR set);
/// The bytes of the leading run of characters that are not in @p set.
int SpanOutsideSet(LPCSTR text, LPCSTR set);

inline void UpperText(char* text)
{
    _mbsupr(Bytes(text));
}

inline void LowerText(char* text)
{
    _mbslwr(Bytes(text));
}

inline void ReverseText(char* text)
{
    _mbsrev(Bytes(text));
}

}  // namespace kelgen::detail
