// FilesTest.cpp: opening, share modes, reading and writing, positions, locks.
#include "support/Failures.h"
#include "support/Scratch.h"

using namespace kelgen::test;

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A file's handle that closes at the end of a test.
class OpenedFile
{
public:
    OpenedFile(const std::string& name, DWORD access, DWORD share = kShareAll, DWORD disposition = OPEN_EXISTING, DWORD flags = 0)
        : m_handle(CreateFileA(name.c_str(), access, share, nullptr, disposition, flags, nullptr))
    {}
    ~OpenedFile() { CloseHandle(m_handle); }
    OpenedFile(OpenedFile&&) = delete;

    operator HANDLE() const { return m_handle; }
    bool Ok() const { return m_handle != INVALID_HANDLE_VALUE; }

    std::string Read(DWORD size) const
    {
        std::string bytes(size, '\0');
        DWORD done = 0;
        EXPECT_TRUE(ReadFile(m_handle, bytes.data(), size, &done, nullptr)) << GetLastError();
        bytes.resize(done);
        return bytes;
    }

    void Write(const std::string& bytes) const
    {
        DWORD done = 0;
        EXPECT_TRUE(WriteFile(m_handle, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr)) << GetLastError();
        EXPECT_EQ(bytes.size(), done);
    }

private:
    HANDLE m_handle;
};

// The last error after opening name; the handle, if any, is closed again.
DWORD OpenError(const std::string& name, DWORD access, DWORD share, DWORD disposition, DWORD flags = 0)
{
    SetLastError(0xBEEF);
    const HANDLE file = CreateFileA(name.c_str(), access, share, nullptr, disposition, flags, nullptr);
    const DWORD error = GetLastError();
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
    return error;
}

// A folder with "file.txt" ("hello") and the folder "sub".
std::string FilledFolder()
{
    const std::string folder = ScratchFolder().string() + "/";
    WriteBytes(folder + "file.txt", "hello");
    CreateDirectoryA((folder + "sub").c_str(), nullptr);
    return folder;
}

// contents: of file.txt afterwards.
struct OpenRow
{
    const char* name;
    const char* file;
    DWORD access, disposition, flags, error;
    const char* contents;
};

}  // namespace

