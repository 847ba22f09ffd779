// MultibyteTest.cpp: the multibyte functions in a single-byte and a double-byte page.
#include "support/Random.h"

#include <algorithm>
#include <climits>
#include <cstring>

using kelgen::test::Random;

namespace {

using Bytes = const unsigned char*;

Bytes AsBytes(const char* text)
{
    return reinterpret_cast<Bytes>(text);
}

// Selects a multibyte page and restores the former one.
class SelectedPage
{
public:
    explicit SelectedPage(int page) : m_former(_getmbcp()) { EXPECT_EQ(0, _setmbcp(page)); }
    ~SelectedPage() { _setmbcp(m_former); }
    SelectedPage(SelectedPage&&) = delete;

private:
    int m_former;
};

// The characters for which @p test holds, as ranges.
std::string RangesOf(int (*test)(unsigned int), unsigned int end)
{
    std::string ranges;
    char digits[32];
    for (unsigned int first = 0; first < end; ++first) {
        if (!test(first))
            continue;
        unsigned int last = first;
        while (last + 1 < end && test(last + 1))
            ++last;
        std::snprintf(digits, sizeof digits, "%x-%x ", first, last);
        ranges += digits;
        first = last;
    }
    return ranges;
}

}  // namespace

struct ClassRow
{
    const char* name;
    int page;
    int (*test)(unsigned int);
    unsigned int end;
    const char* ranges;
};

TEST(MultibyteClass, HasTheRuntimesCharacters)
{
    const ClassRow rows[] = {
        {"Space", 1252, _ismbcspace, 0x10000, "9-d 20-20 a0-a0 "},
        {"Digit", 1252, _ismbcdigit, 0x10000, "30-39 b2-b3 b9-b9 "},
        {"Alpha", 1252, _ismbcalpha, 0x10000, "41-5a 61-7a 83-83 88-88 8a-8a 8c-8c 8e-8e 9a-9a 9c-9c 9e-9f c0-d6 d8-f6 f8-ff "},
        {"Upper", 1252, _ismbcupper, 0x10000, "41-5a 8a-8a 8c-8c 8e-8e 9f-9f c0-d6 d8-de "},
        {"Lower", 1252, _ismbclower, 0x10000, "61-7a 83-83 9a-9a 9c-9c 9e-9e df-f6 f8-ff "},
        {"Lead", 1252, _ismbblead, 0x100, ""},
        {"JapaneseSpace", 932, _ismbcspace, 0x10000, "9-d 20-20 8140-8140 "},
        {"JapaneseDigit", 932, _ismbcdigit, 0x10000, "30-39 824f-8258 "},
        {"JapaneseUpper", 932, _ismbcupper, 0x10000, "41-5a 81f0-81f0 8260-8279 839f-83b6 8440-8460 "},
        {"JapaneseLead", 932, _ismbblead, 0x100, "81-9f e0-fc "},
        {"JapaneseTrail", 932, _ismbbtrail, 0x100, "40-7e 80-fc "},
        {"KoreanTrail", 949, _ismbbtrail, 0x100, "41-fe "},
        {"SevenBitSpace", 20127, _ismbcspace, 0x10000, "9-d 20-20 89-8d a0-a0 "},
    };
    for (const ClassRow& row : rows) {
        SCOPED_TRACE(row.name);
        const SelectedPage page(row.page);
        EXPECT_EQ(row.ranges, RangesOf(row.test, row.end));
    }
}

TEST(Multibyte, MapsCaseOfTheCurrentPage)
{
    {
        const SelectedPage page(1252);
        EXPECT_EQ(0xC9u, _mbctoupper(0xE9));
        EXPECT_EQ(0x9Fu, _mbctoupper(0xFF));
        EXPECT_EQ(0xFFu, _mbctolower(0x9F));
        EXPECT_EQ(0xDFu, _mbctoupper(0xDF));
        EXPECT_EQ(0x8281u, _mbctoupper(0x8281));
    }
    const SelectedPage page(932);
    EXPECT_EQ(0x8260u, _mbctoupper(0x8281));
    EXPECT_EQ(0x8281u, _mbctolower(0x8260));
    EXPECT_EQ(0x81E0u, _mbctoupper(0x8790)) << "the preferred one of two codes";
    const SelectedPage oem(437);
    EXPECT_EQ('A', static_cast<char>(_mbctoupper(0x85))) << "best fit of a letter that the page lacks";
}

TEST(Multibyte, StepsByCharacter)
{
    const Bytes text = AsBytes("a\x82\xA0\x82\x5C\x5Cz");
    {
        const SelectedPage page(1252);
        EXPECT_EQ(7u, _mbslen(text));
        EXPECT_EQ(1u, _mbclen(text + 1));
        EXPECT_EQ(text + 2, _mbsdec(text, text + 3));
        EXPECT_EQ(text + 4, _mbschr(text, 0x5C));
        EXPECT_EQ(text + 2, _mbschr(text, 0x82A0)) << "only the low byte counts";
    }
    const SelectedPage page(932);
    EXPECT_EQ(5u, _mbslen(text));
    EXPECT_EQ(2u, _mbclen(text + 1));
    EXPECT_EQ(text + 3, _mbsinc(text + 1));
    EXPECT_EQ(text + 1, _mbsdec(text, text + 3));
    EXPECT_EQ(text + 3, _mbsdec(text, text + 5));
    EXPECT_EQ(nullptr, _mbsdec(text, text));
    EXPECT_EQ(text + 5, _mbschr(text, 0x5C)) << "not the second half of a character";
    EXPECT_EQ(text + 5, _mbsrchr(text, 0x5C));
    EXPECT_EQ(text + 1, _mbschr(text, 0x82A0));
    EXPECT_EQ(text + 7, _mbschr(text, 0));
    EXPECT_EQ(text + 5, _mbspbrk(text, AsBytes("\x5Cz")));
    EXPECT_EQ(3u, _mbsspn(text, AsBytes("a\x82\xA0")));
    EXPECT_EQ(3u, _mbscspn(text, AsBytes("\x82\x5C")));
    EXPECT_EQ(text, _mbsstr(text, AsBytes("")));

    EXPECT_EQ(1u, _mbclen(AsBytes("\x82"))) << "a lead byte before the terminator";
    EXPECT_EQ(1u, _mbslen(AsBytes("a\x82")));
    EXPECT_EQ(4u, _mbstrlen("a\x82\xA0z")) << "by the locale, not the page";
}

