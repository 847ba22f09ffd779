// WArchiveTest.cpp: the stored bytes of strings, damaged and hostile records, and lines over every edge.
#include <kelgen/text/WArchive.h>

#include <kelgen/framework/MemFile.h>

#include "framework/Stored.h"
#include "framework/Thrown.h"
#include "support/Random.h"
#include "support/Rows.h"
#include "text/Units.h"

#include <algorithm>

using kelgen::test::Random;
using kelgen::test::RowName;
using kelgen::test::Stored;
using kelgen::test::Thrown;
using kelgen::test::Units;
using namespace std::string_literals;

namespace {

/// An archive that loads these bytes.
class Loading
{
public:
    explicit Loading(std::string bytes, int bufferSize = 4096)
        : m_bytes(std::move(bytes)), m_file(reinterpret_cast<BYTE*>(m_bytes.data()), static_cast<UINT>(m_bytes.size())),
          archive(&m_file, CArchive::load, bufferSize)
    {
    }

private:
    std::string m_bytes;
    CMemFile m_file;

public:
    CWArchive archive;
};

std::string BytesOf(const std::u16string& text)
{
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2);
}

}  // namespace

struct LengthForm
{
    const char* name;
    int length;
    std::string head;
};

class WStrRecord : public testing::TestWithParam<LengthForm> {};

TEST_P(WStrRecord, IsStoredAndLoadedAgain)
{
    std::u16string text(static_cast<std::size_t>(GetParam().length), u'x');
    for (std::size_t i = 0; i < text.size(); i += 7)
        text[i] = static_cast<char16_t>(i * 31);
    const CWStr stored(Units(text), GetParam().length);
    const std::string bytes = Stored([&](CArchive& archive) { archive << stored << CWStr(u"next"_w); });
    ASSERT_EQ(GetParam().head, bytes.substr(0, GetParam().head.size()));
    ASSERT_EQ(GetParam().head.size() + 2 * text.size() + 12, bytes.size());

    Loading loading(bytes, 128);
    CWStr loaded, next;
    loading.archive >> loaded >> next;
    EXPECT_EQ(text, Units(loaded));
    EXPECT_EQ(u"next", Units(next));
    EXPECT_EQ(std::max(stored.GetAllocLength(), 0), loaded.GetAllocLength()) << "room for the text alone";
}

INSTANTIATE_TEST_SUITE_P(, WStrRecord, testing::Values(
    LengthForm{"Empty", 0, "\xFF\xFE\xFF\0"s}, LengthForm{"One", 1, "\xFF\xFE\xFF\1"s}, LengthForm{"LastByte", 254, "\xFF\xFE\xFF\xFE"s},
    LengthForm{"FirstWord", 255, "\xFF\xFE\xFF\xFF\xFF\0"s}, LengthForm{"LastWord", 65533, "\xFF\xFE\xFF\xFF\xFD\xFF"s},
    LengthForm{"FirstLong", 65534, "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\0\0"s},
    LengthForm{"Long", 200000, "\xFF\xFE\xFF\xFF\xFF\xFF\x40\x0D\x03\0"s}), RowName);

struct NarrowRecord
{
    const char* name;
    std::string bytes;
    std::u16string text;
};

class WStrNarrowRecord : public testing::TestWithParam<NarrowRecord> {};

TEST_P(WStrNarrowRecord, IsTakenInPairs)
{
    Loading loading(GetParam().bytes + "\xFF\xFE\xFF\1z\0"s);
    CWStr loaded(u"a text that was here before"_w), next;
    loaded.LockBuffer();
    loading.archive >> loaded >> next;
    EXPECT_EQ(GetParam().text, Units(loaded));
    EXPECT_EQ(u"z", Units(next)) << "all of the record is read";
    const CWStr copy(loaded);
    EXPECT_EQ(static_cast<const unsigned short*>(loaded), static_cast<const unsigned short*>(copy)) << "no longer locked";
}

INSTANTIATE_TEST_SUITE_P(, WStrNarrowRecord, testing::Values(
    NarrowRecord{"Pair", "\2AB", u"\x4241"}, NarrowRecord{"OddByte", "\3ABC", u"\x4241\x43"}, NarrowRecord{"One", "\1A", u"A"},
    NarrowRecord{"Empty", "\0"s, u""}, NarrowRecord{"EndsAtAZeroUnit", "\6AB\0\0CD"s, u"\x4241"},
    NarrowRecord{"ZeroByteIsNoEnd", "\4A\0\0B"s, u"A\x4200"},
    NarrowRecord{"LongForm", "\xFF\xFF\xFF\2\0\0\0AB"s, u"\x4241"}), RowName);

struct BadRecord
{
    const char* name;
    std::string bytes;
    std::u16string left;  ///< What the string holds then.
};

class WStrBadRecord : public testing::TestWithParam<BadRecord> {};

TEST_P(WStrBadRecord, EndsAtTheEndOfTheFile)
{
    Loading loading(GetParam().bytes);
    CWStr text(u"old"_w);
    EXPECT_EQ("CArchiveException 3", Thrown([&] { loading.archive >> text; }));
    EXPECT_EQ(GetParam().left, Units(text));
    EXPECT_GE(64 * 1024, text.GetAllocLength()) << "nothing is allocated for bytes that are not there";
}

