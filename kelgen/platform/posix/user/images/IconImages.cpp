// IconImages.cpp: the formats of icons and cursors, in resources and files.
#include <kelgen/platform/posix/user/images/IconObjects.h>

#include <cstdlib>

namespace kelgen::posix::user {

namespace {

constexpr int kLargest = 4096;
// What is kept of an image for pictures: enough for 256 by 256 pixels.
constexpr std::size_t kMostBytes = 300000;

struct Header
{
    int width = 0;
    int height = 0;  // of image and mask together
    int bits = 0;
    DWORD colors = 0;
    std::uint64_t bytesOfColor = 4;
    bool isPng = false;
};

std::optional<Header> ReadHeader(TemplateReader& reader)
{
    constexpr DWORD kPngSignature = 0x474E5089;
    constexpr DWORD kCoreSize = 12;
    constexpr DWORD kInfoSize = 40;
    Header header;
    const DWORD size = reader.Dword();
    if (size == kPngSignature) {
        const auto bigEndian = [&reader] {
            DWORD value = 0;
            for (int i = 0; i < 4; ++i)
                value = value << 8 | reader.Byte();
            return static_cast<int>(std::min<DWORD>(value, kLargest + 1));
        };
        reader.Skip(12);  // the rest of the signature, the first chunk's length and name
        header.width = bigEndian();
        header.height = bigEndian() * 2;
        header.isPng = true;
    } else if (size == kCoreSize) {
        header.width = reader.Word();
        header.height = reader.Word();
        reader.Word();  // planes
        header.bits = reader.Word();
        header.bytesOfColor = 3;
    } else if (size >= kInfoSize) {
        header.width = static_cast<int>(reader.Dword());
        header.height = static_cast<int>(reader.Dword());
        reader.Word();  // planes
        header.bits = reader.Word();
        reader.Skip(16);  // compression, image size, resolution
        header.colors = reader.Dword();
        reader.Dword();  // important colours
        reader.Skip(size - kInfoSize);
    } else {
        return std::nullopt;
    }
    const bool isSound = reader.IsSound() && header.width > 0 && header.width <= kLargest && header.height > 1 &&
                         header.height <= 2 * kLargest && header.bits <= 32 && header.colors <= 256;
    return isSound ? std::optional(header) : std::nullopt;
}

std::uint64_t RowBytes(int width, int bits)
{
    return static_cast<std::uint64_t>(width * bits + 31) / 32 * 4;
}

/// A place in an image of @p from pixels, in one of @p to.
int Scaled(int place, int to, int from)
{
    return static_cast<int>(std::int64_t{place} * to / from);
}

/// How far an entry is from what is wanted; less is better.
bool IsBetter(const IconEntry& entry, const IconEntry& than, int width, int height, bool isMonochrome)
{
    const auto distance = [&](const IconEntry& each) { return std::abs(each.width - width) + std::abs(each.height - height); };
    if (distance(entry) != distance(than))
        return distance(entry) < distance(than);
    return isMonochrome ? entry.bits < than.bits : entry.bits > than.bits;
}

}  // namespace

std::optional<IconObject> ReadIconImage(TemplateReader reader, bool isIcon, int width, int height)
{
    IconObject icon;
    icon.isIcon = isIcon;
    if (!isIcon) {
        icon.xHotspot = reader.Word();
        icon.yHotspot = reader.Word();
    }
    const TemplateReader start = reader;
    const auto header = ReadHeader(reader);
    if (!header)
        return std::nullopt;
    const int ownHeight = header->height / 2;
    IconBits bits{header->isPng, header->width, ownHeight, header->bits, 0, 0, {}};
    if (header->isPng) {
        // One whose end its caller vouches for has no end that could be found here.
        if (start.Left() <= kMostBytes)
            bits.bytes.assign(start.Here(), start.Here() + start.Left());
    } else {
        const DWORD colors = header->bits > 8 ? header->colors : header->colors ? header->colors : 1u << header->bits;
        const std::uint64_t needed = colors * header->bytesOfColor + (RowBytes(header->width, header->bits) + RowBytes(header->width, 1)) *
                                                                         static_cast<std::uint64_t>(ownHeight);
        if (needed > reader.Left())
            return std::nullopt;
        bits.colors = colors;
        bits.bytesOfColor = header->bytesOfColor;
        if (needed <= kMostBytes)
            bits.bytes.assign(reader.Here(), reader.Here() + needed);
    }
    if (!bits.bytes.empty())
        icon.bits = std::make_shared<const IconBits>(std::move(bits));
    icon.width = width > 0 ? width : header->width;
    icon.height = height > 0 ? height : ownHeight;
    icon.xHotspot = isIcon ? icon.width / 2 : Scaled(icon.xHotspot, icon.width, header->width);
    icon.yHotspot = isIcon ? icon.height / 2 : Scaled(icon.yHotspot, icon.height, ownHeight);
    return icon;
}

std::optional<IconEntry> ChooseIcon(TemplateReader directory, bool isIcon, bool isFile, int width, int height, UINT flags)
{
    if (directory.Word() != 0 || (directory.Word() & 3) == 0)
        return std::nullopt;
    std::optional<IconEntry> best;
    for (int left = directory.Word(); left > 0; --left) {
        IconEntry entry;
        if (isIcon || isFile) {
            entry.width = directory.Byte();
            entry.height = directory.Byte();
            directory.Word();  // colours
        } else {
            entry.width = directory.Word();
            entry.height = directory.Word() / 2;
        }
        directory.Word();  // planes, or a file's hot spot
        entry.bits = directory.Word();
        entry.size = directory.Dword();
        entry.place = isFile ? directory.Dword() : directory.Word();
        if (!directory.IsSound())
            break;
        // A byte cannot say 256.
        entry.width = entry.width ? entry.width : 256;
        entry.height = entry.height ? entry.height : 256;
        if (!best || IsBetter(entry, *best, width, height, (flags & LR_MONOCHROME) != 0))
            best = entry;
    }
    return best;
}

}  // namespace kelgen::posix::user
