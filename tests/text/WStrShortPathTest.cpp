// WStrShortPathTest.cpp: short path names through the three ways of the call.
#include <kelgen/text/WStr.h>

#include "support/Scratch.h"
#include "text/Units.h"

using kelgen::test::Units;

TEST(WStrShortPath, ShortAndLongResultsAreThePlatforms)
{
    CWStr text;
    EXPECT_EQ(3u, text._GetShortPathName("C:\\"));
    EXPECT_EQ(u"C:\\", Units(text));
    EXPECT_EQ(0u, text._GetShortPathName("C:\\no such folder\\no such file.txt"));
    EXPECT_EQ(u"C:\\", Units(text)) << "a failure changes nothing";

    const std::string path = kelgen::test::ScratchFile("A long file name.extension");
    kelgen::test::WriteBytes(path, "x");
    WCHAR wide[MAX_PATH];
    WCHAR expected[MAX_PATH];
    MultiByteToWideChar(CP_OEMCP, 0, path.c_str(), -1, wide, MAX_PATH);
    const DWORD length = GetShortPathNameW(wide, expected, MAX_PATH);
    ASSERT_LT(10u, length);
    EXPECT_EQ(length, text._GetShortPathName(path.c_str()));
    EXPECT_EQ(length, static_cast<DWORD>(text.GetLength()));
    EXPECT_EQ(0, text.Compare(reinterpret_cast<const unsigned short*>(expected)));
}
