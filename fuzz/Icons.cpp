// Icons.cpp: any bytes as icons, cursors and bitmaps: in resources and as files.
#include "Input.h"
#include "ResourceFile.h"

#include <kelgen/platform/support/IconPicture.h>

#include <sys/mman.h>
#include <unistd.h>

using namespace fuzz;

namespace {

void IsSoundBitmap(HBITMAP bitmap)
{
    BITMAP facts = {};
    Require(GetObjectA(bitmap, sizeof facts, &facts) == sizeof facts && facts.bmWidth >= 0 && facts.bmHeight >= 0);
    Require(DeleteObject(bitmap));
}

void IsSoundIcon(HICON icon)
{
    ICONINFO info = {};
    Require(GetIconInfo(icon, &info));
    const auto png = kelgen::IconPng(icon);
    Require(png.empty() || png[0] == 0x89);
    IsSoundBitmap(info.hbmMask);
    if (info.hbmColor)
        IsSoundBitmap(info.hbmColor);
    Require(DestroyIcon(icon));
}

void IsSound(HANDLE image, UINT type)
{
    if (!image)
        return;
    if (const HANDLE copy = CopyImage(image, type, 8, 0, 0)) {
        if (type == IMAGE_BITMAP)
            IsSoundBitmap(static_cast<HBITMAP>(copy));
        else
            IsSoundIcon(static_cast<HICON>(copy));
    }
    if (type == IMAGE_BITMAP)
        IsSoundBitmap(static_cast<HBITMAP>(image));
    else
        IsSoundIcon(static_cast<HICON>(image));
}

// The file that all inputs are written to; it has no name.
void LoadFile(const std::string& bytes, UINT type, int width, UINT flags)
{
    static const int file = memfd_create("fuzz", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    Require(ftruncate(file, 0) == 0 && pwrite(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    IsSound(LoadImageA(nullptr, path.c_str(), type, width, width, flags | LR_LOADFROMFILE), type);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    const unsigned kind = input.Below(4);
    const UINT type = input.Below(3);
    const int width = input.Take<signed char>();
    const UINT flags = input.Take<WORD>() & (LR_MONOCHROME | LR_DEFAULTSIZE | LR_VGACOLOR | LR_CREATEDIBSECTION);
    if (kind == 0) {
        Exact<BYTE> bits(input.Left());
        const std::string bytes = input.Rest<char>();
        std::copy(bytes.begin(), bytes.end(), bits.Get());
        IsSound(CreateIconFromResourceEx(bits.Get(), static_cast<DWORD>(bits.Size()), type == IMAGE_ICON, 0x00030000, width, width, flags),
                IMAGE_ICON);
    } else if (kind == 1) {
        LoadFile(input.Rest<char>(), type, width, flags);
    } else {
        const std::string group = input.Counted<char>();
        const std::string image = input.Rest<char>();
        ResourceFile file;
        file.Add(type == IMAGE_ICON     ? RT_GROUP_ICON
                 : type == IMAGE_CURSOR ? RT_GROUP_CURSOR
                                        : RT_BITMAP,
                 1, type == IMAGE_BITMAP ? image : group);
        for (WORD name = 1; name < 4; ++name)
            file.Add(type == IMAGE_ICON ? RT_ICON : RT_CURSOR, name, image);
        IsSound(LoadImageA(file.Module(), MAKEINTRESOURCEA(1), type, width, width, flags), type);
    }
    return 0;
}
