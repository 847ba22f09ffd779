// FileSystemTest.cpp: attributes, deleting, moving, copying, folders, temporary names.
#include "support/Failures.h"
#include "support/Random.h"
#include "support/Scratch.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <vector>

using namespace kelgen::test;

namespace {

// A folder with "file" ("hello"), "other" ("x") and the folder "sub" that holds "inner".
class FileSystem : public testing::Test
{
protected:
    FileSystem()
    {
        WriteBytes(At("file"), "hello");
        WriteBytes(At("other"), "x");
        CreateDirectoryA(At("sub").c_str(), nullptr);
        WriteBytes(At("sub/inner"), "y");
    }

    std::string At(const std::string& name) const { return name.empty() ? name : m_folder + name; }
    bool Exists(const std::string& name) const { return GetFileAttributesA(At(name).c_str()) != INVALID_FILE_ATTRIBUTES; }

    struct Row
    {
        const char* source;
        const char* target;
        DWORD error;
    };

    // Runs call on the rows' names and compares the last errors, 0 for success.
    template <class Call>
    void ExpectErrors(std::initializer_list<Row> rows, Call call)
    {
        for (const Row& row : rows) {
            const std::string source = At(row.source), target = At(row.target);
            SetLastError(0xBEEF);
            const BOOL done = call(source.c_str(), target.c_str());
            const DWORD error = GetLastError();
            EXPECT_EQ(row.error == 0, done != FALSE) << row.source << " -> " << row.target;
            EXPECT_TRUE(row.error == 0 || row.error == error) << row.source << " -> " << row.target << ": " << error;
        }
    }

private:
    std::string m_folder = ScratchFolder().string() + "/";
};

}  // namespace

TEST_F(FileSystem, AttributesComeAndGo)
{
    const std::string file = At("file");
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_ARCHIVE}, GetFileAttributesA(file.c_str())) << "whoever made it";
    const std::string made = At("made");
    CloseHandle(CreateFileA(made.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_HIDDEN, nullptr));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN}, GetFileAttributesA(made.c_str()));
    SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    const DWORD plain = GetFileAttributesA(file.c_str());
    EXPECT_TRUE(plain == FILE_ATTRIBUTE_NORMAL || plain == FILE_ATTRIBUTE_ARCHIVE) << plain;
    constexpr DWORD kSettable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    for (const DWORD set : {DWORD{FILE_ATTRIBUTE_READONLY}, DWORD{FILE_ATTRIBUTE_HIDDEN}, kSettable, DWORD{FILE_ATTRIBUTE_SYSTEM}}) {
        EXPECT_TRUE(SetFileAttributesA(file.c_str(), set)) << set << ' ' << GetLastError();
        EXPECT_EQ(set, GetFileAttributesA(file.c_str()) & kSettable) << set;
    }
    EXPECT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_ARCHIVE}, GetFileAttributesA(file.c_str()));
    for (const DWORD none : {DWORD{0}, DWORD{FILE_ATTRIBUTE_NORMAL}}) {
        SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
        EXPECT_TRUE(SetFileAttributesA(file.c_str(), none));
        EXPECT_EQ(plain, GetFileAttributesA(file.c_str()));
    }

    const std::string folder = At("sub");
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY}, GetFileAttributesA(folder.c_str()));
    EXPECT_TRUE(SetFileAttributesA(folder.c_str(), FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN}, GetFileAttributesA(folder.c_str()));
}

TEST_F(FileSystem, AttributesOfWhatIsNotThere)
{
    const auto attributes = [](const char* name, const char*) { return BOOL{GetFileAttributesA(name) != INVALID_FILE_ATTRIBUTES}; };
    ExpectErrors({{"none", "", ERROR_FILE_NOT_FOUND},
                  {"none\\", "", ERROR_FILE_NOT_FOUND},
                  {"none\\x", "", ERROR_PATH_NOT_FOUND},
                  {"", "", ERROR_PATH_NOT_FOUND},
                  {"file\\", "", ERROR_PATH_NOT_FOUND},
                  {"file\\x", "", ERROR_PATH_NOT_FOUND},
                  {"*", "", ERROR_INVALID_NAME},
                  {"sub\\", "", 0},
                  {"sub\\.", "", 0},
                  {"SUB//INNER", "", 0},
                  {"none\\..\\file", "", 0},
                  {"sub\\...\\", "", ERROR_INVALID_NAME},
                  {"sub\\...\\inner", "", ERROR_INVALID_NAME},
                  {"sub\\....\\", "", ERROR_FILE_NOT_FOUND},
                  {"sub\\...", "", 0},
                  {"file ", "", 0}},
                 attributes);
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY}, GetFileAttributesA("C:\\"));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY}, GetFileAttributesA("C:"));
    EXPECT_TRUE(FailedWith(ERROR_PATH_NOT_FOUND, INVALID_FILE_ATTRIBUTES == GetFileAttributesA("Q:\\")));
}

