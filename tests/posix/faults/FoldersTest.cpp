// FoldersTest.cpp: entries of the file system, and who hears of their changes.
#include "posix/faults/Flow.h"
#include "support/Scratch.h"
#include "support/Threads.h"
#include "support/faults/FailingCalls.h"
#include "support/system/Services.h"

#include <kelgen/kelgen.h>

using namespace kelgen::test;

namespace {

/// The outcome of several calls: that of the first one that failed.
Outcome All(std::initializer_list<std::function<bool()>> calls)
{
    for (const auto& call : calls)
        if (!call())
            return Outcome::Of(false);
    return {true};
}

}  // namespace

KELGEN_FLOW(CopiesMovesAndRemovals)
{
    const std::filesystem::path folder = ScratchFolder();
    const std::string source = folder / "source", copy = folder / "copy", moved = folder / "moved";
    const std::string bytes(5000, 'x');
    WriteBytes(source, bytes);
    bool removed = false;
    RunFlow(
        [&] {
            removed = false;
            return All({
                [&] { return CopyFileA(source.c_str(), copy.c_str(), TRUE) != FALSE; },
                [&] { return MoveFileA(copy.c_str(), moved.c_str()) != FALSE; },
                [&] { return CopyFileA(source.c_str(), moved.c_str(), FALSE) != FALSE; },
                [&] { return removed = DeleteFileA(moved.c_str()) != FALSE; },
            });
        },
        [&](const Outcome&) {
            EXPECT_EQ(bytes, ReadBytes(source));
            // A copy over a file that was there may be cut off, but not there in part and called whole.
            EXPECT_FALSE(std::filesystem::exists(copy) && std::filesystem::exists(moved));
            EXPECT_FALSE(removed && std::filesystem::exists(moved));
            std::filesystem::remove(copy);
            std::filesystem::remove(moved);
        });
}

KELGEN_FLOW(Folders)
{
    const std::filesystem::path folder = ScratchFolder();
    const std::string made = folder / "one/two/three";
    RunFlow({[&] {
                 if (!shell::mkdirp(made.c_str()) || !shell::is_dir(made.c_str()))
                     return Outcome::Of(false);
                 return Outcome::Of(RemoveDirectoryA(made.c_str()) != FALSE);
             },
             [&](const Outcome& outcome) {
                 EXPECT_TRUE(!outcome.done || (std::filesystem::exists(folder / "one/two") && !std::filesystem::exists(made)));
                 std::filesystem::remove_all(folder / "one");
             },
             {ERROR_ALREADY_EXISTS},
             false});
}

KELGEN_FLOW(OtherSpellings)
{
    const std::filesystem::path folder = ScratchFolder();
    std::filesystem::create_directory(folder / "Mixed Case");
    WriteBytes(folder / "Mixed Case/A File", "old");
    const std::string other = folder / "MIXED CASE/a file";
    RunFlow(
        [&] {
            const OwnedHandle file(CreateFileA(other.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
            return Outcome::Of(file.get() != INVALID_HANDLE_VALUE);
        },
        [&] { EXPECT_EQ("old", ReadBytes(folder / "Mixed Case/A File")); });
}

KELGEN_FLOW(AttributesTimesAndSizes)
{
    const std::string path = ScratchFile("file");
    WriteBytes(path, "12345");
    RunFlow(
        [&] {
            WIN32_FILE_ATTRIBUTE_DATA data = {};
            FILETIME written = {0, 30000000};
            return All({
                [&] { return SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY) != FALSE; },
                [&] { return SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL) != FALSE; },
                [&] { return GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data) != FALSE; },
                [&] {
                    const OwnedHandle file(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
                    return file.get() != INVALID_HANDLE_VALUE && SetFileTime(file.get(), nullptr, nullptr, &written) &&
                           SetFilePointer(file.get(), 3, nullptr, FILE_BEGIN) == 3 && SetEndOfFile(file.get()) &&
                           GetFileSize(file.get(), nullptr) == 3 && FlushFileBuffers(file.get());
                },
            });
        },
        [&] {
            EXPECT_TRUE(ReadBytes(path) == "12345" || ReadBytes(path) == "123");
            std::filesystem::remove(path);
            WriteBytes(path, "12345");
        });
}

