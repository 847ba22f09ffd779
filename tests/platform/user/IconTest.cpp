// IconTest.cpp: sizes, sharing and bad data of icons and cursors.
#include "support/Scratch.h"

#include <cstring>
#include <vector>

using namespace kelgen::test;

namespace {

HINSTANCE Module()
{
    return GetModuleHandleA(nullptr);
}

HICON Load(int number, int size, UINT flags = 0, UINT type = IMAGE_ICON)
{
    return static_cast<HICON>(LoadImageA(Module(), MAKEINTRESOURCEA(number), type, size, size, flags));
}

/// "icon 16x16 at 8,8", with the sizes of the bitmaps when they are no colour bitmap and mask of the same size.
std::string Describe(HICON icon)
{
    ICONINFO info;
    if (!GetIconInfo(icon, &info))
        return "none, " + std::to_string(GetLastError());
    BITMAP mask = {}, color = {};
    GetObjectA(info.hbmMask, sizeof mask, &mask);
    GetObjectA(info.hbmColor, sizeof color, &color);
    std::string text = info.fIcon ? "icon " : "cursor ";
    text += std::to_string(mask.bmWidth) + "x" + std::to_string(mask.bmHeight) + (info.hbmColor ? "" : " without colour");
    if (info.hbmColor && (color.bmWidth != mask.bmWidth || color.bmHeight != mask.bmHeight))
        text += " and another colour bitmap";
    DeleteObject(info.hbmMask);
    if (info.hbmColor)
        DeleteObject(info.hbmColor);
    return text + " at " + std::to_string(info.xHotspot) + "," + std::to_string(info.yHotspot);
}

struct Resource
{
    std::vector<BYTE> bytes;

    Resource(int number, int type)
    {
        const HRSRC resource = FindResourceA(Module(), MAKEINTRESOURCEA(number), MAKEINTRESOURCEA(type));
        const auto* data = static_cast<const BYTE*>(LockResource(LoadResource(Module(), resource)));
        bytes.assign(data, data + SizeofResource(Module(), resource));
    }
};

}  // namespace

TEST(Icon, LoadsInTheSizeThatIsAskedFor)
{
    EXPECT_EQ("icon 32x32 at 16,16", Describe(LoadIconA(Module(), MAKEINTRESOURCEA(1))));
    EXPECT_EQ("icon 16x16 at 8,8", Describe(Load(1, 0))) << "the smallest is nearest to nothing";
    EXPECT_EQ("icon 32x32 at 16,16", Describe(Load(1, 0, LR_DEFAULTSIZE)));
    EXPECT_EQ("icon 20x20 at 10,10", Describe(Load(1, 20)));
    EXPECT_EQ("icon 64x64 at 32,32", Describe(Load(1, 64)));
    EXPECT_EQ("cursor 32x32 at 3,4", Describe(LoadCursorA(Module(), MAKEINTRESOURCEA(5))));
    EXPECT_EQ("cursor 64x64 at 6,8", Describe(Load(5, 64, 0, IMAGE_CURSOR)));
    EXPECT_EQ("cursor 32x32 at 0,0", Describe(LoadCursorA(nullptr, IDC_ARROW)));
}

