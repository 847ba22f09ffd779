// ResourceTable.cpp: parses compiled resource files, trusting no offset.
#include <kelgen/platform/posix/resources/ResourceTable.h>

#include <kelgen/platform/posix/nls/NameCase.h>

#include <algorithm>
#include <compare>
#include <optional>

namespace kelgen::posix {

namespace {

constexpr DWORD kMarkerOfNumber = 0xFFFF;
constexpr std::size_t kAlignment = 4;

/// Reads little-endian numbers in order; every read past the end fails and stays failed.
class Reader
{
public:
    explicit Reader(std::span<const BYTE> bytes) : m_bytes(bytes) {}

    bool Good() const { return m_good; }

    WORD Word()
    {
        if (!Need(2))
            return 0;
        const WORD value = MAKEWORD(m_bytes[m_position], m_bytes[m_position + 1]);
        m_position += 2;
        return value;
    }

    DWORD DoubleWord()
    {
        const WORD low = Word();
        const WORD high = Word();
        return low | (DWORD{high} << 16);
    }

    void Align()
    {
        const std::size_t padding = (kAlignment - m_position % kAlignment) % kAlignment;
        if (Need(padding))
            m_position += padding;
    }

    ResourceKey Key()
    {
        WORD unit = Word();
        if (unit == kMarkerOfNumber)
            return {{}, Word()};

        std::u16string text;
        for (; m_good && unit != 0; unit = Word())
            text.push_back(static_cast<char16_t>(unit));
        return {ResourceText(std::move(text)), 0};
    }

private:
    bool Need(std::size_t count)
    {
        if (!m_good || m_bytes.size() - m_position < count)
            m_good = false;
        return m_good;
    }

    std::span<const BYTE> m_bytes;
    std::size_t m_position = 0;
    bool m_good = true;
};

/// The type, name and language in a header (what follows its two sizes).
std::optional<ResourceEntry> ParseHeader(std::span<const BYTE> header)
{
    Reader reader(header);
    ResourceEntry entry;
    entry.type = reader.Key();
    entry.name = reader.Key();
    reader.Align();
    reader.DoubleWord();  // data version
    reader.Word();        // memory flags
    entry.language = reader.Word();
    if (!reader.Good())
        return std::nullopt;
    return entry;
}

/// The marker with which such files begin, and which separates joined ones: type 0, name 0, no data.
bool IsFileMarker(const ResourceEntry& entry)
{
    return entry.data.empty() && entry.type == ResourceKey() && entry.name == ResourceKey();
}

std::strong_ordering OrderOfNames(const ResourceEntry& left, const ResourceEntry& right)
{
    if (const auto order = left.type <=> right.type; std::is_neq(order))
        return order;
    return left.name <=> right.name;
}

}  // namespace

std::strong_ordering ResourceKey::operator<=>(const ResourceKey& other) const
{
    if (text.empty() != other.text.empty())
        return text.empty() ? std::strong_ordering::greater : std::strong_ordering::less;
    return text.empty() ? number <=> other.number : text <=> other.text;
}

std::u16string ResourceText(std::u16string text)
{
    std::ranges::transform(text, text.begin(), UpperUnit);
    return text;
}

ResourceTable::ResourceTable(std::span<const BYTE> bytes)
{
    constexpr std::size_t kSizes = 8;
    while (bytes.size() >= kSizes) {
        Reader sizes(bytes);
        const std::size_t dataSize = sizes.DoubleWord();
        const std::size_t headerSize = sizes.DoubleWord();
        if (headerSize < kSizes || headerSize % kAlignment != 0 || headerSize > bytes.size() || dataSize > bytes.size() - headerSize)
            break;

        auto entry = ParseHeader(bytes.subspan(kSizes, headerSize - kSizes));
        if (entry) {
            entry->data = bytes.subspan(headerSize, dataSize);
            if (!IsFileMarker(*entry))
                m_entries.push_back(std::move(*entry));
        }
        const std::size_t end = (headerSize + dataSize + kAlignment - 1) / kAlignment * kAlignment;
        bytes = bytes.subspan(std::min(end, bytes.size()));
    }
    std::ranges::stable_sort(m_entries, [](const ResourceEntry& left, const ResourceEntry& right) {
        const auto order = OrderOfNames(left, right);
        return std::is_lt(order) || (std::is_eq(order) && left.language < right.language);
    });
}

std::span<const ResourceEntry> ResourceTable::OfType(const ResourceKey& type) const
{
    const auto found = std::ranges::equal_range(m_entries, type, {}, &ResourceEntry::type);
    return {found.begin(), found.end()};
}

std::span<const ResourceEntry> ResourceTable::OfName(const ResourceKey& type, const ResourceKey& name) const
{
    const auto entries = OfType(type);
    const auto found = std::ranges::equal_range(entries, name, {}, &ResourceEntry::name);
    return {found.begin(), found.end()};
}

std::u16string_view StringInBlock(std::span<const BYTE> block, unsigned index)
{
    for (;; --index) {
        Reader reader(block);
        const std::size_t bytes = reader.Word() * sizeof(char16_t);
        if (!reader.Good() || block.size() - 2 < bytes)
            return {};
        if (index == 0)
            return {reinterpret_cast<const char16_t*>(block.data() + 2), bytes / sizeof(char16_t)};
        block = block.subspan(2 + bytes);
    }
}

}  // namespace kelgen::posix
