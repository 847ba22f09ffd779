// PathsTest.cpp: full, short and long forms, the current folder, drives, searching.
#include "support/Failures.h"
#include "support/Scratch.h"

#include <functional>

using namespace kelgen::test;

namespace {

// Makes folder the current one and goes back at the end.
class CurrentFolderGuard
{
public:
    explicit CurrentFolderGuard(const std::string& folder)
    {
        GetCurrentDirectoryA(sizeof m_before, m_before);
        EXPECT_TRUE(SetCurrentDirectoryA(folder.c_str())) << folder << ' ' << GetLastError();
    }
    ~CurrentFolderGuard() { SetCurrentDirectoryA(m_before); }

private:
    char m_before[MAX_PATH];
};

// A call that fills a buffer, as text; "(0)" when it returns 0.
std::string Filled(const std::function<DWORD(char*, DWORD)>& call)
{
    char buffer[600] = "";
    return call(buffer, sizeof buffer) ? buffer : "(0)";
}

std::string Full(const std::string& name)
{
    return Filled([&](char* buffer, DWORD size) { return GetFullPathNameA(name.c_str(), size, buffer, nullptr); });
}

std::string Short(const std::string& name)
{
    return Filled([&](char* buffer, DWORD size) { return GetShortPathNameA(name.c_str(), buffer, size); });
}

std::string Long(const std::string& name)
{
    return Filled([&](char* buffer, DWORD size) { return GetLongPathNameA(name.c_str(), buffer, size); });
}

std::string Current()
{
    return Filled([](char* buffer, DWORD size) { return GetCurrentDirectoryA(size, buffer); });
}

struct FullRow
{
    const char* name;
    const char* path;
    const char* full;
    const char* filePart;
};

}  // namespace

TEST(FullPathRow, GoesByTheTextAlone)
{
    const FullRow rows[] = {
        {"Plain", "C:\\a\\b.txt", "C:\\a\\b.txt", "b.txt"},
        {"KeepsDriveCase", "c:/x//y", "c:\\x\\y", "y"},
        {"Parents", "C:\\a\\..\\b\\.\\c", "C:\\b\\c", "c"},
        {"AboveRoot", "C:\\..\\..\\x", "C:\\x", "x"},
        {"Root", "C:\\a\\..", "C:\\", nullptr},
        {"FinalSlash", "C:\\a\\.\\", "C:\\a\\", nullptr},
        {"FinalDot", "C:\\a\\.", "C:\\a", "a"},
        {"TrailingDotsAndBlanks", "C:\\x. .", "C:\\x", "x"},
        {"OnlyBlank", "C:\\a\\ ", "C:\\a\\", nullptr},
        {"LeadingBlank", "C:\\ a", "C:\\ a", " a"},
        {"FolderDot", "C:\\a.\\b", "C:\\a\\b", "b"},
        {"FolderBlank", "C:\\a \\b", "C:\\a \\b", "b"},
        {"FolderDotBlank", "C:\\a. \\b", "C:\\a. \\b", "b"},
        {"FolderDots", "C:\\a\\...\\b", "C:\\a\\..\\b", "b"},
        {"WildCards", "C:\\a\\*.txt", "C:\\a\\*.txt", "*.txt"},
        {"OtherDrive", "Q:x", "Q:\\x", "x"},
        {"Network", "\\\\srv\\sh\\..\\..\\f", "\\\\srv\\sh\\f", "f"},
        {"NetworkSlashes", "//srv/sh/x", "\\\\srv\\sh\\x", "x"},
        {"Verbatim", "\\\\?\\C:\\a. ", "\\\\?\\C:\\a", "a"},
        {"Device", "con", "\\\\.\\con", nullptr},
        {"DeviceWithExtension", "NUL.txt", "\\\\.\\NUL", nullptr},
        {"DeviceInFolder", "c:\\dir\\com1", "\\\\.\\com1", nullptr},
        {"DeviceWithColon", "con:", "\\\\.\\con", nullptr},
        {"DeviceWithBlank", "prn ", "\\\\.\\prn", nullptr},
        {"Pipe", "\\\\.\\pipe\\x", "\\\\.\\pipe\\x", "x"},
        {"LinuxPath", "/etc/passwd", "Z:\\etc\\passwd", "passwd"},
    };
    for (const FullRow& row : rows) {
        SCOPED_TRACE(row.name);
        char buffer[MAX_PATH] = "";
        char* part = nullptr;
        EXPECT_EQ(std::string(row.full).size(), GetFullPathNameA(row.path, sizeof buffer, buffer, &part));
        EXPECT_STREQ(row.full, buffer);
        EXPECT_STREQ(row.filePart, part);
    }
}

