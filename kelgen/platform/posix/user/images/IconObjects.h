// IconObjects.h: what icons, cursors and bitmaps are, and reading them.
#pragma once

#include <kelgen/platform/posix/user/api/Icons.h>
#include <kelgen/platform/posix/user/objects/TemplateReader.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace kelgen::posix::user {

/// An image as its resource or file has it: a PNG file, or colours, pixels and mask of a bitmap of that size.
struct IconBits
{
    bool isPng = false;
    int width = 0;
    int height = 0;
    int bits = 0;
    std::size_t colors = 0;
    std::size_t bytesOfColor = 0;
    std::vector<BYTE> bytes;
};

struct IconObject
{
    bool isIcon = true;
    bool hasColor = true;
    int width = 0;
    int height = 0;
    int xHotspot = 0;
    int yHotspot = 0;
    bool isShared = false;
    std::shared_ptr<const IconBits> bits = {};  // null where no image was read
};

/// What shared images are found by: an address or a number that is theirs alone, and a size where that tells them apart.
struct SharedKey
{
    std::uintptr_t image = 0;
    UINT type = 0;
    int width = 0;

    auto operator<=>(const SharedKey&) const = default;
};

/// A handle for @p icon.
HICON InsertIcon(const IconObject& icon);
/// The handle that is shared under @p key, made from @p icon when there is none.
HICON ShareIcon(const SharedKey& key, const IconObject& icon);
/// The shared handle of @p key, or null.
HICON FindShared(const SharedKey& key);
/// A copy of what @p icon is; nothing when it is none.
std::optional<IconObject> IconOf(HICON icon);

/// The icon or cursor in the bytes of an image resource or of a file's image; nothing when they are damaged. Sizes of 0 are the
/// image's own. Source: the formats of icon resources: a bitmap header with twice the height, colours, pixels and a mask; or PNG.
std::optional<IconObject> ReadIconImage(TemplateReader reader, bool isIcon, int width, int height);

/// One image of a group resource or of an icon file.
struct IconEntry
{
    int width = 0;
    int height = 0;
    int bits = 0;
    DWORD size = 0;
    DWORD place = 0;  // a group's resource number, a file's offset
};

/// The image of a directory that is nearest to a size, of those the one with most colours, or fewest with LR_MONOCHROME. Nothing
/// when the directory is damaged or empty. Source: the formats of group resources and icon files.
std::optional<IconEntry> ChooseIcon(TemplateReader directory, bool isIcon, bool isFile, int width, int height, UINT flags);

}  // namespace kelgen::posix::user
