// DifferencesTest.cpp: what files of our own platform answer otherwise, both answers (docs/differences.md).
#include "support/Failures.h"
#include "support/Scratch.h"
#include "support/Target.h"

using namespace kelgen::test;

TEST(Differences, StarBeforeAQuestionMarkFindsWhatHasALetter)
{
    const std::string folder = ScratchFolder().string() + "/";
    WriteBytes(folder + "ab", "");
    WIN32_FIND_DATAA data = {};
    const HANDLE find = FindFirstFileA((folder + "a*?").c_str(), &data);
    EXPECT_EQ(isOurPlatform, find != INVALID_HANDLE_VALUE);
    EXPECT_STREQ(isOurPlatform ? "ab" : "", data.cFileName);
    FindClose(find);
}

TEST(Differences, NormalFilesHaveNoArchiveBit)
{
    const std::string file = ScratchFile("file");
    WriteBytes(file, "x");
    for (const DWORD none : {DWORD{FILE_ATTRIBUTE_NORMAL}, DWORD{0}}) {
        EXPECT_TRUE(SetFileAttributesA(file.c_str(), none));
        EXPECT_EQ(isOurPlatform ? DWORD{FILE_ATTRIBUTE_NORMAL} : DWORD{FILE_ATTRIBUTE_ARCHIVE}, GetFileAttributesA(file.c_str()));
    }
}

TEST(Differences, SerialPortsAndPrintersAreMissing)
{
    for (const char* name : {"aux", "prn", "com1", "lpt1.txt"})
        EXPECT_EQ(isOurPlatform ? INVALID_FILE_ATTRIBUTES : DWORD{FILE_ATTRIBUTE_ARCHIVE}, GetFileAttributesA(name)) << name;
}

TEST(Differences, UnknownDevicesAreMissing)
{
    EXPECT_TRUE(
        FailedWith(isOurPlatform ? DWORD{ERROR_FILE_NOT_FOUND} : DWORD{66}, GetFileAttributesA("\\\\.\\none") == INVALID_FILE_ATTRIBUTES));
    WIN32_FIND_DATAA data;
    EXPECT_TRUE(FailedWith(isOurPlatform ? DWORD{ERROR_FILE_NOT_FOUND} : DWORD{ERROR_INVALID_NAME},
                           FindFirstFileA("\\\\.\\none", &data) == INVALID_HANDLE_VALUE));
}