TEST(FileOpeningRow, SetsTheLastErrorAndKeepsOrEmptiesTheFile)
{
    const OpenRow rows[] = {
        {"Existing", "file.txt", GENERIC_READ, OPEN_EXISTING, 0, 0, "hello"},
        {"OtherCase", "FILE.TXT", GENERIC_READ, OPEN_EXISTING, 0, 0, "hello"},
        {"TrailingDotsAndBlanks", "file.txt. .", GENERIC_READ, OPEN_EXISTING, 0, 0, "hello"},
        {"ThroughMissingFolder", "none/../file.txt", GENERIC_READ, OPEN_EXISTING, 0, 0, "hello"},
        {"Missing", "none.txt", GENERIC_READ, OPEN_EXISTING, 0, ERROR_FILE_NOT_FOUND, "hello"},
        {"MissingForQueries", "none.txt", 0, OPEN_EXISTING, 0, ERROR_FILE_NOT_FOUND, "hello"},
        {"MissingFolder", "none\\x", GENERIC_READ, OPEN_EXISTING, 0, ERROR_PATH_NOT_FOUND, "hello"},
        {"BelowFile", "file.txt\\x", GENERIC_READ, OPEN_EXISTING, 0, ERROR_PATH_NOT_FOUND, "hello"},
        {"CreateInMissingFolder", "none\\x", GENERIC_WRITE, CREATE_ALWAYS, 0, ERROR_PATH_NOT_FOUND, "hello"},
        {"FileWithSlash", "file.txt\\", GENERIC_READ, OPEN_EXISTING, 0, ERROR_INVALID_NAME, "hello"},
        {"NewWithSlash", "new\\", GENERIC_WRITE, CREATE_ALWAYS, 0, ERROR_INVALID_NAME, "hello"},
        {"WildCard", "*.txt", GENERIC_READ, OPEN_EXISTING, 0, ERROR_INVALID_NAME, "hello"},
        {"CreateWildCard", "a?b", GENERIC_WRITE, CREATE_ALWAYS, 0, ERROR_INVALID_NAME, "hello"},
        {"Folder", "sub", GENERIC_READ, OPEN_EXISTING, 0, ERROR_ACCESS_DENIED, "hello"},
        {"FolderForQueries", "sub", 0, OPEN_EXISTING, 0, ERROR_ACCESS_DENIED, "hello"},
        {"FolderAsSuch", "sub\\", GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, 0, "hello"},
        {"CreateOverFolder", "sub", GENERIC_WRITE, CREATE_ALWAYS, 0, ERROR_ACCESS_DENIED, "hello"},
        {"NewOverFolder", "sub", GENERIC_WRITE, CREATE_NEW, 0, ERROR_FILE_EXISTS, "hello"},
        {"NewOverFile", "file.txt", GENERIC_WRITE, CREATE_NEW, 0, ERROR_FILE_EXISTS, "hello"},
        {"NewOverOtherCase", "File.Txt", GENERIC_WRITE, CREATE_NEW, 0, ERROR_FILE_EXISTS, "hello"},
        {"New", "new", GENERIC_WRITE, CREATE_NEW, 0, 0, "hello"},
        {"AlwaysNew", "new", GENERIC_WRITE, CREATE_ALWAYS, 0, 0, "hello"},
        {"AlwaysOver", "file.txt", GENERIC_WRITE, CREATE_ALWAYS, 0, ERROR_ALREADY_EXISTS, ""},
        {"OpenAlwaysOver", "file.txt", GENERIC_WRITE, OPEN_ALWAYS, 0, ERROR_ALREADY_EXISTS, "hello"},
        {"OpenAlwaysNew", "new", GENERIC_READ, OPEN_ALWAYS, 0, 0, "hello"},
        {"Truncate", "file.txt", GENERIC_WRITE, TRUNCATE_EXISTING, 0, 0, ""},
        {"TruncateMissing", "new", GENERIC_WRITE, TRUNCATE_EXISTING, 0, ERROR_FILE_NOT_FOUND, "hello"},
        {"NoDisposition", "file.txt", GENERIC_READ, 0, 0, ERROR_INVALID_PARAMETER, "hello"},
        {"UnknownDisposition", "file.txt", GENERIC_READ, 6, 0, ERROR_INVALID_PARAMETER, "hello"},
    };
    for (const OpenRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string folder = FilledFolder();
        EXPECT_EQ(row.error, OpenError(folder + row.file, row.access, kShareAll, row.disposition, row.flags));
        EXPECT_EQ(row.contents, ReadBytes(folder + "file.txt"));
    }
}

TEST(FileOpening, TakesNoEmptyName)
{
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, OpenError("", GENERIC_READ, kShareAll, OPEN_EXISTING));
    EXPECT_EQ(INVALID_HANDLE_VALUE, CreateFileA(nullptr, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, GetLastError());
}

TEST(FileOpening, WideNamesReachTheSameFile)
{
    const std::string folder = ScratchFolder().string() + "/";
    std::u16string wide(folder.begin(), folder.end());
    wide += u"\u00e4\u4e2d.txt";
    const HANDLE made = CreateFileW(kelgen::AsWide(reinterpret_cast<const unsigned short*>(wide.c_str())), GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, made);
    CloseHandle(made);
    WIN32_FIND_DATAW data;
    std::u16string pattern(folder.begin(), folder.end());
    pattern += u"*.TXT";
    const HANDLE find = FindFirstFileW(kelgen::AsWide(reinterpret_cast<const unsigned short*>(pattern.c_str())), &data);
    ASSERT_NE(INVALID_HANDLE_VALUE, find);
    EXPECT_EQ(0xe4, data.cFileName[0]);
    EXPECT_EQ(0x4e2d, data.cFileName[1]);
    FindClose(find);
}

