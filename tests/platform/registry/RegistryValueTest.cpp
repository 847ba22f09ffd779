// RegistryValueTest.cpp: values of every type, buffer sizes, names and errors.
#include "platform/registry/RegistryFixture.h"
#include "support/Random.h"

#include <algorithm>
#include <cstring>
#include <map>

using namespace kelgen::test;
using namespace std::string_literals;

struct QueryRow
{
    const char* name;
    DWORD type;
    std::string written;
    DWORD capacity;
    LSTATUS status;
    DWORD size;
    std::string read;  // "" leaves the buffer as it was
};

TEST(RegistryQuery, GivesTypeSizeAndData)
{
    const QueryRow rows[] = {
        {"Text", REG_SZ, "hello\0"s, 16, ERROR_SUCCESS, 6, "hello\0"s},
        {"TextThatJustFits", REG_SZ, "hello\0"s, 6, ERROR_SUCCESS, 6, "hello\0"s},
        {"TextTooLong", REG_SZ, "hello\0"s, 5, ERROR_MORE_DATA, 6, ""},
        {"NoCapacity", REG_SZ, "hello\0"s, 0, ERROR_MORE_DATA, 6, ""},
        {"TextUnterminated", REG_SZ, "hello", 16, ERROR_SUCCESS, 6, "hello\0"s},
        {"TextOfNoBytes", REG_SZ, "", 16, ERROR_SUCCESS, 0, ""},
        {"TextEmpty", REG_SZ, "\0"s, 16, ERROR_SUCCESS, 1, "\0"s},
        {"TextWithZeroInside", REG_SZ, "a\0b\0"s, 16, ERROR_SUCCESS, 4, "a\0b\0"s},
        {"TextOfAnsiPage", REG_SZ, "\xE4\x80", 16, ERROR_SUCCESS, 3, "\xE4\x80\0"s},
        {"ExpandUnterminated", REG_EXPAND_SZ, "%OS%", 16, ERROR_SUCCESS, 5, "%OS%\0"s},
        {"ListUnterminated", REG_MULTI_SZ, "a\0b"s, 16, ERROR_SUCCESS, 4, "a\0b\0"s},
        {"List", REG_MULTI_SZ, "a\0b\0\0"s, 16, ERROR_SUCCESS, 5, "a\0b\0\0"s},
        {"Number", REG_DWORD, "\x78\x56\x34\x12", 4, ERROR_SUCCESS, 4, "\x78\x56\x34\x12"},
        {"NumberTooLong", REG_DWORD, "\x78\x56\x34\x12", 3, ERROR_MORE_DATA, 4, ""},
        {"NumberOfThreeBytes", REG_DWORD, "\x78\x56\x34", 4, ERROR_SUCCESS, 3, "\x78\x56\x34"},
        {"Bytes", REG_BINARY, "\1\2\xFF", 3, ERROR_SUCCESS, 3, "\1\2\xFF"},
        {"NoBytes", REG_BINARY, "", 3, ERROR_SUCCESS, 0, ""},
        {"UnknownType", 99, "xy", 3, ERROR_SUCCESS, 2, "xy"},
    };
    for (const QueryRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ScratchKey key;
        ASSERT_EQ(ERROR_SUCCESS, RegSetValueExA(key, "v", 0, row.type, Bytes(row.written.c_str()), static_cast<DWORD>(row.written.size())));

        DWORD type = 77, size = 77;
        EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "v", nullptr, &type, nullptr, &size));
        EXPECT_EQ(row.size, size) << "without a buffer";

        std::string buffer(16, '#');
        type = 77;
        size = row.capacity;
        EXPECT_EQ(row.status, RegQueryValueExA(key, "V", nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()), &size));
        EXPECT_EQ(row.type, type);
        EXPECT_EQ(row.size, size);
        EXPECT_EQ(row.read + std::string(16 - row.read.size(), '#'), buffer);
    }
}

TEST(RegistryValue, ArgumentsAreChecked)
{
    const ScratchKey key;
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", "x"));
    BYTE buffer = 0;
    DWORD number = 1;
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegQueryValueExA(key, "v", nullptr, nullptr, &buffer, nullptr)) << "data without size";
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegQueryValueExA(key, "v", &number, nullptr, nullptr, nullptr)) << "reserved";
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueExA(key, "w", nullptr, nullptr, nullptr, &number));
    EXPECT_EQ(0u, number) << "without data";
    number = 1;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueExA(key, "w", nullptr, nullptr, &buffer, &number));
    EXPECT_EQ(1u, number) << "with data";
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegQueryValueExA(nullptr, "v", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_INVALID_HANDLE, SetText(reinterpret_cast<HKEY>(ULONG_PTR{0x1234}), "v", "x"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteValueA(key, "w"));
}

