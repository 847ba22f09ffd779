// NarrowText.cpp: searches by character. Pages of one-byte characters, the usual ones, take the runtime's quick functions. For the
// others the loops stand here, because the runtime's own multibyte searches do not all keep characters whole.
#include <kelgen/framework/base/internal/NarrowText.h>

#include <cstring>

namespace kelgen::detail {

namespace {

int CharacterSize(LPCSTR text)
{
    return static_cast<int>(NextCharacter(text) - text);
}

bool StartsWith(LPCSTR text, LPCSTR start, int size)
{
    return std::strncmp(text, start, static_cast<std::size_t>(size)) == 0;
}

/// Whether the character at @p character is one of @p set.
bool IsInSet(LPCSTR character, LPCSTR set)
{
    const int size = CharacterSize(character);
    for (; *set; set = NextCharacter(set)) {
        if (CharacterSize(set) == size && StartsWith(set, character, size))
            return true;
    }
    return false;
}

}  // namespace

LPCSTR FindCharacter(LPCSTR text, char character)
{
    if (!HasTwoByteCharacters())
        return std::strchr(text, character);
    while (*text && *text != character)
        text = NextCharacter(text);
    return *text == character ? text : nullptr;
}

LPCSTR FindLastCharacter(LPCSTR text, char character)
{
    if (!HasTwoByteCharacters())
        return std::strrchr(text, character);
    LPCSTR found = nullptr;
    for (; *text; text = NextCharacter(text)) {
        if (*text == character)
            found = text;
    }
    return character ? found : text;
}

LPCSTR FindText(LPCSTR text, LPCSTR sought)
{
    if (!HasTwoByteCharacters())
        return std::strstr(text, sought);
    const int size = static_cast<int>(std::strlen(sought));
    while (*text && !StartsWith(text, sought, size))
        text = NextCharacter(text);
    return *text || size == 0 ? text : nullptr;
}

LPCSTR FindInSet(LPCSTR text, LPCSTR set)
{
    text += SpanOutsideSet(text, set);
    return *text ? text : nullptr;
}

int SpanInSet(LPCSTR text, LPCSTR set)
{
    if (!HasTwoByteCharacters())
        return static_cast<int>(std::strspn(text, set));
    LPCSTR end = text;
    while (*end && IsInSet(end, set))
        end = NextCharacter(end);
    return static_cast<int>(end - text);
}

int SpanOutsideSet(LPCSTR text, LPCSTR set)
{
    if (!HasTwoByteCharacters())
        return static_cast<int>(std::strcspn(text, set));
    LPCSTR end = text;
    while (*end && !IsInSet(end, set))
        end = NextCharacter(end);
    return static_cast<int>(end - text);
}

}  // namespace kelgen::detail
