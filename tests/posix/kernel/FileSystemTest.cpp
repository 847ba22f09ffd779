// FileSystemTest.cpp: how names, attributes and share modes lie in the system's own files.
#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/ShortNames.h>

#include "posix/registry/Processes.h"
#include "support/Random.h"
#include "support/Scratch.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <vector>

using namespace kelgen::posix;
using namespace kelgen::test;

TEST(DriveForms, LeadBackToTheSameFile)
{
    struct Row
    {
        std::string native, drive;
    };
    const Row rows[] = {{DriveCFolder(), "C:\\"},
                        {DriveCFolder() + "/b.txt", "C:\\b.txt"},
                        {"/", "Z:\\"},
                        {"/etc/passwd", "Z:\\etc\\passwd"},
                        {"/drive_c", "Z:\\drive_c"}};
    for (const Row& row : rows) {
        EXPECT_EQ(row.drive, DriveForm(row.native));
        EXPECT_EQ(row.native, Resolve(row.drive).native);
    }
    EXPECT_EQ('Z', DriveForm(DriveCFolder() + "x")[0]) << "only the folder itself is drive C";
}

TEST(NameLookUp, ExactNamesGoBeforeThoseInAnotherCase)
{
    const std::string folder = ScratchFolder().string() + "/";
    for (const char* name : {"name", "Name", "NAME", "\xC3\xA4.txt", "long file name.text"})
        WriteBytes(folder + name, name);
    struct Row
    {
        const char* wanted;
        const char* found;
    };
    for (const Row& row : {Row{"name", "name"}, Row{"Name", "Name"}, Row{"nAME", "NAME"}, Row{"\xC3\x84.TXT", "\xC3\xA4.txt"},
                           Row{"LONG FILE NAME.TEXT", "long file name.text"}})
        EXPECT_EQ(folder + row.found, Resolve(folder + row.wanted).native) << row.wanted;
}

TEST(NameLookUp, FindsBytesOfThePageWhereNoOtherEntryHasThatName)
{
    ASSERT_EQ(1252u, GetACP());
    const std::string folder = ScratchFolder().string() + "/";
    for (const char* name : {"\xE4", "\xC3\xB6", "\xF6", "\xE4\xFF.d"})
        WriteBytes(folder + name, name);
    struct Row
    {
        const char* given;
        const char* found;
    };
    for (const Row& row : {Row{"\xE4", "\xE4"}, Row{"\xF6", "\xC3\xB6"}, Row{"\xD6", "\xC3\xB6"}, Row{"\xE4\xFF.d", "\xE4\xFF.d"}}) {
        const ResolvedPath path = Resolve(NarrowName((folder + row.given).c_str()));
        EXPECT_TRUE(path.exists) << row.given;
        EXPECT_EQ(folder + row.found, path.native);
    }
    const HANDLE made = CreateFileA((folder + "\xFC\x80").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    EXPECT_TRUE(CloseHandle(made));
    EXPECT_TRUE(std::filesystem::exists(folder + "\xC3\xBC\xE2\x82\xAC")) << "new names are UTF-8";
    // Each is deleted by the name that the list gave.
    WIN32_FIND_DATAA data;
    for (int left = 5; left > 0; --left) {
        const HANDLE find = FindFirstFileA((folder + "*").c_str(), &data);
        while (data.cFileName[0] == '.')
            ASSERT_TRUE(FindNextFileA(find, &data));
        FindClose(find);
        EXPECT_TRUE(DeleteFileA((folder + data.cFileName).c_str())) << data.cFileName;
    }
    EXPECT_TRUE(FolderEntries(folder).empty());
}

TEST(NameLookUp, ClashingShortNamesStayApart)
{
    const std::string folder = ScratchFolder().string() + "/";
    std::vector<std::string> names;
    for (int i = 0; i < 100; ++i)
        WriteBytes(folder + names.emplace_back("some long name " + std::to_string(i)), "");
    for (const std::string& name : names) {
        char buffer[MAX_PATH] = "";
        ASSERT_NE(0u, GetShortPathNameA((folder + name).c_str(), buffer, sizeof buffer));
        ASSERT_EQ(folder + name, Resolve(buffer).native) << buffer;
    }
}

TEST(WideNames, KeepEveryByte)
{
    Random random;
    for (int i = 0; i < 5000; ++i) {
        std::string name;
        for (int n = random.Between(0, 12); n > 0; --n)
            name += static_cast<char>(random.Between(0, 2) ? random.Between(0x80, 0xFF) : random.Between(1, 0x7F));
        const std::u16string wide = WideName(name);
        ASSERT_EQ(name, NarrowName(reinterpret_cast<LPCWSTR>(wide.c_str())));
    }
    EXPECT_EQ(u"\u00E4\u4E2D\U0001F600", WideName("\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80"));
}

TEST(Attributes, LieWhereOtherProgramsFindThem)
{
    const std::string file = ScratchFile("file");
    WriteBytes(file, "x");
    EXPECT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY));
    char text[20] = "";
    EXPECT_EQ(3, getxattr(file.c_str(), "user.DOSATTRIB", text, sizeof text));
    EXPECT_STREQ("0x2", text);
    struct stat status;
    stat(file.c_str(), &status);
    EXPECT_EQ(0u, status.st_mode & 0222);
    EXPECT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_NORMAL}, GetFileAttributesA(file.c_str()));
    EXPECT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(-1, getxattr(file.c_str(), "user.DOSATTRIB", text, sizeof text));
    setxattr(file.c_str(), "user.DOSATTRIB", "0x25", 4, 0);
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE}, GetFileAttributesA(file.c_str()));
}

