// InternationalTest.cpp: what each conversion counts, reports and leaves, on good and broken input of several pages.
#include <kelgen/text/International.h>

#include "support/Rows.h"
#include "text/Units.h"

#include <climits>
#include <cstdlib>
#include <functional>

using namespace kelgen::test;

namespace {

std::string Bytes(const CMemoryStorage& storage)
{
    return std::string(reinterpret_cast<const char*>(storage.GetAllocation()), storage.GetStorageSize());
}

std::string Bytes(const CString& text)
{
    return std::string(static_cast<LPCSTR>(text), static_cast<std::size_t>(text.GetLength()));
}

struct Scratch : CInternational
{
    using CInternational::AllocCh;
    using CInternational::AllocWch;
};

}  // namespace

TEST(International, CountsTheTerminator)
{
    using I = CInternational;
    EXPECT_EQ((std::vector<int>{4, 4, 4}),
              (std::vector<int>{I::AnsiToUnicodeCount("abc"), I::OEMToUnicodeCount("abc"), I::StringToUnicodeCount("abc")}));
    for (const auto& [page, text, count] : Table<UINT, const char*, int>{
             // without the terminator; the last is an unknown page
             {1252, "abc", 3},
             {932, "a\x82\xA0z", 3},
             {1252, "", 0},
             {1252, nullptr, 0},
             {99999, "abc", 0},
         })
        EXPECT_EQ(count, I::CPToUnicodeCount(page, text)) << page;
    EXPECT_EQ((std::vector<int>{3, 4}), (std::vector<int>{I::UnicodeToAnsiCount(u"\x3042z"_w), I::UnicodeToOEMCount(u"abc"_w)}));
    EXPECT_EQ((std::vector<int>{4, 0}), (std::vector<int>{I::UnicodeToLatin1Count(u"abc"_w), I::UnicodeToLatin1Count(nullptr)}));
    EXPECT_EQ((std::vector<int>{4, 3, 0}),
              (std::vector<int>{I::StringToLatin1Count("abc"), I::StringToShiftJisCount("\xE0"), I::StringToLatin1Count(nullptr)}));
}

TEST(International, DirectConversionsReportTheConverter)
{
    for (const auto& [name, convert, unit] : Table<const char*, std::function<bool(unsigned short*, int)>, char16_t>{
             {"Ansi", [](unsigned short*dst, int n) { return CInternational::AnsiToUnicode(dst, n, "a\xE9"); }, u'\x00E9'},
             {"OEM", [](unsigned short*dst, int n) { return CInternational::OEMToUnicode(dst, n, "a\x82"); }, u'\x00E9'},
             {"CP", [](unsigned short*dst, int n) { return CInternational::CPToUnicode(932, dst, n, "a\x82\xA0"); }, u'\x3042'},
         }) {
        SCOPED_TRACE(name);
        unsigned short units[4] = {1, 1, 1, 1};
        EXPECT_FALSE(convert(units, 2)) << "no room for the terminator";
        EXPECT_EQ(unit, units[1]) << "what fits is filled";
        EXPECT_EQ(1, units[2]);
        EXPECT_TRUE(convert(units, 3));
        EXPECT_EQ((std::pair{0, 1}), (std::pair<int, int>{units[2], units[3]}));
    }

    char bytes[4];
    EXPECT_FALSE(CInternational::UnicodeToAnsi(bytes, 2, u"ab"_w));
    EXPECT_TRUE(CInternational::UnicodeToAnsi(bytes, 4, u"\x00E9\x0100\x3042"_w));
    EXPECT_STREQ("\xE9"
                 "A?",
                 bytes);
    EXPECT_TRUE(CInternational::UnicodeToOEM(bytes, 4, u"\x00E9\xD83D\xDE00"_w));
    EXPECT_STREQ("\x82??", bytes);
    EXPECT_TRUE(CInternational::UnicodeToLatin1(bytes, 4, u"\x20AC\xDE00"_w));
    EXPECT_STREQ("\x80?", bytes);
    EXPECT_FALSE(CInternational::UnicodeToLatin1(bytes, 4, nullptr));
}

