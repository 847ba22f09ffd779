// NarrowRuntime.cpp: narrow comparison, case and numbers.
#include <kelgen/platform/posix/nls/api/NarrowRuntime.h>

#include <kelgen/platform/posix/nls/NumberText.h>
#include <kelgen/platform/posix/nls/RuntimeLocale.h>
#include <kelgen/platform/posix/nls/Units.h>

#include <algorithm>
#include <bit>
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

constexpr std::ptrdiff_t kBlockBytes = 16;

/// The bytes with A to Z turned into a to z.
ByteVector LowerAsciiBytes(ByteVector bytes)
{
    return Narrow(LowerAscii(WidenLow(bytes)), LowerAscii(WidenHigh(bytes)));
}

/// The bytes with a to z turned into A to Z.
ByteVector UpperAsciiBytes(ByteVector bytes)
{
    return Narrow(UpperAscii(WidenLow(bytes)), UpperAscii(WidenHigh(bytes)));
}

int SignedDifference(char left, char right)
{
    return static_cast<signed char>(left) - static_cast<signed char>(right);
}

// CompareBytes in the C locale, in which only A to Z fold.
KELGEN_READS_WHOLE_BLOCKS int ComparePlainBytes(const char* left, const char* right, std::size_t count)
{
    const auto lower = [](char byte) { return static_cast<char>(LowerAscii(static_cast<WCHAR>(static_cast<unsigned char>(byte)))); };
    for (std::size_t at = 0; at < count;) {
        // Most texts that differ do so at once.
        const int difference = SignedDifference(lower(left[at]), lower(right[at]));
        if (difference != 0 || left[at] == 0)
            return difference;
        if (count - at < std::size_t{kBlockBytes} || !FitsInPage<kBlockBytes>(left + at) || !FitsInPage<kBlockBytes>(right + at)) {
            ++at;
            continue;
        }
        const ByteVector bytes = LoadBytes(left + at);
        const ByteVector same = EqualBytes(LowerAsciiBytes(bytes), LowerAsciiBytes(LoadBytes(right + at)));
        const unsigned stops = HighBits(Without(same, EqualBytes(bytes, FillBytes(0)))) ^ 0xFFFFu;
        if (stops != 0) {
            at += static_cast<std::size_t>(std::countr_zero(stops));
            return SignedDifference(lower(left[at]), lower(right[at]));
        }
        at += std::size_t{kBlockBytes};
    }
    return 0;
}

// Compares the first @p count bytes of two texts. By contract bytes above 0x7F are negative here, since characters are signed.
int CompareBytes(const char* left, const char* right, std::size_t count)
{
    if (count != 0 && (!left || !right))
        return kNoComparison;
    if (IsPlainLocale(LC_CTYPE))
        return ComparePlainBytes(left, right, count);

    for (std::size_t at = 0; at < count; ++at) {
        const int difference = static_cast<signed char>(LowerByte(left[at])) - static_cast<signed char>(LowerByte(right[at]));
        if (difference != 0 || left[at] == 0)
            return difference;
    }
    return 0;
}

// Maps every byte in place; sixteen at a time as long as only the letters of ASCII have another case.
template <class MAP_BLOCK, class MAP_BYTE>
void MapBytes(char* text, MAP_BLOCK mapBlock, MAP_BYTE mapByte)
{
    char* const end = text + std::strlen(text);
    if (IsPlainLocale(LC_CTYPE)) {
        for (; end - text >= kBlockBytes; text += kBlockBytes)
            StoreBytes(text, mapBlock(LoadBytes(text)));
    }
    std::transform(text, end, text, mapByte);
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

    MapBytes(text, UpperAsciiBytes, UpperByte);
    return text;
}

char* _strlwr(char* text)
{
    if (!text)
        return nullptr;

    MapBytes(text, LowerAsciiBytes, LowerByte);
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
