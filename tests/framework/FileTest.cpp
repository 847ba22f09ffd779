// FileTest.cpp: opening and sharing, positions, failures with their causes, status, and files in memory.
#include <kelgen/framework/files/File.h>
#include <kelgen/framework/files/MemFile.h>

#include "framework/Thrown.h"
#include "support/Random.h"
#include "support/Scratch.h"

#include <cstring>

using namespace kelgen::test;

namespace {

std::string Contents(CFile& file)
{
    file.SeekToBegin();
    std::string bytes(static_cast<std::size_t>(file.GetLength()), '?');
    EXPECT_EQ(bytes.size(), file.Read(bytes.data(), static_cast<UINT>(bytes.size()) + 10));
    return bytes;
}

}  // namespace

TEST(File, OpenCreatesTruncatesOrKeeps)
{
    // contents: after opening.
    const struct
    {
        const char* name;
        bool exists;
        UINT flags;
        bool opens;
        const char* contents;
    } rows[] = {
        {"read missing", false, CFile::modeRead, false, ""},
        {"write missing", false, CFile::modeWrite, false, ""},
        {"write keeps", true, CFile::modeWrite, true, "old"},
        {"create missing", false, CFile::modeCreate | CFile::modeWrite, true, ""},
        {"create empties", true, CFile::modeCreate | CFile::modeReadWrite, true, ""},
        {"create, no truncate", true, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite, true, "old"},
        {"no truncate alone creates nothing", false, CFile::modeNoTruncate | CFile::modeWrite, false, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = ScratchFile("file.bin");
        if (row.exists)
            WriteBytes(path, "old");
        CFile file;
        CFileException error;
        ASSERT_EQ(row.opens, file.Open(path.c_str(), row.flags, &error) != FALSE);
        if (row.opens) {
            char full[MAX_PATH];
            ASSERT_NE(0u, GetFullPathNameA(path.c_str(), MAX_PATH, full, nullptr));
            EXPECT_STREQ(full, file.GetFilePath());
            file.Close();
            EXPECT_STREQ("", file.GetFilePath());
            EXPECT_EQ(row.contents, ReadBytes(path));
        } else {
            EXPECT_EQ(CFileException::fileNotFound, error.m_cause);
            EXPECT_EQ(static_cast<LONG>(ERROR_FILE_NOT_FOUND), error.m_lOsError);
            EXPECT_EQ(path, error.m_strFileName.GetString());
        }
    }
}

TEST(File, SharingDeniesWhatTheFlagsSay)
{
    const struct
    {
        const char* name;
        UINT first, second;
        bool opens;
    } rows[] = {
        {"compat is exclusive", CFile::modeRead, CFile::modeRead | CFile::shareDenyNone, false},
        {"exclusive", CFile::modeRead | CFile::shareExclusive, CFile::modeRead | CFile::shareDenyNone, false},
        {"deny write lets read", CFile::modeRead | CFile::shareDenyWrite, CFile::modeRead | CFile::shareDenyNone, true},
        {"deny write stops write", CFile::modeRead | CFile::shareDenyWrite, CFile::modeWrite | CFile::shareDenyNone, false},
        {"deny read stops read", CFile::modeRead | CFile::shareDenyRead, CFile::modeRead | CFile::shareDenyNone, false},
        {"deny read lets write", CFile::modeRead | CFile::shareDenyRead, CFile::modeWrite | CFile::shareDenyNone, true},
        {"deny none", CFile::modeReadWrite | CFile::shareDenyNone, CFile::modeReadWrite | CFile::shareDenyNone, true},
    };
    const std::string path = ScratchFile("shared.bin");
    WriteBytes(path, "x");
    for (const auto& row : rows) {
        CFile first(path.c_str(), row.first), second;
        CFileException error;
        EXPECT_EQ(row.opens, second.Open(path.c_str(), row.second, &error) != FALSE) << row.name;
        EXPECT_EQ(row.opens ? CFileException::none : CFileException::sharingViolation, error.m_cause) << row.name;
    }
}

TEST(File, PositionsGoPastFourGigabytes)
{
    const std::string path = ScratchFile("large.bin");
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    constexpr ULONGLONG kFar = 0x1FFFFFFFFULL;
    EXPECT_EQ(kFar, file.Seek(static_cast<LONGLONG>(kFar), CFile::begin));
    EXPECT_EQ(kFar, file.GetPosition());
    EXPECT_EQ(0u, file.GetLength()) << "moving alone makes no file longer";
    EXPECT_EQ(kFar - 3, file.Seek(-3, CFile::current));
    EXPECT_EQ("CFileException " + std::to_string(CFileException::badSeek), Thrown([&] { file.Seek(-1, CFile::begin); }));
    EXPECT_EQ(kFar - 3, file.GetPosition());
}

TEST(File, SetLengthCutsAndExtendsWithZeros)
{
    const std::string path = ScratchFile("length.bin");
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.Write("abcdef", 6);
    file.SetLength(3);
    EXPECT_EQ(3u, file.GetPosition());
    file.SetLength(5);
    EXPECT_EQ(std::string("abc\0\0", 5), Contents(file));
    EXPECT_EQ(3u, file.Seek(-2, CFile::end));
    file.Write("XYZ", 3);
    EXPECT_EQ("abcXYZ", Contents(file));
}

TEST(File, FailuresNameTheirCause)
{
    const std::string path = ScratchFile("missing.bin");
    const std::string notFound = "CFileException " + std::to_string(CFileException::fileNotFound);
    const std::string denied = "CFileException " + std::to_string(CFileException::accessDenied);
    EXPECT_EQ(notFound, Thrown([&] { CFile(path.c_str(), CFile::modeRead); }));
    EXPECT_EQ(notFound, Thrown([&] { CFile::Remove(path.c_str()); }));
    EXPECT_EQ(notFound, Thrown([&] { CFile::Rename(path.c_str(), (path + "2").c_str()); }));
    EXPECT_EQ(notFound, Thrown([&] { CFile::SetStatus(path.c_str(), CFileStatus()); }));

    WriteBytes(path, "abc");
    CFile reader(path.c_str(), CFile::modeRead | CFile::shareDenyNone);
    EXPECT_EQ(denied, Thrown([&] { reader.Write("x", 1); }));
    EXPECT_NE("", Thrown([&] { reader.SetLength(0); }));
    CFile writer(path.c_str(), CFile::modeWrite | CFile::shareDenyNone);
    char one;
    EXPECT_EQ(denied, Thrown([&] { writer.Read(&one, 1); }));
    EXPECT_EQ("abc", ReadBytes(path));
}

TEST(File, ClosedFileFailsAndCloseIsHarmless)
{
    CFile file;
    char one;
    EXPECT_NE("", Thrown([&] { file.Read(&one, 1); }));
    EXPECT_NE("", Thrown([&] { file.Write("x", 1); }));
    EXPECT_NE("", Thrown([&] { file.GetLength(); }));
    EXPECT_NE("", Thrown([&] { file.Seek(0, CFile::begin); }));
    EXPECT_NE("", Thrown([&] { delete file.Duplicate(); }));
    EXPECT_EQ("", Thrown([&] {
                  file.Close();
                  file.Abort();
                  file.Flush();
              }));
    CFileStatus status;
    EXPECT_FALSE(file.GetStatus(status));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { file.SetFilePath(nullptr); }));
}

