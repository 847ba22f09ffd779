// ShortNames.cpp: the rule for generated 8.3 names.
#include <kelgen/platform/posix/files/ShortNames.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace kelgen::posix {

namespace {

constexpr std::size_t kStemLength = 8;
constexpr std::size_t kExtensionLength = 3;
// A generated stem is some letters of the name, '~' and a number in base 36.
constexpr std::uint32_t kBase = 36;
constexpr std::uint32_t kNumbers = kBase * kBase * kBase;
constexpr std::uint32_t kLongNumbers = kNumbers * kBase * kBase;
// So many numbers are tried before a name gets a long one: a folder may hold more alike names than there are short numbers.
constexpr std::uint32_t kTries = 16;

constexpr std::array<bool, 256> kShortNameLetters = [] {
    std::array<bool, 256> letters{};
    for (const char letter : std::string_view("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!#$%&'()-@^_`{}~"))
        letters[static_cast<unsigned char>(letter)] = true;
    return letters;
}();

bool IsShortNameLetter(char letter)
{
    return kShortNameLetters[static_cast<unsigned char>(letter)];
}

char Upper(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

using ShortName = ShortNames::Generated;

ShortName ShortUpper(std::string_view text)
{
    ShortName name;
    std::transform(text.begin(), text.end(), name.text.begin(), [](char letter) { return Upper(letter); });
    return name;
}

// Source: FNV-1a, 32 bits.
std::uint32_t HashOf(std::string_view name)
{
    std::uint32_t hash = 2166136261u;
    for (const char letter : name)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619u;
    return hash;
}

// numbers, a power of the base, is above number.
ShortName GeneratedName(std::string_view name, std::uint32_t number, std::uint32_t numbers)
{
    std::size_t dot = name.rfind('.');
    if (dot == 0 || dot == std::string_view::npos)
        dot = name.size();
    std::array<char, kStemLength> digits{};
    std::size_t count = 0;
    while ((numbers /= kBase) > 0)
        digits[count++] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[number / numbers % kBase];

    ShortName result;
    char* at = result.text.data();
    const auto put = [&at](std::string_view text, std::size_t length) {
        for (const char letter : text.substr(0, length))
            *at++ = IsShortNameLetter(letter) ? Upper(letter) : '_';
    };
    put(name.substr(0, dot), kStemLength - 1 - count);
    *at++ = '~';
    at = std::copy_n(digits.data(), count, at);
    if (dot + 1 < name.size()) {
        *at++ = '.';
        put(name.substr(dot + 1), kExtensionLength);
    }
    return result;
}

// The names that are taken, in places found by their hash.
class TakenNames
{
public:
    explicit TakenNames(std::size_t most) : m_places(std::bit_ceil(2 * most + 2)) {}

    // False when it is taken already.
    bool Take(const ShortName& name)
    {
        std::uint64_t halves[2];
        std::memcpy(halves, name.text.data(), sizeof halves);
        constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15;
        // The upper half of a product depends on all bits, the lower one on the first letters alone, which most names share.
        std::uint64_t hash = (halves[0] * kMix) ^ std::rotl(halves[1] * kMix, 32);
        hash ^= hash >> 32;
        for (hash = (hash * kMix) >> 32;; ++hash) {
            ShortName& place = m_places[hash & (m_places.size() - 1)];
            if (place == name)
                return false;
            if (place.text[0] == 0) {
                place = name;
                return true;
            }
        }
    }

private:
    std::vector<ShortName> m_places;
};

}  // namespace

bool IsShortName(std::string_view name)
{
    if (name == "." || name == "..")
        return true;

    const std::size_t dot = name.find('.');
    const std::string_view stem = name.substr(0, dot);
    const std::string_view extension = dot == std::string_view::npos ? "" : name.substr(dot + 1);
    if (stem.empty() || stem.size() > kStemLength || extension.size() > kExtensionLength)
        return false;
    return (dot == std::string_view::npos || !extension.empty()) && std::all_of(stem.begin(), stem.end(), IsShortNameLetter) &&
           std::all_of(extension.begin(), extension.end(), IsShortNameLetter);
}

ShortNames::ShortNames(std::vector<std::string> entries) : m_entries(std::move(entries)), m_generated(m_entries.size())
{
    TakenNames taken(m_entries.size());
    std::vector<std::size_t> others;
    others.reserve(m_entries.size());
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (IsShortName(m_entries[i]))
            taken.Take(ShortUpper(m_entries[i]));
        else
            others.push_back(i);
    }
    for (const std::size_t i : others) {
        const std::uint32_t hash = HashOf(m_entries[i]);
        ShortName& name = m_generated[i];
        for (std::uint32_t number = 0;; ++number) {
            const std::uint32_t numbers = number < kTries ? kNumbers : kLongNumbers;
            name = GeneratedName(m_entries[i], (hash % numbers + number) % numbers, numbers);
            if (taken.Take(name))
                break;
        }
    }
}

std::string_view ShortNames::At(std::size_t index) const
{
    const ShortName& name = m_generated[index];
    return name.text[0] == 0 ? std::string_view(m_entries[index]) : std::string_view(name.text.data());
}

std::string ShortNames::Of(const std::string& name) const
{
    const auto found = std::lower_bound(m_entries.begin(), m_entries.end(), name);
    return found == m_entries.end() || *found != name ? name : std::string(At(static_cast<std::size_t>(found - m_entries.begin())));
}

}  // namespace kelgen::posix
