// FindTest.cpp: a search over a very large folder, with names of all kinds.
#include <kelgen/system/Shell.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>

TEST(Shell, FindsEachOfTwentyThousandEntriesOnce)
{
    // In memory: a disk takes seconds.
    const std::filesystem::path folder = "/dev/shm/kelgen-test-" + std::to_string(getpid());
    ASSERT_TRUE(std::filesystem::create_directory(folder));
    const int descriptor = open(folder.c_str(), O_DIRECTORY | O_CLOEXEC);
    std::set<std::string> made;
    for (int i = 0; i < 20000; ++i)
        made.insert("entry " + std::to_string(i) + (i % 2 ? ".text" : ".\xE4\xFF"));
    made.insert("\xFF");
    for (const std::string& name : made)
        ASSERT_EQ(0, mknodat(descriptor, name.c_str(), S_IFREG | 0600, 0)) << name;
    ASSERT_EQ(0, mkdirat(descriptor, "folder", 0700));
    close(descriptor);

    CStringArray paths, names;
    EXPECT_EQ(static_cast<int>(made.size()), shell::file_find((folder / "*").c_str(), &paths, &names, nullptr));
    std::set<std::string> found;
    for (int i = 0; i < names.GetSize(); ++i)
        found.insert(names[i].GetString());
    EXPECT_EQ(made.size(), found.size());
    EXPECT_TRUE(made == found);
    EXPECT_NE(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(paths[0]));
    EXPECT_EQ(10, shell::fs_find((folder / "ENTRY 1777?.*").c_str(), true, nullptr, nullptr, nullptr));
    std::filesystem::remove_all(folder);
}
