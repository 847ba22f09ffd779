// MultibyteText.cpp: the multibyte functions over whole texts.
#include <kelgen/platform/posix/nls/api/MultibyteRuntime.h>

#include <kelgen/platform/posix/nls/MultibytePage.h>
#include <kelgen/platform/posix/nls/RuntimeLocale.h>
#include <kelgen/platform/posix/nls/api/NarrowRuntime.h>

#include <algorithm>
#include <cstring>

using namespace kelgen::posix;

namespace {

char* AsText(unsigned char* text)
{
    return reinterpret_cast<char*>(text);
}

const char* AsText(const unsigned char* text)
{
    return reinterpret_cast<const char*>(text);
}

unsigned char* Writable(const unsigned char* text)
{
    return const_cast<unsigned char*>(text);
}

// In a single-byte page only the low byte of a sought character counts.
unsigned int InPage(const MultibytePage& page, unsigned int character)
{
    return page.HasPairs() ? character : character & 0xFF;
}

int Sign(unsigned int left, unsigned int right)
{
    return (left > right) - (left < right);
}

// Compares the values that @p fold makes of the characters.
template <class Fold>
int Compare(const MultibytePage& page, const unsigned char* left, const unsigned char* right, Fold fold)
{
    for (;;) {
        const MultibyteCharacter leftCharacter = CharacterAt(page, left);
        const MultibyteCharacter rightCharacter = CharacterAt(page, right);
        const int order = Sign(fold(leftCharacter.value), fold(rightCharacter.value));
        if (order != 0 || leftCharacter.value == 0)
            return order;
        left += leftCharacter.size;
        right += rightCharacter.size;
    }
}

bool Contains(const MultibytePage& page, const unsigned char* set, unsigned int character)
{
    for (MultibyteCharacter at = CharacterAt(page, set); at.value != 0; at = CharacterAt(page, set)) {
        if (at.value == character)
            return true;
        set += at.size;
    }
    return false;
}

// The bytes of the leading run of characters whose presence in @p set is @p included.
std::size_t Span(const unsigned char* text, const unsigned char* set, bool included)
{
    const MultibytePage& page = CurrentMultibytePage();
    std::size_t size = 0;
    for (;;) {
        const MultibyteCharacter character = CharacterAt(page, text + size);
        if (character.value == 0 || Contains(page, set, character.value) != included)
            return size;
        size += character.size;
    }
}

// Writes what @p map makes of each character over it, when that has as many bytes.
void MapText(const MultibytePage& page, unsigned char* text, unsigned int (*map)(unsigned int))
{
    for (MultibyteCharacter at = CharacterAt(page, text); at.value != 0; at = CharacterAt(page, text)) {
        const unsigned int mapped = map(at.value);
        if (at.size == 2 && mapped > 0xFF) {
            text[0] = static_cast<unsigned char>(mapped >> 8);
            text[1] = static_cast<unsigned char>(mapped);
        } else if (at.size == 1 && mapped <= 0xFF) {
            text[0] = static_cast<unsigned char>(mapped);
        }
        text += at.size;
    }
}

// By characters in a page that has pairs, by bytes in the others.
unsigned char* MapCase(unsigned char* text, unsigned int (*mapCharacter)(unsigned int), char* (*mapBytes)(char*))
{
    const MultibytePage& page = CurrentMultibytePage();
    if (page.HasPairs())
        MapText(page, text, mapCharacter);
    else
        mapBytes(AsText(text));
    return text;
}

}  // namespace

std::size_t _mbclen(const unsigned char* text)
{
    return CharacterAt(CurrentMultibytePage(), text).size;
}

std::size_t _mbslen(const unsigned char* text)
{
    const MultibytePage& page = CurrentMultibytePage();
    if (!page.HasPairs())
        return std::strlen(AsText(text));

    std::size_t count = 0;
    for (MultibyteCharacter at = CharacterAt(page, text); at.value != 0; at = CharacterAt(page, text)) {
        text += at.size;
        ++count;
    }
    return count;
}

unsigned char* _mbsinc(const unsigned char* text)
{
    return Writable(text + _mbclen(text));
}

