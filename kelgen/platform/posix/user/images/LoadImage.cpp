// LoadImage.cpp: icons, cursors and bitmaps from resources, files and the system.
#include <kelgen/platform/posix/user/api/Icons.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/api/Files.h>
#include <kelgen/platform/posix/resources/api/Resources.h>
#include <kelgen/platform/posix/threads/api/CloseHandle.h>
#include <kelgen/platform/posix/user/images/IconObjects.h>

#include <algorithm>
#include <vector>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr int kIconSize = 32;

struct WantedImage
{
    UINT type;
    int width;
    int height;
    UINT flags;

    bool IsIcon() const { return type == IMAGE_ICON; }
};

/// Numbers of resource types: an image's and its group's.
constexpr WORD kImageTypes[] = {2, 3, 1};
constexpr WORD kGroupTypes[] = {2, 14, 12};

HRSRC FindResourceOf(HMODULE module, LPCSTR name, WORD type)
{
    return FindResourceA(module, name, MAKEINTRESOURCEA(type));
}
HRSRC FindResourceOf(HMODULE module, LPCWSTR name, WORD type)
{
    return FindResourceW(module, name, MAKEINTRESOURCEW(type));
}
HANDLE OpenFile(LPCSTR name)
{
    return CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
}
HANDLE OpenFile(LPCWSTR name)
{
    return CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
}

bool IsOfSystem(ULONG_PTR number, bool isIcon)
{
    if (isIcon)
        return number >= 32512 && number <= 32518;
    return (number >= 32512 && number <= 32516) || number == 32631 || (number >= 32640 && number <= 32646) ||
           (number >= 32648 && number <= 32651);
}

/// One of the system's images: they exist in any size, and the arrow points with its tip.
HANDLE LoadSystemImage(ULONG_PTR number, const WantedImage& wanted)
{
    constexpr ULONG_PTR kArrow = 32512;
    if (!IsOfSystem(number, wanted.IsIcon()))
        return Fail(ERROR_RESOURCE_TYPE_NOT_FOUND, HANDLE());
    IconObject icon;
    icon.isIcon = wanted.IsIcon();
    icon.width = wanted.width ? wanted.width : kIconSize;
    icon.height = wanted.height ? wanted.height : kIconSize;
    if (icon.isIcon) {
        icon.xHotspot = icon.width / 2;
        icon.yHotspot = icon.height / 2;
    } else if (number != kArrow) {
        icon.xHotspot = icon.width / 2 - 1;
        icon.yHotspot = icon.height / 2 - 1;
    }
    if (wanted.flags & LR_SHARED)
        return ShareIcon({number, wanted.type, icon.width}, icon);
    return InsertIcon(icon);
}

TemplateReader ReaderOf(HMODULE module, HRSRC resource)
{
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    return TemplateReader(bytes, bytes ? SizeofResource(module, resource) : 0);
}

/// The size in a bitmap resource, which starts with its header.
HANDLE LoadBitmapResource(HMODULE module, HRSRC resource, const WantedImage& wanted)
{
    constexpr int kLargest = 32767;
    TemplateReader reader = ReaderOf(module, resource);
    reader.Dword();  // the header's size
    const auto width = static_cast<int>(reader.Dword());
    const auto height = static_cast<int>(reader.Dword());
    const WORD planes = reader.Word();
    const WORD bits = reader.Word();
    if (!reader.IsSound() || width <= 0 || width > kLargest || height < -kLargest || height > kLargest)
        return Fail(ERROR_INVALID_DATA, HANDLE());
    return CreateBitmap(wanted.width ? wanted.width : width, wanted.height ? wanted.height : std::abs(height), planes, bits, nullptr);
}

