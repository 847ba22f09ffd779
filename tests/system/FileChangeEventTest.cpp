// FileChangeEventTest.cpp: alarms, counts, the thread's life, and many files under load.
#include "support/system/Watcher.h"

#include "support/Random.h"

#include <chrono>
#include <cstdlib>
#include <set>

using namespace kelgen::test;

namespace {

std::string NewFolder()
{
    return DrivePath(ScratchFolder().string()) + '\\';
}

}  // namespace

TEST(FileChangeEvent, ReportsWhatHappensToItsFiles)
{
    const std::string folder = NewFolder();
    const std::string a = folder + "a";
    const std::string b = folder + "b";
    const std::string notUtf8 = folder + "n\xE4\xFF";
    const std::string made = folder + "made";
    const std::string first = folder + "first";
    for (const std::string& file : {a, b, first})
        Touch(file);
    RecordingWatcher watcher;
    for (const std::string& file : {a, b, notUtf8, first})
        watcher.Add(file);
    watcher.Begin(first);
    EXPECT_EQ("0 n\xE4\xFF\n", watcher.Alarms()) << "a missing file's date differs from 0.0";

    Touch(a);
    EXPECT_EQ("0 a\n", watcher.Await("0 a\n"));
    Touch(folder + "unwatched");
    EXPECT_EQ("", watcher.Alarms()) << "the folder changed and the times did not";
    Touch(b);
    EXPECT_EQ("0 b\n", watcher.Await("0 b\n"));
    Touch(made);
    MoveFileA(made.c_str(), notUtf8.c_str());
    EXPECT_EQ("0 n\xE4\xFF\n", watcher.Await("0 n\xE4\xFF\n"));

    DeleteFileA(a.c_str());
    EXPECT_EQ("0 a\n", watcher.Await("0 a\n")) << "a vanished file has a date of its own";
    EXPECT_EQ("", watcher.Alarms()) << "once";
    Touch(made);
    MoveFileA(made.c_str(), a.c_str());
    EXPECT_EQ("0 a\n", watcher.Await("0 a\n"));
}

TEST(FileChangeEvent, CountsRegistrationsFromZero)
{
    const std::string folder = NewFolder();
    struct Row
    {
        const char* name;
        const char* calls;  // upper case adds the file, lower case removes it
        const char* counts;
    };
    for (const Row& row :
         {Row{"one stays", "Aa", "-1 | -1 | 1"}, Row{"twice goes at once", "AAa", "| | 1"},
          Row{"gone ones count anew", "AAaA", "0 | 0 | 2"}, Row{"folders count files", "ABC", "2 | 0 0 0 | 3"},
          Row{"case counts", "AaAa", "-1 | -1 | 1"}, Row{"unknown", "a", "| | 0"}, Row{"folder goes", "ABa", "| -1 0 | 2"}}) {
        RecordingWatcher watcher;
        for (const char* call = row.calls; *call; ++call) {
            const std::string file = folder + static_cast<char>(std::toupper(*call));
            *call < 'a' ? watcher.Add(file) : watcher.Remove(file);
        }
        EXPECT_EQ(row.counts, watcher.Counts()) << row.name;
    }
}

TEST(FileChangeEvent, TakesFoldersFromPathsWithDrivesOnly)
{
    char current[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, current);
    RecordingWatcher watcher;
    const std::pair<const char*, std::string> rows[] = {{"C:\\a\\b.txt", "C:\\a\\"},        // a drive and folders
                                                        {"Z:/a/b.txt", "Z:/a/"},            // the other separator
                                                        {"C:b", "C:"},                      // a drive alone
                                                        {"b.txt", current},                 // a name alone
                                                        {"sub\\b.txt", current},            // a folder without a drive
                                                        {"\\\\server\\share\\b", current},  // a share
                                                        {"", current}};                     // nothing
    int record = 0;
    for (const auto& [path, folder] : rows) {
        watcher.AddFile(path);
        EXPECT_EQ(folder, watcher.FolderOf(record++)) << path;
    }
}

TEST(FileChangeEvent, SeesFilesInFoldersAddedWhileItRuns)
{
    const std::string first = NewFolder() + "first";
    Touch(first);
    RecordingWatcher watcher;
    watcher.Add(first);
    watcher.Begin(first);
    for (int i = 0; i < 5; ++i) {
        const std::string file = NewFolder() + "late";
        Touch(file);
        watcher.Add(file);
        EXPECT_TRUE(watcher.IsWatching());
        watcher.Alarms();
        EXPECT_TRUE(Eventually([&] {
            Touch(file);
            return !watcher.Alarms().empty();
        }));
    }
    watcher.StopWatch();
    EXPECT_FALSE(watcher.IsWatching());
    watcher.StopWatch();
    watcher.StartWatch();
    watcher.StartWatch();
    EXPECT_TRUE(watcher.IsWatching());
}

TEST(FileChangeEvent, GoesOnBesideAFolderThatIsNotThere)
{
    const std::string file = NewFolder() + 'f';
    Touch(file);
    RecordingWatcher watcher;
    watcher.Add(file);
    watcher.Add(NewFolder() + "missing\\f");
    watcher.Begin(file);
    EXPECT_TRUE(watcher.IsWatching());
}