TEST_F(FileSystem, PrefixesStandBeforeWholePaths)
{
    std::string path = At("sub");
    std::replace(path.begin(), path.end(), '/', '\\');
    if (path[1] != ':')
        path = "Z:" + path;
    std::string slashed = path;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    struct PrefixRow
    {
        std::string path;
        DWORD attributes;
    };
    constexpr DWORD kFolder = FILE_ATTRIBUTE_DIRECTORY, kNone = INVALID_FILE_ATTRIBUTES;
    for (const PrefixRow& row : std::vector<PrefixRow>{
             {"\\\\.\\" + path, kFolder},
             {"\\\\?\\" + path, kFolder},
             {"\\??\\" + path, kFolder},
             {"\\??\\" + path + "\\none", kNone},
             {"//./" + slashed, kFolder},
             {"//?/" + slashed, kFolder},
             {"\\\\?\\" + slashed, kNone},
             {"\\\\.\\" + path + ".", kFolder},
             {"\\\\?\\" + path + ".", kNone},
             {"\\\\?\\" + path + "\\..\\sub", kNone},
             {"\\\\?\\" + path + "\\.", kNone},
             {"\\\\.\\" + path + "\\..\\sub", kFolder},
         })
        EXPECT_EQ(row.attributes, GetFileAttributesA(row.path.c_str())) << row.path;
}

TEST_F(FileSystem, PrefixesBeforeOtherNames)
{
    struct PrefixRow
    {
        const char* name;
        DWORD error;
    };
    for (const PrefixRow& row : {PrefixRow{"\\\\.\\", ERROR_INVALID_NAME},
                                 {"\\\\?\\", ERROR_INVALID_NAME},
                                 {"\\??\\", ERROR_INVALID_NAME},
                                 {"\\\\.\\none", ERROR_FILE_NOT_FOUND},
                                 {"\\\\?\\none", ERROR_FILE_NOT_FOUND},
                                 {"\\??\\none", ERROR_FILE_NOT_FOUND},
                                 {"\\\\.\\none\\x", ERROR_PATH_NOT_FOUND},
                                 {"\\\\.\\pipe\\none", ERROR_FILE_NOT_FOUND},
                                 {"\\\\.\\Q:", ERROR_FILE_NOT_FOUND}}) {
        const HANDLE file = CreateFileA(row.name, 0, 3, nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_TRUE(FailedWith(row.error, file == INVALID_HANDLE_VALUE)) << row.name;
    }
}

TEST_F(FileSystem, ExtendedAttributesHoldSizeAndTimes)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    EXPECT_TRUE(GetFileAttributesExA(At("file").c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(5u, data.nFileSizeLow);
    EXPECT_NE(0u, data.ftLastWriteTime.dwHighDateTime);
    EXPECT_TRUE(FailedWith(ERROR_FILE_NOT_FOUND, !GetFileAttributesExA(At("none").c_str(), GetFileExInfoStandard, &data)));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !GetFileAttributesExA(At("file").c_str(), GetFileExMaxInfoLevel, &data)));
}

