// RegistryKeyTest.cpp: opening, making, removing and enumerating keys.
#include "platform/registry/RegistryFixture.h"

using namespace kelgen::test;

struct OpenRow
{
    const char* name;
    const char* subkey;
    LSTATUS status;
};

TEST(RegistryOpen, FindsSubkeyOrFails)
{
    const OpenRow rows[] = {
        {"Exact", "Alpha\\Beta", ERROR_SUCCESS},
        {"OtherCase", "aLPHA\\bETA", ERROR_SUCCESS},
        {"TrailingBackslash", "Alpha\\Beta\\", ERROR_SUCCESS},
        {"DoubledBackslash", "Alpha\\\\Beta", ERROR_SUCCESS},
        {"Missing", "Beta", ERROR_FILE_NOT_FOUND},
        {"MissingParent", "Beta\\Alpha", ERROR_FILE_NOT_FOUND},
        {"Slash", "Alpha/Beta", ERROR_FILE_NOT_FOUND},
        {"Parent", "Alpha\\..", ERROR_FILE_NOT_FOUND},
        {"Here", ".", ERROR_FILE_NOT_FOUND},
        {"LeadingBackslash", "\\Alpha", ERROR_BAD_PATHNAME},
        {"Empty", "", ERROR_SUCCESS},
        {"Null", nullptr, ERROR_SUCCESS},
    };
    for (const OpenRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ScratchKey key;
        MakeKey(key, "Alpha\\Beta");
        HKEY opened = key;
        EXPECT_EQ(row.status, RegOpenKeyExA(key, row.subkey, 0, KEY_READ, &opened));
        EXPECT_EQ(row.status == ERROR_SUCCESS, opened != nullptr);
        EXPECT_EQ(opened ? ERROR_SUCCESS : ERROR_INVALID_HANDLE, RegCloseKey(opened));
    }
}

TEST(RegistryOpen, LettersBeyondAsciiHaveTwoCases)
{
    // Of page 1252: S and Z with caron, OE, Y with diaeresis, thorn; the sharp s and the signs of multiplication and division have one.
    for (const auto& [made, asked, status] : std::vector<std::tuple<const char*, const char*, LSTATUS>>{
             {"\x8A\x8E\x8C", "\x9A\x9E\x9C", ERROR_SUCCESS},
             {"\xFF\xFE\xE9", "\x9F\xDE\xC9", ERROR_SUCCESS},
             {"\xD7", "\xF7", ERROR_FILE_NOT_FOUND},
             {"\xDF", "SS", ERROR_FILE_NOT_FOUND},
             {"\x83", "F", ERROR_FILE_NOT_FOUND},
         }) {
        SCOPED_TRACE(made);
        const ScratchKey key;
        MakeKey(key, made);
        HKEY opened = nullptr;
        EXPECT_EQ(status, RegOpenKeyExA(key, asked, 0, KEY_READ, &opened));
        RegCloseKey(opened);
    }
}

TEST(RegistryKey, EmptySubkeyGivesTheSameKeyOrANewHandle)
{
    const ScratchKey key;
    HKEY opened = nullptr;
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyA(key, nullptr, &opened));
    EXPECT_EQ(static_cast<HKEY>(key), opened);
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyA(key, "", &opened));
    EXPECT_EQ(static_cast<HKEY>(key), opened);
    EXPECT_EQ(ERROR_SUCCESS, RegCreateKeyA(key, "", &opened));
    EXPECT_NE(static_cast<HKEY>(key), opened);
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(opened));

    for (HKEY root : {HKEY_CURRENT_USER, HKEY_CLASSES_ROOT}) {
        EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(root, "", 0, KEY_READ, &opened));
        EXPECT_EQ(root, opened);
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(root));
    }
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, "SOFTWARE", 0, KEY_READ, &opened));
    RegCloseKey(opened);
}

