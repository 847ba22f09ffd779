// FileFindTest.cpp: searches one entry ahead, and what is told of each entry.
#include <kelgen/framework/files/FileFind.h>

#include "framework/Thrown.h"
#include "support/Failures.h"
#include "support/Scratch.h"

using namespace kelgen::test;

TEST(FileFind, TellsOfEachEntryAndKnowsTheLast)
{
    const std::string folder = ScratchFolder().string() + "/";
    WriteBytes(folder + "a.b.txt", "12345");
    CreateDirectoryA((folder + "sub").c_str(), nullptr);
    char full[600] = "";
    GetFullPathNameA(folder.c_str(), sizeof full, full, nullptr);

    CFileFind find;
    std::string seen;
    for (BOOL more = find.FindFile((folder + "*").c_str()); more;) {
        more = find.FindNextFile();
        EXPECT_EQ(full + std::string(find.GetFileName()), find.GetFilePath().GetString());
        EXPECT_EQ(full, std::string(find.GetRoot()) + '\\');
        EXPECT_EQ("file://" + find.GetFilePath(), find.GetFileURL());
        FILETIME time{};
        EXPECT_TRUE(find.GetLastWriteTime(&time) && find.GetCreationTime(&time) && find.GetLastAccessTime(&time));
        EXPECT_NE(0u, time.dwHighDateTime);
        seen += std::string(find.GetFileName()) + '|' + find.GetFileTitle().GetString() + '|' + std::to_string(find.GetLength()) +
                (find.IsDirectory() ? " dir" : "") + (find.IsDots() ? " dots" : "") + (more ? "" : " last") + '\n';
    }
    EXPECT_EQ(".||0 dir dots\n..|.|0 dir dots\na.b.txt|a.b|5\nsub|sub|0 dir last\n", seen);
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_NO_MORE_FILES, !find.FindNextFile()));
    EXPECT_STREQ("sub", find.GetFileName()) << "the last one stays";

    EXPECT_TRUE(FailedWith(ERROR_FILE_NOT_FOUND, !find.FindFile((folder + "none*").c_str())));
    EXPECT_FALSE(find.FindNextFile());
    EXPECT_EQ("CInvalidArgException", Thrown([&] { find.GetFileName(); }));
    EXPECT_TRUE(find.FindFile((folder + "SUB").c_str()));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { find.IsDirectory(); })) << "before the first FindNextFile";
    find.Close();
    find.Close();
}
