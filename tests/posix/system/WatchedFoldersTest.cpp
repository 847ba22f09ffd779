// WatchedFoldersTest.cpp: what watchers take from the system, and folders that come and go while they are watched.
#include "support/system/Watcher.h"

#include <set>

using namespace kelgen::test;

namespace {

/// What the process's descriptors are, and how many.
std::multiset<std::string> Descriptors()
{
    std::multiset<std::string> targets;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        targets.insert(std::filesystem::read_symlink(entry.path(), gone).string());
    }
    return targets;
}

}  // namespace

TEST(FileChangeEvent, TakesNoMoreAfterThreeThousandPasses)
{
    struct Watched
    {
        std::string file = DrivePath(ScratchFolder().string()) + "\\f";
        RecordingWatcher watcher;
    };
    Watched watched[3];
    for (Watched& each : watched) {
        Touch(each.file);
        each.watcher.Add(each.file);
        each.watcher.Add(DrivePath(ScratchFolder().string()) + "\\other");
        each.watcher.Begin(each.file);
    }
    const auto before = Descriptors();
    EXPECT_EQ(1u, before.count("anon_inode:inotify"));
    for (int i = 0; i < 1000; ++i)
        for (Watched& each : watched)
            each.watcher.Alarms();
    EXPECT_EQ(before.size(), Descriptors().size());
}

TEST(FileChangeEvent, SeesFoldersThatComeBack)
{
    const std::string first = DrivePath(ScratchFolder().string()) + "\\first";
    const std::string folder = DrivePath(ScratchFolder().string()) + "\\goes", file = folder + "\\f";
    Touch(first);
    RecordingWatcher watcher;
    watcher.Add(first);
    watcher.Add(file);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(CreateDirectoryA(folder.c_str(), nullptr)) << GetLastError();
        Touch(file);
        if (round == 0)
            watcher.Begin(first);
        // Any change of another folder makes the watcher look for this one.
        watcher.Alarms();
        Touch(file);
        EXPECT_EQ("0 f\n", watcher.Await("0 f\n")) << round;
        EXPECT_TRUE(DeleteFileA(file.c_str()));
        EXPECT_EQ("0 f\n", watcher.Await("0 f\n")) << round;
        EXPECT_TRUE(RemoveDirectoryA(folder.c_str()));
        EXPECT_EQ("", watcher.Alarms()) << round;
        EXPECT_TRUE(watcher.IsWatching());
    }
}