TEST(RegistryKey, BadHandlesAndArguments)
{
    HKEY opened = HKEY_CURRENT_USER;
    for (HKEY bad : {HKEY(nullptr), reinterpret_cast<HKEY>(ULONG_PTR{0x1234}), HKEY_PERFORMANCE_DATA})
        EXPECT_EQ(ERROR_INVALID_HANDLE, RegOpenKeyA(bad, "x", &opened));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(nullptr));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegOpenKeyA(HKEY_CURRENT_USER, "x", nullptr));

    const ScratchKey key;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(key, "x", &opened));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(opened));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(opened));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegFlushKey(opened));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegCreateKeyExA(key, "x", 7, nullptr, 0, KEY_READ, nullptr, &opened, nullptr)) << "reserved";
}

TEST(RegistryKey, CreationTellsNewFromExisting)
{
    const ScratchKey key;
    HKEY opened = nullptr;
    DWORD disposition = 0;
    for (const DWORD expected : {REG_CREATED_NEW_KEY, REG_OPENED_EXISTING_KEY}) {
        EXPECT_EQ(ERROR_SUCCESS, RegCreateKeyExA(key, "New\\Sub", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &opened, &disposition));
        EXPECT_EQ(expected, disposition);
        RegCloseKey(opened);
    }
    EXPECT_EQ(ERROR_BAD_PATHNAME, RegCreateKeyA(key, "\\lead", &opened));
    EXPECT_EQ(nullptr, opened);
}

struct RightsRow
{
    const char* name;
    REGSAM access;
    LSTATUS query, set, remove, enumerateKey, enumerateValue;
};

constexpr LSTATUS kDenied = ERROR_ACCESS_DENIED;

TEST(RegistryRights, AllowOnlyWhatTheKeyWasOpenedFor)
{
    const RightsRow rows[] = {
        {"Read", KEY_READ, 0, kDenied, kDenied, 0, 0},
        {"Write", KEY_WRITE, kDenied, 0, 0, kDenied, kDenied},
        {"Nothing", 0, kDenied, kDenied, kDenied, kDenied, kDenied},
        {"All", KEY_ALL_ACCESS, 0, 0, 0, 0, 0},
        {"Maximum", MAXIMUM_ALLOWED, 0, 0, 0, 0, 0},
    };
    for (const RightsRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ScratchKey parent;
        MakeKey(parent, "Sub");
        ASSERT_EQ(ERROR_SUCCESS, SetText(parent, "v", "x"));
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(parent, nullptr, 0, row.access, &key));

        char name[20];
        DWORD size = sizeof name;
        EXPECT_EQ(row.query, RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr));
        EXPECT_EQ(row.enumerateKey, RegEnumKeyExA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr));
        size = sizeof name;
        EXPECT_EQ(row.enumerateValue, RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr));
        EXPECT_EQ(row.set, SetText(key, "v", "y"));
        EXPECT_EQ(row.remove, RegDeleteValueA(key, "v"));
        HKEY sub = nullptr;
        EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyA(key, "Sub", &sub)) << "rights are checked on the opened key only";
        RegCloseKey(sub);
        RegCloseKey(key);
    }
}