TEST_F(FileSystem, DeletingRefusesFoldersAndReadOnlyFiles)
{
    SetFileAttributesA(At("other").c_str(), FILE_ATTRIBUTE_READONLY);
    const auto remove = [](const char* name, const char*) { return DeleteFileA(name); };
    ExpectErrors({{"none", "", ERROR_FILE_NOT_FOUND},
                  {"none\\x", "", ERROR_PATH_NOT_FOUND},
                  {"", "", ERROR_PATH_NOT_FOUND},
                  {"sub", "", ERROR_ACCESS_DENIED},
                  {"other", "", ERROR_ACCESS_DENIED},
                  {"*", "", ERROR_INVALID_NAME},
                  {"file\\", "", ERROR_INVALID_NAME},
                  {"FILE", "", 0},
                  {"file", "", ERROR_FILE_NOT_FOUND}},
                 remove);
    SetFileAttributesA(At("other").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(DeleteFileA(At("other").c_str()));
}

TEST_F(FileSystem, MovingRenamesAndNeverReplaces)
{
    ExpectErrors({{"none", "b", ERROR_FILE_NOT_FOUND},
                  {"file", "other", ERROR_ALREADY_EXISTS},
                  {"file", "sub", ERROR_ALREADY_EXISTS},
                  {"sub", "other", ERROR_ALREADY_EXISTS},
                  {"file", "none\\b", ERROR_PATH_NOT_FOUND},
                  {"", "b", ERROR_PATH_NOT_FOUND},
                  {"file", "", ERROR_PATH_NOT_FOUND},
                  {"file\\", "b", ERROR_INVALID_NAME},
                  {"file", "b\\", ERROR_DIRECTORY},
                  {"sub", "sub\\x", ERROR_INVALID_PARAMETER},
                  {"file", "file", 0},
                  {"file", "b", 0},
                  {"sub\\", "sub2", 0}},
                 [](const char* source, const char* target) { return MoveFileA(source, target); });
    EXPECT_EQ("hello", ReadBytes(At("b")));
    EXPECT_EQ("y", ReadBytes(At("sub2/inner")));
    EXPECT_FALSE(Exists("file"));
}

TEST_F(FileSystem, MovingWithReplacement)
{
    const auto replace = [](const char* source, const char* target) { return MoveFileExA(source, target, MOVEFILE_REPLACE_EXISTING); };
    ExpectErrors({{"file", "sub", ERROR_ACCESS_DENIED}, {"file", "other", 0}, {"sub", "OTHER", 0}}, replace);
    EXPECT_EQ("y", ReadBytes(At("other/inner"))) << "a folder replaces a file";
    EXPECT_FALSE(Exists("file"));
    EXPECT_FALSE(Exists("sub"));
}

TEST_F(FileSystem, CopyingKeepsAttributesAndTheWriteTime)
{
    SetFileAttributesA(At("file").c_str(), FILE_ATTRIBUTE_HIDDEN);
    const HANDLE file = CreateFileA(At("file").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const FILETIME old{0x12345678, 0x01D00000};
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &old));
    CloseHandle(file);

    EXPECT_TRUE(CopyFileA(At("file").c_str(), At("copy").c_str(), TRUE)) << GetLastError();
    EXPECT_EQ("hello", ReadBytes(At("copy")));
    WIN32_FILE_ATTRIBUTE_DATA data;
    EXPECT_TRUE(GetFileAttributesExA(At("copy").c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_HIDDEN}, data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(0, CompareFileTime(&old, &data.ftLastWriteTime));
}

TEST_F(FileSystem, CopyingRefusals)
{
    ExpectErrors({{"none", "b", ERROR_FILE_NOT_FOUND},
                  {"none\\x", "b", ERROR_PATH_NOT_FOUND},
                  {"file", "none\\b", ERROR_PATH_NOT_FOUND},
                  {"file", "", ERROR_PATH_NOT_FOUND},
                  {"file", "file", ERROR_SHARING_VIOLATION},
                  {"file", "sub", ERROR_ACCESS_DENIED},
                  {"sub", "b", ERROR_ACCESS_DENIED},
                  {"file", "other", 0}},
                 [](const char* source, const char* target) { return CopyFileA(source, target, FALSE); });
    ExpectErrors({{"file", "OTHER", ERROR_FILE_EXISTS}},
                 [](const char* source, const char* target) { return CopyFileA(source, target, TRUE); });
    EXPECT_EQ("hello", ReadBytes(At("other")));
}

TEST_F(FileSystem, FoldersAreMadeOnceAndRemovedEmpty)
{
    ExpectErrors({{"sub", "", ERROR_ALREADY_EXISTS},
                  {"SUB", "", ERROR_ALREADY_EXISTS},
                  {"file", "", ERROR_ALREADY_EXISTS},
                  {"none\\x", "", ERROR_PATH_NOT_FOUND},
                  {"file\\x", "", ERROR_PATH_NOT_FOUND},
                  {"", "", ERROR_PATH_NOT_FOUND},
                  {"a*", "", ERROR_INVALID_NAME},
                  {"new\\", "", 0}},
                 [](const char* name, const char*) { return CreateDirectoryA(name, nullptr); });
    ExpectErrors({{"sub", "", ERROR_DIR_NOT_EMPTY},
                  {"file", "", ERROR_DIRECTORY},
                  {"none", "", ERROR_FILE_NOT_FOUND},
                  {"none\\x", "", ERROR_PATH_NOT_FOUND},
                  {"", "", ERROR_INVALID_NAME},
                  {"NEW\\", "", 0}},
                 [](const char* name, const char*) { return RemoveDirectoryA(name); });
    EXPECT_FALSE(Exists("new"));
}

TEST_F(FileSystem, FoldersAreMadeWhereNothingHasTheirNameInAnyCase)
{
    Random random;
    std::map<std::string, bool> isFolder = {{"", true}};  // by name in lower case
    for (int i = 0; i < 2000; ++i) {
        std::string path = "abAB"[random.Between(0, 3)] + std::string();
        while (random.Between(0, 2) && path.size() < 7)
            path += std::string("/") + "abAB"[random.Between(0, 3)];
        std::string name = path;
        std::ranges::transform(name, name.begin(), [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        const auto parent = isFolder.find(name.substr(0, name.size() - std::min<std::size_t>(2, name.size())));
        const bool isInFolder = parent != isFolder.end() && parent->second;
        const auto known = isFolder.find(name);
        const bool isThere = known != isFolder.end();
        const auto next = isFolder.upper_bound(name);
        const bool isEmpty = next == isFolder.end() || !next->first.starts_with(name + "/");
        SCOPED_TRACE(path);
        if (const int call = random.Between(0, 3); call > 1) {
            const BOOL made = CreateDirectoryA(At(path).c_str(), nullptr);
            ASSERT_EQ(isThere ? DWORD{ERROR_ALREADY_EXISTS} : isInFolder ? 0 : DWORD{ERROR_PATH_NOT_FOUND}, made ? 0 : GetLastError());
            if (made)
                isFolder[name] = true;
        } else if (call == 1 && !isThere && isInFolder) {
            CloseHandle(CreateFileA(At(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
            isFolder[name] = false;
        } else if (isThere && isEmpty) {
            ASSERT_TRUE(known->second ? RemoveDirectoryA(At(path).c_str()) : DeleteFileA(At(path).c_str()));
            isFolder.erase(known);
        }
    }
}

TEST_F(FileSystem, TemporaryNames)
{
    struct NameRow
    {
        std::string folder;
        const char* prefix;
        UINT unique;
        std::string name;
    };
    const NameRow rows[] = {{At("sub"), "ab", 0x1234, At("sub") + "\\ab1234.tmp"},
                            {At("sub") + "\\", "prefix", 5, At("sub") + "\\pre5.tmp"},
                            {At("sub"), nullptr, 0x12345678, At("sub") + "\\5678.tmp"},
                            {".", "ab", 1, ".\\ab1.tmp"}};
    char buffer[MAX_PATH];
    for (const NameRow& row : rows) {
        EXPECT_EQ(row.unique & 0xFFFF, GetTempFileNameA(row.folder.c_str(), row.prefix, row.unique, buffer));
        EXPECT_EQ(row.name, buffer);
        EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(buffer)) << "a given number makes no file";
    }

    const UINT number = GetTempFileNameA(At("sub").c_str(), "x", 0, buffer);
    EXPECT_NE(0u, number);
    EXPECT_EQ("", ReadBytes(buffer));
    EXPECT_NE(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(buffer));
    char second[MAX_PATH];
    EXPECT_NE(number, GetTempFileNameA(At("sub").c_str(), "x", 0, second));

    for (const std::string& folder : {At("none"), At("file"), std::string()})
        EXPECT_TRUE(FailedWith(ERROR_DIRECTORY, !GetTempFileNameA(folder.c_str(), "x", 0, buffer))) << folder;
}

TEST_F(FileSystem, TemporaryFolderEndsInABackslash)
{
    char before[MAX_PATH];
    GetTempPathA(sizeof before, before);
    char had[MAX_PATH] = "";
    const bool wasSet = GetEnvironmentVariableA("TMP", had, sizeof had) > 0;
    for (const char* value : {"C:\\kq", "C:/kq/", "C:\\x\\..\\kq"}) {
        SetEnvironmentVariableA("TMP", value);
        char buffer[MAX_PATH] = "";
        EXPECT_EQ(6u, GetTempPathA(sizeof buffer, buffer));
        EXPECT_STREQ("C:\\kq\\", buffer);
        EXPECT_EQ(7u, GetTempPathA(6, buffer));
    }
    SetEnvironmentVariableA("TMP", wasSet ? had : nullptr);
    EXPECT_EQ('\\', before[std::string(before).size() - 1]);
}
