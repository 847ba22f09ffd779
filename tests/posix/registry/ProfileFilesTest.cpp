// ProfileFilesTest.cpp: what a profile keeps when it is written, and who can be in the way; the home folder's own rights.
#include "platform/registry/RegistryFixture.h"
#include "support/Failures.h"
#include "support/Scratch.h"
#include "support/Threads.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>

using namespace kelgen::test;
namespace fs = std::filesystem;

namespace {

constexpr uid_t kStranger = 65534;

bool IsRoot()
{
    return geteuid() == 0;
}

std::string Profile()
{
    std::string path = ScratchFile("p.ini");
    WriteBytes(path, "[s]\r\nn=old\r\n");
    return path;
}

BOOL Write(const std::string& path)
{
    return WritePrivateProfileStringA("s", "n", "new", path.c_str());
}

}  // namespace

TEST(ProfileFiles, KeepOwnerModeAndAttributes)
{
    const std::string path = Profile();
    ASSERT_EQ(0, chmod(path.c_str(), 0640));
    // What the system keeps of a list that lets the user 65534 read: version, then tag, rights and id of each entry.
    constexpr std::string_view kAccessList("\2\0\0\0"
                                           "\1\0\6\0\xFF\xFF\xFF\xFF"
                                           "\2\0\4\0\xFE\xFF\0\0"
                                           "\4\0\4\0\xFF\xFF\xFF\xFF"
                                           "\x10\0\4\0\xFF\xFF\xFF\xFF"
                                           "\x20\0\0\0\xFF\xFF\xFF\xFF",
                                           44);
    constexpr const char* kAccessListName = "system.posix_acl_access";
    const bool hasList = setxattr(path.c_str(), kAccessListName, kAccessList.data(), kAccessList.size(), 0) == 0;
    const bool hasAttributes = setxattr(path.c_str(), "user.kept", "value", 5, 0) == 0;
    if (IsRoot()) {
        ASSERT_EQ(0, chown(path.c_str(), kStranger, kStranger));
    }
    EXPECT_TRUE(Write(path));
    EXPECT_EQ("[s]\r\nn=new\r\n", ReadBytes(path));
    struct stat state
    {};
    ASSERT_EQ(0, stat(path.c_str(), &state));
    EXPECT_EQ(0640u, state.st_mode & 07777);
    EXPECT_EQ(IsRoot() ? kStranger : geteuid(), state.st_uid);
    char value[8] = "";
    EXPECT_EQ(hasAttributes ? 5 : -1, getxattr(path.c_str(), "user.kept", value, sizeof value));
    char list[64] = "";
    const ssize_t size = getxattr(path.c_str(), kAccessListName, list, sizeof list);
    EXPECT_EQ(hasList ? kAccessList : std::string_view(), std::string_view(list, size > 0 ? static_cast<std::size_t>(size) : 0));
}

TEST(ProfileFiles, AReadOnlyOneIsRefused)
{
    const std::string path = Profile();
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(FailedWith(ERROR_ACCESS_DENIED, !Write(path)));
    EXPECT_EQ("[s]\r\nn=old\r\n", ReadBytes(path));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(fs::path(path).parent_path()), {}));
}

TEST(ProfileFiles, NoLockOfAReadersIsInTheWay)
{
    const std::string path = Profile();
    const std::string folder = fs::path(path).parent_path();
    for (const std::string& locked : {folder, path}) {
        const int file = open(locked.c_str(), O_RDONLY | O_CLOEXEC);
        ASSERT_EQ(0, flock(file, LOCK_EX));
        const OwnedHandle writer = StartThread([&]() -> DWORD { return Write(path) ? 1 : 0; });
        EXPECT_EQ(1u, ExitCodeOf(writer)) << locked;
        close(file);
    }
}

TEST(ProfileFiles, WhatAKilledWriterLeftGoes)
{
    const std::string path = Profile();
    const fs::path folder = fs::path(path).parent_path();
    WriteBytes((folder / ".p.ini.new").string(), std::string(5000, 'x'));
    EXPECT_TRUE(Write(path));
    EXPECT_EQ("[s]\r\nn=new\r\n", ReadBytes(path));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(folder), {}));
}

TEST(HomeFolder, IsTheUsersOwnAndNobodyElseWrites)
{
    const std::string before = std::getenv("KELGEN_HOME");
    struct Row
    {
        const char* name;
        mode_t mode;
        uid_t owner;
        bool isGood;
    };
    for (const Row& row : {
             Row{"own", 0700, geteuid(), true},
             Row{"read by others", 0755, geteuid(), true},
             Row{"written by the group", 0770, geteuid(), false},
             Row{"written by others", 0702, geteuid(), false},
             Row{"a stranger's", 0700, kStranger, false},
         }) {
        const fs::path home = ScratchFolder();
        ASSERT_EQ(0, chmod(home.c_str(), row.mode));
        if (row.owner != geteuid() && (!IsRoot() || chown(home.c_str(), row.owner, row.owner) != 0))
            continue;
        setenv("KELGEN_HOME", home.c_str(), 1);
        HKEY key = nullptr;
        EXPECT_EQ(row.isGood, RegCreateKeyA(HKEY_CURRENT_USER, "Software\\Test", &key) == ERROR_SUCCESS) << row.name;
        RegCloseKey(key);
        EXPECT_EQ(row.isGood, CreateDirectoryA("C:\\made", nullptr) != FALSE) << row.name;
        EXPECT_EQ(row.isGood, !fs::is_empty(home)) << row.name;
    }
    setenv("KELGEN_HOME", before.c_str(), 1);
}

TEST(HomeFolder, WhatThePlatformKeepsIsPrivateWhateverTheMask)
{
    const mode_t mask = umask(0);
    {
        const ScratchKey key;
        SetText(key, "Value", "text");
        MakeKey(key, "Mixed Case");
        const SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
        CloseServiceHandle(manager);
        const std::string home = std::getenv("KELGEN_HOME");
        for (const auto& entry : fs::recursive_directory_iterator(home + "/registry"))
            EXPECT_EQ(fs::perms::none, entry.status().permissions() & (fs::perms::group_all | fs::perms::others_all)) << entry;
    }
    umask(mask);
}
