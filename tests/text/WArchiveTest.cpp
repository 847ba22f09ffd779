// WArchiveTest.cpp: the stored bytes of strings, damaged and hostile records, and lines over every edge.
#include <kelgen/text/WArchive.h>

#include <kelgen/framework/files/MemFile.h>

#include "framework/Stored.h"
#include "framework/Thrown.h"
#include "support/Random.h"
#include "support/Rows.h"
#include "text/Units.h"

#include <algorithm>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

/// An archive that loads these bytes.
struct Loading
{
    explicit Loading(std::string text, int bufferSize = 4096)
        : bytes(std::move(text)), file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size())),
          archive(&file, CArchive::load, bufferSize)
    {}

    std::string bytes;
    CMemFile file;
    CWArchive archive;
};

std::string BytesOf(const std::u16string& text)
{
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2);
}

using LineRead = std::pair<std::u16string, BOOL>;

/// The contract's reading by pieces of 128 units, unit by unit.
LineRead ModelLine(const std::u16string& source, std::size_t& at)
{
    std::u16string line;
    for (;;) {
        std::u16string piece;
        bool ended = false;
        while (piece.size() < 128 && !ended && at < source.size()) {
            char16_t unit = source[at++];
            ended = unit == u'\n' || unit == u'\r';
            if (unit == u'\r') {
                if (at == source.size())
                    break;
                unit = source[at++];
            }
            piece += unit;
        }
        const bool read = !piece.empty();
        piece = piece.substr(0, piece.find(u'\0'));
        line += piece;
        if (read && piece.size() == 128 && piece.back() != u'\n')
            continue;
        if (!line.empty() && line.back() == u'\n')
            line.pop_back();
        return {line, read};
    }
}

}  // namespace

TEST(WStrRecord, IsStoredAndLoadedAgain)
{
    for (const auto& [length, head] : Table<int, std::string>{
             {0, "\xFF\xFE\xFF\0"s},
             {1, "\xFF\xFE\xFF\1"s},
             {254, "\xFF\xFE\xFF\xFE"s},
             {255, "\xFF\xFE\xFF\xFF\xFF\0"s},
             {65533, "\xFF\xFE\xFF\xFF\xFD\xFF"s},
             {65534, "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\0\0"s},
             {200000, "\xFF\xFE\xFF\xFF\xFF\xFF\x40\x0D\x03\0"s},
         }) {
        SCOPED_TRACE(length);
        std::u16string text(static_cast<std::size_t>(length), u'x');
        for (std::size_t i = 0; i < text.size(); i += 7)
            text[i] = static_cast<char16_t>(i * 31);
        const CWStr stored = Text(text);
        const std::string bytes = Stored([&](CArchive& archive) { archive << stored << CWStr(u"next"_w); });
        ASSERT_EQ(head, bytes.substr(0, head.size()));
        ASSERT_EQ(head.size() + 2 * text.size() + 12, bytes.size());

        Loading loading(bytes, 128);
        CWStr loaded, next;
        loading.archive >> loaded >> next;
        EXPECT_EQ(text, Units(loaded));
        EXPECT_EQ(u"next", Units(next));
        EXPECT_EQ(stored.GetAllocLength(), loaded.GetAllocLength()) << "room for the text alone";
    }
}

TEST(WStrRecord, NarrowOneIsTakenInPairs)
{
    for (const auto& [bytes, text] : Table<std::string, std::u16string>{
             {"\2AB", u"\x4241"},
             {"\3ABC", u"\x4241\x43"},
             {"\xFF\3\0ABC"s, u"\x4241\x43"},  // of a length in two bytes
             {"\0"s, u""},
             {"\6AB\0\0CD"s, u"\x4241"},  // ends at a zero unit
             {"\4A\0\0B"s, u"A\x4200"},   // but not at a zero byte
             {"\xFF\xFF\xFF\2\0\0\0AB"s, u"\x4241"},
         }) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        Loading loading(bytes + "\xFF\xFE\xFF\1z\0"s);
        CWStr loaded(u"a text that was here before"_w), next;
        loaded.LockBuffer();
        loading.archive >> loaded >> next;
        EXPECT_EQ(text, Units(loaded));
        EXPECT_EQ(u"z", Units(next)) << "all of the record is read";
        EXPECT_EQ(BlockOf(loaded), BlockOf(CWStr(loaded))) << "no longer locked";
    }
}

