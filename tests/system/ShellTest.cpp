// ShellTest.cpp: tests and searches in the file system, comparison of paths, processes by name, the root of file associations.
#include <kelgen/system/Shell.h>

#include "support/Scratch.h"

#include <algorithm>

using namespace kelgen::test;

namespace {

std::string Folder()
{
    return ScratchFolder().string() + "/";
}

std::string Joined(const CStringArray& texts)
{
    std::vector<std::string> sorted;
    for (int i = 0; i < texts.GetSize(); ++i)
        sorted.emplace_back(texts[i].GetString());
    std::sort(sorted.begin(), sorted.end());
    std::string joined;
    for (const std::string& text : sorted)
        joined += '[' + text + ']';
    return joined;
}

std::string FullPath(const std::string& path)
{
    char full[600] = "";
    GetFullPathNameA(path.c_str(), sizeof full, full, nullptr);
    return full;
}

}  // namespace

TEST(Shell, AFileExistsByItsNormalBitAlone)
{
    const std::string folder = Folder();
    const std::string file = folder + "name with 'quotes' and blanks";
    WriteBytes(file, "x");
    EXPECT_FALSE(shell::file_exists(file.c_str())) << "a new file is marked as archive";
    for (const DWORD attributes : {DWORD{FILE_ATTRIBUTE_NORMAL}, DWORD{FILE_ATTRIBUTE_HIDDEN}, DWORD{FILE_ATTRIBUTE_READONLY}}) {
        // A file system may keep none of these; what it then says is what counts.
        SetFileAttributesA(file.c_str(), attributes);
        EXPECT_EQ((GetFileAttributesA(file.c_str()) & 0x80) != 0, shell::file_exists(file.c_str())) << attributes;
        EXPECT_FALSE(shell::is_dir(file.c_str()));
    }
    SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    for (const char* path : {folder.c_str(), "C:\\", "."}) {
        EXPECT_FALSE(shell::file_exists(path)) << path;
        EXPECT_TRUE(shell::is_dir(path)) << path;
    }
    for (const char* path : {"", static_cast<const char*>(nullptr), "no such entry", "C:\\no\\such"}) {
        EXPECT_FALSE(shell::file_exists(path));
        EXPECT_FALSE(shell::is_dir(path));
    }
}

TEST(Shell, SearchesTakeFilesFoldersAndDots)
{
    const std::string folder = Folder();
    for (const char* name : {"a.txt", "b.tar.gz", "noext"})
        WriteBytes(folder + name, "");
    CreateDirectoryA((folder + "sub.dir").c_str(), nullptr);
    struct Row
    {
        const char* pattern;
        const char* files;
        const char* folders;
        const char* dots;
    };
    const Row rows[] = {
        {"*", "[a.txt][b.tar.gz][noext]", "[sub.dir]", "[.][..]"},
        {"*.*", "[a.txt][b.tar.gz][noext]", "[sub.dir]", "[.][..]"},
        {"?.t*", "[a.txt][b.tar.gz]", "", ""},
        {"SUB.*", "", "[sub.dir]", ""},
        {"none*", "", "", ""},
        {"none/*", "", "", ""},
    };
    for (const Row& row : rows) {
        const std::string pattern = folder + row.pattern;
        CStringArray all, files, folders, withDots;
        const int found = shell::fs_find(pattern.c_str(), false, nullptr, &all, nullptr);
        EXPECT_EQ(found, all.GetSize()) << row.pattern;
        EXPECT_EQ(found, shell::file_find(pattern.c_str(), nullptr, &files, nullptr) +
                             shell::dir_find(pattern.c_str(), false, nullptr, &folders, nullptr));
        EXPECT_EQ(row.files, Joined(files)) << row.pattern;
        EXPECT_EQ(row.folders, Joined(folders)) << row.pattern;
        shell::dir_find(pattern.c_str(), true, nullptr, &withDots, nullptr);
        EXPECT_EQ(std::string(row.dots) + row.folders, Joined(withDots)) << row.pattern;
        EXPECT_EQ(found + (*row.dots ? 2 : 0), shell::fs_find(pattern.c_str(), true, nullptr, nullptr, nullptr)) << row.pattern;
    }

    CStringArray paths, titles;
    paths.Add("kept");
    EXPECT_EQ(4, shell::fs_find((folder + "*").c_str(), false, &paths, nullptr, &titles));
    EXPECT_EQ("[a][b.tar][noext][sub]", Joined(titles));
    std::string expected;
    for (const char* name : {"a.txt", "b.tar.gz", "noext", "sub.dir"})
        expected += '[' + FullPath(folder + name) + ']';
    EXPECT_EQ(expected + "[kept]", Joined(paths));
    EXPECT_EQ(0, shell::fs_find("", false, nullptr, nullptr, nullptr));
}

