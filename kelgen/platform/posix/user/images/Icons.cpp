// Icons.cpp: the table of icons and cursors; making, copying and asking them.
#include <kelgen/platform/posix/user/api/Icons.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/images/IconObjects.h>
#include <kelgen/platform/posix/user/objects/UserHandles.h>

#include <map>
#include <mutex>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr int kDefaultSize = 32;

struct IconTable
{
    std::mutex mutex;
    UserHandleTable<HICON, IconObject, HandleKind::kIcon> table;
    std::map<SharedKey, HICON> shared;

    static IconTable& Get()
    {
        static IconTable& icons = *new IconTable;
        return icons;
    }
};

HICON InsertOrFail(const std::optional<IconObject>& icon)
{
    return icon ? InsertIcon(*icon) : nullptr;
}

IconObject Resized(IconObject icon, int width, int height)
{
    if (width > 0 && icon.width > 0) {
        icon.xHotspot = icon.xHotspot * width / icon.width;
        icon.width = width;
    }
    if (height > 0 && icon.height > 0) {
        icon.yHotspot = icon.yHotspot * height / icon.height;
        icon.height = height;
    }
    icon.isShared = false;
    return icon;
}

}  // namespace

namespace kelgen::posix::user {

HICON InsertIcon(const IconObject& icon)
{
    IconTable& icons = IconTable::Get();
    const std::lock_guard lock(icons.mutex);
    const HICON handle = icons.table.Insert(std::make_unique<IconObject>(icon));
    return handle ? handle : Fail(ERROR_NOT_ENOUGH_MEMORY, HICON());
}

HICON FindShared(const SharedKey& key)
{
    IconTable& icons = IconTable::Get();
    const std::lock_guard lock(icons.mutex);
    const auto found = icons.shared.find(key);
    return found == icons.shared.end() ? nullptr : found->second;
}

HICON ShareIcon(const SharedKey& key, const IconObject& icon)
{
    IconTable& icons = IconTable::Get();
    const std::lock_guard lock(icons.mutex);
    HICON& handle = icons.shared[key];
    if (!handle) {
        IconObject copy = icon;
        copy.isShared = true;
        handle = icons.table.Insert(std::make_unique<IconObject>(copy));
    }
    return handle;
}

std::optional<IconObject> IconOf(HICON icon)
{
    IconTable& icons = IconTable::Get();
    const std::lock_guard lock(icons.mutex);
    const IconObject* object = icons.table.Find(icon);
    return object ? std::optional(*object) : std::nullopt;
}

}  // namespace kelgen::posix::user

BOOL DestroyIcon(HICON icon)
{
    IconTable& icons = IconTable::Get();
    const std::lock_guard lock(icons.mutex);
    const IconObject* object = icons.table.Find(icon);
    if (object && !object->isShared)
        icons.table.Remove(icon);
    return object != nullptr;
}

BOOL DestroyCursor(HCURSOR cursor)
{
    return DestroyIcon(cursor);
}

HICON CopyIcon(HICON icon)
{
    return OrNoMemory(HICON{}, [&]() -> HICON {
        auto copy = IconOf(icon);
        if (!copy)
            return Fail(ERROR_INVALID_CURSOR_HANDLE, HICON());
        copy->isShared = false;
        return InsertIcon(*copy);
    });
}

HANDLE CopyImage(HANDLE image, UINT type, int width, int height, UINT flags)
{
    return OrNoMemory(HANDLE{}, [&]() -> HANDLE {
        if (type == IMAGE_BITMAP) {
            BITMAP bitmap;
            if (!GetObjectA(image, sizeof bitmap, &bitmap))
                return Fail(ERROR_INVALID_HANDLE, HANDLE());
            return CreateBitmap(width ? width : bitmap.bmWidth, height ? height : bitmap.bmHeight, bitmap.bmPlanes, bitmap.bmBitsPixel,
                                nullptr);
        }
        const auto icon = static_cast<HICON>(image);
        const auto original = IconOf(icon);
        if (!original)
            return Fail(ERROR_INVALID_CURSOR_HANDLE, HANDLE());
        if (flags & LR_DEFAULTSIZE) {
            width = width ? width : kDefaultSize;
            height = height ? height : kDefaultSize;
        }
        const IconObject copy = Resized(*original, width, height);
        if ((flags & LR_COPYRETURNORG) && copy.width == original->width && copy.height == original->height)
            return image;
        const HICON handle = InsertIcon(copy);
        if (handle && (flags & LR_COPYDELETEORG))
            DestroyIcon(icon);
        return handle;
    });
}