unsigned char* _mbsdec(const unsigned char* start, const unsigned char* current)
{
    if (!start || start >= current)
        return nullptr;

    // Whether a byte is a character's second can only be told from the start.
    const MultibytePage& page = CurrentMultibytePage();
    if (!page.HasPairs())
        return Writable(current - 1);
    for (;;) {
        const unsigned char* next = start + CharacterAt(page, start).size;
        if (next >= current)
            return Writable(start);
        start = next;
    }
}

int _mbscmp(const unsigned char* left, const unsigned char* right)
{
    if (!left || !right)
        return kNoComparison;

    const MultibytePage& page = CurrentMultibytePage();
    if (!page.HasPairs()) {
        const int order = std::strcmp(AsText(left), AsText(right));
        return (order > 0) - (order < 0);
    }
    return Compare(page, left, right, [](unsigned int value) { return value; });
}

int _mbsicmp(const unsigned char* left, const unsigned char* right)
{
    if (!left || !right)
        return kNoComparison;

    const MultibytePage& page = CurrentMultibytePage();
    if (!page.HasPairs())
        return _stricmp(AsText(left), AsText(right));
    return Compare(page, left, right, _mbctolower);
}

unsigned char* _mbschr(const unsigned char* text, unsigned int character)
{
    if (!text)
        return nullptr;

    const MultibytePage& page = CurrentMultibytePage();
    character = InPage(page, character);
    for (;;) {
        const MultibyteCharacter at = CharacterAt(page, text);
        if (at.value == character)
            return Writable(text);
        if (at.value == 0)
            return nullptr;
        text += at.size;
    }
}

unsigned char* _mbsrchr(const unsigned char* text, unsigned int character)
{
    if (!text)
        return nullptr;

    const MultibytePage& page = CurrentMultibytePage();
    character = InPage(page, character);
    const unsigned char* found = nullptr;
    for (;;) {
        const MultibyteCharacter at = CharacterAt(page, text);
        if (at.value == character)
            found = text;
        if (at.value == 0)
            return Writable(found);
        text += at.size;
    }
}

unsigned char* _mbsstr(const unsigned char* text, const unsigned char* sought)
{
    const MultibytePage& page = CurrentMultibytePage();
    const std::size_t size = std::strlen(AsText(sought));
    if (size == 0)
        return Writable(text);
    for (;;) {
        if (std::strncmp(AsText(text), AsText(sought), size) == 0)
            return Writable(text);
        const MultibyteCharacter at = CharacterAt(page, text);
        if (at.value == 0)
            return nullptr;
        text += at.size;
    }
}

unsigned char* _mbspbrk(const unsigned char* text, const unsigned char* set)
{
    const MultibytePage& page = CurrentMultibytePage();
    const unsigned char* found = text + Span(text, set, false);
    return CharacterAt(page, found).value != 0 ? Writable(found) : nullptr;
}

std::size_t _mbsspn(const unsigned char* text, const unsigned char* set)
{
    return Span(text, set, true);
}

std::size_t _mbscspn(const unsigned char* text, const unsigned char* set)
{
    return Span(text, set, false);
}

unsigned char* _mbsnbcpy(unsigned char* target, const unsigned char* source, std::size_t count)
{
    const MultibytePage& page = CurrentMultibytePage();
    std::size_t size = 0;
    while (size < count) {
        const MultibyteCharacter at = CharacterAt(page, source + size);
        if (at.value == 0 || at.size > count - size)
            break;
        std::copy_n(source + size, at.size, target + size);
        size += at.size;
    }
    std::fill(target + size, target + count, static_cast<unsigned char>(0));
    return target;
}

unsigned char* _mbsupr(unsigned char* text)
{
    return MapCase(text, _mbctoupper, _strupr);
}

unsigned char* _mbslwr(unsigned char* text)
{
    return MapCase(text, _mbctolower, _strlwr);
}

unsigned char* _mbsrev(unsigned char* text)
{
    // Swapping the bytes of each pair first makes the reversal of all bytes restore them.
    const MultibytePage& page = CurrentMultibytePage();
    unsigned char* end = text;
    for (MultibyteCharacter at = CharacterAt(page, end); at.value != 0; at = CharacterAt(page, end)) {
        if (at.size == 2)
            std::swap(end[0], end[1]);
        end += at.size;
    }
    std::reverse(text, end);
    return text;
}