TEST(File, LocksKeepOtherHandlesOut)
{
    const std::string path = ScratchFile("locked.bin");
    WriteBytes(path, "0123456789");
    CFile first(path.c_str(), CFile::modeReadWrite | CFile::shareDenyNone);
    CFile second(path.c_str(), CFile::modeReadWrite | CFile::shareDenyNone);
    first.LockRange(2, 4);
    const std::string violation = "CFileException " + std::to_string(CFileException::lockViolation);
    EXPECT_EQ(violation, Thrown([&] { second.LockRange(5, 1); }));
    second.LockRange(6, 1);
    second.UnlockRange(6, 1);
    EXPECT_NE("", Thrown([&] { first.UnlockRange(2, 3); })) << "other bounds than were locked";
    first.UnlockRange(2, 4);
    second.LockRange(5, 1);
}

TEST(File, DuplicatesShareOnePositionAndHandlesFromOutsideStayOpen)
{
    const std::string path = ScratchFile("twice.bin");
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    const std::unique_ptr<CFile> other(file.Duplicate());
    file.Write("abc", 3);
    EXPECT_EQ(3u, other->GetPosition());
    EXPECT_STREQ(file.GetFilePath(), other->GetFilePath());
    file.Close();
    other->Write("def", 3);
    {
        CFile guest(other->m_hFile);
        guest.Write("g", 1);
    }
    other->Write("h", 1);
    other->Close();
    EXPECT_EQ("abcdefgh", ReadBytes(path));
}

