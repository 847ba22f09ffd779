// ProfileText.cpp: parses, searches and edits the lines of initialization files.
#include <kelgen/platform/posix/registry/ProfileText.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>

#include <algorithm>

namespace kelgen::posix {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";
constexpr std::u16string_view kLineEnd = u"\r\n";
constexpr std::u16string_view kBlanks = u" \t\n\v\f\r\x1A";

std::u16string_view Trimmed(std::u16string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::u16string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::u16string_view WithoutLeadingBlanks(std::u16string_view text)
{
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

bool EqualNames(std::u16string_view left, std::u16string_view right)
{
    return CompareNames(left, right) == 0;
}

std::u16string WideOfUtf8(std::string_view text)
{
    const int size = static_cast<int>(text.size());
    std::u16string wide(text.size(), u'\0');
    const int units = size == 0 ? 0 : MultiByteToWideChar(CP_UTF8, 0, text.data(), size, reinterpret_cast<LPWSTR>(wide.data()), size);
    wide.resize(static_cast<std::size_t>(std::max(units, 0)));
    return wide;
}

std::string Utf8OfWide(std::u16string_view text)
{
    const int units = static_cast<int>(text.size());
    std::string narrow(text.size() * 3, '\0');
    const int size = units == 0 ? 0
                                : WideCharToMultiByte(CP_UTF8, 0, reinterpret_cast<LPCWSTR>(text.data()), units, narrow.data(), units * 3,
                                                      nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(std::max(size, 0)));
    return narrow;
}

bool IsBlank(std::string_view raw)
{
    return std::ranges::all_of(
        raw, [](char byte) { return byte == '\0' || kBlanks.find(static_cast<unsigned char>(byte)) != std::u16string_view::npos; });
}

}  // namespace

std::u16string_view WithoutQuotes(std::u16string_view text)
{
    if (text.size() < 2 || text.front() != text.back() || (text.front() != u'"' && text.front() != u'\''))
        return text;
    return text.substr(1, text.size() - 2);
}

ProfileText::ProfileText(std::string_view bytes)
{
    if (bytes.starts_with(kUtf8Mark))
        m_encoding = Encoding::Utf8;
    else if (bytes.starts_with(kUtf16LittleEndianMark))
        m_encoding = Encoding::Utf16LittleEndian;
    else if (bytes.starts_with(kUtf16BigEndianMark))
        m_encoding = Encoding::Utf16BigEndian;
    bytes.remove_prefix(Mark().size());
    while (!bytes.empty()) {
        const std::size_t length = LineLength(bytes);
        m_lines.push_back(Parse(std::string(bytes.substr(0, length))));
        bytes.remove_prefix(length);
    }
}

std::string ProfileText::Bytes() const
{
    std::string bytes(Mark());
    for (const Line& line : m_lines)
        bytes += line.raw;
    return bytes;
}

std::string_view ProfileText::Mark() const
{
    switch (m_encoding) {
    case Encoding::Utf8:
        return kUtf8Mark;
    case Encoding::Utf16LittleEndian:
        return kUtf16LittleEndianMark;
    case Encoding::Utf16BigEndian:
        return kUtf16BigEndianMark;
    case Encoding::Ansi:
        break;
    }
    return {};
}

std::size_t ProfileText::LineLength(std::string_view bytes) const
{
    const std::size_t unit = m_encoding == Encoding::Ansi || m_encoding == Encoding::Utf8 ? 1 : 2;
    const std::size_t low = m_encoding == Encoding::Utf16BigEndian ? 1 : 0;
    const auto isUnit = [&](std::size_t at, char letter) {
        return at + unit <= bytes.size() && bytes[at + low] == letter && (unit == 1 || bytes[at + 1 - low] == '\0');
    };
    for (std::size_t i = 0; i + unit <= bytes.size(); i += unit) {
        if (isUnit(i, '\n'))
            return i + unit;
        if (isUnit(i, '\r'))
            return isUnit(i + unit, '\n') ? i + 2 * unit : i + unit;
    }
    return bytes.size();
}

std::u16string ProfileText::Decode(std::string_view raw) const
{
    if (m_encoding == Encoding::Ansi)
        return WideText(raw);
    if (m_encoding == Encoding::Utf8)
        return WideOfUtf8(raw);

    const std::size_t low = m_encoding == Encoding::Utf16LittleEndian ? 0 : 1;
    std::u16string text;
    for (std::size_t i = 0; i + 1 < raw.size(); i += 2)
        text.push_back(MAKEWORD(raw[i + low], raw[i + 1 - low]));
    return text;
}

std::string ProfileText::Encode(std::u16string_view text) const
{
    if (m_encoding == Encoding::Ansi)
        return AnsiText(text);
    if (m_encoding == Encoding::Utf8)
        return Utf8OfWide(text);

    std::string raw;
    for (const char16_t unit : text) {
        const char bytes[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        const std::size_t first = m_encoding == Encoding::Utf16LittleEndian ? 0 : 1;
        raw.push_back(bytes[first]);
        raw.push_back(bytes[1 - first]);
    }
    return raw;
}

ProfileText::Line ProfileText::Parse(std::string raw) const
{
    Line line;
    const std::u16string decoded = Decode(raw);
    line.raw = std::move(raw);
    const std::u16string_view text = Trimmed(std::u16string_view(decoded).substr(0, decoded.find(u'\0')));
    if (const std::size_t close = text.rfind(u']'); text.starts_with(u'[') && close != std::u16string_view::npos) {
        line.isSection = true;
        line.name = Trimmed(text.substr(1, close - 1));
        return line;
    }
    const std::size_t equals = text.find(u'=');
    line.name = Trimmed(text.substr(0, equals));
    if (equals != std::u16string_view::npos)
        line.value = Trimmed(text.substr(equals + 1));
    return line;
}

ProfileText::Line ProfileText::Made(std::u16string text) const
{
    text += kLineEnd;
    return Parse(Encode(text));
}

ProfileText::Range ProfileText::Body(std::size_t begin) const
{
    std::size_t end = begin;
    while (end < m_lines.size() && !m_lines[end].isSection)
        ++end;
    return {begin, end};
}

std::optional<ProfileText::Range> ProfileText::Find(std::u16string_view section) const
{
    section = Trimmed(section);
    if (section.empty())
        return Body(0);
    for (std::size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i].isSection && EqualNames(m_lines[i].name, section))
            return Body(i + 1);
    return std::nullopt;
}

std::optional<std::size_t> ProfileText::FindKey(Range range, std::u16string_view key) const
{
    key = Trimmed(key);
    for (std::size_t i = range.begin; i < range.end; ++i) {
        const Line& line = m_lines[i];
        if (EqualNames(line.name, key) && (line.value || !line.name.empty()))
            return i;
    }
    return std::nullopt;
}

std::optional<std::u16string> ProfileText::Value(std::u16string_view section, std::u16string_view key) const
{
    const auto range = Find(section);
    const auto position = range ? FindKey(*range, key) : std::nullopt;
    if (!position || !m_lines[*position].value)
        return std::nullopt;
    return std::u16string(WithoutQuotes(*m_lines[*position].value));
}

std::vector<std::u16string> ProfileText::Sections() const
{
    std::vector<std::u16string> names;
    for (const Line& line : m_lines)
        if (line.isSection && !line.name.empty())
            names.push_back(line.name);
    return names;
}

std::optional<std::vector<std::u16string>> ProfileText::Keys(std::u16string_view section) const
{
    const auto range = Find(section);
    if (!range)
        return std::nullopt;
    std::vector<std::u16string> names;
    for (std::size_t i = range->begin; i < range->end; ++i)
        if (m_lines[i].value && !m_lines[i].name.starts_with(u';'))
            names.push_back(m_lines[i].name);
    // Before the first section there may be no lines at all: then the section "" is missing.
    if (range->begin == 0 && names.empty())
        return std::nullopt;
    return names;
}

std::vector<std::u16string> ProfileText::Entries(std::u16string_view section) const
{
    std::vector<std::u16string> entries;
    // By contract blanks name no section here, so that they list nothing, though a single value's section may have them around its name.
    const auto range = section.empty() || !Trimmed(section).empty() ? Find(section).value_or(Range{0, 0}) : Range{0, 0};
    for (std::size_t i = range.begin; i < range.end; ++i) {
        const Line& line = m_lines[i];
        if (line.name.starts_with(u';') || (line.name.empty() && !line.value))
            continue;
        entries.push_back(line.value ? line.name + u'=' + *line.value : line.name);
    }
    return entries;
}

void ProfileText::InsertLine(std::size_t position, Line line)
{
    // A file's last line may lack its end, and may end in half a unit.
    if (position > 0) {
        std::string& previous = m_lines[position - 1].raw;
        previous.resize(previous.size() - previous.size() % Encode(u" ").size());
        const std::u16string text = Decode(previous);
        if (!text.ends_with(u'\n'))
            previous += Encode(text.ends_with(u'\r') ? kLineEnd.substr(1) : kLineEnd);
    }
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(position), std::move(line));
}

ProfileText::Range ProfileText::AppendSection(std::u16string_view section)
{
    InsertLine(m_lines.size(), Made(u'[' + std::u16string(Trimmed(section)) + u']'));
    return {m_lines.size(), m_lines.size()};
}

bool ProfileText::SetValue(std::u16string_view section, std::u16string_view key, std::u16string_view value)
{
    value = WithoutLeadingBlanks(value);
    auto range = Find(section);
    if (!range)
        range = AppendSection(section);
    if (const auto position = FindKey(*range, key)) {
        // The key stays as it is spelt.
        Line line = Made(m_lines[*position].name + u'=' + std::u16string(value));
        if (m_lines[*position].value == line.value)
            return false;
        m_lines[*position] = std::move(line);
        return true;
    }
    std::size_t position = range->end;
    while (position > range->begin && IsBlank(m_lines[position - 1].raw))
        --position;
    InsertLine(position, Made(std::u16string(Trimmed(key)) + u'=' + std::u16string(value)));
    return true;
}

bool ProfileText::RemoveKey(std::u16string_view section, std::u16string_view key)
{
    const auto range = Find(section);
    const auto position = range ? FindKey(*range, key) : std::nullopt;
    if (!position)
        return false;
    m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(*position));
    return true;
}

bool ProfileText::RemoveSection(std::u16string_view section)
{
    const auto range = Find(section);
    if (!range)
        return false;
    // The lines before the first section have no line that names them.
    const std::size_t first = range->begin - (range->begin > 0 ? 1 : 0);
    const auto begin = m_lines.begin();
    m_lines.erase(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(range->end));
    return range->end > first;
}

bool ProfileText::ReplaceSection(std::u16string_view section, std::span<const std::u16string> entries)
{
    auto range = Find(section);
    if (!range && entries.empty())
        return false;
    if (!range)
        range = AppendSection(section);
    const auto begin = m_lines.begin();
    m_lines.erase(begin + static_cast<std::ptrdiff_t>(range->begin), begin + static_cast<std::ptrdiff_t>(range->end));
    std::size_t position = range->begin;
    for (const std::u16string_view entry : entries) {
        const std::size_t equals = entry.find(u'=');
        if (equals == std::u16string_view::npos)
            continue;
        const std::u16string_view value = WithoutLeadingBlanks(entry.substr(equals + 1));
        InsertLine(position++, Made(std::u16string(Trimmed(entry.substr(0, equals))) + u'=' + std::u16string(value)));
    }
    return true;
}

}  // namespace kelgen::posix