TEST(RegistryKey, EnumerationIsAlphabeticalAndKeepsCase)
{
    const ScratchKey key;
    for (const char* name : {"New", "a/c", "..", " Sp ", ".", "\xC4", "_"})
        MakeKey(key, name);
    EXPECT_EQ((std::vector<std::string>{" Sp ", ".", "..", "_", "a/c", "New", "\xC4"}), SubkeysOf(key));

    char name[8];
    DWORD size = 3;
    EXPECT_EQ(ERROR_MORE_DATA, RegEnumKeyExA(key, 5, name, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(3u, size);
    EXPECT_EQ(ERROR_MORE_DATA, RegEnumKeyA(key, 5, name, 3));
    EXPECT_EQ(ERROR_SUCCESS, RegEnumKeyA(key, 5, name, 4));
    EXPECT_STREQ("New", name);
    EXPECT_EQ(ERROR_NO_MORE_ITEMS, RegEnumKeyA(key, 7, name, 8));
}

TEST(RegistryKey, LongNames)
{
    const ScratchKey key;
    HKEY made = nullptr;
    const std::string longest = "X" + std::string(254, '\xE4');
    MakeKey(key, longest);
    EXPECT_EQ(std::vector<std::string>{longest}, SubkeysOf(key));
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyA(key, ("x" + std::string(254, '\xC4')).c_str(), &made));
    RegCloseKey(made);
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, longest.c_str()));
    EXPECT_EQ(ERROR_MORE_DATA, RegCreateKeyA(key, std::string(300, 'x').c_str(), &made));
}

TEST(RegistryKey, DeletionNeedsALeaf)
{
    const ScratchKey key;
    HKEY made = nullptr;
    MakeKey(key, "Sub\\Deep", "x");
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(key, "Sub"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteKeyA(key, "Nope"));
    EXPECT_EQ(ERROR_BAD_PATHNAME, RegDeleteKeyA(key, "\\Sub"));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegDeleteKeyA(key, nullptr));
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(key, "")) << "the key itself, which has a subkey";
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(HKEY_CURRENT_USER, ""));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, "sub\\DEEP\\"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, "Sub"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, ""));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyA(HKEY_CURRENT_USER, key.Path().c_str(), &made));
}

TEST(RegistryKey, DeletedKeyAnswersSoEvenWhenMadeAgain)
{
    const ScratchKey key;
    HKEY old = nullptr, opened = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(key, "X", &old));
    ASSERT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, "X"));
    HKEY again = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(key, "X", &again));

    char name[8];
    DWORD size = sizeof name;
    EXPECT_EQ(ERROR_KEY_DELETED, SetText(old, "a", "x"));
    EXPECT_EQ(ERROR_KEY_DELETED, RegQueryValueExA(old, "a", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_KEY_DELETED, RegDeleteValueA(old, "a"));
    EXPECT_EQ(ERROR_KEY_DELETED, RegDeleteKeyA(old, ""));
    EXPECT_EQ(ERROR_KEY_DELETED, RegDeleteTreeA(old, nullptr));
    EXPECT_EQ(ERROR_KEY_DELETED, RegCreateKeyA(old, "W", &opened));
    EXPECT_EQ(ERROR_KEY_DELETED, RegOpenKeyA(old, "W", &opened));
    EXPECT_EQ(ERROR_KEY_DELETED, RegOpenKeyExA(old, nullptr, 0, KEY_READ, &opened));
    EXPECT_EQ(ERROR_KEY_DELETED, RegEnumKeyA(old, 0, name, size));
    EXPECT_EQ(ERROR_KEY_DELETED, RegEnumValueA(old, 0, name, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_KEY_DELETED,
              RegQueryInfoKeyA(old, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_KEY_DELETED, RegFlushKey(old));
    EXPECT_EQ(ERROR_SUCCESS, SetText(again, "a", "x"));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(old));
    RegCloseKey(again);
}

TEST(RegistryKey, TreesGoAsAWhole)
{
    const ScratchKey key;
    for (const char* path : {"Y\\Z\\W", "Y\\V"})
        MakeKey(key, path, "x");
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteTreeA(key, "none"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeA(key, "Y"));
    EXPECT_EQ(std::vector<std::string>{}, SubkeysOf(key));

    MakeKey(key, "Y\\Z");
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", "x"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeA(key, nullptr)) << "empties the key and keeps it";
    EXPECT_EQ(std::vector<std::string>{}, SubkeysOf(key));
    EXPECT_EQ(std::vector<std::string>{}, ValuesOf(key));
    EXPECT_EQ(ERROR_SUCCESS, SetText(key, "v", "x"));
}