TEST(RegistryValue, TextPassesBetweenWideAndNarrowCalls)
{
    const ScratchKey key;
    const unsigned short* name = u"n\u00E4me"_w;
    const unsigned short* text = u"\u20AC5"_w;
    ASSERT_EQ(ERROR_SUCCESS, RegSetValueExW(key, kelgen::AsWide(name), 0, REG_SZ, reinterpret_cast<const BYTE*>(text), 4));
    EXPECT_EQ("\x80"
              "5",
              GetText(key, "N\xC4ME"));

    WCHAR wide[8] = {};
    DWORD size = sizeof wide;
    ASSERT_EQ(ERROR_SUCCESS, RegQueryValueExW(key, kelgen::AsWide(name), nullptr, nullptr, reinterpret_cast<BYTE*>(wide), &size));
    EXPECT_EQ(6u, size) << "unterminated text gets a terminator";
    EXPECT_EQ(0x20AC, wide[0]);

    ASSERT_EQ(ERROR_SUCCESS, RegSetValueExW(key, kelgen::AsWide(name), 0, REG_SZ, reinterpret_cast<const BYTE*>(text), 3));
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExW(key, kelgen::AsWide(name), nullptr, nullptr, nullptr, &size));
    EXPECT_EQ(3u, size) << "half a unit at the end is kept";
}

struct NameRow
{
    const char* name;
    std::string written, asked;
};

TEST(RegistryValueName, IsFoundWithoutCaseAndKeptAsWritten)
{
    const NameRow rows[] = {
        {"Plain", "Width", "wIDTH"},
        {"Default", "", ""},
        {"Blanks", " a b ", " A B "},
        {"PathLike", "..\\A/b", "..\\a/B"},
        {"Dots", ".", "."},
        {"Hidden", ".new-1", ".NEW-1"},
        {"Escapes", "100%=x%41", "100%=X%41"},
        {"Controls", "a\1\n\x7F", "A\1\n\x7F"},
        {"Umlauts", "\xC4\xF6\xDC", "\xE4\xD6\xFC"},
        {"LongAnsi", std::string(200, '\xE4'), std::string(200, '\xC4')},
        {"Longest", "K" + std::string(16382, 'k'), "k" + std::string(16382, 'K')},
    };
    for (const NameRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ScratchKey key;
        ASSERT_EQ(ERROR_SUCCESS, SetText(key, "other", "o"));
        ASSERT_EQ(ERROR_SUCCESS, SetText(key, row.written.c_str(), "1"));
        ASSERT_EQ(ERROR_SUCCESS, SetText(key, row.asked.c_str(), "2"));
        EXPECT_EQ("2", GetText(key, row.written.c_str()));
        const auto names = ValuesOf(key);
        EXPECT_EQ(2u, names.size());
        EXPECT_EQ(1, std::ranges::count_if(names, [&](const auto& name) { return name == row.written || name == row.asked; }));
        EXPECT_EQ(ERROR_SUCCESS, RegDeleteValueA(key, row.asked.c_str()));
        EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteValueA(key, row.written.c_str()));
        EXPECT_EQ(std::vector<std::string>{"other"}, ValuesOf(key));
    }
}

TEST(RegistryValue, NameBeyondTheLimitFails)
{
    const ScratchKey key;
    const std::string name(16384, 'k');
    EXPECT_EQ(ERROR_INVALID_PARAMETER, SetText(key, name.c_str(), "x"));
    EXPECT_FALSE(GetText(key, name.c_str()));
}

TEST(RegistryValue, DefaultValueOfSubkey)
{
    const ScratchKey key;
    char text[8] = "####";
    LONG size = sizeof text;
    EXPECT_EQ(ERROR_SUCCESS, RegSetValueA(key, "Sub", REG_SZ, "sv", 1)) << "the size is ignored";
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueA(key, "sub", text, &size));
    EXPECT_STREQ("sv", text);
    EXPECT_EQ(3, size);
    size = 2;
    EXPECT_EQ(ERROR_MORE_DATA, RegQueryValueA(key, "sub", text, &size));
    EXPECT_EQ(3, size);
    size = 8;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueA(key, nullptr, text, &size)) << "a missing default value is empty text";
    EXPECT_EQ(1, size);
    EXPECT_STREQ("", text);
    size = 8;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueA(key, "none", text, &size));
    EXPECT_EQ(8, size);
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegSetValueA(key, nullptr, REG_DWORD, "x", 0));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegSetValueA(key, nullptr, REG_SZ, nullptr, 0));
}

