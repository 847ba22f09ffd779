// IconTest.cpp: the pixels of icons, as PNG files and in pictures.
#include "posix/view/Windows.h"

#include <gtest/gtest.h>
#include <kelgen/platform/support/IconPicture.h>
#include <kelgen/view/Picture.h>

#include <sstream>

using namespace kelgen;
using namespace kelgen::test;

namespace {

using Bytes = std::vector<BYTE>;

void Append(Bytes& out, DWORD number, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out.push_back(static_cast<BYTE>(number >> 8 * i));
}

/// The bytes of an icon of 2 by 2 pixels, whose rows come from the last one up: colours, pixels and mask as given.
Bytes IconOf(WORD bits, const Bytes& rest)
{
    Bytes icon;
    for (const DWORD number : {40u, 2u, 4u})
        Append(icon, number, 4);
    Append(icon, 1, 2);
    Append(icon, bits, 2);
    for (const DWORD number : {0u, 0u, 0u, 0u, bits == 1 || bits == 4 || bits == 8 ? 2u : 0u, 0u})
        Append(icon, number, 4);
    icon.insert(icon.end(), rest.begin(), rest.end());
    return icon;
}

HICON MakeIcon(Bytes bytes)
{
    return CreateIconFromResourceEx(bytes.data(), static_cast<DWORD>(bytes.size()), TRUE, 0x00030000, 2, 2, 0);
}

DWORD BigEndian(const Bytes& png, std::size_t at)
{
    return DWORD{png.at(at)} << 24 | DWORD{png.at(at + 1)} << 16 | DWORD{png.at(at + 2)} << 8 | png.at(at + 3);
}

/// Red, green, blue and opacity of the four pixels of a PNG file as ours are: one stored block of rows without a filter.
Bytes PixelsOf(const Bytes& png)
{
    constexpr std::size_t kHeader = 16, kRows = 8 + 25 + 8 + 7;
    EXPECT_EQ(2u, BigEndian(png, kHeader));
    EXPECT_EQ(2u, BigEndian(png, kHeader + 4));
    Bytes pixels;
    for (std::size_t row = 0; row < 2; ++row)
        for (std::size_t i = 0; i < 8; ++i)
            pixels.push_back(png.at(kRows + row * 9 + 1 + i));
    return pixels;
}

}  // namespace

TEST(IconPng, HasThePixelsOfEveryDepth)
{
    // Above red and green, below blue and nothing, as far as the depth knows them.
    const Bytes mask = {0x40, 0, 0, 0, 0, 0, 0, 0};
    const Bytes twoColors = {0, 0, 255, 0, 255, 0, 0, 0};  // red, blue
    struct Row
    {
        const char* name;
        WORD bits;
        std::vector<Bytes> parts;
        Bytes pixels;
    };
    const Bytes redAndBlue = {255, 0, 0, 255, 0, 0, 255, 255, 0, 0, 255, 255, 255, 0, 0, 0};
    const Bytes full = {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 0, 0, 0, 0};
    const Row rows[] = {
        {"1", 1, {twoColors, {0x80, 0, 0, 0, 0x40, 0, 0, 0}, mask}, redAndBlue},
        {"4", 4, {twoColors, {0x10, 0, 0, 0, 0x01, 0, 0, 0}, mask}, redAndBlue},
        {"8", 8, {twoColors, {1, 0, 0, 0, 0, 1, 0, 0}, mask}, redAndBlue},
        {"8, no such colour",
         8,
         {twoColors, {1, 9, 0, 0, 0, 1, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0}},
         {255, 0, 0, 255, 0, 0, 255, 255, 0, 0, 255, 255, 0, 0, 0, 255}},
        {"16", 16, {{0x1F, 0, 0, 0, 0x00, 0x7C, 0xE0, 0x03}, mask}, full},
        {"24", 24, {{255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}, mask}, full},
        {"32 by mask", 32, {{255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 255, 0, 0}, mask}, full},
        {"32 by opacity",
         32,
         {{255, 0, 0, 128, 0, 0, 0, 0, 0, 0, 255, 255, 0, 255, 0, 1}, mask},
         {255, 0, 0, 255, 0, 255, 0, 1, 0, 0, 255, 128, 0, 0, 0, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Bytes rest;
        for (const Bytes& part : row.parts)
            rest.insert(rest.end(), part.begin(), part.end());
        const HICON icon = MakeIcon(IconOf(row.bits, rest));
        ASSERT_NE(nullptr, icon);
        EXPECT_EQ(row.pixels, PixelsOf(IconPng(icon)));
        DestroyIcon(icon);
        EXPECT_TRUE(IconPng(icon).empty()) << "it is no icon any more";
    }
    EXPECT_TRUE(IconPng(LoadIconA(nullptr, IDI_ERROR)).empty());
}

TEST(IconPng, HasTheSumsOfItsParts)
{
    const HICON icon = MakeIcon(IconOf(24, Bytes(24)));
    const Bytes png = IconPng(icon);
    DestroyIcon(icon);
    ASSERT_EQ(8u + 25 + 12 + 2 + 5 + 18 + 4 + 12, png.size());
    EXPECT_EQ(0x72B60D24u, BigEndian(png, 29)) << "of the header of 2 by 2 pixels with opacity";
    EXPECT_EQ(0xAE426082u, BigEndian(png, png.size() - 4)) << "of the end, which is the same in every file";
}

TEST(Picture, ShowsTheIconsOfCaptionsAndLabels)
{
    const Frame frame(u"with icons");
    const HICON icon = MakeIcon(IconOf(24, Bytes(24)));
    const HWND label = AddChild(frame, u"Static", u"", SS_ICON, 1, {10, 10, 12, 12});
    const auto count = [&frame] {
        std::ostringstream out;
        view::WriteSvg(out, frame);
        const std::string text = out.str();
        int images = 0;
        for (std::size_t at = 0; (at = text.find("href=\"data:image/png;base64,iVBORw0KGgo", at)) != text.npos; ++at)
            ++images;
        return images;
    };
    EXPECT_EQ(0, count());
    SendMessageW(label, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
    EXPECT_EQ(1, count());
    SendMessageW(frame, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    EXPECT_EQ(2, count());
    DestroyIcon(icon);
    EXPECT_EQ(0, count()) << "signs take the place of destroyed ones";
}