TEST(WStrRecord, BadOneEndsAtTheEndOfTheFile)
{
    for (const auto& [name, bytes, left] : Table<const char*, std::string, std::u16string>{
             {"nothing", "", u"old"},
             {"cut marker", "\xFF\xFE", u"old"},
             {"no length", "\xFF\xFE\xFF", u"old"},
             {"cut text", "\xFF\xFE\xFF\2a\0b"s, u""},
             {"cut narrow text", "\5abc", u"old"},
             {"hostile length", "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF" + std::string(1000, 'x'), u""},
             {"hostile narrow length", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF" + std::string(1000, 'x'), u"old"},
             {"two markers", "\xFF\xFE\xFF\xFF\xFE\xFF\1a\0"s, u""},
         }) {
        SCOPED_TRACE(name);
        Loading loading(bytes);
        CWStr text(u"old"_w);
        EXPECT_EQ("CArchiveException 3", Thrown([&] { loading.archive >> text; }));
        EXPECT_EQ(left, Units(text));
        EXPECT_GE(64 * 1024, text.GetAllocLength()) << "nothing is allocated for bytes that are not there";
    }
}

TEST(WStrRecord, WrongDirectionIsRefused)
{
    CMemFile file;
    CWStr text(u"old"_w);
    CArchive storing(&file, CArchive::store);
    EXPECT_EQ("CArchiveException 4", Thrown([&] { storing >> text; }));
    Loading loading("\xFF\xFE\xFF\1a\0"s);
    EXPECT_EQ("CArchiveException 2", Thrown([&] { loading.archive << text; }));
    EXPECT_EQ(u"old", Units(text));
    CWArchive lines(&file, CArchive::store);
    EXPECT_EQ("CArchiveException 4", Thrown([&] { lines.ReadString(text); }));
    EXPECT_EQ(u"", Units(text));
}

TEST(WArchiveLine, BoundedOneStopsWhereTheContractSays)
{
    struct Case
    {
        const char* name;
        std::u16string source;
        int max;
        const char16_t* line;
        char16_t next;
    };
    for (const Case& row : std::vector<Case>{
             {"line feed", u"ab\ncd", 7, u"ab", u'c'},
             {"carriage return", u"ab\r\ncd", 7, u"ab", u'c'},
             {"lone carriage return takes one more", u"ab\rcd", 7, u"ab", u'd'},
             {"negative keeps the line feed", u"ab\r\ncd", -7, u"ab\n", u'c'},
             {"negative keeps whatever came last", u"ab\rcd", -7, u"abc", u'd'},
             {"full", u"abcd\n", 3, u"abc", u'd'},
             {"full before the end", u"abc\nd", 3, u"abc", u'\n'},
             {"end is the last that fits", u"ab\nd", -3, u"ab\n", u'd'},
             {"no room", u"ab", 0, u"", u'a'},
             {"empty line", u"\nab", 7, u"", u'a'},
             {"last line", u"ab", 7, u"ab", 0},
             {"last carriage return", u"ab\r", 7, u"ab", 0},
             {"nothing but a carriage return", u"\r", 7, nullptr, 0},
             {"nothing", u"", 7, nullptr, 0},
         }) {
        SCOPED_TRACE(row.name);
        Loading loading(BytesOf(row.source));
        unsigned short buffer[8];
        std::fill_n(buffer, 8, 0x2A2A);
        EXPECT_EQ(row.line ? buffer : nullptr, loading.archive.ReadString(buffer, static_cast<UINT>(row.max)));
        if (row.line) {
            EXPECT_EQ(row.line, Units(CWStr(buffer)));
        }
        WORD unit = 0;
        Thrown([&] { loading.archive >> unit; });
        EXPECT_EQ(row.next, unit);
    }
}

TEST(WArchiveLine, LinesOfEveryLengthMatchTheModel)
{
    Random random;
    for (int round = 0; round < 150; ++round) {
        std::u16string source;
        for (int lines = random.Between(0, 8); lines > 0; --lines) {
            const int edge = 128 * random.Between(0, 5) + random.Between(-3, 3);
            source += std::u16string(static_cast<std::size_t>(std::max(0, edge)), u'x');
            static const std::u16string ends[] = {u"\n", u"\r\n", u"\r", u"\ry", std::u16string(1, 0), u"\n\n"};
            source += ends[random.Between(0, 5)];
        }
        source += std::u16string(static_cast<std::size_t>(random.Between(0, 260)), u'z');
        // Half a unit at the end is none.
        const std::string half(static_cast<std::size_t>(round % 2), '!');
        Loading loading(BytesOf(source) + half, 128 + 2 * random.Between(0, 100) + random.Between(0, 1));
        std::size_t at = 0;
        for (int i = 0; i < 20; ++i) {
            const LineRead expected = ModelLine(source, at);
            CWStr line(u"old"_w);
            const BOOL read = loading.archive.ReadString(line);
            ASSERT_EQ(expected, (LineRead{Units(line), read})) << "line " << i;
        }
    }
}

TEST(WArchiveLine, RoomGrowsByPieces)
{
    for (const auto& [length, room] : Table<int, int>{
             {0, 128},
             {127, 128},
             {128, 256},
             {300, 512},
             {511, 512},
             {512, 640},
             {5000, 5120},
         }) {
        Loading loading(BytesOf(std::u16string(static_cast<std::size_t>(length), u'x') + u"\n"));
        CWStr line;
        EXPECT_TRUE(loading.archive.ReadString(line));
        EXPECT_EQ(length, line.GetLength());
        EXPECT_EQ(room, line.GetAllocLength()) << length;
    }
}
