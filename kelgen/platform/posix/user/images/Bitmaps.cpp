// Bitmaps.cpp: bitmaps, which have a size and no pixels.
#include <kelgen/platform/posix/user/api/Icons.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/objects/UserHandles.h>

#include <mutex>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

struct BitmapTable
{
    std::mutex mutex;
    UserHandleTable<HBITMAP, BITMAP, HandleKind::kBitmap> table;

    static BitmapTable& Get()
    {
        static BitmapTable& bitmaps = *new BitmapTable;
        return bitmaps;
    }
};

}  // namespace

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void*)
{
    return OrNoMemory(HBITMAP{}, [&]() -> HBITMAP {
        constexpr int kLargest = 0x7FFFFF;
        if (width < 0 || height < 0 || width > kLargest || height > kLargest || planes > 32 || bitsPerPixel > 32)
            return Fail(ERROR_INVALID_PARAMETER, HBITMAP());
        // By contract a bitmap without a size is no failure but one black-and-white pixel, for the caller to delete.
        if (width == 0 || height == 0) {
            width = height = 1;
            planes = bitsPerPixel = 1;
        }
        const int rowBytes = (width * static_cast<int>(bitsPerPixel) + 15) / 16 * 2;
        const BITMAP bitmap = {0, width, height, rowBytes, static_cast<WORD>(planes), static_cast<WORD>(bitsPerPixel), nullptr};
        BitmapTable& bitmaps = BitmapTable::Get();
        const std::lock_guard lock(bitmaps.mutex);
        return bitmaps.table.Insert(std::make_unique<BITMAP>(bitmap));
    });
}

int GetObjectA(HANDLE object, int size, LPVOID buffer)
{
    BitmapTable& bitmaps = BitmapTable::Get();
    const std::lock_guard lock(bitmaps.mutex);
    const BITMAP* bitmap = bitmaps.table.Find(object);
    if (!bitmap)
        return Fail(ERROR_INVALID_HANDLE, 0);
    constexpr int kSize = sizeof(BITMAP);
    if (!buffer)
        return kSize;
    if (size < kSize)
        return 0;
    *static_cast<BITMAP*>(buffer) = *bitmap;
    return kSize;
}

int GetObjectW(HANDLE object, int size, LPVOID buffer)
{
    return GetObjectA(object, size, buffer);
}

BOOL DeleteObject(HGDIOBJ object)
{
    BitmapTable& bitmaps = BitmapTable::Get();
    const std::lock_guard lock(bitmaps.mutex);
    return bitmaps.table.Remove(object) != nullptr;
}