TEST(International, TextsOfFixedPagesBecomeUnicode)
{
    unsigned short units[3] = {1, 1, 1};
    EXPECT_TRUE(CInternational::StringToUnicode(units, 2, "\x82\x83z"));
    EXPECT_EQ((std::vector<int>{0x00E9, 0x00E2, 1}), (std::vector<int>(units, units + 3))) << "nothing terminates";
    EXPECT_TRUE(CInternational::StringToUnicode(units, 0, "z") && CInternational::StringToUnicode(units, 2, nullptr));

    CWStr result;
    struct Case
    {
        const char* name;
        const char* text;
        int n;
        const char16_t* expected;
    };
    for (const Case& row : std::vector<Case>{
             {"count", "\xE9t\xE9!", 3, u"\x00E9t\x00E9"},
             {"all", "a\x80\x81", -1, u"a\x20AC\x0081"},
             {"ends at the first zero", "a\0b", 3, u"a"},
             {"null", nullptr, 3, u""},
         }) {
        result = u"before"_w;
        EXPECT_TRUE(CInternational::Latin1ToUnicode(result, row.text, row.n));
        EXPECT_EQ(row.expected, Units(result)) << row.name;
    }
    for (const Case& row : std::vector<Case>{
             {"with terminator", "a\x82\xA0z", 5, u"a\x3042z"},
             {"the last unit without the source's terminator", "abc", 3, u"ab"},
             {"a lead byte takes the terminator along, which stays", "a\x81", 3, u"a\x30FB"},
             {"1", "abc", 1, u""},
             {"0", "abc", 0, u""},
             {"-1", "abc", -1, u""},
             {"lowest", "abc", INT_MIN, u""},
         }) {
        result = u"before"_w;
        EXPECT_TRUE(CInternational::ShiftJisToUnicode(result, row.text, row.n));
        EXPECT_EQ(row.expected, Units(result)) << row.name;
    }
}

TEST(International, CPToUnicodeFillsTheStringAndReportsFailure)
{
    CWStr text(u"before"_w);
    const CWStr other(text);
    struct Case
    {
        UINT page;
        const char* bytes;
        bool done;
        const char16_t* expected;
    };
    for (const Case& row : std::vector<Case>{
             {932, "\x82\xA0\x88\x9F", true, u"\x3042\x4E9C"},
             {65001, "\xC3\xA9\xF0\x9F\x98\x80", true, u"\x00E9\xD83D\xDE00"},
             {65001, "\xED\xA0\x80", true, u"\xFFFD\xFFFD"},
             {99999, "abc", false, u"\xFFFD\xFFFD"},  // unchanged
             {65001, "abc\xF3", true, u"abc\xFFFD"},  // nothing of what was there before
             {65001, "\xE3\x81", true, u"\xFFFD"},
             {1361, "a\\b", true, u"a\\b"},
             {1252, "", true, u""},
         }) {
        EXPECT_EQ(row.done, CInternational::CPToUnicode(row.page, text, row.bytes)) << row.page;
        EXPECT_EQ(row.expected, Units(text)) << row.page;
    }
    EXPECT_EQ(u"before", Units(other));
}

TEST(International, StringsOfOtherPagesAreTerminatedAndAlwaysSucceed)
{
    char bytes[6] = "#####";
    EXPECT_TRUE(CInternational::StringToLatin1(bytes, 3,
                                               "\x82"
                                               "b\x84"
                                               "cd"));
    EXPECT_EQ(std::string("\xE9"
                          "b\xE4\0#",
                          5),
              std::string(bytes, 5));
    EXPECT_TRUE(CInternational::StringToShiftJis(bytes, 1, "\xE0")) << "two bytes do not fit, which is not told";
    EXPECT_EQ(0, bytes[1]);
    EXPECT_TRUE(CInternational::StringToShiftJis(bytes, 3,
                                                 "\xE0"
                                                 "bc"));
    EXPECT_EQ(std::string("\x83\xBF"
                          "b"),
              bytes);
    EXPECT_TRUE(CInternational::StringToLatin1(bytes, 0, "abc"));
    EXPECT_EQ(0, bytes[0]);
    EXPECT_TRUE(CInternational::StringToLatin1(bytes, -1, "abc"));

    CMemoryStorage storage(nullptr);
    EXPECT_TRUE(CInternational::StringToLatin1(storage, "a\x82"));
    EXPECT_EQ(std::string("a\xE9\0\0", 4), Bytes(storage));
}

TEST(International, TextsOfFixedPagesBecomeOemStrings)
{
    CString text("before");
    EXPECT_TRUE(CInternational::Latin1ToString(text, "a\xE9z", 2));
    EXPECT_EQ("a\x82", Bytes(text));
    EXPECT_TRUE(CInternational::ShiftJisToString(text, "a\x83\xBF", -1));
    EXPECT_EQ("a\xE0", Bytes(text));
    EXPECT_TRUE(CInternational::Latin1ToString(text, "a\0b", 3));
    EXPECT_EQ("a", Bytes(text));
    EXPECT_FALSE(CInternational::Latin1ToString(text, "abc", 0));
    EXPECT_FALSE(CInternational::ShiftJisToString(text, nullptr, 3));
    EXPECT_EQ("a", Bytes(text)) << "a failure leaves the text";
}

