// NarrowRuntime.cpp: narrow comparison, case and numbers.
#include <kelgen/platform/posix/nls/api/NarrowRuntime.h>

#include <kelgen/platform/posix/nls/NumberText.h>
#include <kelgen/platform/posix/nls/RuntimeLocale.h>

#include <algorithm>
#include <cctype>
#include <limits>
#include <string>

using namespace kelgen::posix;

namespace {

int Lower(char byte)
{
    return std::tolower(static_cast<unsigned char>(byte));
}

char LowerByte(char byte)
{
    return static_cast<char>(Lower(byte));
}

char UpperByte(char byte)
{
    return static_cast<char>(std::toupper(static_cast<unsigned char>(byte)));
}

// Compares the first @p count bytes of two texts. By contract bytes above 0x7F are negative here, since characters are signed.
int CompareBytes(const char* left, const char* right, std::size_t count)
{
    if (count != 0 && (!left || !right))
        return kNoComparison;

    for (std::size_t at = 0; at < count; ++at) {
        const int difference = static_cast<signed char>(LowerByte(left[at])) - static_cast<signed char>(LowerByte(right[at]));
        if (difference != 0 || left[at] == 0)
            return difference;
    }
    return 0;
}

}  // namespace

int _stricmp(const char* left, const char* right)
{
    return CompareBytes(left, right, std::numeric_limits<std::size_t>::max());
}

int _strnicmp(const char* left, const char* right, std::size_t count)
{
    return CompareBytes(left, right, count);
}

int _stricoll(const char* left, const char* right)
{
    if (IsPlainLocale(LC_COLLATE))
        return _stricmp(left, right);

    std::string lowerLeft(left);
    std::string lowerRight(right);
    std::transform(lowerLeft.begin(), lowerLeft.end(), lowerLeft.begin(), LowerByte);
    std::transform(lowerRight.begin(), lowerRight.end(), lowerRight.begin(), LowerByte);
    return std::strcoll(lowerLeft.c_str(), lowerRight.c_str());
}

int _memicmp(const void* left, const void* right, std::size_t count)
{
    const char* leftBytes = static_cast<const char*>(left);
    const char* rightBytes = static_cast<const char*>(right);
    for (std::size_t at = 0; at < count; ++at) {
        if (const int difference = Lower(leftBytes[at]) - Lower(rightBytes[at]); difference != 0)
            return difference;
    }
    return 0;
}

char* _strupr(char* text)
{
    if (!text)
        return nullptr;

    std::transform(text, text + std::strlen(text), text, UpperByte);
    return text;
}

char* _strlwr(char* text)
{
    if (!text)
        return nullptr;

    std::transform(text, text + std::strlen(text), text, LowerByte);
    return text;
}

char* _strrev(char* text)
{
    if (!text)
        return nullptr;

    std::reverse(text, text + std::strlen(text));
    return text;
}

char* _strdup(const char* text)
{
    if (!text)
        return nullptr;

    const std::size_t size = std::strlen(text) + 1;
    void* copy = std::malloc(size);
    return copy ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

char* _itoa(int value, char* text, int base)
{
    return SpellSigned(value, text, base);
}

char* _ltoa(LONG value, char* text, int base)
{
    return SpellSigned(value, text, base);
}

char* _ultoa(ULONG value, char* text, int base)
{
    return SpellNumber(value, false, text, base);
}

char* _i64toa(LONGLONG value, char* text, int base)
{
    return SpellSigned(value, text, base);
}

char* _ui64toa(ULONGLONG value, char* text, int base)
{
    return SpellNumber(value, false, text, base);
}

LONGLONG _atoi64(const char* text)
{
    return text ? std::strtoll(text, nullptr, 10) : 0;
}
