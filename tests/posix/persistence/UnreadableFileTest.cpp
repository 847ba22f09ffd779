// UnreadableFileTest.cpp: files that the user may not read, seen by a process without the rights of root.
#include <kelgen/persistence/IniFile.h>

#include "posix/registry/Processes.h"
#include "support/Scratch.h"

#include <sys/stat.h>

using namespace kelgen::test;

namespace {

/// Runs @p body as the user nobody, whoever runs the tests.
bool HoldsForNobody(const std::function<void()>& body)
{
    constexpr uid_t kNobody = 65534;
    ChildProcess child([&body] {
        if (geteuid() == 0) {
            ASSERT_EQ(0, setresuid(kNobody, kNobody, kNobody));
        }
        body();
    });
    return child.Wait();
}

}  // namespace

TEST(UnreadableFile, FailsToLoadAndKeepsTheModel)
{
    const auto folder = ScratchFolder();
    for (auto open = folder; open != std::filesystem::temp_directory_path(); open = open.parent_path())
        ASSERT_EQ(0, chmod(open.c_str(), 0755));
    const std::string readable = (folder / "readable.ini").string(), closed = (folder / "closed.ini").string();
    WriteBytes(readable, "[A]\na=1\n");
    WriteBytes(closed, "[B]\nb=1\n");
    chmod(readable.c_str(), 0644);
    chmod(closed.c_str(), 0);

    EXPECT_TRUE(HoldsForNobody([&] {
        _kelgen::CIniFile ini;
        EXPECT_TRUE(ini.LoadFile(readable.c_str()));
        EXPECT_FALSE(ini.LoadFile(closed.c_str()));
        EXPECT_EQ(1, ini.GetSize());
        EXPECT_STREQ("1", ini.GetPropertyValue("A", "a"));
    }));
}