TEST(FileChangeEvent, EndsWithOneFolderMoreThanAWaitHolds)
{
    RecordingWatcher watcher;
    std::string file;
    for (int i = 0; i < 63; ++i) {
        file = NewFolder() + 'f';
        watcher.Add(file);
    }
    watcher.Begin(file);
    for (int i = 64; i <= 70; ++i) {
        watcher.Add(NewFolder() + 'f');
        EXPECT_TRUE(Eventually([&] { return !watcher.IsWatching(); })) << i;
        watcher.StartWatch();
        EXPECT_TRUE(Eventually([&] { return !watcher.IsWatching(); })) << i;
    }
}

TEST(FileChangeEvent, MayBeDeletedInItsOwnAlarm)
{
    struct Suicide : CFileChangeEvent
    {
        explicit Suicide(HANDLE done) : m_done(done) {}
        void OnFileAlarm(EFileAlarm, const char*) override
        {
            const HANDLE done = m_done;
            delete this;
            SetEvent(done);
        }
        HANDLE m_done;
    };
    const std::string file = NewFolder() + "f";
    Touch(file);
    const OwnedHandle done(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    auto* const watcher = new Suicide(done.get());
    watcher->AddFile(file.c_str());
    watcher->StartWatch();
    EXPECT_TRUE(Eventually([&] {
        Touch(file);
        return WaitForSingleObject(done.get(), 50) == WAIT_OBJECT_0;
    }));
}

TEST(FileChangeEvent, ComesAndGoesWhileFilesChange)
{
    const std::string folder = NewFolder();
    std::atomic<bool> ends = false;
    const OwnedHandle writer = StartThread([&] {
        while (!ends)
            Touch(folder + "f");
        return DWORD{0};
    });
    struct Counter : CFileChangeEvent
    {
        ~Counter() override { EndWatch(); }
        void OnFileAlarm(EFileAlarm, const char* path) override { m_names += path; }
        std::string m_names;
    };
    for (int i = 0; i < 50; ++i) {
        Counter watcher;
        watcher.AddFile((folder + "f").c_str());
        watcher.StartWatch();
        watcher.AddFile((folder + "g").c_str());
        if (i % 3 == 0)
            Sleep(1);
        if (i % 2 == 0)
            watcher.StopWatch();
    }
    ends = true;
    WaitForSingleObject(writer.get(), kDeadline);
}

// Minutes with KELGEN_SOAK_SECONDS.
TEST(FileChangeEvent, LosesNoModificationOfAHundredFiles)
{
    struct Counter : CFileChangeEvent
    {
        ~Counter() override { EndWatch(); }
        void OnFileAlarm(EFileAlarm, const char* path) override
        {
            const std::lock_guard lock(mutex);
            waiting.erase(path);
            changed.notify_all();
        }
        std::mutex mutex;
        std::condition_variable changed;
        std::set<std::string> waiting;
    };
    constexpr int kFolders = 10;
    constexpr int kFiles = 100;
    Random random;
    std::vector<std::string> files;
    for (int i = 0; i < kFiles; ++i)
        files.push_back((i < kFolders ? NewFolder()
                                      : files[static_cast<std::size_t>(i % kFolders)].substr(
                                            0, files[static_cast<std::size_t>(i % kFolders)].rfind('\\') + 1)) +
                        std::to_string(i));
    Counter watcher;
    for (const std::string& file : files) {
        Touch(file);
        watcher.AddFile(file.c_str());
    }
    watcher.StartWatch();
    const auto await = [&](std::chrono::milliseconds time, const auto& condition) {
        std::unique_lock lock(watcher.mutex);
        return watcher.changed.wait_for(lock, time, condition);
    };
    const auto touch = [&](const std::string& file) {
        {
            const std::lock_guard lock(watcher.mutex);
            watcher.waiting.insert(file);
        }
        Touch(file);
    };
    // Changes count from when the thread waits.
    do
        touch(files[0]);
    while (!await(std::chrono::milliseconds(100), [&] { return watcher.waiting.empty(); }));

    const char* const given = std::getenv("KELGEN_SOAK_SECONDS");
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(given ? std::atoi(given) : 0);
    // A number, whatever time a loaded machine takes for it.
    constexpr int kFewestWrites = 500;
    int writes = 0;
    const auto deadline = std::chrono::milliseconds(kDeadline);
    for (; writes < kFewestWrites || std::chrono::steady_clock::now() < end; ++writes) {
        const std::string& file = files[static_cast<std::size_t>(random.Between(0, kFiles - 1))];
        // One alarm for each write: a file is written again once its last write was seen, the others do not wait for it.
        ASSERT_TRUE(await(deadline, [&] { return watcher.waiting.count(file) == 0; })) << file << " after " << writes << " writes";
        touch(file);
    }
    ASSERT_TRUE(await(deadline, [&] { return watcher.waiting.empty(); })) << *watcher.waiting.begin() << " after " << writes << " writes";
    watcher.StopWatch();
}
