// ResourceTable.cpp: parses compiled resource files, trusting no offset.
#include <kelgen/platform/posix/resources/ResourceTable.h>

#include <kelgen/platform/posix/base/NameCase.h>

#include <algorithm>
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

}  // namespace

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
        if (headerSize < kSizes || headerSize > bytes.size() || dataSize > bytes.size() - headerSize)
            return;

        auto entry = ParseHeader(bytes.subspan(kSizes, headerSize - kSizes));
        if (entry) {
            entry->data = bytes.subspan(headerSize, dataSize);
            if (!IsFileMarker(*entry))
                m_entries.push_back(std::move(*entry));
        }
        const std::size_t end = (headerSize + dataSize + kAlignment - 1) / kAlignment * kAlignment;
        bytes = bytes.subspan(std::min(end, bytes.size()));
    }
}

}  // namespace kelgen::posix
