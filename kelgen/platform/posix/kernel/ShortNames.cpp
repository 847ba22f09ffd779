// ShortNames.cpp: the rule for generated 8.3 names.
#include <kelgen/platform/posix/kernel/ShortNames.h>

#include <algorithm>
#include <cstdint>
#include <unordered_set>

namespace kelgen::posix {

namespace {

constexpr std::size_t kStemLength = 8;
constexpr std::size_t kExtensionLength = 3;
constexpr std::size_t kKeptLetters = 4;
constexpr std::uint32_t kNumbers = 36 * 36 * 36;

bool IsShortNameLetter(char letter)
{
    const bool alphanumeric =
        (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
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
    return hash % kNumbers;
}

std::string Generated(std::string_view name, std::uint32_t number)
{
    std::size_t dot = name.rfind('.');
    if (dot == 0 || dot == std::string_view::npos)
        dot = name.size();
    std::string result = Replaced(name.substr(0, dot), kKeptLetters) + '~';
    for (std::uint32_t unit = 36 * 36; unit > 0; unit /= 36)
        result += "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[number / unit % 36];
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
    for (const std::string& entry : entries) {
        if (IsShortName(entry))
            continue;
        std::uint32_t number = HashOf(entry);
        std::string candidate = Generated(entry, number);
        while (!taken.insert(candidate).second)
            candidate = Generated(entry, number = (number + 1) % kNumbers);
        m_generated.emplace(entry, std::move(candidate));
    }
}

std::string ShortNames::Of(const std::string& name) const
{
    const auto found = m_generated.find(name);
    return found == m_generated.end() ? name : found->second;
}

}  // namespace kelgen::posix