TEST(FullPath, RelativeNamesStartAtTheCurrentFolder)
{
    const CurrentFolderGuard guard(ScratchFolder().string());
    const std::string current = Current(), drive = current.substr(0, 2);
    const std::string parent = current.substr(0, current.rfind('\\'));
    EXPECT_EQ(current + "\\a.txt", Full("a.txt"));
    EXPECT_EQ(current + "\\a\\b", Full("a/b"));
    EXPECT_EQ(current + "\\x\\", Full("x/"));
    EXPECT_EQ(parent + "\\x", Full("..\\x"));
    EXPECT_EQ(parent, Full(".."));
    EXPECT_EQ(current + "\\", Full("..."));
    EXPECT_EQ(current + "\\", Full(drive)) << "by contract";
    EXPECT_EQ(current, Full(drive + "."));
    EXPECT_EQ(current + "\\foo", Full(drive + "foo"));
    EXPECT_EQ(drive + "\\foo", Full("\\foo"));
}

TEST(FullPath, EmptyNamesAndShortBuffers)
{
    char buffer[20] = "untouched";
    SetLastError(77);
    EXPECT_EQ(0u, GetFullPathNameA("", sizeof buffer, buffer, nullptr));
    EXPECT_TRUE(FailedWith(77, !GetFullPathNameA(" ", sizeof buffer, buffer, nullptr)));
    EXPECT_EQ(6u, GetFullPathNameA("C:\\kp", 5, buffer, nullptr));
    EXPECT_STREQ("untouched", buffer);
    EXPECT_EQ(5u, GetFullPathNameA("C:\\kp", 6, buffer, nullptr));
    EXPECT_STREQ("C:\\kp", buffer);
}

TEST(ShortPath, LongNamesGetOneAndItLeadsBack)
{
    const CurrentFolderGuard guard(ScratchFolder().string());
    CreateDirectoryA("Long Directory Name", nullptr);
    WriteBytes("Long Directory Name/inner file.text", "x");
    WriteBytes("Long Directory Name/inner file2.text", "yy");
    const std::string first = Short("long directory name\\INNER FILE.text");
    const std::string second = Short("Long Directory Name/inner file2.text");
    EXPECT_EQ(0u, first.rfind("LONG~", 0)) << first;
    EXPECT_LE(first.size(), 8u + 1 + 12);
    EXPECT_EQ(".TEX", first.substr(first.size() - 4));
    EXPECT_NE(first.substr(first.rfind('\\')), second.substr(second.rfind('/')));
    EXPECT_EQ("Long Directory Name\\inner file.text", Long(first));
    EXPECT_EQ("yy", ReadBytes("Long Directory Name/inner file2.text"));

    const HANDLE file = CreateFileA(second.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file) << second;
    EXPECT_EQ(2u, GetFileSize(file, nullptr));
    CloseHandle(file);
}

TEST(ShortPath, ShortNamesTakeTheCaseOfTheFolder)
{
    const CurrentFolderGuard guard(ScratchFolder().string());
    WriteBytes("Short.txt", "x");
    CreateDirectoryA("Sub", nullptr);
    const std::string current = Current();
    struct Row
    {
        std::string name, expected;
    };
    const Row rows[] = {{"SHORT.TXT", "Short.txt"},
                        {".\\short.txt", ".\\Short.txt"},
                        {"sub\\..\\short.TXT", "Sub\\..\\Short.txt"},
                        {"sub\\", "Sub\\"},
                        {"sub/", "Sub/"},
                        {"sub\\\\..//short.txt", "Sub\\\\..//Short.txt"},
                        {".", "."},
                        {"..", ".."},
                        {current.substr(0, 3), current.substr(0, 3)}};
    for (const Row& row : rows) {
        EXPECT_EQ(row.expected, Short(row.name)) << row.name;
        EXPECT_EQ(row.expected, Long(row.name)) << row.name;
    }
}