INSTANTIATE_TEST_SUITE_P(, WStrBadRecord, testing::Values(
    BadRecord{"Nothing", "", u"old"}, BadRecord{"CutMarker", "\xFF\xFE", u"old"}, BadRecord{"NoLength", "\xFF\xFE\xFF", u"old"},
    BadRecord{"CutText", "\xFF\xFE\xFF\2a\0b"s, u""}, BadRecord{"CutNarrowText", "\5abc", u"old"},
    BadRecord{"HostileLength", "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s + std::string(1000, 'x'), u""},
    BadRecord{"HostileNarrowLength", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s + std::string(1000, 'x'), u"old"},
    BadRecord{"TwoMarkers", "\xFF\xFE\xFF\xFF\xFE\xFF\1a\0"s, u""}), RowName);

TEST(WStrRecordDirection, WrongOneIsRefused)
{
    CMemFile file;
    CWStr text(u"old"_w);
    CArchive storing(&file, CArchive::store);
    EXPECT_EQ("CArchiveException 4", Thrown([&] { storing >> text; }));
    Loading loading("\xFF\xFE\xFF\1a\0"s);
    EXPECT_EQ("CArchiveException 2", Thrown([&] { loading.archive << text; }));
    EXPECT_EQ(u"old", Units(text));
}

struct BoundedLine
{
    const char* name;
    std::u16string source;
    int max;
    const char16_t* line;  ///< Null: none.
    char16_t next;         ///< The unit that is read after it; 0: none.
};

class WArchiveBoundedLine : public testing::TestWithParam<BoundedLine> {};

TEST_P(WArchiveBoundedLine, StopsWhereTheContractSays)
{
    Loading loading(BytesOf(GetParam().source));
    unsigned short buffer[8];
    std::fill_n(buffer, 8, 0x2A2A);
    const unsigned short* const read = loading.archive.ReadString(buffer, static_cast<UINT>(GetParam().max));
    EXPECT_EQ(GetParam().line ? buffer : nullptr, read);
    if (GetParam().line) {
        EXPECT_EQ(GetParam().line, Units(CWStr(buffer)));
    }
    WORD next = 0;
    Thrown([&] { loading.archive >> next; });
    EXPECT_EQ(GetParam().next, next);
}

INSTANTIATE_TEST_SUITE_P(, WArchiveBoundedLine, testing::Values(
    BoundedLine{"LineFeed", u"ab\ncd", 7, u"ab", u'c'}, BoundedLine{"CarriageReturn", u"ab\r\ncd", 7, u"ab", u'c'},
    BoundedLine{"LoneCarriageReturnTakesOneMore", u"ab\rcd", 7, u"ab", u'd'},
    BoundedLine{"NegativeKeepsTheLineFeed", u"ab\r\ncd", -7, u"ab\n", u'c'},
    BoundedLine{"NegativeKeepsWhateverCameLast", u"ab\rcd", -7, u"abc", u'd'},
    BoundedLine{"Full", u"abcd\n", 3, u"abc", u'd'}, BoundedLine{"FullBeforeTheEnd", u"abc\nd", 3, u"abc", u'\n'},
    BoundedLine{"EndIsTheLastThatFits", u"ab\nd", -3, u"ab\n", u'd'}, BoundedLine{"NoRoom", u"ab", 0, u"", u'a'},
    BoundedLine{"EmptyLine", u"\nab", 7, u"", u'a'}, BoundedLine{"LastLine", u"ab", 7, u"ab", 0},
    BoundedLine{"LastCarriageReturn", u"ab\r", 7, u"ab", 0}, BoundedLine{"NothingButACarriageReturn", u"\r", 7, nullptr, 0},
    BoundedLine{"Nothing", u"", 7, nullptr, 0}), RowName);

TEST(WArchiveLine, HalfAUnitIsNone)
{
    Loading loading("a\0b"s);
    CWStr line;
    EXPECT_TRUE(loading.archive.ReadString(line));
    EXPECT_EQ(u"a", Units(line));
    EXPECT_FALSE(loading.archive.ReadString(line));
}

TEST(WArchiveLine, OtherFailuresPassAndLeaveTheLineEmpty)
{
    CMemFile file;
    CWArchive storing(&file, CArchive::store);
    CWStr line(u"old"_w);
    EXPECT_EQ("CArchiveException 4", Thrown([&] { storing.ReadString(line); }));
    EXPECT_EQ(u"", Units(line));
}

namespace {

struct LineRead
{
    std::u16string text;
    BOOL read;
    bool operator==(const LineRead&) const = default;
};

std::ostream& operator<<(std::ostream& out, const LineRead& line)
{
    return out << line.text.size() << " units, " << line.read;
}

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
        Loading loading(BytesOf(source), 128 + 2 * random.Between(0, 100) + random.Between(0, 1));
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
    struct { int length; int room; } rows[] = {{0, 128}, {100, 128}, {127, 128}, {128, 256}, {300, 512}, {511, 512}, {512, 640}, {700, 768}, {5000, 5120}};
    for (const auto& row : rows) {
        Loading loading(BytesOf(std::u16string(static_cast<std::size_t>(row.length), u'x') + u"\n"));
        CWStr line;
        EXPECT_TRUE(loading.archive.ReadString(line));
        EXPECT_EQ(row.length, line.GetLength());
        EXPECT_EQ(row.room, line.GetAllocLength()) << row.length;
    }
}
