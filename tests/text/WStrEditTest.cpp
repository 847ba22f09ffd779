// WStrEditTest.cpp: editing in place, by rule and against obvious models.
#include <kelgen/text/WStr.h>

#include "text/Units.h"

#include "support/Random.h"
#include "support/Rows.h"

#include <algorithm>

using namespace kelgen::test;

namespace {

const std::u16string kZeros(u"  a \0  b  ", 10);

/// Makes @p edit of a string that is alone and of one whose block another string shares, which must keep what it had.
template <class EDIT>
void ExpectEdited(const std::u16string& before, EDIT edit, const std::u16string& after)
{
    for (const bool shared : {false, true}) {
        CWStr text = Text(before);
        const CWStr other(shared ? text : CWStr(u"x"_w));
        edit(text);
        EXPECT_EQ(after, Units(text)) << (shared ? "shared" : "alone");
        EXPECT_EQ(0, BlockOf(text)[text.GetLength()]);
        EXPECT_EQ(shared ? before : u"x", Units(other));
        if (!other.IsEmpty()) {
            EXPECT_EQ(BlockOf(text) == BlockOf(other) ? 2 : 1, other.GetData()->nRefCount);
        }
    }
}

}  // namespace

TEST(WStrEdit, ChangesTheTextAndLeavesOtherHoldersAlone)
{
    struct Case
    {
        const char* name;
        std::u16string before;
        void (*edit)(CWStr& text);
        std::u16string after;
    };
    for (const Case& row : std::vector<Case>{
             {"SetAt", u"abc", [](CWStr& s) { s.SetAt(2, 'z'); }, u"abz"},
             {"AppendUnit", u"abc", [](CWStr& s) { s += static_cast<unsigned short>('z'); }, u"abcz"},
             {"AppendText", u"abc", [](CWStr& s) { s += u"zz"_w; }, u"abczz"},
             {"AppendItself", u"abcd", [](CWStr& s) { s += s; }, u"abcdabcd"},
             {"Assign", u"abc", [](CWStr& s) { s = u"n"_w; }, u"n"},
             {"AssignUnit", u"abc", [](CWStr& s) { s = static_cast<unsigned short>('n'); }, u"n"},
             {"AssignOwnTail", u"abc", [](CWStr& s) { s = BlockOf(s) + 2; }, u"c"},
             {"BufferInside", u"abc", [](CWStr& s) { s.GetBuffer(3)[0] = 'z'; }, u"zbc"},
             {"BufferBeyond", u"abc", [](CWStr& s) { s.GetBuffer(600)[0] = 'z'; }, u"zbc"},
             {"BufferSetLength", u"abc", [](CWStr& s) { s.GetBufferSetLength(2)[0] = 'z'; }, u"zb"},
             {"ReleaseBuffer", u"abc", [](CWStr& s) { s.ReleaseBuffer(2); }, u"ab"},
             {"LockBuffer", u"abc", [](CWStr& s) { s.LockBuffer()[0] = 'z'; }, u"zbc"},
             {"FreeExtra", u"abc", [](CWStr& s) { s.FreeExtra(); }, u"abc"},
             {"Empty", u"abc", [](CWStr& s) { s.Empty(); }, u""},
             {"UpperToTheFirstZero", std::u16string(u"a\0b", 3), [](CWStr& s) { s.MakeUpper(); }, std::u16string(u"A\0b", 3)},
             {"LowerFoldsAToZ", u"AZ\x00C9[", [](CWStr& s) { s.MakeLower(); }, u"az\x00C9["},
             {"ReverseToTheFirstZero", std::u16string(u"abc\0de", 6), [](CWStr& s) { s.MakeReverse(); }, std::u16string(u"cba\0de", 6)},
             {"TrimLeftMovesAllTheRest", kZeros, [](CWStr& s) { s.TrimLeft(); }, std::u16string(u"a \0  b  ", 8)},
             {"TrimRightCutsAtTheFirstZero", kZeros, [](CWStr& s) { s.TrimRight(); }, u"  a"},
             {"TrimRightWithoutRunKeepsTheRest", std::u16string(u"a\0b ", 4), [](CWStr& s) { s.TrimRight(); }, std::u16string(u"a\0b ", 4)},
             {"TrimRightAllBlanks", u" \t\r\n\v\f", [](CWStr& s) { s.TrimRight(); }, u""},
             {"TrimWhiteOfThePage", u"\x00A0x\x00A0",
              [](CWStr& s) {
                  s.TrimLeft();
                  s.TrimRight();
              },
              u"x"},
             {"TrimLeavesOtherSpaces", u"\x2003x\x3000",
              [](CWStr& s) {
                  s.TrimLeft();
                  s.TrimRight();
              },
              u"\x2003x\x3000"},
             {"TrimUnit", u"xxaxx",
              [](CWStr& s) {
                  s.TrimLeft('x');
                  s.TrimRight('x');
              },
              u"a"},
             {"TrimLeftSet", u"xyaxy", [](CWStr& s) { s.TrimLeft(u"yx"_w); }, u"axy"},
             {"TrimRightSet", u"xyaxy", [](CWStr& s) { s.TrimRight(u"yx"_w); }, u"xya"},
             {"TrimByItself", u"abc", [](CWStr& s) { s.TrimRight(BlockOf(s)); }, u""},
             {"TrimRightNullSet", u"abc", [](CWStr& s) { s.TrimRight(static_cast<const unsigned short*>(nullptr)); }, u"abc"},
         }) {
        SCOPED_TRACE(row.name);
        ExpectEdited(row.before, row.edit, row.after);
    }
}