TEST(Attributes, ComeAndGoForTheirPlainOwner)
{
    const auto folder = ScratchFolder();
    for (auto open = folder; open != std::filesystem::temp_directory_path(); open = open.parent_path())
        ASSERT_EQ(0, chmod(open.c_str(), 0755));
    const std::string file = (folder / "file").string();
    WriteBytes(file, "x");
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0) {
        ASSERT_EQ(0, chown(file.c_str(), kNobody, kNobody));
    }
    ChildProcess child([&] {
        if (geteuid() == 0) {
            ASSERT_EQ(0, setresuid(kNobody, kNobody, kNobody));
        }
        for (const DWORD set : {FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_READONLY,
                                FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM, FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_ARCHIVE}) {
            EXPECT_TRUE(SetFileAttributesA(file.c_str(), set)) << set << ' ' << GetLastError();
            EXPECT_EQ(set, GetFileAttributesA(file.c_str()));
        }
    });
    EXPECT_TRUE(child.Wait());
}

TEST(Copying, KeepsTheRightToRun)
{
    const std::string folder = ScratchFolder().string() + "/", program = folder + "program", other = folder + "other";
    WriteBytes(program, "#!/bin/sh\n");
    chmod(program.c_str(), 0755);
    const mode_t mask = umask(0027);
    EXPECT_TRUE(CopyFileA(program.c_str(), other.c_str(), TRUE)) << GetLastError();
    umask(mask);
    struct stat status;
    stat(other.c_str(), &status);
    EXPECT_EQ(0750u, status.st_mode & 0777) << "as far as the copy may be read";
    const std::string moved = "/dev/shm/kelgen-test-" + std::to_string(getpid());
    if (MoveFileA(program.c_str(), moved.c_str())) {
        EXPECT_EQ(0, access(moved.c_str(), X_OK)) << "moved to another file system";
        unlink(moved.c_str());
    }
}

TEST(ProcessList, LeavesOutWhatHasNoProgram)
{
    std::vector<DWORD> ids(100000);
    const auto isListed = [&](pid_t wanted) {
        DWORD used = 0;
        EXPECT_TRUE(EnumProcesses(ids.data(), static_cast<DWORD>(ids.size() * sizeof(DWORD)), &used));
        return std::count(ids.begin(), ids.begin() + used / sizeof(DWORD), static_cast<DWORD>(wanted)) == 1;
    };
    const pid_t ended = fork();
    if (ended == 0)
        _exit(0);
    siginfo_t information;
    ASSERT_EQ(0, waitid(P_PID, static_cast<id_t>(ended), &information, WEXITED | WNOWAIT));
    EXPECT_FALSE(isListed(ended)) << "nobody has asked for its end yet";
    EXPECT_EQ(ended, waitpid(ended, nullptr, 0));
    EXPECT_TRUE(isListed(getpid()));
    EXPECT_TRUE(isListed(1)) << "a program of another user, perhaps";
    // The kernel's thread number 2, where the system shows it, begets all others.
    std::string parents = ReadBytes("/proc/2/stat");
    if (parents.find("(kthreadd)") != std::string::npos) {
        EXPECT_FALSE(isListed(2));
    }
}

