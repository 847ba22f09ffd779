// DifferencesTest.cpp: what profiles of our own platform answer otherwise, both answers (docs/differences.md).
#include "support/Scratch.h"
#include "support/Target.h"

using namespace kelgen::test;

TEST(Differences, LinesThatAreNotWrittenKeepTheirEnds)
{
    const std::string file = ScratchFile("test.ini");
    WriteBytes(file, "[s]\rx = 4\ny=5\r\n");
    EXPECT_TRUE(WritePrivateProfileStringA("s", "y", "6", file.c_str()));
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.c_str());
    EXPECT_EQ(isOurPlatform ? "[s]\rx = 4\ny=6\r\n" : "[s]\r\nx=4\r\ny=6\r\n", ReadBytes(file));
}
