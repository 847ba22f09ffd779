// ChangeNotificationTest.cpp: what signals a change notification, and until when.
#include "support/Failures.h"
#include "support/system/Services.h"

#include <cstring>

using namespace kelgen::test;

namespace {

/// A folder with the file "f" and the folder "sub", and a notification for it.
class WatchedFolder
{
public:
    WatchedFolder() : path(DrivePath(ScratchFolder().string()))
    {
        Write("f");
        CreateDirectoryA((path + "\\sub").c_str(), nullptr);
    }

    void Watch(DWORD filter, BOOL subtree = FALSE) { notification.reset(FindFirstChangeNotificationA(path.c_str(), subtree, filter)); }

    bool IsSignalled(DWORD milliseconds = 100) const { return WaitForSingleObject(notification.get(), milliseconds) == WAIT_OBJECT_0; }

    void Write(const std::string& name, DWORD disposition = OPEN_ALWAYS, const char* text = "x") const
    {
        const OwnedHandle file(CreateFileA((path + '\\' + name).c_str(), GENERIC_WRITE, 7, nullptr, disposition, 0, nullptr));
        SetFilePointer(file.get(), 0, nullptr, FILE_END);
        DWORD written = 0;
        WriteFile(file.get(), text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
    }

    const std::string path;
    OwnedHandle notification;
};

}  // namespace

TEST(ChangeNotification, IsSignalledByWhatItsFilterAsksFor)
{
    const WatchedFolder watched;
    const std::string in = watched.path + '\\';
    constexpr DWORD kFile = FILE_NOTIFY_CHANGE_FILE_NAME, kFolder = FILE_NOTIFY_CHANGE_DIR_NAME;
    constexpr DWORD kWrite = FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;
    constexpr DWORD kMade = FILE_NOTIFY_CHANGE_CREATION;
    struct Row
    {
        const char* name;
        std::function<void()> change;
        DWORD signalled;
    };
    const Row rows[] = {
        {"append", [&] { watched.Write("f"); }, kWrite},
        {"truncate", [&] { watched.Write("f", TRUNCATE_EXISTING, ""); }, kWrite},
        {"create", [&] { watched.Write("g", CREATE_NEW, ""); }, kFile | kMade},
        {"rename", [&] { MoveFileA((in + "g").c_str(), (in + "h").c_str()); }, kFile},
        {"move out", [&] { MoveFileA((in + "h").c_str(), (in + "sub\\h").c_str()); }, kFile},
        {"move in", [&] { MoveFileA((in + "sub\\h").c_str(), (in + "h").c_str()); }, kFile},
        {"delete", [&] { DeleteFileA((in + "h").c_str()); }, kFile},
        {"make folder", [&] { CreateDirectoryA((in + "d").c_str(), nullptr); }, kFolder | kMade},
        {"remove folder", [&] { RemoveDirectoryA((in + "d").c_str()); }, kFolder},
        {"read", [&] { ReadBytes(watched.path + "\\f"); }, 0},
        {"write below", [&] { watched.Write("sub\\s"); }, 0},
        {"delete below", [&] { DeleteFileA((in + "sub\\s").c_str()); }, 0},
    };
    constexpr DWORD kFilters[] = {kFile, kFolder, FILE_NOTIFY_CHANGE_SIZE, FILE_NOTIFY_CHANGE_LAST_WRITE, kMade};
    for (const Row& row : rows) {
        // All at once: what is not signalled costs the time of one wait.
        std::vector<OwnedHandle> notifications;
        for (const DWORD filter : kFilters)
            notifications.emplace_back(FindFirstChangeNotificationA(watched.path.c_str(), FALSE, filter));
        row.change();
        for (std::size_t i = 0; i < notifications.size(); ++i) {
            const bool expected = (kFilters[i] & row.signalled) != 0;
            EXPECT_EQ(expected, WaitForSingleObject(notifications[i].get(), expected ? kDeadline : 30) == WAIT_OBJECT_0)
                << row.name << ", filter " << kFilters[i];
        }
    }
}

TEST(ChangeNotification, StaysSignalledUntilRearmed)
{
    WatchedFolder watched;
    watched.Write("f");
    watched.Watch(FILE_NOTIFY_CHANGE_LAST_WRITE);
    EXPECT_FALSE(watched.IsSignalled()) << "by a change before it was opened";
    watched.Write("f");
    EXPECT_TRUE(watched.IsSignalled(kDeadline));
    EXPECT_TRUE(watched.IsSignalled());
    watched.Write("f");
    watched.Write("f");
    Sleep(50);
    EXPECT_TRUE(FindNextChangeNotification(watched.notification.get()));
    EXPECT_FALSE(watched.IsSignalled()) << "by a change before it was re-armed";
    watched.Write("f");
    EXPECT_TRUE(watched.IsSignalled(kDeadline));

    HANDLE second = nullptr;
    ASSERT_TRUE(
        DuplicateHandle(GetCurrentProcess(), watched.notification.get(), GetCurrentProcess(), &second, 0, FALSE, DUPLICATE_SAME_ACCESS));
    EXPECT_TRUE(FindNextChangeNotification(watched.notification.get()));
    EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(second, 0));
    EXPECT_TRUE(FindCloseChangeNotification(second));
}

TEST(ChangeNotification, ManyFreshOnesAreAllSignalled)
{
    const WatchedFolder watched;
    std::vector<OwnedHandle> notifications;
    for (int pass = 0; pass < 1000; ++pass)
        notifications.emplace_back(FindFirstChangeNotificationA(watched.path.c_str(), FALSE, FILE_NOTIFY_CHANGE_LAST_WRITE));
    watched.Write("f");
    for (const OwnedHandle& notification : notifications)
        ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(notification.get(), kDeadline));
}

TEST(ChangeNotification, RefusesBadCalls)
{
    const WatchedFolder watched;
    const auto error = [](const std::string& path, DWORD filter) {
        SetLastError(NO_ERROR);
        const HANDLE handle = FindFirstChangeNotificationA(path.c_str(), FALSE, filter);
        if (handle != INVALID_HANDLE_VALUE)
            FindCloseChangeNotification(handle);
        return GetLastError();
    };
    EXPECT_EQ(87u, error(watched.path, 0));
    EXPECT_EQ(87u, error(watched.path, 0x1001));
    EXPECT_EQ(3u, error("", 1));
    EXPECT_EQ(2u, error(watched.path + "\\nothing", 1));
    EXPECT_EQ(3u, error(watched.path + "\\no\\thing", 1));
    EXPECT_EQ(267u, error(watched.path + "\\f", 1));
    EXPECT_EQ(0u, error(watched.path + "\\", 1));
    const std::string notUtf8 = watched.path + "\\b\xE4\xFF";
    EXPECT_TRUE(CreateDirectoryA(notUtf8.c_str(), nullptr));
    EXPECT_EQ(0u, error(notUtf8, 1));

    const OwnedHandle event(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    for (const HANDLE bad : {HANDLE{}, INVALID_HANDLE_VALUE, event.get()})
        EXPECT_TRUE(FailedWith(6, !FindNextChangeNotification(bad)));
    EXPECT_TRUE(FindCloseChangeNotification(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(FindCloseChangeNotification(nullptr));
}