TEST(Moving, MayChangeOnlyTheCase)
{
    const std::string folder = ScratchFolder().string() + "/";
    WriteBytes(folder + "file", "x");
    EXPECT_TRUE(MoveFileA((folder + "file").c_str(), (folder + "FILE").c_str()));
    EXPECT_EQ(std::vector<std::string>{"FILE"}, FolderEntries(folder));
}

TEST(ShareModes, HoldBetweenProcesses)
{
    const std::string file = ScratchFile("file");
    WriteBytes(file, "x");
    int ready[2], done[2];
    ASSERT_EQ(0, pipe(ready));
    ASSERT_EQ(0, pipe(done));
    const pid_t child = fork();
    if (child == 0) {
        const HANDLE opened = CreateFileA(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        char byte = opened != INVALID_HANDLE_VALUE;
        if (write(ready[1], &byte, 1) == 1 && read(done[0], &byte, 1) == 1)
            _exit(0);
        _exit(1);
    }
    char byte = 0;
    ASSERT_EQ(1, read(ready[0], &byte, 1));
    EXPECT_EQ(1, byte);
    EXPECT_EQ(INVALID_HANDLE_VALUE, CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, GetLastError());
    EXPECT_EQ(1, write(done[1], &byte, 1));
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(0, status);
    const HANDLE opened = CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(INVALID_HANDLE_VALUE, opened) << "a process that has ended denies nothing";
    CloseHandle(opened);
    for (const int end : {ready[0], ready[1], done[0], done[1]})
        close(end);
}

TEST(Listing, IsInTheOrderOfUpperCaseAndThenOfBytes)
{
    Random random;
    for (int round = 0; round < 10; ++round) {
        const std::string folder = (ScratchFolder() / std::to_string(round)).string() + "/";
        std::filesystem::create_directory(folder);
        std::set<std::string> names;
        for (int i = 0; i < 30; ++i) {
            std::string name(static_cast<std::size_t>(1 + round % 3 * 6), 'n');
            for (int length = random.Between(0, 12); length > 0; --length)
                name += "aAbB_~1 ."[random.Between(0, 8)];
            names.insert(round % 2 == 0 ? name + "x" : name + "\xC3\xA4");
        }
        const auto upper = [](std::string name) {
            std::ranges::transform(name, name.begin(),
                                   [](char byte) { return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte; });
            return name;
        };
        std::vector<std::string> expected(names.begin(), names.end());
        std::ranges::stable_sort(expected, {}, upper);
        for (const std::string& name : expected)
            WriteBytes(folder + name, "");
        EXPECT_EQ(std::vector<std::string>(names.begin(), names.end()), FolderEntries(folder)) << "in byte order";
        expected.insert(expected.begin(), {".", ".."});

        std::vector<std::string> found;
        WIN32_FIND_DATAA data;
        const HANDLE find = FindFirstFileA((folder + "*").c_str(), &data);
        ASSERT_NE(INVALID_HANDLE_VALUE, find);
        do
            found.push_back(NarrowName(data.cFileName));
        while (FindNextFileA(find, &data));
        EXPECT_EQ(expected, found);
        EXPECT_TRUE(FindClose(find));
    }
}

TEST(ShortNames, AreDifferentAmongMoreAlikeNamesThanFourDigitsTellApart)
{
    std::vector<std::string> entries;
    for (int i = 100000; i < 170000; ++i)
        entries.push_back("file name " + std::to_string(i) + ".text");
    const ShortNames names(entries);
    std::set<std::string> seen;
    for (const std::string& entry : entries) {
        const std::string name = names.Of(entry);
        ASSERT_TRUE(name.size() <= 12 && name.starts_with("FI") && name.ends_with(".TEX")) << name;
        ASSERT_TRUE(seen.insert(name).second) << name;
    }
}
