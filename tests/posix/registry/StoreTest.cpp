// StoreTest.cpp: the registry's folders and files: names, foreign and damaged files, links between predefined keys.
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/registry/StoredNames.h>
#include <kelgen/platform/posix/registry/ValueFile.h>

#include "posix/registry/KeyFolder.h"
#include "support/Random.h"
#include "support/Scratch.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

using namespace kelgen::posix;
using namespace kelgen::test;

namespace {

std::u16string RandomName(Random& random)
{
    // From every kind: letters of both cases, what is escaped, other alphabets, halves of pairs.
    static constexpr char16_t kUnits[] = u"aZ9 .%/=\\\x01\x7F\u00E4\u00C4\u00DF\u03A3\u03C2\u0416\u20AC\xD83D\xDE00\xFFFF";
    std::u16string name(static_cast<std::size_t>(random.Between(0, 3) ? random.Between(1, 12) : random.Between(50, 300)), u' ');
    for (char16_t& unit : name)
        unit = kUnits[random.Between(0, static_cast<int>(std::size(kUnits)) - 2)];
    return name;
}

}  // namespace

TEST(StoredName, IsAFileNameThatStandsForTheNameWithoutCase)
{
    Random random;
    for (int i = 0; i < 3000; ++i) {
        const std::u16string name = RandomName(random);
        const std::string file = KeyFileName(name);
        ASSERT_LE(file.size(), 254u);
        ASSERT_EQ(std::string::npos, file.find_first_of(std::string_view("/\0=", 3))) << file;
        ASSERT_FALSE(file.starts_with('.')) << file;
        std::u16string upper = name;
        std::ranges::transform(upper, upper.begin(), UpperUnit);
        ASSERT_EQ(file, KeyFileName(upper));
        if (const auto back = KeyNameOfFile(file))
            ASSERT_EQ(0, CompareNames(*back, name)) << file;
        else
            ASSERT_TRUE(file.starts_with("%~")) << file;
    }
}

struct StoredNameRow
{
    const char* name;
    std::u16string key;
    std::string file;
};

TEST(StoredNameForm, IsStable)
{
    const StoredNameRow rows[] = {
        {"Letters", u"Software", "software"},
        {"Escapes", u"a/b=c%d", "a%2Fb%3Dc%25d"},
        {"LeadingDot", u".a.b", "%2Ea.b"},
        {"Umlaut", u"\u00C4", "\xC3\xA4"},
        {"Pair", u"\xD83D\xDE00", "\xF0\x9F\x98\x80"},
        {"HalfPair", u"\xD83D", "%uD83D"},
        {"TooLong", std::u16string(300, u'A'), "%~67A7CDC03D983A959288C1B8C58074BF"},
    };
    for (const StoredNameRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.file, KeyFileName(row.key));
    }
}

TEST(Store, ForeignAndDamagedFilesAreIgnored)
{
    const ScratchKey key;
    const auto folder = FolderOf(key);
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "Good", "x"));
    const std::string good = ReadBytes((folder / "good=").string());
    WriteBytes((folder / "empty=").string(), "");
    WriteBytes((folder / "cut=").string(), good.substr(0, good.size() - 1));
    std::string changed = good;
    changed.back() ^= 1;
    WriteBytes((folder / "changed=").string(), changed);
    WriteBytes((folder / "other=").string(), good);
    WriteBytes((folder / "Good=").string(), good);
    WriteBytes((folder / "note.txt").string(), "x");
    WriteBytes((folder / "%zz=").string(), good);
    // Slots of 4 GB in a file that is one hole.
    WriteBytes((folder / "huge=").string(), "KRV2\xFF\xFF\xFF\xFF");
    std::filesystem::resize_file(folder / "huge=", 0x1FFFFFFFF);
    // A sound value whose slots are said to be of 256 MB.
    std::string wide = good;
    wide.replace(4, 4, std::string("\0\0\0\x10", 4));
    WriteBytes((folder / "wide=").string(), wide);
    std::filesystem::create_directory(folder / "folder=");
    std::filesystem::create_directory(folder / "NotAKey");
    std::filesystem::create_directory(folder / "\xFF\xFE");
    std::filesystem::create_symlink(folder / "good=", folder / "link=");
    ASSERT_EQ(0, mkfifo((folder / "pipe=").c_str(), 0600));
    ASSERT_EQ(ERROR_SUCCESS, RegSetValueA(key, "Sub", REG_SZ, "s", 0));
    WriteBytes((folder / "sub/.name").string(), "rubbish");

    EXPECT_EQ(std::vector<std::string>{"Good"}, ValuesOf(key));
    EXPECT_EQ(std::vector<std::string>{"sub"}, SubkeysOf(key));
    for (const char* name : {"empty", "other", "folder", "link", "pipe", "note.txt"})
        EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueExA(key, name, nullptr, nullptr, nullptr, nullptr)) << name;
    for (const char* name : {"cut", "changed", "huge", "wide"})
        EXPECT_EQ(ERROR_CANTREAD, RegQueryValueExA(key, name, nullptr, nullptr, nullptr, nullptr)) << name;
    for (const char* name : {"empty", "cut", "changed", "other", "huge", "wide", "link", "pipe"}) {
        EXPECT_EQ(ERROR_SUCCESS, SetText(key, name, "new")) << name;
        EXPECT_EQ("new", GetText(key, name)) << name;
        EXPECT_GT(10000u, std::filesystem::file_size(folder / (std::string(name) + '='))) << name;
    }
    EXPECT_EQ("x", GetText(key, "good")) << "writing over the link left its target";
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, "Sub"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, ""));
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(Store, ATornWriteLeavesTheValueBefore)
{
    const ScratchKey key;
    const std::string file = (FolderOf(key) / "v=").string();
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", "first"));
    for (const char* text : {"second", "third", "fourth"}) {
        const std::string before = ReadBytes(file);
        const auto old = GetText(key, "v");
        ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", text));
        const std::string after = ReadBytes(file);
        // Every prefix of what changed, as if the writer had been killed there.
        std::size_t begin = 0;
        while (begin < before.size() && before[begin] == after[begin])
            ++begin;
        for (std::size_t end = begin; end < after.size() && end < begin + 60; ++end) {
            std::string torn = after.substr(0, end);
            if (torn.size() < before.size())
                torn += before.substr(torn.size());
            if (torn == after)
                break;
            WriteBytes(file, torn);
            ASSERT_EQ(old, GetText(key, "v")) << text << " torn at " << end;
        }
        WriteBytes(file, after);
        ASSERT_EQ(text, GetText(key, "v"));
    }
}

