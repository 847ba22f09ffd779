// DifferencesTest.cpp: where drawing of our own platform answers otherwise, both answers (docs/differences.md).
#include <kelgen/platform/Win32.h>

#include "support/Target.h"

#include <gtest/gtest.h>

using kelgen::test::isOurPlatform;

TEST(Differences, PixelsOutsideOfTheClipAreRefused)
{
    const HDC context = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateBitmap(10, 10, 1, 32, nullptr);
    const HGDIOBJ former = SelectObject(context, bitmap);
    IntersectClipRect(context, 0, 0, 5, 5);
    EXPECT_EQ(RGB(255, 0, 0), SetPixel(context, 2, 2, RGB(255, 0, 0)));
    EXPECT_EQ(isOurPlatform ? CLR_INVALID : RGB(255, 0, 0), SetPixel(context, 7, 7, RGB(255, 0, 0)));
    EXPECT_EQ(RGB(255, 0, 0), GetPixel(context, 2, 2));
    EXPECT_EQ(isOurPlatform ? CLR_INVALID : RGB(0, 0, 0), GetPixel(context, 7, 7));
    SelectObject(context, former);
    DeleteObject(bitmap);
    DeleteDC(context);
}

TEST(Differences, BlankBehindAWordNeedsNoRoom)
{
    const HDC context = CreateCompatibleDC(nullptr);
    SIZE words{};
    ASSERT_TRUE(GetTextExtentPoint32A(context, "one two", 7, &words));
    RECT area{0, 0, words.cx, 0};
    DrawTextA(context, "one two six", -1, &area, DT_WORDBREAK | DT_CALCRECT);
    EXPECT_EQ(isOurPlatform, area.right == words.cx) << "the second word stands in the first line";
    DeleteDC(context);
}