TEST(International, UnicodeFillsStringsAndStorages)
{
    CString text("before");
    EXPECT_TRUE(CInternational::UnicodeToAnsi(text, u"a\x00E9"_w));
    EXPECT_EQ("a\xE9", Bytes(text));
    EXPECT_TRUE(CInternational::UnicodeToOEM(text, u"a\x00E9"_w));
    EXPECT_EQ("a\x82", Bytes(text));
    EXPECT_TRUE(CInternational::UnicodeToOEM(text, u""_w));
    EXPECT_EQ("", Bytes(text));
    text = "before";
    EXPECT_FALSE(CInternational::UnicodeToAnsi(text, nullptr));
    EXPECT_EQ("", Bytes(text));

    CMemoryStorage storage(nullptr);
    EXPECT_TRUE(CInternational::UnicodeToAnsi(storage, u"\x00E9"_w));
    EXPECT_EQ(std::string("\xE9\0", 2), Bytes(storage));
    EXPECT_TRUE(CInternational::UnicodeToLatin1(storage, u"\x20AC"_w));
    EXPECT_EQ(std::string("\x80\0", 2), Bytes(storage));
    storage.Allocate(4);
    std::memset(storage.GetAllocation(), '#', 4);
    EXPECT_TRUE(CInternational::UnicodeToOEM(storage, u"ab"_w));
    EXPECT_EQ(std::string("ab\0#", 4), Bytes(storage)) << "one byte more, not written";
    EXPECT_FALSE(CInternational::UnicodeToOEM(storage, nullptr) || CInternational::UnicodeToAnsi(storage, nullptr));
    EXPECT_EQ(0u, storage.GetStorageSize());
}

TEST(International, CopiesBelongToTheCaller)
{
    unsigned short* const wide = CInternational::ToUnicodeDup_("a\xE9");
    EXPECT_EQ(u"a\x00E9", Units(CWStr(wide)));
    char* const bytes = CInternational::UnicodeToAnsiDup_("a\xE9");
    EXPECT_STREQ("a\xE9", bytes);
    CString text("a\0b", 3);
    char* const counted = CInternational::UnicodeToAnsiDup_(text);
    EXPECT_EQ(std::string("a\0b\0", 4), std::string(counted, 4));
    for (void* copy : {static_cast<void*>(wide), static_cast<void*>(bytes), static_cast<void*>(counted)})
        std::free(copy);
    EXPECT_EQ(nullptr, CInternational::ToUnicodeDup_(nullptr));
}

TEST(International, ScratchGrowsOnly)
{
    EXPECT_TRUE(Scratch::AllocWch(0) && Scratch::AllocWch(5000) && Scratch::AllocWch(-1) && Scratch::AllocCh(5000));
    CWStr text;
    EXPECT_TRUE(CInternational::Latin1ToUnicode(text, std::string(20000, '\xE9').c_str(), -1));
    EXPECT_EQ(std::u16string(20000, u'\x00E9'), Units(text));
    CString narrow;
    EXPECT_TRUE(CInternational::Latin1ToString(narrow, std::string(20000, '\xE9').c_str(), -1));
    EXPECT_EQ(std::string(20000, '\x82'), Bytes(narrow));
}

TEST(International, ScratchKeepsItsUnitsUntilOneMoreIsNeeded)
{
    // Room for a text, its terminator and one unit more; then pairs of bytes, behind whose units those of that text follow. More than any
    // run before.
    static int room = 30000;
    room += 2;
    CWStr text;
    ASSERT_TRUE(CInternational::Latin1ToUnicode(text, std::string(static_cast<std::size_t>(room) - 2, 'x').c_str(), -1));
    std::string pairs;
    for (int i = 0; i < room; i += 2)
        pairs += "\x82\xA0";
    EXPECT_TRUE(CInternational::ShiftJisToUnicode(text, pairs.data(), room - 1));
    EXPECT_EQ(room - 2, text.GetLength());
    EXPECT_TRUE(CInternational::ShiftJisToUnicode(text, pairs.data(), room));
    EXPECT_EQ(room / 2, text.GetLength()) << "grown, and empty for that";
    EXPECT_TRUE(CInternational::ShiftJisToUnicode(text, pairs.data(), 0));
    EXPECT_EQ(0, text.GetLength());
}

TEST(WStrCodePage, ResourceTextsFollowTheCodePage)
{
    CWStr text(u"before"_w);
    text.SetRes("a\xE9");
    EXPECT_EQ(u"a\x00E9", Units(text));
    CWStr::m_dwResourceCP = 932;
    text.SetRes("\x82\xA0z");
    EXPECT_EQ(u"\x3042z", Units(text));
    CWStr::m_dwResourceCP = 0;
    text.SetRes("");
    EXPECT_EQ(0, text.GetLength());
    text.SetRes("abc");
    const CWStr other(text);
    text.SetRes(nullptr);
    EXPECT_EQ(BlockOf(AfxGetEmptyWStr()), BlockOf(text));
    text.SetRes("");
    text.SetOEM("");
    EXPECT_EQ(BlockOf(AfxGetEmptyWStr()), BlockOf(text));
    text.SetOEM("\x82 is one of 33 characters, or 66.");
    EXPECT_EQ(u"\x00E9 is one of 33 characters, or 66.", Units(text));
    EXPECT_EQ(128, text.GetAllocLength()) << "twice the length is reserved";
    text.SetOEM(nullptr);
    EXPECT_EQ(u"", Units(text));
    EXPECT_TRUE(text.Copy("xyz", 2));
    EXPECT_EQ(u"xy", Units(text));
    EXPECT_EQ(u"abc", Units(other));
}
