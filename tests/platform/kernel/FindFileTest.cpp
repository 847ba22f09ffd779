// FindFileTest.cpp: patterns, order, short names, errors.
#include "support/Failures.h"
#include "support/Scratch.h"

#include <algorithm>

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
    for (const char* prefix : {"\\??\\", "\\\\?\\", "\\\\.\\"}) {
        char full[MAX_PATH];
        ASSERT_NE(0u, GetFullPathNameA(folder.c_str(), sizeof full, full, nullptr));
        for (const Row& row : {Row{"a*b*", "ab.c abc azb a_b "}, {"ABC", "abc "}, {"none\\*", "error 3"}, {"z*", "error 2"}})
            EXPECT_EQ(row.found, Found(std::string(prefix) + full + row.pattern)) << prefix << row.pattern;
    }
    EXPECT_EQ("error 3", Found(""));
    EXPECT_EQ("error 2", Found("C:\\"));
    EXPECT_EQ(0, Found("Z:\\*").rfind("..", 0) == 0) << "the root has no parent";
}

TEST(FindFile, WildCardsMatchNamesWithAndWithoutExtension)
{
    const std::string folder = ScratchFolder().string() + "/";
    for (const char* name :
         {"readme",    "readme.txt", "a",     "b.c",    "ab.cde", "abc",   "ab",           "a.b",          "c",        "c.txt",
          "UPPER.TXT", "x1",         "x12",   "x.1",    "txt",    "n.t",   "nat",          "noext",        "data.bak", "old.1",
          "f1.c",      "f2.c",       "f10.h", "make.h", "MAKE1",  "t.tar", "two.dots.txt", "data.txt.bak", ".hidden",  "letters.text"})
        WriteBytes(folder + name, "");
    struct Row
    {
        const char* pattern;
        const char* found;
    };
    const Row rows[] = {
        {"*", "(all)"},
        {"*.*", "(all)"},
        {"*.*.*", "(all)"},
        {"*.", "(all)"},
        {"readme", "readme"},
        {"readme.", "readme"},
        {"readme.*", "readme readme.txt"},
        {"readme*.*", "readme readme.txt"},
        {"readme?", ""},
        {"readme.?\??", "readme.txt"},
        {"readme*.txt", "readme.txt"},
        {"c.*", "c c.txt"},
        {"?.*", ". .. a a.b b.c c c.txt n.t t.tar x.1"},
        {"?\?.*", ".. ab ab.cde f1.c f2.c x1"},
        {"?\??.*", "a.b abc b.c f10.h n.t nat old.1 two.dots.txt txt x.1 x12"},
        {"ab.*", "ab ab.cde"},
        {"ab*", "ab ab.cde abc"},
        {"ab*.*", "ab ab.cde abc"},
        {"n*t.*", "n.t nat noext"},
        {"n*t", "n.t nat noext"},
        {"*.txt.*", "c.txt data.txt.bak readme.txt two.dots.txt UPPER.TXT"},
        {"*.txt", "c.txt readme.txt two.dots.txt UPPER.TXT"},
        {"*.t*", "c.txt data.txt.bak letters.text n.t readme.txt t.tar two.dots.txt UPPER.TXT"},
        {"*t", "c.txt letters.text n.t nat noext readme.txt two.dots.txt txt UPPER.TXT"},
        {"*t.*", "c.txt data.txt.bak letters.text n.t nat noext readme.txt t.tar two.dots.txt txt UPPER.TXT"},
        {"t*", "t.tar two.dots.txt txt"},
        {"*.?", ".. a.b b.c f1.c f10.h f2.c make.h n.t old.1 x.1"},
        {"*.?\?", ""},
        {"*.?\??\?", "letters.text"},
        {"?.?", "a.b b.c n.t x.1"},
        {"?\?", ".. ab x1"},
        {"?\??", "a.b abc b.c n.t nat txt x.1 x12"},
        {"?\?.?\?", ""},
        {"a*", "a a.b ab ab.cde abc"},
        {"*a", "a"},
        {"a*b", "a.b ab"},
        {"a?", "ab"},
        {"a.?", "a.b"},
        {"a.*", "a a.b"},
        {"a.*.*", "a a.b"},
        {"*.*.bak", "data.txt.bak"},
        {"*.bak", "data.bak data.txt.bak"},
        {"*.*.txt", "two.dots.txt"},
        {"*.dots.*", "two.dots.txt"},
        {"two*", "two.dots.txt"},
        {"two.*.txt", "two.dots.txt"},
        {"two.*.*", "two.dots.txt"},
        {".*", ". .. .hidden"},
        {".h*", ".hidden"},
        {"*.h*", ".hidden f10.h make.h"},
        {"f?.c", "f1.c f2.c"},
        {"f*.c", "f1.c f2.c"},
        {"f1*.*", "f1.c f10.h"},
        {"f?\?.h", "f10.h"},
        {"make*", "make.h MAKE1"},
        {"make.*", "make.h"},
        {"MAKE?.*", "MAKE1"},
        {"*e.*", "ab.cde make.h readme readme.txt"},
        {"*x*.*", "c.txt data.txt.bak letters.text noext readme.txt two.dots.txt txt UPPER.TXT x.1 x1 x12"},
        {"?e*", "letters.text readme readme.txt"},
    };
    const std::string all = Found(folder + "*");
    EXPECT_EQ(32, std::count(all.begin(), all.end(), ' '));
    for (const Row& row : rows) {
        std::string found = Found(folder + row.pattern);
        found = found == all ? "(all)" : found == "error 2" ? "" : found.substr(0, found.size() - 1);
        EXPECT_EQ(row.found, found) << row.pattern;
    }
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
