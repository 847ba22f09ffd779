// ShortNames.cpp: the rule for generated 8.3 names.
#include <kelgen/platform/posix/files/ShortNames.h>

#include <algorithm>
#include <cstdint>
#include <unordered_set>

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

bool IsShortNameLetter(char letter)
{
    const bool alphanumeric = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
    return alphanumeric || (letter != 0 && std::string_view("!#$%&'()-@^_`{}~").find(letter) != std::string_view::npos);
}

char Upper(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

std::string Upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) { return Upper(letter); });
    return text;
}

std::string Replaced(std::string_view text, std::size_t length)
{
    std::string result(text.substr(0, length));
    for (char& letter : result)
        letter = IsShortNameLetter(letter) ? Upper(letter) : '_';
    return result;
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
std::string Generated(std::string_view name, std::uint32_t number, std::uint32_t numbers)
{
    std::size_t dot = name.rfind('.');
    if (dot == 0 || dot == std::string_view::npos)
        dot = name.size();
    std::string digits;
    while ((numbers /= kBase) > 0)
        digits += "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[number / numbers % kBase];
    std::string result = Replaced(name.substr(0, dot), kStemLength - 1 - digits.size()) + '~' + digits;
    if (dot + 1 < name.size())
        result += '.' + Replaced(name.substr(dot + 1), kExtensionLength);
    return result;
}

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

ShortNames::ShortNames(const std::vector<std::string>& entries)
{
    std::unordered_set<std::string> taken;
    for (const std::string& entry : entries)
        if (IsShortName(entry))
            taken.insert(Upper(entry));
    m_generated.reserve(entries.size() - taken.size());
    taken.reserve(entries.size());
    for (const std::string& entry : entries) {
        if (IsShortName(entry))
            continue;
        const std::uint32_t hash = HashOf(entry);
        std::string candidate;
        for (std::uint32_t i = 0;; ++i) {
            const std::uint32_t numbers = i < kTries ? kNumbers : kLongNumbers;
            candidate = Generated(entry, (hash % numbers + i) % numbers, numbers);
            if (taken.insert(candidate).second)
                break;
        }
        m_generated.emplace(entry, std::move(candidate));
    }
}

std::string ShortNames::Of(const std::string& name) const
{
    const auto found = m_generated.find(name);
    return found == m_generated.end() ? name : found->second;
}

}  // namespace kelgen::posix