TEST(FileSharing, NewOpenersMustAgreeWithThoseBefore)
{
    // access, share: of the first opener.
    // otherAccess, otherShare: of the second.
    struct Row
    {
        const char* name;
        DWORD access, share;
        DWORD otherAccess, otherShare;
        bool clash;
    };
    constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;
    const Row rows[] = {
        {"readers share", GENERIC_READ, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, false},
        {"first denies reading", GENERIC_READ, 0, GENERIC_READ, kShareAll, true},
        {"second denies reading", GENERIC_READ, kShareAll, GENERIC_READ, 0, true},
        {"writer beside reader that allows it", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, GENERIC_WRITE, FILE_SHARE_READ, false},
        {"writer beside reader that denies it", GENERIC_READ, FILE_SHARE_READ, GENERIC_WRITE, kShareAll, true},
        {"reader denies the writer before", kBoth, kShareAll, GENERIC_READ, FILE_SHARE_READ, true},
        {"queries clash with nobody", kBoth, 0, 0, 0, false},
        {"queries deny nothing", 0, 0, kBoth, 0, false},
        {"attributes are queries", kBoth, 0, FILE_READ_ATTRIBUTES, 0, false},
        {"deleter beside reader that denies it", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, DELETE, kShareAll, true},
        {"deleter beside reader that allows it", GENERIC_READ, kShareAll, DELETE, kShareAll, false},
    };
    const std::string file = FilledFolder() + "file.txt";
    for (const Row& row : rows) {
        const OpenedFile first(file, row.access, row.share);
        ASSERT_TRUE(first.Ok()) << row.name << ' ' << GetLastError();
        const DWORD error = OpenError(file, row.otherAccess, row.otherShare, OPEN_EXISTING);
        EXPECT_EQ(row.clash ? DWORD{ERROR_SHARING_VIOLATION} : 0, error) << row.name;
    }
}

TEST(FileSharing, ClosingTheLastDuplicateEndsIt)
{
    const std::string file = FilledFolder() + "file.txt";
    HANDLE second = nullptr;
    {
        const OpenedFile first(file, GENERIC_READ, 0);
        ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), first, GetCurrentProcess(), &second, 0, FALSE, DUPLICATE_SAME_ACCESS));
    }
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, OpenError(file, GENERIC_READ, kShareAll, OPEN_EXISTING));
    CloseHandle(second);
    EXPECT_EQ(0u, OpenError(file, GENERIC_READ, kShareAll, OPEN_EXISTING));
}

TEST(FileSharing, KeepsOpenFilesFromBeingDeletedMovedAndCopied)
{
    const std::string folder = FilledFolder(), file = folder + "file.txt";
    const OpenedFile opened(file, GENERIC_READ | GENERIC_WRITE, 0);
    EXPECT_TRUE(FailedWith(ERROR_SHARING_VIOLATION, !DeleteFileA(file.c_str())));
    EXPECT_TRUE(FailedWith(ERROR_SHARING_VIOLATION, !MoveFileA(file.c_str(), (folder + "b").c_str())));
    EXPECT_TRUE(FailedWith(ERROR_SHARING_VIOLATION, !CopyFileA(file.c_str(), (folder + "b").c_str(), FALSE)));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesA((folder + "b").c_str()));
}

TEST(FileTransfer, NeedsTheRight)
{
    const std::string file = FilledFolder() + "file.txt";
    char bytes[4] = "abc";
    DWORD done = 9;
    struct Row
    {
        DWORD access;
        bool mayRead, mayWrite;
    };
    for (const Row& row : {Row{0, false, false}, Row{GENERIC_READ, true, false}, Row{GENERIC_WRITE, false, true},
                           Row{GENERIC_READ | GENERIC_WRITE, true, true}, Row{GENERIC_ALL, true, true}}) {
        const OpenedFile opened(file, row.access);
        SetLastError(0);
        EXPECT_EQ(row.mayRead, ReadFile(opened, bytes, 3, &done, nullptr) != FALSE) << row.access;
        EXPECT_EQ(row.mayRead ? 0u : DWORD{ERROR_ACCESS_DENIED}, GetLastError()) << row.access;
        SetLastError(0);
        EXPECT_EQ(row.mayWrite, WriteFile(opened, bytes, 3, &done, nullptr) != FALSE) << row.access;
        EXPECT_EQ(row.mayWrite ? 0u : DWORD{ERROR_ACCESS_DENIED}, GetLastError()) << row.access;
    }
}