TEST(Store, ScratchFilesOfKilledWritersVanishAfterAnHour)
{
    const ScratchKey key;
    const auto folder = FolderOf(key);
    WriteBytes((folder / ".new-1-1").string(), "x");
    WriteBytes((folder / ".new-1-2").string(), "x");
    std::filesystem::create_directories(folder / ".new-1-3/sub");
    for (const char* old : {".new-1-1", ".new-1-3"})
        std::filesystem::last_write_time(folder / old, std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
    EXPECT_EQ(std::vector<std::string>{}, ValuesOf(key));
    EXPECT_FALSE(std::filesystem::exists(folder / ".new-1-1"));
    EXPECT_TRUE(std::filesystem::exists(folder / ".new-1-2")) << "its writer may still be at it";
    EXPECT_FALSE(std::filesystem::exists(folder / ".new-1-3"));
}

TEST(Store, EnumerationSeesChangesOfOthersAtOnce)
{
    const ScratchKey key;
    HKEY other = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(key, nullptr, 0, KEY_ALL_ACCESS, &other));
    for (int i = 0; i < 20; ++i) {
        ASSERT_EQ(ERROR_SUCCESS, SetText(other, std::to_string(100 + i).c_str(), "x"));
        ASSERT_EQ(static_cast<std::size_t>(i) + 1, ValuesOf(key).size());
    }
    std::filesystem::remove(FolderOf(key) / "100=");
    EXPECT_EQ(19u, ValuesOf(key).size());
    RegCloseKey(other);
}

TEST(Store, ClassesRootIsTheMachinesClasses)
{
    HKEY made = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(HKEY_CLASSES_ROOT, ".kelgen", &made));
    ASSERT_EQ(ERROR_SUCCESS, SetText(made, "v", "x"));
    RegCloseKey(made);
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyA(HKEY_LOCAL_MACHINE, "Software\\Classes\\.kelgen", &made));
    EXPECT_EQ("x", GetText(made, "v"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(made, ""));
    RegCloseKey(made);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyA(HKEY_CLASSES_ROOT, ".kelgen", &made));
}

TEST(Store, FollowsTheHomeFolder)
{
    const ScratchKey key;
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", "x"));
    const std::string home = std::getenv("KELGEN_HOME");
    setenv("KELGEN_HOME", (ScratchFolder() / "other").c_str(), 1);
    HKEY opened = nullptr;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyA(HKEY_CURRENT_USER, key.Path().c_str(), &opened));
    EXPECT_EQ(ERROR_SUCCESS, RegFlushKey(HKEY_CURRENT_USER));
    EXPECT_EQ("x", GetText(key, "v")) << "an open key stays where it is";
    setenv("KELGEN_HOME", home.c_str(), 1);
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyA(HKEY_CURRENT_USER, key.Path().c_str(), &opened));
    RegCloseKey(opened);
}