TEST(WStrEdit, GivesResultAndTextAndLeavesOtherHoldersAlone)
{
    struct Case
    {
        const char* name;
        std::u16string before;
        int (*edit)(CWStr& text);
        int result;
        std::u16string after;
    };
    for (const Case& row : std::vector<Case>{
             {"InsertUnitBefore", u"abc", [](CWStr& s) { return s.Insert(-5, static_cast<unsigned short>('x')); }, 4, u"xabc"},
             {"InsertUnitBeyond", u"abc", [](CWStr& s) { return s.Insert(9, static_cast<unsigned short>('x')); }, 4, u"abcx"},
             {"InsertUnitIntoEmpty", u"", [](CWStr& s) { return s.Insert(0, static_cast<unsigned short>('x')); }, 1, u"x"},
             {"InsertZeroUnit", u"abc", [](CWStr& s) { return s.Insert(1, static_cast<unsigned short>(0)); }, 4,
              std::u16string(u"a\0bc", 4)},
             {"InsertUnitWhenFull", u"12345678", [](CWStr& s) { return s.Insert(4, static_cast<unsigned short>('x')); }, 9, u"1234x5678"},
             {"InsertTextBeyond", u"abc", [](CWStr& s) { return s.Insert(99, u"xy"_w); }, 5, u"abcxy"},
             {"InsertItself", u"abc", [](CWStr& s) { return s.Insert(1, BlockOf(s)); }, 6, u"aabcbc"},
             {"DeleteReturnsTheOldLength", u"abc", [](CWStr& s) { return s.Delete(1, 1); }, 3, u"ac"},
             {"DeleteFromBefore", u"abc", [](CWStr& s) { return s.Delete(-2, 1); }, 3, u"bc"},
             {"DeleteStaysInTheText", u"abc", [](CWStr& s) { return s.Delete(1, 0x7FFFFFFF); }, 3, u"a"},
             {"ReplaceUnitBeyondZero", kZeros, [](CWStr& s) { return s.Replace(' ', '_'); }, 7, std::u16string(u"__a_\0__b__", 10)},
             {"ReplaceByItself", u"a-a", [](CWStr& s) { return s.Replace(u"-"_w, s); }, 1, u"aa-aa"},
             {"ReplaceItself", u"ab", [](CWStr& s) { return s.Replace(s, u"xyz"_w); }, 1, u"xyz"},
             {"RemoveBeyondZero", kZeros, [](CWStr& s) { return s.Remove(' '); }, 7, std::u16string(u"a\0b", 3)},
             {"RemoveZeros", kZeros, [](CWStr& s) { return s.Remove(0); }, 1, u"  a   b  "},
         }) {
        SCOPED_TRACE(row.name);
        ExpectEdited(
            row.before, [&row](CWStr& text) { EXPECT_EQ(row.result, row.edit(text)); }, row.after);
    }
}

TEST(WStrReplace, ResultsAreTheModelsInEveryRoom)
{
    Random random;
    for (int round = 0; round < 20000; ++round) {
        const auto text = [&](int longest) {
            std::u16string units;
            for (int i = random.Between(0, longest); i > 0; --i)
                units += static_cast<char16_t>(random.Between(0, 30) == 0 ? 0 : u'a' + random.Between(0, 1));
            return units;
        };
        const std::u16string before = text(round % 50 == 0 ? 1000 : 60);
        std::u16string oldText = text(3), newText = text(5), expected;
        std::erase(oldText, u'\0');
        std::erase(newText, u'\0');
        int count = 0;
        std::size_t at = 0;
        for (std::size_t hit; !oldText.empty() && (hit = before.find(oldText, at)) != std::u16string::npos; ++count) {
            expected += before.substr(at, hit - at) + newText;
            at = hit + oldText.size();
        }
        expected += before.substr(at);

        CWStr replaced = Text(before);
        const CWStr sharer(round % 3 == 0 ? replaced : CWStr());
        if (round % 3 == 1)
            replaced.GetBuffer(random.Between(0, 400));
        ASSERT_EQ(count, replaced.Replace(Units(oldText), Units(newText)));
        ASSERT_EQ(expected, Units(replaced));
        ASSERT_EQ(0, static_cast<const unsigned short*>(replaced)[replaced.GetLength()]);
        if (!sharer.IsEmpty()) {
            ASSERT_EQ(before, Units(sharer));
        }
    }
}

TEST(WStrMarks, AreStrippedAndRecorded)
{
    for (const auto& [before, after, expected] : Table<const char16_t*, const char16_t*, std::vector<bool>>{
             {u"&File", u"File", {1, 0, 0, 0, 0}},
             {u"A&&B", u"A&B", {0, 0, 0, 0}},
             {u"&", u"&", {0}},
             {u"", u"", {}},
             {u"A&&", u"A&", {0, 0, 0}},
             {u"A&&&", u"A&&", {0, 0, 0, 0}},
             {u"&A&B", u"AB", {1, 1, 0, 0}},
         }) {
        CWStr text(Units(before));
        SCOPED_TRACE(testing::PrintToString(text));
        const CWStr other(text);
        bool marks[16];
        std::fill_n(marks, 16, true);
        EXPECT_EQ(1, text._EncodeV033(marks));
        EXPECT_EQ(after, Units(text));
        EXPECT_EQ(before, Units(other));
        EXPECT_EQ(expected, std::vector<bool>(marks, marks + other.GetLength()));
        EXPECT_TRUE(marks[other.GetLength()]) << "flags beyond the text are not touched";
    }

    CWStr locked(u"&File"_w);
    const unsigned short* const block = locked.LockBuffer();
    bool marks[5];
    locked._EncodeV033(marks);
    EXPECT_EQ(u"File", Units(locked));
    EXPECT_EQ(block, BlockOf(locked)) << "a locked string stays in its block";
}
