// IconPng.cpp: icons' bitmaps as PNG files.
// Source: the formats of icon resources; PNG (ISO/IEC 15948), with zlib's stored blocks (RFC 1950, 1951).
#include <kelgen/platform/support/IconPicture.h>

#include <kelgen/platform/posix/user/images/IconObjects.h>

#include <array>

using namespace kelgen::posix::user;

namespace {

using Bytes = std::vector<BYTE>;

constexpr int kLargestShown = 256;
constexpr std::size_t kBytesOfPixel = 4;

/// Reads the parts of an icon's bitmap: colours, rows of pixels from the last one up, and rows of mask bits.
class IconBitmap
{
public:
    explicit IconBitmap(const IconBits& bits)
        : m_bits(bits), m_width(static_cast<std::size_t>(bits.width)), m_height(static_cast<std::size_t>(bits.height)),
          m_pixels(bits.colors * bits.bytesOfColor), m_row(RowBytes(static_cast<std::size_t>(bits.bits))),
          m_mask(m_pixels + m_row * m_height)
    {}

    bool IsWhole() const { return m_bits.bytes.size() >= m_mask + RowBytes(1) * m_height; }

    /// Red, green, blue and opacity of all pixels from the first row down.
    Bytes Rgba() const
    {
        Bytes all;
        all.reserve(m_width * m_height * kBytesOfPixel);
        const bool hasOpacity = HasOpacity();
        for (std::size_t y = 0; y < m_height; ++y) {
            for (std::size_t x = 0; x < m_width; ++x) {
                const auto [blue, green, red, opacity] = Pixel(x, y);
                const BYTE shown = hasOpacity ? opacity : IsMasked(x, y) ? BYTE{0} : BYTE{0xFF};
                all.insert(all.end(), {red, green, blue, shown});
            }
        }
        return all;
    }

private:
    using Color = std::array<BYTE, kBytesOfPixel>;  // blue, green, red, opacity

    std::size_t RowBytes(std::size_t bits) const { return (m_width * bits + 31) / 32 * 4; }
    const BYTE* Row(std::size_t start, std::size_t bytes, std::size_t y) const { return &m_bits.bytes[start + (m_height - 1 - y) * bytes]; }

    bool IsMasked(std::size_t x, std::size_t y) const { return (Row(m_mask, RowBytes(1), y)[x / 8] >> (7 - x % 8) & 1) != 0; }

    /// Whether the fourth bytes say anything: older icons leave them 0.
    bool HasOpacity() const
    {
        if (m_bits.bits != 32)
            return false;
        for (std::size_t at = m_pixels + 3; at < m_mask; at += kBytesOfPixel)
            if (m_bits.bytes[at] != 0)
                return true;
        return false;
    }

    Color ColorOf(std::size_t index) const
    {
        if (index >= m_bits.colors)
            return {};
        const BYTE* const color = &m_bits.bytes[index * m_bits.bytesOfColor];
        return {color[0], color[1], color[2], 0};
    }

    Color Pixel(std::size_t x, std::size_t y) const
    {
        const BYTE* const row = Row(m_pixels, m_row, y);
        switch (m_bits.bits) {
        case 32:
            return {row[4 * x], row[4 * x + 1], row[4 * x + 2], row[4 * x + 3]};
        case 24:
            return {row[3 * x], row[3 * x + 1], row[3 * x + 2], 0};
        case 16: {
            const unsigned packed = row[2 * x] | row[2 * x + 1] << 8;
            const auto wide = [](unsigned five) { return static_cast<BYTE>((five & 31) * 255 / 31); };
            return {wide(packed), wide(packed >> 5), wide(packed >> 10), 0};
        }
        case 8:
            return ColorOf(row[x]);
        case 4:
            return ColorOf(row[x / 2] >> (x % 2 ? 0 : 4) & 15);
        case 1:
            return ColorOf(row[x / 8] >> (7 - x % 8) & 1);
        default:
            return {};
        }
    }

    const IconBits& m_bits;
    std::size_t m_width;
    std::size_t m_height;
    std::size_t m_pixels;
    std::size_t m_row;
    std::size_t m_mask;
};

void AppendBigEndian(Bytes& out, DWORD number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<BYTE>(number >> shift));
}

DWORD Crc(const BYTE* bytes, std::size_t count)
{
    DWORD crc = 0xFFFFFFFF;
    for (std::size_t i = 0; i < count; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

DWORD Adler(const Bytes& bytes)
{
    constexpr DWORD kPrime = 65521;
    DWORD low = 1;
    DWORD high = 0;
    for (const BYTE byte : bytes) {
        low = (low + byte) % kPrime;
        high = (high + low) % kPrime;
    }
    return high << 16 | low;
}

void AppendChunk(Bytes& out, const char* name, const Bytes& data)
{
    AppendBigEndian(out, static_cast<DWORD>(data.size()));
    const std::size_t start = out.size();
    out.insert(out.end(), name, name + 4);
    out.insert(out.end(), data.begin(), data.end());
    AppendBigEndian(out, Crc(&out[start], out.size() - start));
}

/// The bytes as zlib has them, not compressed: icons are small.
Bytes Stored(const Bytes& bytes)
{
    constexpr std::size_t kMost = 0xFFFF;
    Bytes out = {0x78, 0x01};
    for (std::size_t at = 0; at < bytes.size(); at += kMost) {
        const std::size_t count = std::min(kMost, bytes.size() - at);
        const auto low = static_cast<BYTE>(count);
        const auto high = static_cast<BYTE>(count >> 8);
        out.insert(out.end(),
                   {static_cast<BYTE>(at + count == bytes.size()), low, high, static_cast<BYTE>(~low), static_cast<BYTE>(~high)});
        const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        out.insert(out.end(), first, first + static_cast<std::ptrdiff_t>(count));
    }
    AppendBigEndian(out, Adler(bytes));
    return out;
}

Bytes Png(const IconBits& bits, const Bytes& rgba)
{
    Bytes header;
    AppendBigEndian(header, static_cast<DWORD>(bits.width));
    AppendBigEndian(header, static_cast<DWORD>(bits.height));
    header.insert(header.end(), {8, 6, 0, 0, 0});  // bits of a channel, colours with opacity, the only methods, no interlacing
    Bytes rows;
    const std::size_t row = static_cast<std::size_t>(bits.width) * kBytesOfPixel;
    for (auto at = rgba.begin(); at != rgba.end(); at += static_cast<std::ptrdiff_t>(row)) {
        rows.push_back(0);  // no filter
        rows.insert(rows.end(), at, at + static_cast<std::ptrdiff_t>(row));
    }
    Bytes out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    AppendChunk(out, "IHDR", header);
    AppendChunk(out, "IDAT", Stored(rows));
    AppendChunk(out, "IEND", {});
    return out;
}

}  // namespace

std::vector<unsigned char> kelgen::IconPng(HICON icon)
{
    const auto object = IconOf(icon);
    if (!object || !object->bits)
        return {};
    const IconBits& bits = *object->bits;
    if (bits.isPng)
        return bits.bytes;
    const IconBitmap bitmap(bits);
    if (bits.width > kLargestShown || bits.height > kLargestShown || !bitmap.IsWhole())
        return {};
    return Png(bits, bitmap.Rgba());
}
