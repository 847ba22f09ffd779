// StoredNames.cpp: encodes and decodes the names of the registry's files.
#include <kelgen/platform/posix/registry/StoredNames.h>

#include <kelgen/platform/posix/nls/NameCase.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>

namespace kelgen::posix {

namespace {

// A file name has at most 255 bytes; one is left for a value's "=".
constexpr std::size_t kLongestFileName = 254;
constexpr std::string_view kHashPrefix = "%~";
// Of printable ASCII: "/" ends a name, "%" and "=" have a meaning here, the rest is kept out of the way of other file systems.
constexpr std::string_view kEncodedCharacters = "%/=\\:*?\"<>|";
constexpr std::string_view kDigits = "0123456789ABCDEF";

constexpr bool IsHighSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}

constexpr bool IsLowSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

void AppendHex(std::string& text, std::uint64_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text.push_back(kDigits[(value >> shift) & 15]);
}

void AppendUtf8(std::string& text, char32_t character)
{
    const auto tail = [&](int shift) { text.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F))); };
    if (character < 0x800) {
        text.push_back(static_cast<char>(0xC0 | (character >> 6)));
    } else if (character < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | (character >> 12)));
        tail(6);
    } else {
        text.push_back(static_cast<char>(0xF0 | (character >> 18)));
        tail(12);
        tail(6);
    }
    tail(0);
}

constexpr std::array<bool, 0x80> kPlainCharacters = [] {
    std::array<bool, 0x80> plain{};
    for (std::size_t character = 0x20; character < 0x7F; ++character)
        plain[character] = kEncodedCharacters.find(static_cast<char>(character)) == std::string_view::npos;
    return plain;
}();

/// @p character is one of ASCII.
void AppendAscii(std::string& text, char character)
{
    const bool leadingDot = character == '.' && text.empty();
    if (kPlainCharacters[static_cast<unsigned char>(character)] && !leadingDot) {
        text.push_back(character);
        return;
    }
    text.push_back('%');
    AppendHex(text, static_cast<unsigned char>(character), 2);
}

std::string Hashed(std::u16string_view name)
{
    // 64-bit FNV-1a from two starts. A collision only makes one of two names unavailable: files keep their name inside.
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::string text(kHashPrefix);
    for (std::uint64_t hash : {0xCBF29CE484222325u, 0x9AE16A3B2F90404Fu}) {
        for (const char16_t unit : name)
            hash = ((((hash ^ (LowerUnit(unit) & 0xFF)) * kPrime) ^ (LowerUnit(unit) >> 8)) * kPrime);
        AppendHex(text, hash, 16);
    }
    return text;
}

/// The units of the UTF-8 character or escape at the start of @p text, which is cut by it; nothing when it is malformed.
std::optional<char32_t> TakeCharacter(std::string_view& text)
{
    const auto byte = static_cast<unsigned char>(text.front());
    if (byte == '%') {
        const bool wide = text.size() > 1 && text[1] == 'u';
        const std::size_t start = wide ? 2 : 1;
        const std::size_t digits = wide ? 4 : 2;
        if (text.size() < start + digits)
            return std::nullopt;
        char32_t value = 0;
        for (const char digit : text.substr(start, digits)) {
            const std::size_t number = kDigits.find(digit);
            if (number == std::string_view::npos)
                return std::nullopt;
            value = value * 16 + static_cast<char32_t>(number);
        }
        text.remove_prefix(start + digits);
        return value;
    }
    const std::size_t length = byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    if (text.size() < length)
        return std::nullopt;
    char32_t value = length == 1 ? byte : byte & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i)
        value = (value << 6) | (static_cast<unsigned char>(text[i]) & 0x3F);
    text.remove_prefix(length);
    return value;
}

}  // namespace

std::string KeyFileName(std::u16string_view name)
{
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char16_t unit = LowerUnit(name[i]);
        if (unit < 0x80) {
            AppendAscii(text, static_cast<char>(unit));
        } else if (IsHighSurrogate(unit) && i + 1 < name.size() && IsLowSurrogate(name[i + 1])) {
            AppendUtf8(text, 0x10000 + ((unit - 0xD800u) << 10) + (name[++i] - 0xDC00u));
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            text += "%u";
            AppendHex(text, unit, 4);
        } else {
            AppendUtf8(text, unit);
        }
        if (text.size() > kLongestFileName)
            return Hashed(name);
    }
    return text;
}

std::string ValueFileName(std::u16string_view name)
{
    return KeyFileName(name) + '=';
}

std::optional<std::u16string> KeyNameOfFile(std::string_view fileName)
{
    std::u16string name;
    for (std::string_view rest = fileName; !rest.empty();) {
        const auto character = TakeCharacter(rest);
        if (!character || *character > 0x10FFFF)
            return std::nullopt;
        if (*character < 0x10000) {
            name.push_back(static_cast<char16_t>(*character));
        } else {
            name.push_back(static_cast<char16_t>(0xD800 + ((*character - 0x10000) >> 10)));
            name.push_back(static_cast<char16_t>(0xDC00 + (*character & 0x3FF)));
        }
    }
    // Only one spelling of a name is ours; this also turns away overlong UTF-8, upper case and needless escapes.
    if (KeyFileName(name) != fileName)
        return std::nullopt;
    return name;
}

bool IsKeyName(std::u16string_view name)
{
    return !name.empty() && name.size() <= kLongestKeyName &&
           name.find_first_of(std::u16string_view(u"\\\0", 2)) == std::u16string_view::npos;
}

bool IsValueName(std::u16string_view name)
{
    return name.size() <= kLongestValueName && name.find(u'\0') == std::u16string_view::npos;
}

std::string ScratchName()
{
    static std::atomic<unsigned> counter;
    return std::string(kScratchPrefix) + std::to_string(getpid()) + '-' + std::to_string(++counter);
}

}  // namespace kelgen::posix