TEST(Multibyte, ComparesByCharacter)
{
    {
        const SelectedPage page(1252);
        EXPECT_EQ(-1, _mbscmp(AsBytes("\x81\x40"), AsBytes("\xA1")));
        EXPECT_EQ(-2, _mbsicmp(AsBytes("a"), AsBytes("C")));
        EXPECT_EQ(32, _mbsicmp(AsBytes("\xE9"), AsBytes("\xC9")));
    }
    const SelectedPage page(932);
    EXPECT_EQ(1, _mbscmp(AsBytes("\x81\x40"), AsBytes("\xA1")));
    EXPECT_EQ(-1, _mbsicmp(AsBytes("a"), AsBytes("C")));
    EXPECT_EQ(0, _mbsicmp(AsBytes("\x82\x60"), AsBytes("\x82\x81")));
    EXPECT_EQ(-1, _mbsicmp(AsBytes("\x82\x60"), AsBytes("\x82\x82")));
    EXPECT_EQ(INT_MAX, _mbsicmp(nullptr, AsBytes("a")));
}

// Blocks of exactly the texts' sizes: the address sanitizer sees what is read behind them.
TEST(Multibyte, CaseOfBytesEqualsTheObviousLoops)
{
    const SelectedPage page(1252);
    Random random;
    const auto lower = [](char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte; };
    const auto upper = [](char byte) { return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte; };
    for (int round = 0; round < 5000; ++round) {
        const int common = random.Between(0, round % 10 == 0 ? 200 : 40);
        std::vector<char> left, right;
        const auto add = [&random](std::vector<char>& text, int count) {
            for (; count > 0; --count)
                text.push_back("azAZ@[`{\x7F\xE1\xC1"[random.Between(0, 10)]);
        };
        add(left, common);
        for (const char byte : left)
            right.push_back(random.Between(0, 1) ? lower(byte) : byte);
        add(left, random.Between(0, 3));
        add(right, random.Between(0, 3));
        left.push_back(0);
        right.push_back(0);

        const auto differ = std::mismatch(left.begin(), left.end() - 1, right.begin(), right.end() - 1,
                                          [&](char a, char b) { return lower(a) == lower(b); });
        const int expected = static_cast<signed char>(lower(*differ.first)) - static_cast<signed char>(lower(*differ.second));
        const auto sign = [](int order) { return (order > 0) - (order < 0); };
        ASSERT_EQ(sign(expected), sign(_mbsicmp(AsBytes(left.data()), AsBytes(right.data())))) << left.data() << " | " << right.data();
        ASSERT_EQ(0, _strnicmp(left.data(), right.data(), static_cast<std::size_t>(differ.first - left.begin())));

        std::vector<char> mapped = left;
        std::transform(mapped.begin(), mapped.end(), mapped.begin(), upper);
        ASSERT_STREQ(mapped.data(), _strupr(left.data()));
        std::transform(mapped.begin(), mapped.end(), mapped.begin(), lower);
        ASSERT_STREQ(mapped.data(), _strlwr(left.data()));
    }
}

TEST(Multibyte, EditsByCharacter)
{
    const auto edited = [](unsigned char* (*edit)(unsigned char*), std::string text) {
        edit(reinterpret_cast<unsigned char*>(text.data()));
        return text;
    };
    {
        const SelectedPage page(1252);
        EXPECT_EQ("AB\x82\x81\xE9Z", edited(_mbsupr, "aB\x82\x81\xE9z")) << "the locale's case, not the page's";
    }
    const SelectedPage page(932);
    EXPECT_EQ("AB\x82\x60\xE9\x7A\x83", edited(_mbsupr, "aB\x82\x81\xE9\x7A\x83"));
    EXPECT_EQ("ab\x82\x81\xC9z", edited(_mbslwr, "aB\x82\x60\xC9Z"));
    EXPECT_EQ("z\x82\xA0"
              "a\x82",
              edited(_mbsrev, "a\x82\xA0z\x82"));

    unsigned char copy[] = "########";
    _mbsnbcpy(copy, AsBytes("a\x82\xA0z"), 2);
    EXPECT_EQ(0, std::memcmp("a\0#", copy, 3)) << "a character is not cut in two";
    _mbsnbcpy(copy, AsBytes("a\x82\xA0z"), 6);
    EXPECT_EQ(0, std::memcmp("a\x82\xA0z\0\0##", copy, 8));
}

TEST(Multibyte, PageSelectionChecksThePage)
{
    const SelectedPage page(1252);
    EXPECT_EQ(-1, _setmbcp(99999));
    EXPECT_EQ(1252, _getmbcp());
    EXPECT_EQ(0, _setmbcp(_MB_CP_OEM));
    EXPECT_EQ(static_cast<int>(GetOEMCP()), _getmbcp());
    EXPECT_EQ(0, _setmbcp(_MB_CP_LOCALE));
    EXPECT_EQ(20127, _getmbcp());
}
