// WStrArrayTest.cpp: the wide tokenizer, and lists of 16-bit strings.
#include <kelgen/text/WStrArray.h>

#include <kelgen/containers/Fast2DWStrArray.h>
#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/MemFile.h>
#include <kelgen/text/WStrTokenizer.h>

#include "support/Random.h"
#include "support/Rows.h"
#include "text/Units.h"

#include <algorithm>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

using Texts = std::vector<std::u16string>;

Texts TextsOf(const CWStrArray& array)
{
    Texts texts;
    for (int i = 0; i < array.GetSize(); ++i)
        texts.push_back(Units(array[i]));
    return texts;
}

CWStrArray ArrayOf(const Texts& texts)
{
    CWStrArray array;
    for (const std::u16string& text : texts)
        array.Add(Text(text));
    return array;
}

int ByUnits(const unsigned short* left, const unsigned short* right)
{
    return wcscmp(kelgen::AsWide(left), kelgen::AsWide(right));
}

/// What has no form in an archive.
struct Plain
{
    using MovableBitwise = Plain;
    CWStr text;
};

}  // namespace

TEST(WStrTokenizer, StepsOneUnitPastTheSeparatorsStart)
{
    struct Case
    {
        const char* name;
        std::u16string text;
        const char16_t* separator;
        bool withSeparator;
        Texts expected;
    };
    for (const Case& row : std::vector<Case>{
             {"at both ends", u",a,", u",", false, {u"", u"a"}},
             {"overlapping", u"a:::", u"::", false, {u"a", u"", u":"}},
             {"long separator included", u"a::b", u"::", true, {u"a:", u":b"}},
             {"included", u"a,,b", u",", true, {u"a,", u",", u"b"}},
             {"missing", u"abc", u",", true, {u"abc"}},
             {"no text", u"", u",", false, {}},
             {"empty separator", u"ab", u"", false, {u"", u"", u""}},
             {"null separator included", u"ab", nullptr, true, {u"a", u"b", u""}},
             {"a zero hides separators", u"a,b"s + u'\0' + u"c,d", u",", false, {u"a", u"b"s + u'\0' + u"c,d"}},
         }) {
        SCOPED_TRACE(row.name);
        CWStrTokenizer tokenizer(Units(row.text), static_cast<int>(row.text.size()));
        for (int round = 0; round < 2; ++round) {
            Texts tokens;
            CWStr token(u"before"_w);
            // No more than 20: a tokenizer that does not end shows as a wrong list.
            while (tokens.size() < 20 && tokenizer.GetNextToken(token, row.separator ? Units(row.separator) : nullptr, row.withSeparator))
                tokens.push_back(Units(token));
            EXPECT_EQ(row.expected, tokens) << "round " << round;
            EXPECT_EQ(tokens.empty() ? u"before" : tokens.back(), Units(token)) << "the end leaves the token alone";
            tokenizer.Restart();
        }
    }
}

TEST(WStrTokenizer, CopiesKeepTheirPlaces)
{
    const auto next = [](CWStrTokenizer& tokenizer) {
        CWStr token;
        tokenizer.GetNextToken(token, u" "_w, false);
        return Units(token);
    };
    CWStr text(u"a b c"_w), token(u","_w), list(u"1,2"_w);
    CWStrTokenizer first(text);
    next(first);
    CWStrTokenizer second(first);
    EXPECT_EQ(u"b", next(second));
    first = second;
    EXPECT_EQ(u"c", next(first));
    text = u"x"_w;
    second.Restart(text);
    EXPECT_EQ(u"x", next(second));
    second.Restart(list);
    second.GetNextToken(token, token, false);
    EXPECT_EQ(u"1", Units(token)) << "a token may be the separator";
}