template <class Char>
HANDLE LoadFromResource(HMODULE module, const Char* name, const WantedImage& wanted)
{
    const HRSRC group = FindResourceOf(module, name, kGroupTypes[wanted.type]);
    if (!group) {
        // By contract a missing name is told as a missing type, so that callers see one error for both.
        if (GetLastError() == ERROR_RESOURCE_NAME_NOT_FOUND)
            SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
        return nullptr;
    }
    if (wanted.type == IMAGE_BITMAP)
        return LoadBitmapResource(module, group, wanted);
    const auto entry = ChooseIcon(ReaderOf(module, group), wanted.IsIcon(), false, wanted.width, wanted.height, wanted.flags);
    const HRSRC image = entry ? FindResourceOf(module, MAKEINTRESOURCEA(entry->place), kImageTypes[wanted.type]) : nullptr;
    if (!image)
        return Fail(ERROR_RESOURCE_TYPE_NOT_FOUND, HANDLE());
    const SharedKey key = {reinterpret_cast<std::uintptr_t>(image), wanted.type, 0};
    const bool isShared = (wanted.flags & LR_SHARED) != 0;
    if (const HICON known = isShared ? FindShared(key) : nullptr)
        return known;
    const auto icon = ReadIconImage(ReaderOf(module, image), wanted.IsIcon(), wanted.width, wanted.height);
    if (!icon)
        return Fail(ERROR_INVALID_DATA, HANDLE());
    return isShared ? ShareIcon(key, *icon) : InsertIcon(*icon);
}

template <class Char>
HANDLE LoadFromFile(const Char* name, const WantedImage& wanted)
{
    constexpr DWORD kLargest = 16 << 20;
    const HANDLE file = OpenFile(name);
    if (file == INVALID_HANDLE_VALUE)
        return nullptr;
    std::vector<BYTE> bytes(std::min(GetFileSize(file, nullptr), kLargest));
    DWORD count = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    CloseHandle(file);

    const auto entry = ChooseIcon(TemplateReader(bytes.data(), count), wanted.IsIcon(), true, wanted.width, wanted.height, wanted.flags);
    if (!entry || entry->place > count)
        return Fail(ERROR_INVALID_DATA, HANDLE());
    // In a file a cursor's hot spot stands in the directory, not before the image.
    auto icon = ReadIconImage(TemplateReader(bytes.data() + entry->place, count - entry->place), true, wanted.width, wanted.height);
    if (!icon)
        return Fail(ERROR_INVALID_DATA, HANDLE());
    icon->isIcon = wanted.IsIcon();
    return InsertIcon(*icon);
}

template <class Char>
HANDLE Load(HMODULE module, const Char* name, WantedImage wanted)
{
    if (wanted.type > IMAGE_CURSOR)
        return nullptr;
    if ((wanted.flags & LR_DEFAULTSIZE) && wanted.type != IMAGE_BITMAP) {
        wanted.width = wanted.width ? wanted.width : kIconSize;
        wanted.height = wanted.height ? wanted.height : kIconSize;
    }
    if ((wanted.flags & LR_LOADFROMFILE) && wanted.type != IMAGE_BITMAP)
        return LoadFromFile(name, wanted);
    if (!module && IS_INTRESOURCE(name) && wanted.type != IMAGE_BITMAP)
        return LoadSystemImage(reinterpret_cast<ULONG_PTR>(name), wanted);
    return LoadFromResource(module, name, wanted);
}

}  // namespace

HANDLE LoadImageA(HINSTANCE module, LPCSTR name, UINT type, int width, int height, UINT flags)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE { return Load(module, name, {type, width, height, flags}); });
}

HANDLE LoadImageW(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE { return Load(module, name, {type, width, height, flags}); });
}

HICON LoadIconA(HINSTANCE module, LPCSTR name)
{
    return OrNoMemory(
        HICON{}, [&]() -> HICON { return static_cast<HICON>(LoadImageA(module, name, IMAGE_ICON, 0, 0, LR_SHARED | LR_DEFAULTSIZE)); });
}

HICON LoadIconW(HINSTANCE module, LPCWSTR name)
{
    return OrNoMemory(
        HICON{}, [&]() -> HICON { return static_cast<HICON>(LoadImageW(module, name, IMAGE_ICON, 0, 0, LR_SHARED | LR_DEFAULTSIZE)); });
}

HCURSOR LoadCursorA(HINSTANCE module, LPCSTR name)
{
    return OrNoMemory(HCURSOR{}, [&]() -> HCURSOR {
        return static_cast<HCURSOR>(LoadImageA(module, name, IMAGE_CURSOR, 0, 0, LR_SHARED | LR_DEFAULTSIZE));
    });
}

HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name)
{
    return OrNoMemory(HCURSOR{}, [&]() -> HCURSOR {
        return static_cast<HCURSOR>(LoadImageW(module, name, IMAGE_CURSOR, 0, 0, LR_SHARED | LR_DEFAULTSIZE));
    });
}