TEST(Icon, SharedLoadsAreOneForEachImageAndStay)
{
    const HICON icon = LoadIconA(Module(), MAKEINTRESOURCEA(1));
    EXPECT_EQ(icon, LoadIconA(Module(), "#1"));
    EXPECT_EQ(icon, Load(1, 32, LR_SHARED));
    EXPECT_EQ(icon, Load(1, 0, LR_SHARED | LR_DEFAULTSIZE));
    EXPECT_NE(icon, Load(1, 16, LR_SHARED));
    EXPECT_EQ(Load(1, 16, LR_SHARED), Load(1, 20, LR_SHARED)) << "the same image was nearest";
    EXPECT_NE(Load(1, 16), Load(1, 16));
    EXPECT_TRUE(DestroyIcon(icon));
    EXPECT_EQ("icon 32x32 at 16,16", Describe(icon));
    EXPECT_EQ(LoadIconA(nullptr, IDI_APPLICATION), LoadIconA(nullptr, IDI_APPLICATION));
    EXPECT_NE(LoadIconA(nullptr, IDI_APPLICATION), LoadIconA(nullptr, IDI_HAND));
    EXPECT_EQ(LoadCursorA(nullptr, IDC_WAIT), LoadCursorA(nullptr, IDC_WAIT));

    const HICON own = Load(1, 16), copy = CopyIcon(own);
    EXPECT_TRUE(DestroyIcon(own));
    EXPECT_EQ("none, 1402", Describe(own));
    EXPECT_FALSE(DestroyIcon(own));
    EXPECT_EQ(nullptr, CopyIcon(own));
    EXPECT_EQ("icon 16x16 at 8,8", Describe(copy));
    EXPECT_EQ("icon 48x48 at 24,24", Describe(static_cast<HICON>(CopyImage(copy, IMAGE_ICON, 48, 48, LR_COPYDELETEORG))));
    EXPECT_FALSE(DestroyIcon(copy));
}

TEST(Icon, MissingOnesFailWithTheMissingType)
{
    const HINSTANCE module = Module();
    const auto error = [](HANDLE loaded) {
        EXPECT_EQ(nullptr, loaded);
        return GetLastError();
    };
    EXPECT_EQ(DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND}, error(Load(777, 16)));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND}, error(LoadIconA(module, "missing")));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND}, error(LoadCursorA(module, "missing")));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND}, error(LoadIconA(nullptr, MAKEINTRESOURCEA(5))));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, error(LoadImageA(nullptr, "missing.ico", IMAGE_ICON, 0, 0, LR_LOADFROMFILE)));
    EXPECT_EQ(nullptr, LoadImageA(module, MAKEINTRESOURCEA(1), 7, 0, 0, 0));
}

TEST(Icon, MadeOnesHaveTheirBitmapsSize)
{
    const std::vector<BYTE> bits(4096);
    EXPECT_EQ("icon 16x32 without colour at 8,8", Describe(CreateIcon(Module(), 16, 16, 1, 1, bits.data(), bits.data())));
    EXPECT_EQ("icon 8x8 at 4,4", Describe(CreateIcon(Module(), 8, 8, 1, 32, bits.data(), bits.data())));
    EXPECT_EQ("cursor 16x32 without colour at 3,4", Describe(CreateCursor(Module(), 3, 4, 16, 16, bits.data(), bits.data())));
    ICONINFO info;
    ASSERT_TRUE(GetIconInfo(Load(1, 16), &info));
    info.fIcon = FALSE;
    info.xHotspot = 2;
    info.yHotspot = 9;
    EXPECT_EQ("cursor 16x16 at 2,9", Describe(CreateIconIndirect(&info)));
}

TEST(Icon, DirectoriesNameTheNearestImageAndCutImagesFail)
{
    Resource group(1, 14);
    const int large = LookupIconIdFromDirectory(group.bytes.data(), TRUE);
    EXPECT_EQ(large, LookupIconIdFromDirectoryEx(group.bytes.data(), TRUE, 60, 60, 0));
    EXPECT_EQ(large - 1, LookupIconIdFromDirectoryEx(group.bytes.data(), TRUE, 16, 16, 0));
    EXPECT_EQ(large + 1, LookupIconIdFromDirectoryEx(group.bytes.data(), TRUE, 32, 32, LR_MONOCHROME));

    Resource image(large, 3);
    const auto size = static_cast<DWORD>(image.bytes.size());
    EXPECT_EQ("icon 32x32 at 16,16", Describe(CreateIconFromResource(image.bytes.data(), size, TRUE, 0x30000)));
    EXPECT_EQ(0, LookupIconIdFromDirectory(image.bytes.data(), TRUE)) << "no directory";
    for (DWORD cut = 0; cut < 100; ++cut)
        EXPECT_EQ(nullptr,
                  CreateIconFromResource(std::vector<BYTE>(image.bytes.data(), image.bytes.data() + cut).data(), cut, TRUE, 0x30000))
            << cut;
}
