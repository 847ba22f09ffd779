// ChangeNotificationTest.cpp: trees, folders that go, and notifications that nobody closes.
#include "support/Scratch.h"
#include "support/Threads.h"

#include <iterator>

using namespace kelgen::test;

namespace {

constexpr DWORD kFilter = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;

HANDLE Open(const std::filesystem::path& folder, BOOL subtree = FALSE)
{
    return FindFirstChangeNotificationA(folder.c_str(), subtree, kFilter);
}

bool IsSignalled(const OwnedHandle& notification, DWORD milliseconds = kDeadline)
{
    return WaitForSingleObject(notification.get(), milliseconds) == WAIT_OBJECT_0;
}

auto OpenDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

}  // namespace

TEST(ChangeNotification, OfATreeFollowsItsFolders)
{
    const auto root = ScratchFolder();
    std::filesystem::create_directories(root / "old" / "deep");
    const OwnedHandle tree(Open(root, TRUE));
    const auto signals = [&tree](bool expected, const std::function<void()>& change) {
        change();
        const bool signalled = IsSignalled(tree, expected ? kDeadline : 50);
        FindNextChangeNotification(tree.get());
        return signalled == expected;
    };
    const auto write = [](const std::filesystem::path& file) { return [file] { WriteBytes(file, "x"); }; };
    EXPECT_TRUE(signals(true, write(root / "f")));
    EXPECT_TRUE(signals(true, write(root / "old" / "deep" / "f")));
    EXPECT_TRUE(signals(true, [&] {
        std::filesystem::create_directories(root / "new" / "deep");
        WriteBytes(root / "new" / "deep" / "f", "x");
    }));
    EXPECT_TRUE(signals(true, write(root / "new" / "deep" / "f")));
    const auto outside = ScratchFolder();
    std::filesystem::rename(root / "new", outside / "new");
    FindNextChangeNotification(tree.get());
    EXPECT_TRUE(signals(false, write(outside / "new" / "deep" / "f")));
    std::filesystem::rename(outside / "new", root / "back");
    FindNextChangeNotification(tree.get());
    EXPECT_TRUE(signals(true, write(root / "back" / "deep" / "f")));
}

TEST(ChangeNotification, IsSignalledWhenItsFolderGoes)
{
    const auto folder = ScratchFolder() / "goes";
    for (int round = 0; round < 3; ++round) {
        std::filesystem::create_directory(folder);
        const OwnedHandle notification(Open(folder));
        EXPECT_FALSE(IsSignalled(notification, 20));
        std::filesystem::remove(folder);
        EXPECT_TRUE(IsSignalled(notification));
        EXPECT_TRUE(FindNextChangeNotification(notification.get()));
        EXPECT_EQ(INVALID_HANDLE_VALUE, Open(folder));
    }
}

TEST(ChangeNotification, IsForgottenWhenThousandsAreOpened)
{
    const auto folder = ScratchFolder();
    const OwnedHandle rearmed(Open(folder));
    EXPECT_TRUE(FindNextChangeNotification(rearmed.get()));
    const HANDLE oldest = Open(folder);
    const auto descriptors = OpenDescriptors();
    std::vector<HANDLE> opened;
    for (int i = 0; i < 10000; ++i)
        opened.push_back(Open(folder));
    EXPECT_EQ(descriptors, OpenDescriptors());
    WriteBytes(folder / "f", "x");
    EXPECT_TRUE(IsSignalled(rearmed)) << "it is in use";
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(opened.back(), kDeadline));
    EXPECT_FALSE(FindCloseChangeNotification(oldest));
    int closed = 0;
    for (const HANDLE handle : opened)
        closed += FindCloseChangeNotification(handle);
    EXPECT_EQ(4096, closed);
}
