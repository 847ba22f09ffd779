// ResourceTable.h: the entries of one compiled resource file.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace kelgen::posix {

/// A resource's type or name: a text, or a number when the text is empty.
struct ResourceKey
{
    std::u16string text;  // upper case
    WORD number = 0;

    bool operator==(const ResourceKey&) const = default;
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

/// What a .res file holds, in its order.
/// Source: the RESOURCEHEADER format: data size, header size, type, name, version, flags, language, version, characteristics, data;
/// every header and all data start at a multiple of 4.
class KELGEN_PLATFORM_API ResourceTable
{
public:
    /// Takes every sound entry of @p bytes up to the first one whose sizes do not fit; the bytes are kept, not copied. Any bytes
    /// are harmless.
    explicit ResourceTable(std::span<const BYTE> bytes);

    const std::vector<ResourceEntry>& Entries() const { return m_entries; }

private:
    std::vector<ResourceEntry> m_entries;
};

}  // namespace kelgen::posix