KELGEN_FLOW(LocksOfFiles)
{
    const std::string path = ScratchFile("file");
    WriteBytes(path, "12345");
    const auto open = [&path] {
        return OwnedHandle(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr));
    };
    RunFlow([&] {
        const OwnedHandle file = open();
        if (file.get() == INVALID_HANDLE_VALUE || !LockFile(file.get(), 1, 0, 2, 0))
            return Outcome::Of(false);
        {
            // What is locked nobody else has.
            const Undisturbed undisturbed;
            EXPECT_FALSE(LockFile(open().get(), 2, 0, 2, 0));
        }
        return Outcome::Of(UnlockFile(file.get(), 1, 0, 2, 0) != FALSE);
    });
}

KELGEN_FLOW(VolumesAndTheCurrentFolder)
{
    const std::string folder = ScratchFolder();
    char before[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, before);
    // A folder that cannot be looked at is told as none.
    RunFlow({
        [&] {
            ULARGE_INTEGER space = {};
            char name[MAX_PATH];
            return All({
                [&] { return GetDiskFreeSpaceExA(folder.c_str(), &space, nullptr, nullptr) != FALSE; },
                [&] { return GetVolumeInformationA("Z:\\", nullptr, 0, nullptr, nullptr, nullptr, name, MAX_PATH) != FALSE; },
                [&] { return SetCurrentDirectoryA(folder.c_str()) != FALSE; },
                [&] { return GetCurrentDirectoryA(MAX_PATH, name) != 0; },
                [&] { return GetFullPathNameA("name", MAX_PATH, name, nullptr) != 0; },
            });
        },
        [&](const Outcome& outcome) {
            char now[MAX_PATH] = "";
            GetCurrentDirectoryA(MAX_PATH, now);
            // Never another one, in which relative names would be made.
            EXPECT_TRUE(now == std::string(before) || now == DrivePath(folder)) << now;
            EXPECT_TRUE(!outcome.done || now == DrivePath(folder));
            SetCurrentDirectoryA(before);
        },
        {ERROR_DIRECTORY},
        false,
    });
}

KELGEN_FLOW(TemporaryFiles)
{
    const std::string folder = ScratchFolder();
    char name[MAX_PATH];
    RunFlow([&] { return All({[&] { return GetTempFileNameA(folder.c_str(), "abc", 0, name) && DeleteFileA(name); }}); },
            [&] {
                for (const auto& entry : std::filesystem::directory_iterator(folder))
                    std::filesystem::remove(entry);
            });
}

KELGEN_FLOW_WITH_WORKERS(FolderChanges)
{
    const std::filesystem::path folder = ScratchFolder();
    std::filesystem::create_directories(folder / "sub/deeper");
    const std::string path = folder;
    OwnedHandle notification;
    RunFlow({[&] {
                 notification.reset(FindFirstChangeNotificationA(path.c_str(), TRUE, FILE_NOTIFY_CHANGE_FILE_NAME));
                 if (notification.get() == INVALID_HANDLE_VALUE) {
                     static_cast<void>(notification.release());
                     return Outcome::Of(false);
                 }
                 {
                     const Undisturbed undisturbed;
                     WriteBytes(folder / "sub/deeper/new", "");
                 }
                 return Outcome::Of(WaitForSingleObject(notification.get(), kDeadline) == WAIT_OBJECT_0);
             },
             [&](const Outcome&) {
                 notification.reset();
                 std::filesystem::remove(folder / "sub/deeper/new");
             },
             {ERROR_NOT_ENOUGH_MEMORY},
             false});
}

KELGEN_FLOW(OpenedProcesses)
{
    RunFlow([] {
        const OwnedHandle process(OpenProcess(PROCESS_QUERY_INFORMATION | SYNCHRONIZE, FALSE, GetCurrentProcessId()));
        if (!process)
            return Outcome::Of(false);
        DWORD code = 0;
        return Outcome::Of(GetExitCodeProcess(process.get(), &code) && code == STILL_ACTIVE &&
                           WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT);
    });
}
