// ResourceTable.h: the entries of one compiled resource file.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <compare>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// A resource's type or name: a text, or a number when the text is empty.
struct ResourceKey
{
    std::u16string text;  // upper case
    WORD number = 0;

    bool operator==(const ResourceKey&) const = default;
    /// Texts by their units, then numbers.
    std::strong_ordering operator<=>(const ResourceKey& other) const;
};

/// One resource. Its data lies in the bytes that were parsed.
struct ResourceEntry
{
    ResourceKey type;
    ResourceKey name;
    WORD language = 0;
    std::span<const BYTE> data;
};

/// A text as resource keys keep it: letters in upper case.
std::u16string ResourceText(std::u16string text);

/// What a .res file holds, ordered by type, name and language.
/// Source: the RESOURCEHEADER format: data size, header size, type, name, version, flags, language, version, characteristics,
/// data; every header and all data start at a multiple of 4.
class KELGEN_PLATFORM_TESTED_API ResourceTable
{
public:
    /// Takes every sound entry of @p bytes up to the first one whose sizes do not fit; the bytes are kept, not copied. Any bytes
    /// are harmless.
    explicit ResourceTable(std::span<const BYTE> bytes);

    const std::vector<ResourceEntry>& Entries() const { return m_entries; }

    /// The entries of that type, and of that type and name.
    std::span<const ResourceEntry> OfType(const ResourceKey& type) const;
    std::span<const ResourceEntry> OfName(const ResourceKey& type, const ResourceKey& name) const;

private:
    std::vector<ResourceEntry> m_entries;
};

/// The text number @p index of a string block: sixteen texts, each a count and that many units. Empty when the block ends before
/// it. The units lie in @p block, at an even offset.
KELGEN_PLATFORM_TESTED_API std::u16string_view StringInBlock(std::span<const BYTE> block, unsigned index);

}  // namespace kelgen::posix