TEST(FileTransfer, EndAndBadBuffers)
{
    const OpenedFile opened(FilledFolder() + "file.txt", GENERIC_READ | GENERIC_WRITE);
    EXPECT_EQ("hello", opened.Read(100));
    EXPECT_EQ("", opened.Read(100));

    DWORD done = 9;
    SetFilePointer(opened, 0, nullptr, FILE_BEGIN);
    EXPECT_TRUE(FailedWith(ERROR_NOACCESS, !ReadFile(opened, nullptr, 3, &done, nullptr)));
    EXPECT_EQ(0u, done);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !ReadFile(nullptr, &done, 3, &done, nullptr)));

    OVERLAPPED place{};
    place.Offset = 1;
    char bytes[8] = {};
    EXPECT_TRUE(ReadFile(opened, bytes, 2, &done, &place));
    EXPECT_STREQ("el", bytes);
    EXPECT_EQ(3u, SetFilePointer(opened, 0, nullptr, FILE_CURRENT));
    place.Offset = 50;
    EXPECT_TRUE(FailedWith(ERROR_HANDLE_EOF, !ReadFile(opened, bytes, 2, &done, &place)));
}

TEST(FileTransfer, AppendingIgnoresThePosition)
{
    const std::string file = FilledFolder() + "file.txt";
    {
        const OpenedFile opened(file, FILE_APPEND_DATA);
        opened.Write("!");
        SetFilePointer(opened, 0, nullptr, FILE_BEGIN);
        opened.Write("?");
        EXPECT_EQ(7u, SetFilePointer(opened, 0, nullptr, FILE_CURRENT));
    }
    EXPECT_EQ("hello!?", ReadBytes(file));
}

TEST(FilePosition, MovesAndRefusals)
{
    const OpenedFile opened(FilledFolder() + "file.txt", GENERIC_READ | GENERIC_WRITE);
    EXPECT_EQ(3u, SetFilePointer(opened, -2, nullptr, FILE_END));
    SetLastError(0);
    EXPECT_TRUE(FailedWith(ERROR_NEGATIVE_SEEK, INVALID_SET_FILE_POINTER == SetFilePointer(opened, -4, nullptr, FILE_CURRENT)));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, INVALID_SET_FILE_POINTER == SetFilePointer(opened, 0, nullptr, 7)));
    EXPECT_EQ("lo", opened.Read(9)) << "a refused move leaves the position";

    LONG high = 0;
    EXPECT_EQ(INVALID_SET_FILE_POINTER, SetFilePointer(opened, -1, &high, FILE_BEGIN));
    EXPECT_EQ(0u, GetLastError()) << "4294967295 is a position";
    EXPECT_EQ(0, high);
    high = 1;
    EXPECT_EQ(1u, SetFilePointer(opened, 2, &high, FILE_CURRENT));
    EXPECT_EQ(2, high);
}

TEST(FilePosition, EndOfFileCutsAndExtends)
{
    const std::string file = FilledFolder() + "file.txt";
    const OpenedFile opened(file, GENERIC_READ | GENERIC_WRITE);
    SetFilePointer(opened, 2, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(opened));
    EXPECT_EQ("he", ReadBytes(file));
    SetFilePointer(opened, 4, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(opened));
    EXPECT_EQ(std::string("he\0\0", 4), ReadBytes(file));
    EXPECT_EQ(4u, GetFileSize(opened, nullptr));
}

TEST(FileHandles, DuplicatesShareThePositionAndMayHaveFewerRights)
{
    const OpenedFile opened(FilledFolder() + "file.txt", GENERIC_READ | GENERIC_WRITE);
    HANDLE reader = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), opened, GetCurrentProcess(), &reader, GENERIC_READ, FALSE, 0));
    SetFilePointer(opened, 4, nullptr, FILE_BEGIN);
    EXPECT_EQ(4u, SetFilePointer(reader, 0, nullptr, FILE_CURRENT));
    DWORD done = 0;
    EXPECT_TRUE(FailedWith(ERROR_ACCESS_DENIED, !WriteFile(reader, "x", 1, &done, nullptr)));

    HANDLE moved = nullptr;
    EXPECT_TRUE(DuplicateHandle(GetCurrentProcess(), reader, GetCurrentProcess(), &moved, 0, FALSE,
                                DUPLICATE_CLOSE_SOURCE | DUPLICATE_SAME_ACCESS));
    EXPECT_EQ(5u, GetFileSize(moved, nullptr));
    EXPECT_TRUE(CloseHandle(moved));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !CloseHandle(moved)));
    EXPECT_FALSE(DuplicateHandle(GetCurrentProcess(), nullptr, GetCurrentProcess(), &reader, 0, FALSE, DUPLICATE_SAME_ACCESS));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
}

