// FileDatesTest.cpp: watched files whose times are beyond all dates.
#include "support/system/Watcher.h"

using namespace kelgen::test;

TEST(FileChangeEvent, RestoresAfterTimesThatNoDateHolds)
{
    const std::string folder = "Z:\\dev\\shm\\kelgen-test-" + std::to_string(GetCurrentProcessId()) + '\\';
    // A file system that holds the year 10000.
    ASSERT_TRUE(CreateDirectoryA(folder.c_str(), nullptr));
    constexpr ULONGLONG kYear10000 = 2650467744000000000;
    const std::string file = folder + "a", first = folder + "first";
    Touch(file);
    Touch(first);
    {
        RecordingWatcher watcher;
        watcher.Add(file);
        watcher.Add(first);
        watcher.Begin(first);
        Touch(file, kYear10000);
        // Each look at the folder raises the next alarm; one is stored with the creation time.
        std::string alarms;
        EXPECT_TRUE(Eventually([&] {
            alarms += watcher.Alarms();
            return alarms.size() >= 12;
        }));
        EXPECT_EQ("0 a\n2 a\n0 a\n", alarms.substr(0, 12));
        watcher.StopWatch();
    }
    for (const std::string& name : {file, first})
        DeleteFileA(name.c_str());
    RemoveDirectoryA(folder.c_str());
}