TEST(WStrArray, AddsUniqueTextsByCaseAndFindsThemWithout)
{
    CWStrArray unique = ArrayOf({u"abc"});
    for (const unsigned short* text : {u"abc"_w, u"Abc"_w, static_cast<const unsigned short*>(nullptr), u""_w})
        unique.AddUnique(text);
    EXPECT_EQ(Texts({u"abc", u"Abc", u""}), TextsOf(unique));
    EXPECT_EQ(0, unique.FindFirstNoCase(u"ABC"_w));
    EXPECT_EQ(2, unique.FindFirstNoCase(u""_w));
    EXPECT_EQ(-1, unique.FindFirstNoCase(u"ab"_w));
}

TEST(WStrArray, SearchAndJoiningEqualTheObviousLoops)
{
    Random random;
    const auto randomText = [&random] {
        std::u16string text;
        for (int length = random.Between(0, 20); length > 0; --length)
            text += u"aAbB@`[{\u00E9\u212A"[random.Between(0, random.Between(0, 9))];
        return text;
    };
    for (int round = 0; round < 500; ++round) {
        CWStrArray array;
        const std::u16string separator = Texts{u"", u",", u", "}[static_cast<std::size_t>(random.Between(0, 2))];
        std::u16string expected;
        for (int i = 0, count = random.Between(0, 30); i < count; ++i) {
            const std::u16string text = randomText();
            array.Add(Units(text));
            expected += (i > 0 ? separator : u"") + text;
        }
        CWStr joined;
        array.GetFormatString(joined, Units(separator));
        ASSERT_EQ(expected, Units(joined));

        const std::u16string sought = randomText();
        int first = 0;
        while (first < array.GetSize() && array[first].CollateNoCase(Units(sought)) != 0)
            ++first;
        ASSERT_EQ(first < array.GetSize() ? first : -1, array.FindFirstNoCase(Units(sought)));
    }
}

TEST(WStrArray, AddsWhatTheTokenizerHandsOut)
{
    Random random;
    const auto randomText = [&random](int length) {
        std::u16string text;
        for (; length > 0; --length)
            text += static_cast<char16_t>(random.Between('a', 'c'));
        return text;
    };
    for (int round = 0; round < 500; ++round) {
        const std::u16string text = randomText(round < 20 ? 0 : random.Between(0, 60));
        const std::u16string separator = randomText(random.Between(0, 3));
        const bool addEmpty = random.Between(0, 1) != 0;
        Texts expected;
        CWStrTokenizer tokenizer{Text(text)};
        for (CWStr token; tokenizer.GetNextToken(token, Units(separator), false) != 0;) {
            if (addEmpty || !token.IsEmpty())
                expected.push_back(Units(token));
        }
        CWStrArray array;
        array.AddTokens(Units(text), Units(separator), addEmpty);
        ASSERT_EQ(expected, TextsOf(array));
    }
}

TEST(WStrArray, OnlyUsedEntriesCount)
{
    CWStrArray array = ArrayOf({u" a ", u" b ", u" c "});
    array.RemoveAll();
    EXPECT_EQ(-1, array.FindFirstNoCase(u" a "_w));
    CWStr text(u"before"_w);
    array.GetFormatString(text, u","_w);
    EXPECT_EQ(u"", Units(text));
    EXPECT_EQ(0, array.Add(u" z "_w));
    array.TrimLeft();
    EXPECT_EQ(Texts({u"z "}), TextsOf(array));
    array.TrimRight();
    EXPECT_EQ(Texts({u"z"}), TextsOf(array));
    EXPECT_EQ(u" b ", Units(array[1])) << "unused slots are left alone";
    array.AddUnique(u" b "_w);
    EXPECT_EQ(2, array.GetSize());

    const CWStrArray copy(array);
    EXPECT_EQ(TextsOf(array), TextsOf(copy));
    EXPECT_EQ(3, (static_cast<const CArray<CWStr, const CWStr&>&>(copy).GetCount())) << "unused slots are copied";
    array = *&array;
    EXPECT_EQ(TextsOf(copy), TextsOf(array));
}