TEST(RegistryValue, EnumerationIsAlphabeticalWithTheDefaultFirst)
{
    const ScratchKey key;
    for (const char* name : {"Zed", "b", "", "\xE4", "_u", "A", "b2"})
        ASSERT_EQ(ERROR_SUCCESS, SetText(key, name, "def"));
    EXPECT_EQ((std::vector<std::string>{"", "_u", "A", "b", "b2", "Zed", "\xE4"}), ValuesOf(key));

    char name[8];
    BYTE data[8];
    DWORD nameSize = 2, dataSize = sizeof data;
    EXPECT_EQ(ERROR_MORE_DATA, RegEnumValueA(key, 1, name, &nameSize, nullptr, nullptr, data, &dataSize));
    EXPECT_EQ(2u, nameSize);
    EXPECT_EQ(4u, dataSize);
    nameSize = 3;
    dataSize = 3;
    DWORD type = 0;
    EXPECT_EQ(ERROR_MORE_DATA, RegEnumValueA(key, 1, name, &nameSize, nullptr, &type, data, &dataSize));
    EXPECT_EQ(4u, dataSize);
    EXPECT_EQ(REG_SZ, type);
    EXPECT_EQ(ERROR_SUCCESS, RegEnumValueA(key, 1, name, &nameSize, nullptr, &type, data, &dataSize));
    EXPECT_EQ(2u, nameSize);
    EXPECT_EQ(0, std::memcmp(data, "def", 4));
    EXPECT_EQ(ERROR_NO_MORE_ITEMS, RegEnumValueA(key, 7, name, &nameSize, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegEnumValueA(key, 0, name, nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegEnumValueA(key, 0, name, &nameSize, nullptr, nullptr, data, nullptr));
}

TEST(RegistryValue, CountsAndLongestLengths)
{
    const ScratchKey key;
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "five5", "hello"));
    ASSERT_EQ(ERROR_SUCCESS, RegSetValueExA(key, "b", 0, REG_BINARY, Bytes("123"), 3));
    HKEY sub = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(key, "Sub\\Deep", &sub));
    RegCloseKey(sub);

    DWORD subkeys = 9, longestSubkey = 9, longestClass = 9, values = 9, longestName = 9, longestValue = 9;
    FILETIME time = {};
    char className[4] = "###";
    DWORD classSize = sizeof className;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryInfoKeyA(key, className, &classSize, nullptr, &subkeys, &longestSubkey, &longestClass, &values,
                                              &longestName, &longestValue, nullptr, &time));
    EXPECT_EQ((std::vector<DWORD>{1, 3, 0, 2, 5, 12}),
              (std::vector<DWORD>{subkeys, longestSubkey, longestClass, values, longestName, longestValue}));
    EXPECT_STREQ("", className);
    EXPECT_EQ(0u, classSize);
    EXPECT_NE(0u, time.dwHighDateTime);
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              RegQueryInfoKeyA(key, className, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
}

TEST(RegistryValue, RandomWritesAndDeletionsEqualAMap)
{
    Random random;
    const ScratchKey key;
    std::map<std::string, std::string> model;
    for (int step = 0; step < 600; ++step) {
        const std::string name(1, static_cast<char>(random.Between('a', 'p')));
        if (random.Between(0, 3) == 0) {
            ASSERT_EQ(model.erase(name) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND, RegDeleteValueA(key, name.c_str()));
        } else {
            model[name] =
                std::string(static_cast<std::size_t>(random.Between(0, 3) ? random.Between(0, 40) : random.Between(2030, 9000)), 'x');
            ASSERT_EQ(ERROR_SUCCESS, SetText(key, name.c_str(), model[name]));
        }
        if (step % 50 == 0) {
            std::vector<std::string> names;
            for (const auto& [known, text] : model) {
                names.push_back(known);
                ASSERT_EQ(text, GetText(key, known.c_str())) << known;
            }
            ASSERT_EQ(names, ValuesOf(key)) << "step " << step;
        }
    }
}
