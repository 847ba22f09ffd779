// FindFileTest.cpp: patterns, order, short names, errors.
#include "support/Failures.h"
#include "support/Scratch.h"

using namespace kelgen::test;

namespace {

// The names found, each followed by a blank, or "error N".
std::string Found(const std::string& pattern)
{
    WIN32_FIND_DATAA data;
    const HANDLE find = FindFirstFileA(pattern.c_str(), &data);
    if (find == INVALID_HANDLE_VALUE)
        return "error " + std::to_string(GetLastError());
    std::string names;
    do
        names += std::string(data.cFileName) + ' ';
    while (FindNextFileA(find, &data));
    EXPECT_EQ(DWORD{ERROR_NO_MORE_FILES}, GetLastError());
    EXPECT_TRUE(FindClose(find));
    return names;
}

std::string FilledFolder()
{
    const std::string folder = ScratchFolder().string() + "/";
    for (const char* name : {"ab.c", "abc", "b.TXT", "a_b", "azb", "Short.txt", "x.y.z", ".hid"})
        WriteBytes(folder + name, "12345");
    CreateDirectoryA((folder + "Sub").c_str(), nullptr);
    WriteBytes(folder + "LongName123.text", "");
    return folder;
}

}  // namespace

TEST(FindFile, PatternsSelectAndSort)
{
    struct Row
    {
        const char* pattern;
        const char* found;
    };
    const Row rows[] = {
        {"*", ". .. .hid ab.c abc azb a_b b.TXT LongName123.text Short.txt Sub x.y.z "},
        {"*.*", ". .. .hid ab.c abc azb a_b b.TXT LongName123.text Short.txt Sub x.y.z "},
        {"a*b*", "ab.c abc azb a_b "},
        {"A??", "abc azb a_b "},
        {"abc?", "error 2"},
        {"abc.", "abc "},
        {"ABC", "abc "},
        {"sub", "Sub "},
        {"*.txt", "b.TXT Short.txt "},
        {"*.txt ", "b.TXT Short.txt "},
        {"*.t", "error 2"},
        {"??.?", "ab.c "},
        {"*y*", "x.y.z "},
        {"*b", "azb a_b Sub "},
        {"none", "error 2"},
        {"*.zzz", "error 2"},
        {"none\\*", "error 3"},
        {"none\\x", "error 3"},
        {"abc\\*", "error 123"},
        {"Sub\\", "error 2"},
        {"Sub\\*", ". .. "},
    };
    const std::string folder = FilledFolder();
    for (const Row& row : rows)
        EXPECT_EQ(row.found, Found(folder + row.pattern)) << row.pattern;
    EXPECT_EQ("error 3", Found(""));
    EXPECT_EQ("error 2", Found("C:\\"));
    EXPECT_EQ(0, Found("Z:\\*").rfind("..", 0) == 0) << "the root has no parent";
}

TEST(FindFile, EntriesTellWhatTheFileIs)
{
    const std::string folder = FilledFolder();
    WIN32_FIND_DATAA data;
    FindClose(FindFirstFileA((folder + "AB.C").c_str(), &data));
    EXPECT_EQ(GetFileAttributesA((folder + "ab.c").c_str()), data.dwFileAttributes);
    EXPECT_EQ(5u, data.nFileSizeLow);
    EXPECT_STREQ("", data.cAlternateFileName);
    FindClose(FindFirstFileA((folder + "Sub").c_str(), &data));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY}, data.dwFileAttributes);
}

TEST(FindFile, AlternateNamesAreThoseOfShortPaths)
{
    const std::string folder = FilledFolder();
    WIN32_FIND_DATAA data;
    FindClose(FindFirstFileA((folder + "Long*").c_str(), &data));
    EXPECT_STREQ("LongName123.text", data.cFileName);
    char path[MAX_PATH] = "";
    GetShortPathNameA((folder + "LongName123.text").c_str(), path, sizeof path);
    EXPECT_STREQ(std::string(path).substr(std::string(path).rfind('/') + 1).c_str(), data.cAlternateFileName);
    EXPECT_EQ("LongName123.text ", Found(folder + data.cAlternateFileName));
    EXPECT_EQ("LongName123.text ", Found(folder + "LONG~*")) << "short names match patterns";
}

TEST(FindFile, HandlesAreOfTheirOwnKind)
{
    WIN32_FIND_DATAA data;
    for (const HANDLE bad : {HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
        EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !FindNextFileA(bad, &data)));
        EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !FindClose(bad)));
    }
    const HANDLE find = FindFirstFileA((FilledFolder() + "*").c_str(), &data);
    ASSERT_NE(INVALID_HANDLE_VALUE, find);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !CloseHandle(find)));
    EXPECT_TRUE(FindClose(find));
}