BOOL GetIconInfo(HICON icon, PICONINFO info)
{
    const auto object = IconOf(icon);
    if (!object || !info)
        return Fail(ERROR_INVALID_CURSOR_HANDLE, FALSE);
    info->fIcon = object->isIcon;
    info->xHotspot = static_cast<DWORD>(object->xHotspot);
    info->yHotspot = static_cast<DWORD>(object->yHotspot);
    info->hbmMask = CreateBitmap(object->width, object->height * (object->hasColor ? 1 : 2), 1, 1, nullptr);
    info->hbmColor = object->hasColor ? CreateBitmap(object->width, object->height, 1, 32, nullptr) : nullptr;
    return TRUE;
}

HICON CreateIcon(HINSTANCE, int width, int height, BYTE planes, BYTE bitsPerPixel, const BYTE*, const BYTE*)
{
    return OrNoMemory(HICON{}, [&]() -> HICON {
        if (width < 0 || height < 0)
            return Fail(ERROR_INVALID_PARAMETER, HICON());
        return InsertIcon({true, planes * bitsPerPixel > 1, width, height, width / 2, height / 2, false});
    });
}

HCURSOR CreateCursor(HINSTANCE, int xHotspot, int yHotspot, int width, int height, const void*, const void*)
{
    return OrNoMemory(HCURSOR{}, [&]() -> HCURSOR {
        if (width < 0 || height < 0)
            return Fail(ERROR_INVALID_PARAMETER, HCURSOR());
        return InsertIcon({false, false, width, height, xHotspot, yHotspot, false});
    });
}

HICON CreateIconIndirect(PICONINFO info)
{
    return OrNoMemory(HICON{}, [&]() -> HICON {
        BITMAP size;
        if (!info || !GetObjectA(info->hbmMask, sizeof size, &size))
            return Fail(ERROR_INVALID_PARAMETER, HICON());
        const bool hasColor = info->hbmColor != nullptr;
        if (hasColor && !GetObjectA(info->hbmColor, sizeof size, &size))
            return Fail(ERROR_INVALID_PARAMETER, HICON());
        const int height = hasColor ? size.bmHeight : size.bmHeight / 2;
        const bool isIcon = info->fIcon != FALSE;
        return InsertIcon({isIcon, hasColor, size.bmWidth, height, isIcon ? size.bmWidth / 2 : static_cast<int>(info->xHotspot),
                           isIcon ? height / 2 : static_cast<int>(info->yHotspot), false});
    });
}

HICON CreateIconFromResource(PBYTE bits, DWORD size, BOOL isIcon, DWORD version)
{
    return OrNoMemory(HICON{}, [&]() -> HICON { return CreateIconFromResourceEx(bits, size, isIcon, version, 0, 0, LR_DEFAULTSIZE); });
}

HICON CreateIconFromResourceEx(PBYTE bits, DWORD size, BOOL isIcon, DWORD, int width, int height, UINT flags)
{
    return OrNoMemory(HICON{}, [&]() -> HICON {
        if (!bits)
            return nullptr;
        const int missing = flags & LR_DEFAULTSIZE ? kDefaultSize : 0;
        return InsertOrFail(ReadIconImage(TemplateReader(bits, size), isIcon != FALSE, width ? width : missing, height ? height : missing));
    });
}

int LookupIconIdFromDirectory(PBYTE directory, BOOL isIcon)
{
    return LookupIconIdFromDirectoryEx(directory, isIcon, 0, 0, 0);
}

int LookupIconIdFromDirectoryEx(PBYTE directory, BOOL isIcon, int width, int height, UINT flags)
{
    if (!directory)
        return 0;
    const auto entry =
        ChooseIcon(TemplateReader(directory), isIcon != FALSE, false, width ? width : kDefaultSize, height ? height : kDefaultSize, flags);
    return entry ? static_cast<int>(entry->place) : 0;
}