TEST(File, NamesAreCutFromThePath)
{
    const struct
    {
        const char* path;
        const char* fileName;
        const char* title;
    } rows[] = {
        {"C:\\folder.old\\data.tar.gz", "data.tar.gz", "data.tar"},
        {"C:\\folder.old\\data", "data", "data"},
        {"/tmp/a.b/c.d", "c.d", "c"},
        {"C:name.txt", "name.txt", "name"},
        {"", "", ""},
    };
    for (const auto& row : rows) {
        CFile file;
        file.SetFilePath(row.path);
        EXPECT_STREQ(row.path, file.GetFilePath());
        EXPECT_STREQ(row.fileName, file.GetFileName());
        EXPECT_STREQ(row.title, file.GetFileTitle());
    }
}

TEST(File, StatusIsReadAndSet)
{
    const std::string path = ScratchFile("status.bin");
    WriteBytes(path, "12345");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
    EXPECT_EQ(5u, status.m_size);
    EXPECT_EQ(0, status.m_attribute & CFile::readOnly);

    const FILETIME written{0x89ABC000, 0x01C00000};
    status.m_mtime = written;
    status.m_attribute = CFile::readOnly;
    CFile::SetStatus(path.c_str(), status);
    CFileStatus after;
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), after));
    EXPECT_EQ(0, CompareFileTime(&written, &after.m_mtime));
    EXPECT_EQ(CFile::readOnly, after.m_attribute & CFile::readOnly);

    const FILETIME rewritten{0x12345000, 0x01C00001};
    after.m_mtime = rewritten;
    after.m_attribute = CFile::normal;
    CFile::SetStatus(path.c_str(), after);
    {
        CFile file(path.c_str(), CFile::modeReadWrite);
        CFileStatus open;
        ASSERT_TRUE(file.GetStatus(open));
        EXPECT_EQ(0, CompareFileTime(&rewritten, &open.m_mtime));
        EXPECT_EQ(5u, open.m_size);
        EXPECT_STREQ(file.GetFilePath(), open.m_szFullName);
    }
    CFile::Rename(path.c_str(), (path + ".2").c_str());
    EXPECT_FALSE(CFile::GetStatus(path.c_str(), after));
    CFile::Remove((path + ".2").c_str());
    EXPECT_FALSE(CFile::GetStatus((path + ".2").c_str(), after));
}

TEST(MemFile, RandomUseMatchesAText)
{
    Random random;
    for (UINT growBytes : {1u, 16u, 1024u}) {
        CMemFile file(growBytes);
        std::string model;
        for (int step = 0; step < 2000; ++step) {
            const auto position = static_cast<std::size_t>(random.Between(0, 300));
            const std::string bytes(static_cast<std::size_t>(random.Between(0, 40)), static_cast<char>(random.Between(0, 255)));
            file.Seek(static_cast<LONGLONG>(position), CFile::begin);
            switch (random.Between(0, 2)) {
            case 0:
                file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
                if (!bytes.empty()) {
                    model.resize(std::max(model.size(), position + bytes.size()));
                    model.replace(position, bytes.size(), bytes);
                }
                break;
            case 1:
                file.SetLength(position);
                model.resize(position);
                break;
            case 2: {
                char read[64];
                const UINT count = file.Read(read, 50);
                ASSERT_EQ(position < model.size() ? model.substr(position, 50) : "", std::string(read, count));
                break;
            }
            }
            ASSERT_EQ(model.size(), file.GetLength());
        }
        EXPECT_EQ(model, Contents(file));
    }
}

TEST(MemFile, AttachedBlockIsReadInPlaceAndCannotGrow)
{
    BYTE block[4] = {'a', 'b', 'c', 'd'};
    CMemFile file(block, sizeof block);
    EXPECT_EQ("abcd", Contents(file));
    file.Seek(1, CFile::begin);
    file.Write("X", 1);
    EXPECT_EQ('X', block[1]);
    file.SeekToEnd();
    EXPECT_EQ("CMemoryException", Thrown([&] { file.Write("!", 1); }));
    EXPECT_EQ("aXcd", Contents(file));
    const std::string badSeek = "CFileException " + std::to_string(CFileException::badSeek);
    EXPECT_EQ(badSeek, Thrown([&] { file.Seek(-5, CFile::end); }));
    EXPECT_EQ(badSeek, Thrown([&] { file.Seek(INT64_MAX, CFile::end); }));
    EXPECT_EQ(4u, file.GetPosition());

    CMemFile own;
    own.Write("abc", 3);
    BYTE* detached = own.Detach();
    EXPECT_EQ(0, std::memcmp("abc", detached, 3));
    own.Write("d", 1);
    EXPECT_EQ("d", Contents(own)) << "the block before is the caller's";
    free(detached);
}