TEST(ShortPath, Failures)
{
    struct Row
    {
        const char* name;
        DWORD shortError, longError;
    };
    for (const Row& row : {Row{"", ERROR_BAD_PATHNAME, ERROR_PATH_NOT_FOUND}, Row{"none", ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND},
                           Row{"none\\x", ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND}}) {
        EXPECT_EQ("(0)", Short(row.name));
        EXPECT_EQ(row.shortError, GetLastError()) << row.name;
        EXPECT_EQ("(0)", Long(row.name));
        EXPECT_EQ(row.longError, GetLastError()) << row.name;
    }
}

TEST(CurrentFolder, ChangesAndRefusals)
{
    const CurrentFolderGuard guard(ScratchFolder().string());
    const std::string before = Current();
    CreateDirectoryA("sub", nullptr);
    WriteBytes("file", "x");
    struct Row
    {
        const char* name;
        DWORD error;
    };
    for (const Row& row : {Row{"", ERROR_INVALID_NAME}, Row{"file", ERROR_DIRECTORY}, Row{"none", ERROR_FILE_NOT_FOUND},
                           Row{"none\\x", ERROR_PATH_NOT_FOUND}, Row{"Q:\\", ERROR_PATH_NOT_FOUND}}) {
        EXPECT_FALSE(SetCurrentDirectoryA(row.name)) << row.name;
        EXPECT_EQ(row.error, GetLastError()) << row.name;
    }
    EXPECT_EQ(before, Current());
    EXPECT_TRUE(SetCurrentDirectoryA("sub\\"));
    EXPECT_EQ(before + "\\sub", Current());
    const DWORD length = static_cast<DWORD>(Current().size());
    char buffer[MAX_PATH];
    EXPECT_EQ(length + 1, GetCurrentDirectoryA(length, buffer));
    EXPECT_EQ(length, GetCurrentDirectoryA(length + 1, buffer));
}

TEST(Drives, TypeGoesByTheFolder)
{
    EXPECT_EQ(UINT{DRIVE_FIXED}, GetDriveTypeA("C:\\"));
    EXPECT_EQ(UINT{DRIVE_FIXED}, GetDriveTypeA("Z:\\"));
    EXPECT_EQ(UINT{DRIVE_FIXED}, GetDriveTypeA(nullptr));
    EXPECT_EQ(UINT{DRIVE_NO_ROOT_DIR}, GetDriveTypeA("Q:\\"));
    EXPECT_EQ(UINT{DRIVE_NO_ROOT_DIR}, GetDriveTypeA("C:\\none\\"));
    EXPECT_EQ(UINT{DRIVE_NO_ROOT_DIR}, GetDriveTypeA(""));
    EXPECT_EQ(1u << 2 | 1u << 25, GetLogicalDrives());

    char system[20] = "";
    DWORD longest = 0;
    EXPECT_TRUE(GetVolumeInformationA("C:\\", nullptr, 0, nullptr, &longest, nullptr, system, sizeof system));
    EXPECT_STREQ("NTFS", system);
    EXPECT_EQ(255u, longest);
    const std::string folder = ScratchFolder().string() + "/";
    EXPECT_FALSE(GetVolumeInformationA(folder.c_str(), nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_EQ(DWORD{ERROR_DIR_NOT_ROOT}, GetLastError());
    EXPECT_FALSE(GetVolumeInformationA("Q:\\", nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, GetLastError());
}

TEST(SearchPath, LooksInFoldersInOrder)
{
    const std::string first = ScratchFolder().string(), second = ScratchFolder().string();
    WriteBytes(second + "/only.ext", "x");
    WriteBytes(first + "/both.txt", "x");
    WriteBytes(second + "/both.txt", "x");
    const std::string list = Full(first) + ";" + Full(second);
    const auto search = [&list](const char* name, const char* extension) {
        return Filled([&](char* buffer, DWORD size) { return SearchPathA(list.c_str(), name, extension, size, buffer, nullptr); });
    };
    EXPECT_EQ(Full(first) + "\\both.txt", search("both.txt", nullptr));
    EXPECT_EQ(Full(second) + "\\only.ext", search("only", ".ext"));
    EXPECT_EQ("(0)", search("only", nullptr));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, GetLastError());
    EXPECT_EQ("(0)", search("both.txt.x", ".txt"));
    EXPECT_EQ("(0)", search("", nullptr));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
    EXPECT_EQ(Full(second + "/only.ext"), search((second + "/only.ext").c_str(), nullptr));
}
