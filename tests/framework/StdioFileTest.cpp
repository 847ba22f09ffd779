// StdioFileTest.cpp: lines and translation of any bytes, against a slow model, and the buffer's positions.
#include <kelgen/framework/files/StdioFile.h>

#include "framework/Thrown.h"
#include "support/Random.h"
#include "support/Scratch.h"

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

using Lines = std::vector<std::string>;

/// What a text of these bytes reads as.
std::string Translated(const std::string& bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size() && bytes[i] != 0x1A; ++i) {
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n')
            text += bytes[i];
    }
    return text;
}

Lines Split(const std::string& text)
{
    Lines lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

Lines ReadLines(const std::string& path, UINT flags)
{
    CStdioFile file(path.c_str(), CFile::modeRead | CFile::shareDenyNone | flags);
    Lines lines;
    CString line;
    while (file.ReadString(line))
        lines.emplace_back(line.GetString(), static_cast<std::size_t>(line.GetLength()));
    EXPECT_TRUE(line.IsEmpty());
    EXPECT_FALSE(file.ReadString(line)) << "the end stays";
    return lines;
}

std::string RandomBytes(Random& random, int maxLength)
{
    static const char kBytes[] = {'\r', '\n', '\r', '\n', 'a', 'b', '\0', '\xFF', 'c', 'd'};
    std::string bytes;
    for (int i = random.Between(0, maxLength); i > 0; --i)
        bytes += random.Between(0, 500) == 0 ? '\x1A' : kBytes[random.Between(0, 9)];
    return bytes;
}

}  // namespace

TEST(StdioFile, LinesEndAtLineFeeds)
{
    const struct
    {
        const char* name;
        std::string bytes;
        Lines text, binary;
    } rows[] = {
        {"no bytes", "", {}, {}},
        {"plain", "a\r\nb\r\n", {"a", "b"}, {"a\r", "b\r"}},
        {"line feeds only", "a\n\nb\n", {"a", "", "b"}, {"a", "", "b"}},
        {"no final line end", "a\r\nb", {"a", "b"}, {"a\r", "b"}},
        {"return alone", "a\rb\r\n\r", {"a\rb", "\r"}, {"a\rb\r", "\r"}},
        {"two returns", "a\r\r\nb", {"a\r", "b"}, {"a\r\r", "b"}},
        {"zeros", "a\0b\r\n\0\n"s, {"a\0b"s, "\0"s}, {"a\0b\r"s, "\0"s}},
        {"end of text",
         "a\nb\x1A"
         "c\n",
         {"a", "b"},
         {"a", "b\x1A"
               "c"}},
        {"end of text first",
         "\x1A"
         "c\n",
         {},
         {"\x1A"
          "c"}},
        {"end of text after return", "a\r\x1A\n", {"a\r"}, {"a\r\x1A"}},
    };
    const std::string path = ScratchFile("lines.txt");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteBytes(path, row.bytes);
        EXPECT_EQ(row.text, ReadLines(path, CFile::typeText));
        EXPECT_EQ(row.text, ReadLines(path, 0)) << "text by default";
        EXPECT_EQ(row.binary, ReadLines(path, CFile::typeBinary));
    }
}

TEST(StdioFile, LinesAcrossTheBufferMatchTheModel)
{
    const std::string path = ScratchFile("long.txt");
    // Line ends around every place where the buffer may end.
    for (int shift = -2; shift <= 2; ++shift) {
        const std::string bytes =
            std::string(static_cast<std::size_t>(64 * 1024 + shift), 'x') + "\r\ny\r\n\r" + std::string(3 * 64 * 1024, 'z') + "\n\r\nend";
        WriteBytes(path, bytes);
        EXPECT_EQ(Split(Translated(bytes)), ReadLines(path, CFile::typeText)) << shift;
    }
    const std::string line(10'000'000, 'x');
    WriteBytes(path, line + "\r\nlast");
    EXPECT_TRUE((Lines{line, "last"}) == ReadLines(path, CFile::typeText));
}

