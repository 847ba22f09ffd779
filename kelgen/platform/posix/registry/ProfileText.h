// ProfileText.h: an initialization file in memory: look-up, and changes that keep every other line as it is.
#pragma once

#include <kelgen/platform/Export.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// The lines of one file. The text is UTF-16 or UTF-8 when it starts with such a mark, else in the ANSI code page; a line ends
/// with a line feed, a carriage return, or both in that order. Any bytes are harmless. Names ignore case and blanks around them; of
/// several equal names the first counts. The section "" is what precedes the first one.
class KELGEN_PLATFORM_TESTED_API ProfileText
{
public:
    explicit ProfileText(std::string_view bytes = {});

    std::string Bytes() const;

    /// The value with blanks around it and one pair of matching quotes taken off. Keys that start with ';' are found too.
    std::optional<std::u16string> Value(std::u16string_view section, std::u16string_view key) const;

    /// The names of all sections but nameless ones, even those that come again.
    std::vector<std::u16string> Sections() const;
    /// The keys that have a value and are no comments; nothing when there is no such section.
    std::optional<std::vector<std::u16string>> Keys(std::u16string_view section) const;
    /// The lines but comments and blank ones, as "key=value" without blanks around either.
    std::vector<std::u16string> Entries(std::u16string_view section) const;

    // Changes tell whether they changed anything.

    /// Sets the value; a new key goes behind the section's last line that is not blank, a new section to the end.
    bool SetValue(std::u16string_view section, std::u16string_view key, std::u16string_view value);
    bool RemoveKey(std::u16string_view section, std::u16string_view key);
    bool RemoveSection(std::u16string_view section);
    /// Replaces all lines of the section by those of @p entries that hold "="; no entries make no new section.
    bool ReplaceSection(std::u16string_view section, std::span<const std::u16string> entries);

private:
    enum class Encoding
    {
        Ansi,
        Utf8,
        Utf16LittleEndian,
        Utf16BigEndian
    };

    struct Line
    {
        std::string raw;  // with its end
        bool isSection = false;
        std::u16string name;                  // the section's or the key's; what stands there when it has no value
        std::optional<std::u16string> value;  // without blanks around it
    };

    /// The lines of a section without its own, by their positions.
    struct Range
    {
        std::size_t begin;
        std::size_t end;
    };

    std::u16string Decode(std::string_view raw) const;
    std::string Encode(std::u16string_view text) const;
    std::string_view Mark() const;
    Line Parse(std::string raw) const;
    Line Made(std::u16string text) const;
    std::size_t LineLength(std::string_view bytes) const;
    Range Body(std::size_t begin) const;
    std::optional<Range> Find(std::u16string_view section) const;
    std::optional<std::size_t> FindKey(Range range, std::u16string_view key) const;
    Range AppendSection(std::u16string_view section);
    void InsertLine(std::size_t position, Line line);

    Encoding m_encoding = Encoding::Ansi;
    std::vector<Line> m_lines;
};

/// @p text without one pair of matching quotes around it.
std::u16string_view WithoutQuotes(std::u16string_view text);

}  // namespace kelgen::posix