TEST(FileHandles, DeleteOnCloseDeletesAtTheLastHandle)
{
    const std::string file = ScratchFile("gone");
    {
        const OpenedFile opened(file, GENERIC_WRITE, kShareAll, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
        EXPECT_NE(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(file.c_str()));
    }
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(file.c_str()));
}

TEST(FileHandles, InformationTellsFilesApart)
{
    const std::string folder = FilledFolder();
    WriteBytes(folder + "other", "x");
    BY_HANDLE_FILE_INFORMATION first, again, other;
    EXPECT_TRUE(GetFileInformationByHandle(OpenedFile(folder + "file.txt", 0), &first));
    EXPECT_TRUE(GetFileInformationByHandle(OpenedFile(folder + "FILE.txt", GENERIC_READ), &again));
    EXPECT_TRUE(GetFileInformationByHandle(OpenedFile(folder + "other", 0), &other));
    EXPECT_EQ(first.nFileIndexLow, again.nFileIndexLow);
    EXPECT_NE(first.nFileIndexLow, other.nFileIndexLow);
    EXPECT_EQ(first.dwVolumeSerialNumber, other.dwVolumeSerialNumber);
    EXPECT_EQ(5u, first.nFileSizeLow);
    EXPECT_EQ(GetFileAttributesA((folder + "file.txt").c_str()), first.dwFileAttributes);
}

TEST(FileLocks, KeepOtherLockersOut)
{
    const std::string file = FilledFolder() + "file.txt";
    const OpenedFile first(file, GENERIC_READ | GENERIC_WRITE), second(file, GENERIC_READ | GENERIC_WRITE);
    EXPECT_TRUE(LockFile(first, 0, 0, 3, 0));
    struct Row
    {
        const char* name;
        HANDLE handle;
        bool lock;
        DWORD offset, size;
        bool granted;
    };
    const Row rows[] = {
        {"our own again", first, true, 0, 3, false},
        {"overlap", second, true, 2, 2, false},
        {"neighbour", second, true, 3, 2, true},
        {"empty range elsewhere", second, true, 10, 0, true},
        {"part of a range", first, false, 0, 2, false},
        {"another handle's range", second, false, 0, 3, false},
        {"the range", first, false, 0, 3, true},
        {"the range again", first, false, 0, 3, false},
        {"what has become free", second, true, 0, 3, true},
    };
    for (const Row& row : rows) {
        SetLastError(0);
        const BOOL done = row.lock ? LockFile(row.handle, row.offset, 0, row.size, 0) : UnlockFile(row.handle, row.offset, 0, row.size, 0);
        EXPECT_EQ(row.granted, done != FALSE) << row.name;
        EXPECT_EQ(row.granted ? 0u : DWORD{ERROR_LOCK_VIOLATION}, GetLastError()) << row.name;
    }
}

TEST(FileLocks, WholeFileLeavesSharingAlone)
{
    const std::string file = FilledFolder() + "file.txt";
    const OpenedFile first(file, GENERIC_READ | GENERIC_WRITE);
    EXPECT_TRUE(LockFile(first, 0, 0, 0xFFFFFFFF, 0x7FFFFFFF));
    const OpenedFile second(file, GENERIC_READ | GENERIC_WRITE);
    EXPECT_TRUE(second.Ok());
    EXPECT_FALSE(LockFile(second, 100, 1, 1, 0));
    EXPECT_TRUE(UnlockFile(first, 0, 0, 0xFFFFFFFF, 0x7FFFFFFF));
    EXPECT_TRUE(LockFile(second, 100, 1, 1, 0));
}