TEST(StdioFile, RandomTextReadsLikeTheModel)
{
    Random random;
    const std::string path = ScratchFile("random.txt");
    for (int round = 0; round < 60; ++round) {
        const std::string bytes = RandomBytes(random, round < 50 ? 400 : 200'000);
        WriteBytes(path, bytes);
        const std::string text = Translated(bytes);
        ASSERT_EQ(Split(text), ReadLines(path, CFile::typeText));

        CStdioFile whole(path.c_str(), CFile::modeRead | CFile::shareDenyNone);
        std::string read;
        std::vector<char> piece(static_cast<std::size_t>(random.Between(1, 70'000)));
        while (const UINT count = whole.Read(piece.data(), static_cast<UINT>(piece.size())))
            read.append(piece.data(), count);
        ASSERT_EQ(text, read) << "in pieces of " << piece.size();

        // With a limit, pieces end at line feeds or full.
        CStdioFile limited(path.c_str(), CFile::modeRead | CFile::shareDenyNone);
        const auto limit = static_cast<std::size_t>(random.Between(2, 50));
        std::size_t position = 0;
        std::string buffer(limit + 1, '#');
        while (limited.ReadString(buffer.data(), static_cast<UINT>(limit))) {
            const std::string expected =
                text.substr(position, std::min(text.find('\n', position), text.size() - 1) + 1 - position).substr(0, limit - 1);
            ASSERT_EQ(expected + '\0', buffer.substr(0, expected.size() + 1));
            ASSERT_EQ('#', buffer[limit]);
            position += expected.size();
        }
        ASSERT_EQ(text.size(), position);
    }
}

TEST(StdioFile, WritingTurnsLineFeedsIntoLineEnds)
{
    const std::string path = ScratchFile("written.txt");
    {
        CStdioFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        file.WriteString("a\nb\r\n");
        file.Write("\0\n", 2);
        EXPECT_EQ(0u, ReadBytes(path).size()) << "nothing leaves the buffer early";
        EXPECT_EQ(10u, file.GetPosition());
        EXPECT_EQ(10u, file.GetLength());
    }
    EXPECT_EQ("a\r\nb\r\r\n\0\r\n"s, ReadBytes(path)) << "the destructor closes";
    CStdioFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
    file.WriteString("a\nb\n");
    file.Close();
    EXPECT_EQ("a\nb\n", ReadBytes(path));
}

TEST(StdioFile, RandomWritesMatchTheModel)
{
    Random random;
    const std::string path = ScratchFile("writes.txt");
    for (UINT type : {CFile::typeText, CFile::typeBinary}) {
        CStdioFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite | type);
        std::string model;
        for (int i = 0; i < 200; ++i) {
            const std::string bytes = RandomBytes(random, i % 50 == 0 ? 150'000 : 2000);
            file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
            for (char one : bytes)
                model += type == CFile::typeText && one == '\n' ? "\r\n" : std::string(1, one);
        }
        ASSERT_EQ(model.size(), file.GetPosition());
        file.Close();
        ASSERT_TRUE(model == ReadBytes(path));
    }
}

TEST(StdioFile, PositionsCountTheFilesBytes)
{
    const std::string path = ScratchFile("positions.txt");
    WriteBytes(path, "one\r\ntwo\r\nthree\r\n");
    CStdioFile file(path.c_str(), CFile::modeReadWrite);
    CString line;
    file.ReadString(line);
    EXPECT_EQ(5u, file.GetPosition());
    EXPECT_EQ(7u, file.Seek(2, CFile::current));
    file.ReadString(line);
    EXPECT_STREQ("o", line);
    file.Seek(5, CFile::begin);
    file.Write("TW", 2);
    EXPECT_EQ(7u, file.GetPosition());
    file.ReadString(line);
    EXPECT_STREQ("o", line) << "reading after writing goes on behind it";
    file.Write("T", 1);
    EXPECT_NE("", Thrown([&] { file.Seek(-100, CFile::current); }));
    EXPECT_EQ(11u, file.GetPosition());
    file.SeekToEnd();
    file.WriteString("x");
    file.SetLength(18);
    file.Close();
    EXPECT_EQ("one\r\nTWo\r\nThree\r\nx", ReadBytes(path));
}

TEST(StdioFile, FailedWriteIsReportedOnceAndTheFileCloses)
{
    const std::string path = ScratchFile("readonly.txt");
    WriteBytes(path, "old");
    const std::string denied = "CFileException " + std::to_string(CFileException::accessDenied);
    CStdioFile file(path.c_str(), CFile::modeRead);
    file.WriteString("new");
    EXPECT_EQ(denied, Thrown([&] { file.Flush(); }));
    EXPECT_EQ("", Thrown([&] { file.Flush(); }));
    file.WriteString("new");
    EXPECT_EQ(denied, Thrown([&] { file.Close(); }));
    EXPECT_EQ(CFile::hFileNull, file.m_hFile);
    EXPECT_EQ("CFileException " + std::to_string(CFileException::invalidFile), Thrown([&] { file.WriteString("x"); }));
    EXPECT_EQ("CNotSupportedException", Thrown([&] { file.LockRange(0, 1); }));
    EXPECT_EQ("old", ReadBytes(path));
}