TEST(Shell, MakesEveryFolderAlongThePath)
{
    const std::string native = Folder();
    const std::string folder = FullPath(native);
    WriteBytes(native + "file", "");
    struct Row
    {
        const char* path;
        bool made;
        const char* last;
    };
    const Row rows[] = {
        {"a/b\\c", true, "a\\b\\c"},                  // both separators
        {"a/b\\c", true, "a\\b\\c"},                  // what is there already
        {"d/", true, "d"},                            // a separator at the end
        {"e\\", true, "e"},                           // the other one
        {"f//g\\\\h", true, "f\\g\\h"},               // two in a row
        {"i 'j' $(k)/l;m", true, "i 'j' $(k)\\l;m"},  // what a shell would read otherwise
        {"file", false, nullptr},                     // a file of that name
        {"n/../file/o", false, "n"},                  // a file on the way
        {".", true, "."},                             // the folder itself
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.made, shell::mkdirp((folder + row.path).c_str())) << row.path;
        EXPECT_TRUE(!row.last || shell::is_dir((folder + row.last).c_str())) << row.path;
    }
    EXPECT_TRUE(shell::mkdirp("C:/kelgen-mkdirp/b\\c"));
    EXPECT_TRUE(shell::is_dir("C:\\kelgen-mkdirp\\b\\c"));
    for (const char* made : {"C:\\kelgen-mkdirp\\b\\c", "C:\\kelgen-mkdirp\\b", "C:\\kelgen-mkdirp"})
        EXPECT_TRUE(RemoveDirectoryA(made)) << made;
    EXPECT_TRUE(shell::mkdirp(""));
    EXPECT_TRUE(shell::mkdirp(nullptr));
}

TEST(Shell, NullCountsAsTheEmptyPath)
{
    const char* const none = nullptr;
    EXPECT_FALSE(shell::file_exists(none));
    EXPECT_FALSE(shell::is_dir(none));
    EXPECT_TRUE(shell::mkdirp(none));
    EXPECT_EQ(0, shell::fs_find(none, true, nullptr, nullptr, nullptr));
    EXPECT_EQ(0, shell::dir_find(none, true, nullptr, nullptr, nullptr));
    EXPECT_EQ(0, shell::file_find(none, nullptr, nullptr, nullptr));
}

TEST(Shell, PathsAreEqualAsSpeltOrByTheirShortForms)
{
    const std::string native = Folder();
    const std::string folder = FullPath(native);
    const std::string file = folder + "A long file name.text";
    WriteBytes(native + "A long file name.text", "");
    WriteBytes(native + "short.txt", "");
    char shortForm[600] = "";
    ASSERT_NE(0u, GetShortPathNameA(file.c_str(), shortForm, sizeof shortForm));
    std::string lower = file;
    std::transform(lower.begin() + static_cast<std::ptrdiff_t>(folder.size()), lower.end(),
                   lower.begin() + static_cast<std::ptrdiff_t>(folder.size()),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    struct Row
    {
        const char* name;
        std::string a, b;
        bool equal;
    };
    const Row rows[] = {
        {"same", file, file, true},
        {"same and missing", "no such", "no such", true},
        {"short form", file, shortForm, true},
        {"other case", file, lower, true},
        {"other file", file, folder + "short.txt", false},
        {"one is missing", file, folder + "none", false},
        {"other case, missing", "No Such", "no such", false},
        {"empty", "", "", true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.equal, File::IsEqualFilePath(row.a.c_str(), row.b.c_str())) << row.name;
}

TEST(Process, IsFoundByTheNameOfItsProgram)
{
    char path[600] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string name = std::string(path).substr(std::string(path).rfind('\\') + 1);
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });

    // Only the first 250 are looked at.
    const auto enumerate = reinterpret_cast<BOOL(WINAPI*)(DWORD*, DWORD, DWORD*)>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("PSAPI.DLL"), "EnumProcesses")));
    DWORD ids[250], used = 0;
    enumerate(ids, sizeof ids, &used);
    const bool isListed = std::find(ids, ids + used / sizeof(DWORD), GetCurrentProcessId()) != ids + used / sizeof(DWORD);
    DWORD count = 99;
    const DWORD found = _kelgen::GetProcessIDbyName(name.c_str(), count);
    EXPECT_EQ(isListed, found != 0);
    EXPECT_EQ(isListed, count != 0);
    EXPECT_TRUE(count != 1 || found == GetCurrentProcessId());

    for (const char* none : {"no such program", "", static_cast<const char*>(nullptr)}) {
        count = 99;
        EXPECT_EQ(0u, _kelgen::GetProcessIDbyName(none, count));
        EXPECT_EQ(0u, count);
    }
}

TEST(FileAssociation, OpensTheRootAndLeavesItOpen)
{
    HKEY root = nullptr;
    {
        _kelgen::CFileAssociation association;
        EXPECT_EQ(nullptr, association.GetHKEYClassesRoot());
        EXPECT_TRUE(association.Initialize());
        const _kelgen::CFileAssociation copy = association;
        root = association.GetHKEYClassesRoot();
        EXPECT_EQ(root, copy.GetHKEYClassesRoot());
    }
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(root, ".kelgen-test", &key));
    CString type;
    EXPECT_EQ(ERROR_SUCCESS, RegSetValueA(key, nullptr, REG_SZ, "kelgen.test", 11));
    EXPECT_TRUE(CRegistry::RegQueryValueA(key, "", type));
    EXPECT_STREQ("kelgen.test", type);
    RegCloseKey(key);
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CLASSES_ROOT, ".kelgen-test"));
}
