// DurabilityTest.cpp: what survives a power cut, a failing or full disk, and a killed process.
#include <kelgen/platform/posix/registry/ValueFile.h>

#include "posix/registry/DiskCalls.h"
#include "posix/registry/KeyFolder.h"
#include "support/Failures.h"
#include "support/Random.h"
#include "support/Scratch.h"
#include "support/TextDocument.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

using namespace kelgen::test;
namespace fs = std::filesystem;

namespace {

ino_t NumberOf(const fs::path& path)
{
    struct stat state
    {};
    EXPECT_EQ(0, stat(path.c_str(), &state)) << path;
    return state.st_ino;
}

/// The file of the key's only value.
fs::path ValueFileOf(const ScratchKey& key)
{
    for (const auto& entry : fs::directory_iterator(FolderOf(key)))
        if (ReadBytes(entry.path().string()).starts_with("KRV2"))
            return entry.path();
    ADD_FAILURE() << "no value";
    return {};
}

/// What a power cut may leave of a file that had these contents since it was last on the disk: any sector of any of them.
std::string AfterPowerCut(const std::vector<std::string>& contents, Random& random)
{
    constexpr std::size_t kSector = 512;
    std::string left(contents[random() % contents.size()].size(), '\0');
    for (std::size_t at = 0; at < left.size(); at += kSector) {
        const std::string& from = contents[random() % contents.size()];
        if (at < from.size())
            left.replace(at, kSector, from.substr(at, std::min(kSector, left.size() - at)));
    }
    return left;
}

std::string TextOf(const std::string& file)
{
    const auto value = kelgen::posix::ParseValueFile({reinterpret_cast<const BYTE*>(file.data()), file.size()});
    std::string text;
    for (std::size_t i = 0; value && i + 1 < value->data.size(); i += 2)
        text += static_cast<char>(value->data[i]);
    return text.substr(0, text.find('\0'));
}

/// Ends each test with the system's own disk.
class Durability : public testing::Test
{
protected:
    void SetUp() override { Disk() = {}; }
    void TearDown() override { Disk() = {}; }
};

}  // namespace

TEST_F(Durability, AValueComesOutOfAPowerCutOldOrNew)
{
    Random random;
    for (const std::size_t size : {20u, 230u, 300u, 900u, 3000u}) {
        const ScratchKey key;
        ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", std::string(size, '0')));
        const fs::path file = ValueFileOf(key);
        std::vector<std::string> contents = {ReadBytes(file.string())};
        char eldest = '0';
        char newest = '0';
        Disk().onFlush = [&](ino_t flushed) {
            if (flushed != NumberOf(file))
                return;
            contents = {ReadBytes(file.string())};
            eldest = newest;
        };
        for (char letter = '1'; letter <= '8'; ++letter) {
            ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", std::string(size, letter)));
            newest = letter;
            contents.push_back(ReadBytes(file.string()));
            for (int cut = 0; cut < 50; ++cut) {
                const std::string left = TextOf(AfterPowerCut(contents, random));
                ASSERT_EQ(size, left.size()) << "of " << letter;
                EXPECT_TRUE(left == std::string(size, left[0]) && left[0] >= eldest && left[0] <= newest) << left[0] << " of " << letter;
            }
        }
        Disk().onFlush = nullptr;
    }
}

TEST_F(Durability, WhatTakesAnothersPlaceIsOnTheDiskBefore)
{
    const ScratchKey key;
    const std::string profile = ScratchFile("p.ini");
    const std::string document = ScratchFile("d.txt");
    for (const std::string& path : {profile, document})
        WriteBytes(path, "[old]\r\n");
    SetText(key, "v", "small");
    const std::vector<std::pair<const char*, std::function<bool()>>> rows = {
        {"outgrown value", [&] { return SetText(key, "v", std::string(9000, 'x')) == ERROR_SUCCESS; }},
        {"profile", [&] { return WritePrivateProfileStringA("s", "n", "v", profile.c_str()) != FALSE; }},
        {"document", [&] { return TextDocument("new").OnSaveDocument(document.c_str()) != FALSE; }},
    };
    for (const auto& [name, write] : rows) {
        Disk() = {};
        EXPECT_TRUE(write()) << name;
        EXPECT_EQ(1, Disk().renamed) << name;
        EXPECT_EQ(0, Disk().renamedTooEarly) << name;
    }
}

TEST_F(Durability, AFlushedKeyIsOnTheDiskWithAllBelowAndAbove)
{
    const ScratchKey key;
    SetText(key, "v", "text");
    MakeKey(key, "Sub\\Deeper", "text");
    const fs::path folder = FolderOf(key);
    ASSERT_EQ(ERROR_SUCCESS, RegFlushKey(key));
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        EXPECT_TRUE(Disk().flushed.contains(NumberOf(entry))) << entry;
    const fs::path home = std::getenv("KELGEN_HOME");
    for (fs::path above = folder; above != home.parent_path(); above = above.parent_path())
        EXPECT_TRUE(Disk().flushed.contains(NumberOf(above))) << above;
}

TEST_F(Durability, AFailedFlushIsToldAndTheOldStays)
{
    const ScratchKey key;
    SetText(key, "v", std::string(900, 'o'));
    SetText(key, "v", std::string(900, 'o'));
    const std::string profile = ScratchFile("p.ini");
    WriteBytes(profile, "[old]\r\n");
    Disk().failure = EIO;
    EXPECT_EQ(ERROR_GEN_FAILURE, RegFlushKey(key));
    EXPECT_NE(ERROR_SUCCESS, SetText(key, "v", std::string(900, 'n')));
    EXPECT_NE(ERROR_SUCCESS, SetText(key, "v", std::string(9000, 'n')));
    EXPECT_TRUE(FailedWith(ERROR_GEN_FAILURE, !WritePrivateProfileStringA("s", "n", "v", profile.c_str())));
    Disk().failure = 0;
    char read[1000] = "";
    DWORD size = sizeof read;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "v", nullptr, nullptr, reinterpret_cast<BYTE*>(read), &size));
    EXPECT_EQ(std::string(900, 'o'), read);
    EXPECT_EQ("[old]\r\n", ReadBytes(profile));
}

TEST_F(Durability, AFullDiskLeavesTheOld)
{
    const ScratchKey key;
    SetText(key, "v", "old");
    const std::string profile = ScratchFile("p.ini");
    const std::string document = ScratchFile("d.txt");
    for (const std::string& path : {profile, document})
        WriteBytes(path, "[old]\r\n");
    // No file may grow: the kernel says so as it does for a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit none = {0, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    const LSTATUS small = SetText(key, "v", "new");
    const LSTATUS large = SetText(key, "v", std::string(9000, 'n'));
    const bool isProfileWritten = WritePrivateProfileStringA("s", "n", "v", profile.c_str()) != FALSE;
    const DWORD profileError = GetLastError();
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(ERROR_DISK_FULL, small);
    EXPECT_EQ(ERROR_DISK_FULL, large);
    EXPECT_FALSE(isProfileWritten);
    EXPECT_EQ(DWORD{ERROR_DISK_FULL}, profileError);
    char read[100] = "";
    DWORD size = sizeof read;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "v", nullptr, nullptr, reinterpret_cast<BYTE*>(read), &size));
    EXPECT_STREQ("old", read);
    EXPECT_EQ("[old]\r\n", ReadBytes(profile));
}