TEST(WStrArray, Joins)
{
    CWStr text;
    CWStrArray array = ArrayOf({u"a", u"b", u"c"});
    array.GetFormatString(text, u", "_w);
    EXPECT_EQ(u"a, b, c", Units(text));
    array.GetFormatString(text, nullptr);
    EXPECT_EQ(u"abc", Units(text));
    array.GetFormatString(array[1], array[2]);
    EXPECT_EQ(Texts({u"a", u"acbcc", u"c"}), TextsOf(array)) << "result and separator may be entries";
    ArrayOf({u"x"s + u'\0' + u"y"}).GetFormatString(text, u"-"_w);
    EXPECT_EQ(u"x"s + u'\0' + u"y", Units(text));
    ArrayOf({u"", u""}).GetFormatString(text, u""_w);
    EXPECT_EQ(u"", Units(text));
}

TEST(WStrArray, ArchivesHoldTheUsedEntries)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        CWStrArray array = ArrayOf({u"one", u"", u"removed"});
        array.RemoveAt(2);
        array.Serialize(archive);
        CFast2DWStrArray rows;
        rows.Add(array);
        rows.Add(CWStrArray());
        rows.Serialize(archive);
        CArray<Plain, const Plain&> formless;
        formless.SetSize(3);
        EXPECT_THROW(formless.Serialize(archive), CNotSupportedException*) << "before the count is written";
    }
    constexpr int kCount = 2;
    constexpr int kRecords = 4 + 2 * 3 + 4;
    EXPECT_EQ(2u * (kCount + kRecords) + 2 * kCount, file.GetLength());
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    CWStrArray array = ArrayOf({u"a", u"b", u"c"});
    array.Serialize(archive);
    EXPECT_EQ(Texts({u"one", u""}), TextsOf(array));
    CFast2DWStrArray rows;
    rows.Serialize(archive);
    ASSERT_EQ(2, rows.GetSize());
    EXPECT_EQ(Texts({u"one", u""}), TextsOf(rows[0]));
    EXPECT_EQ(0, rows[1].GetSize());
}

TEST(WStrArray, SortKeepsLockedBuffersAndUnusedEntriesInPlace)
{
    Texts texts;
    for (int i = 0; i < 100; ++i)
        texts.push_back(std::u16string(1, static_cast<char16_t>('a' + (i * 37 + 50) % 101)));
    CWStrArray array = ArrayOf(texts);
    array.Add(u"Z"_w);
    array.RemoveAt(100);
    const unsigned short* const buffer = array[0].LockBuffer();
    array.Sort(ByUnits);
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts, TextsOf(array));
    EXPECT_EQ(buffer, BlockOf(array[0]));
    array[0].UnlockBuffer();
}

TEST(WStrArray, SortChecksEveryAccess)
{
    static CWStrArray array;
    array = ArrayOf({u"b", u"a", u"c"});
    const auto removeEverything = [](const unsigned short*, const unsigned short*) {
        static_cast<CArray<CWStr, const CWStr&>&>(array).RemoveAll();
        return 1;
    };
    EXPECT_THROW(array.Sort(removeEverything), CInvalidArgException*);
    array.RemoveAll();
}

TEST(Fast2DWStrArray, RowsAndTextsAreKept)
{
    CFast2DWStrArray rows;
    rows.EnsureSize(2);
    rows[0].Add(u"a"_w);
    rows[1].Add(u"b"_w);
    rows[1].Add(u"c"_w);
    const CFast2DWStrArray copy(rows);
    rows.BubbleSortByGetSize(false);
    EXPECT_EQ(Texts({u"b", u"c"}), TextsOf(rows[0]));

    const CWStr* const slot = &rows[0][0];
    static_cast<CStdArrayInterface<CWStrArray, const CWStrArray&>&>(rows).StdRemoveAll();
    EXPECT_EQ(0, rows.GetSize());
    rows.EnsureSize(2);
    EXPECT_EQ(0, rows[0].GetSize());
    EXPECT_EQ(0, rows[1].GetSize());
    EXPECT_EQ(slot, &rows[0][0]);
    EXPECT_EQ(u"b", Units(rows[0][0]));
    EXPECT_EQ(Texts({u"b", u"c"}), TextsOf(copy[1])) << "a copy has rows of its own";
}
