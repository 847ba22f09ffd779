// WStrTest.cpp: blocks, sharing, locking and capacity.
#include <kelgen/text/WStr.h>

#include "text/Units.h"

#include "support/Random.h"
#include "support/Rows.h"

#include <algorithm>
#include <thread>

namespace {


using kelgen::test::Units;

const unsigned short* BlockOf(const CWStr& text)
{
    return text;
}

bool SharesBlock(const CWStr& left, const CWStr& right)
{
    return BlockOf(left) == BlockOf(right);
}

CWStr Letters(int n)
{
    return CWStr(Units(std::u16string(static_cast<std::size_t>(n), u'x')), n);
}

}  // namespace

TEST(WStr, EveryWayToTheEmptyStringEndsInTheSharedBlock)
{
    const unsigned short* const empty = AfxGetEmptyWStr();
    CWStr emptied(u"abc"_w);
    emptied.Empty();
    CWStr released(u"abc"_w);
    released.Release();
    CWStr cut(u"abc"_w);
    cut.Delete(0, 3);
    cut.FreeExtra();
    const CWStr copy(emptied);
    const CWStr* const all[] = {&emptied, &released, &cut, &copy};
    for (const CWStr* text : all)
        EXPECT_EQ(empty, BlockOf(*text));
    EXPECT_EQ(empty, BlockOf(CWStr()));
    EXPECT_EQ(empty, BlockOf(CWStr(u""_w)));
    EXPECT_EQ(empty, BlockOf(CWStr(u"abc"_w, 0)));
    EXPECT_EQ(empty, BlockOf(CWStr(static_cast<const unsigned short*>(nullptr))));
    EXPECT_EQ(empty, BlockOf(CWStr(static_cast<unsigned short>('x'), 0)));
    EXPECT_EQ(empty, BlockOf(CWStr() + CWStr()));
    EXPECT_EQ(empty, BlockOf(CWStr(u"abc"_w).Mid(1, 0)));
    EXPECT_EQ(0, AfxGetEmptyWStr().GetAllocLength());
}

TEST(WStr, NothingWritesTheSharedEmptyBlock)
{
    CWStr text;
    text.ReleaseBuffer(0);
    text.ReleaseBuffer();
    text.GetBufferSetLength(0);
    text.LockBuffer();
    text.UnlockBuffer();
    text.AssignCopy(0, nullptr);
    text.MakeUpper();
    text.MakeReverse();
    text.TrimLeft();
    text.TrimRight();
    text.Remove('x');
    text.Replace(u"x"_w, u"y"_w);
    text.Replace('x', 'y');
    text = CWStr();
    const CWStrData* const block = AfxGetEmptyWStr().GetData();
    EXPECT_EQ(-1, block->nRefCount);
    EXPECT_EQ(0, block->nLength);
    EXPECT_EQ(0, block->nAllocLength);
    EXPECT_EQ(0, block->data()[0]);
    EXPECT_TRUE(SharesBlock(text, AfxGetEmptyWStr()));
}

struct Capacity
{
    const char* name;
    int length;
    int capacity;
};

class WStrCapacity : public testing::TestWithParam<Capacity> {};

TEST_P(WStrCapacity, IsThatOfTheClass)
{
    const auto [name, length, capacity] = GetParam();
    CWStr text = Letters(length);
    EXPECT_EQ(length, text.GetLength());
    EXPECT_EQ(capacity, text.GetAllocLength());
    EXPECT_EQ(1, text.GetData()->nRefCount);
    text.FreeExtra();
    EXPECT_EQ(capacity, text.GetAllocLength());
    while (text.GetLength() < capacity)
        text += static_cast<unsigned short>('y');
    EXPECT_EQ(capacity, text.GetAllocLength());
    EXPECT_EQ(std::u16string(static_cast<std::size_t>(length), u'x') +
                  std::u16string(static_cast<std::size_t>(capacity - length), u'y'),
              Units(text));
}

INSTANTIATE_TEST_SUITE_P(, WStrCapacity,
                         testing::Values(Capacity{"One", 1, 8}, Capacity{"Eight", 8, 8}, Capacity{"Nine", 9, 64},
                                         Capacity{"SixtyFour", 64, 64}, Capacity{"SixtyFive", 65, 128},
                                         Capacity{"Third", 128, 128}, Capacity{"Fourth", 129, 256},
                                         Capacity{"FourthFull", 256, 256}, Capacity{"Fifth", 257, 512},
                                         Capacity{"FifthFull", 512, 512}, Capacity{"Heap", 513, 513},
                                         Capacity{"HeapLong", 100000, 100000}),
                         kelgen::test::RowName);

TEST(WStr, CopiesShareUntilOneIsWritten)
{
    const CWStr original(u"shared text"_w);
    CWStr copy(original);
    CWStr assigned;
    assigned = copy;
    EXPECT_TRUE(SharesBlock(original, assigned));
    EXPECT_EQ(3, original.GetData()->nRefCount);
    copy.SetAt(0, 'S');
    EXPECT_EQ(2, original.GetData()->nRefCount);
    EXPECT_EQ(u"Shared text", Units(copy));
    EXPECT_EQ(u"shared text", Units(original));
    assigned = u"other"_w;
    EXPECT_EQ(1, original.GetData()->nRefCount);
    EXPECT_EQ(u"shared text", Units(original));
}

// Every writer leaves a second holder of the block alone.
struct Writer
{
    const char* name;
    void (*write)(CWStr& text);
    const char16_t* result;
};

class WStrWriter : public testing::TestWithParam<Writer> {};

TEST_P(WStrWriter, LeavesTheOtherHolderAlone)
{
    const CWStr original(u" aXb "_w);
    CWStr written(original);
    GetParam().write(written);
    EXPECT_EQ(GetParam().result, Units(written));
    EXPECT_EQ(0, BlockOf(written)[written.GetLength()]);
    EXPECT_EQ(u" aXb ", Units(original));
    EXPECT_FALSE(SharesBlock(original, written));
    EXPECT_EQ(1, original.GetData()->nRefCount);
}

INSTANTIATE_TEST_SUITE_P(, WStrWriter, testing::Values(
    Writer{"SetAt", [](CWStr& s) { s.SetAt(4, 'z'); }, u" aXbz"},
    Writer{"InsertUnit", [](CWStr& s) { s.Insert(1, static_cast<unsigned short>('z')); }, u" zaXb "},
    Writer{"InsertText", [](CWStr& s) { s.Insert(5, u"0123456789"_w); }, u" aXb 0123456789"},
    Writer{"Delete", [](CWStr& s) { s.Delete(1, 2); }, u" b "},
    Writer{"ReplaceUnit", [](CWStr& s) { s.Replace('X', 'y'); }, u" ayb "},
    Writer{"ReplaceTextLonger", [](CWStr& s) { s.Replace(u"X"_w, u"<12345678>"_w); }, u" a<12345678>b "},
    Writer{"ReplaceTextShorter", [](CWStr& s) { s.Replace(u"aXb"_w, nullptr); }, u"  "},
    Writer{"Remove", [](CWStr& s) { s.Remove(' '); }, u"aXb"},
    Writer{"MakeUpper", [](CWStr& s) { s.MakeUpper(); }, u" AXB "},
    Writer{"MakeLower", [](CWStr& s) { s.MakeLower(); }, u" axb "},
    Writer{"MakeReverse", [](CWStr& s) { s.MakeReverse(); }, u" bXa "},
    Writer{"TrimLeft", [](CWStr& s) { s.TrimLeft(); }, u"aXb "},
    Writer{"TrimRight", [](CWStr& s) { s.TrimRight(); }, u" aXb"},
    Writer{"TrimLeftUnit", [](CWStr& s) { s.TrimLeft(static_cast<unsigned short>(' ')); }, u"aXb "},
    Writer{"TrimRightSet", [](CWStr& s) { s.TrimRight(u"b "_w); }, u" aX"},
    Writer{"AppendUnit", [](CWStr& s) { s += static_cast<unsigned short>('z'); }, u" aXb z"},
    Writer{"AppendText", [](CWStr& s) { s += u"zz"_w; }, u" aXb zz"},
    Writer{"AppendItself", [](CWStr& s) { s += s; }, u" aXb  aXb "},
    Writer{"Assign", [](CWStr& s) { s = u"n"_w; }, u"n"},
    Writer{"AssignUnit", [](CWStr& s) { s = static_cast<unsigned short>('n'); }, u"n"},
    Writer{"AssignOwnTail", [](CWStr& s) { s = static_cast<const unsigned short*>(s) + 2; }, u"Xb "},
    Writer{"BufferInside", [](CWStr& s) { s.GetBuffer(5)[0] = 'z'; }, u"zaXb "},
    Writer{"BufferBeyond", [](CWStr& s) { s.GetBuffer(600)[0] = 'z'; }, u"zaXb "},
    Writer{"BufferSetLength", [](CWStr& s) { s.GetBufferSetLength(3)[0] = 'z'; }, u"zaX"},
    Writer{"ReleaseBuffer", [](CWStr& s) { s.ReleaseBuffer(2); }, u" a"},
    Writer{"LockBuffer", [](CWStr& s) { s.LockBuffer()[0] = 'z'; }, u"zaXb "},
    Writer{"FreeExtra", [](CWStr& s) { s.FreeExtra(); }, u" aXb "},
    Writer{"Encode", [](CWStr& s) { bool marks[5]; s._EncodeV033(marks); s += static_cast<unsigned short>('z'); }, u" aXb z"},
    Writer{"Empty", [](CWStr& s) { s.Empty(); }, u""}), kelgen::test::RowName);

TEST(WStr, WritersThatFindNothingToDoKeepTheSharing)
{
    CWStr text(u"abc"_w);
    const CWStr other(text);
    EXPECT_EQ(3, text.Insert(1, u""_w));
    EXPECT_EQ(3, text.Insert(1, static_cast<const unsigned short*>(nullptr)));
    EXPECT_EQ(3, text.Delete(3, 1));
    EXPECT_EQ(3, text.Delete(1, 0));
    EXPECT_EQ(0, text.Replace('a', 'a'));
    EXPECT_EQ(0, text.Replace(u"x"_w, u"y"_w));
    EXPECT_EQ(0, text.Replace(u""_w, u"y"_w));
    EXPECT_EQ(0, text.Replace(nullptr, u"y"_w));
    text.TrimLeft(u""_w);
    text.TrimLeft(static_cast<const unsigned short*>(nullptr));
    text += u""_w;
    text += static_cast<const unsigned short*>(nullptr);
    EXPECT_TRUE(SharesBlock(text, other));
    EXPECT_EQ(0, text.Replace('x', 'y'));
    EXPECT_FALSE(SharesBlock(text, other)) << "replacing a unit copies before it looks";
}

TEST(WStr, WholePartsAreSharedAndOthersAreNot)
{
    const CWStr text(u"abc"_w);
    EXPECT_TRUE(SharesBlock(text, text.Mid(0)));
    EXPECT_TRUE(SharesBlock(text, text.Mid(-1, 99)));
    EXPECT_TRUE(SharesBlock(text, text.Left(3)));
    EXPECT_TRUE(SharesBlock(text, text.Right(10)));
    EXPECT_TRUE(SharesBlock(text, text.SpanIncluding(u"cba"_w)));
    EXPECT_FALSE(SharesBlock(text, text.Mid(0, 2)));
}

TEST(WStr, CopiesOfLockedStringsAreIndependent)
{
    CWStr locked(u"abc"_w);
    const CWStr before(locked);
    unsigned short* const buffer = locked.LockBuffer();
    EXPECT_FALSE(SharesBlock(locked, before));
    EXPECT_EQ(-1, locked.GetData()->nRefCount);
    const CWStr copy(locked);
    CWStr assigned(u"xyz"_w);
    const unsigned short* const own = assigned;
    assigned = locked;
    CWStr moved(std::move(locked));
    buffer[0] = 'X';
    EXPECT_EQ(u"abc", Units(copy));
    EXPECT_EQ(u"abc", Units(assigned));
    EXPECT_EQ(u"abc", Units(moved));
    EXPECT_EQ(u"Xbc", Units(locked));
    EXPECT_EQ(own, BlockOf(assigned)) << "assignment from a locked string copies into the own block";
}

TEST(WStr, LockedStringsKeepTheirBlockUntilItIsTooSmall)
{
    CWStr locked(u"abc"_w);
    const unsigned short* const block = locked.LockBuffer();
    locked = CWStr(u"assigne"_w);
    EXPECT_EQ(u"assigne", Units(locked));
    locked.Empty();
    EXPECT_EQ(0, locked.GetLength());
    locked += u"12345678"_w;
    EXPECT_EQ(block, BlockOf(locked));
    EXPECT_EQ(-1, locked.GetData()->nRefCount);
    locked += static_cast<unsigned short>('9');
    EXPECT_NE(block, BlockOf(locked));
    EXPECT_EQ(1, locked.GetData()->nRefCount);
    EXPECT_EQ(u"123456789", Units(locked));

    locked.LockBuffer();
    locked.UnlockBuffer();
    const CWStr shared(locked);
    EXPECT_TRUE(SharesBlock(locked, shared));
    locked.LockBuffer();
    locked.Release();
    EXPECT_TRUE(SharesBlock(locked, AfxGetEmptyWStr()));
}

TEST(WStr, AssignmentFromEmptyKeepsTheOwnBlock)
{
    CWStr text(u"abc"_w);
    const unsigned short* const block = text;
    text = CWStr();
    EXPECT_EQ(block, BlockOf(text));
    EXPECT_EQ(0, text.GetLength());
    text = u"de"_w;
    EXPECT_EQ(block, BlockOf(text));
    const CWStr other(text);
    text = CWStr();
    EXPECT_TRUE(SharesBlock(text, AfxGetEmptyWStr()));
    EXPECT_EQ(u"de", Units(other));
}

TEST(WStr, MovedFromStringsStayValid)
{
    CWStr source(u"abc"_w);
    CWStr target(std::move(source));
    EXPECT_EQ(u"abc", Units(target));
    source = u"new"_w;
    target = std::move(source);
    EXPECT_EQ(u"new", Units(target));
    source += u"!"_w;
    target = std::move(target);
    EXPECT_EQ(u"new", Units(target));
}

TEST(WStr, RepeatConstructorFillsBytes)
{
    const CWStr text(static_cast<unsigned short>(0x4178), 5);
    EXPECT_EQ(5, text.GetLength());
    EXPECT_EQ(0x7878, text[0]);
    EXPECT_EQ(0x7878, text[1]);
    EXPECT_EQ(0x78, text[2] & 0xFF);
    EXPECT_EQ(0, text[5]);
}

TEST(WStr, FreeExtraGivesBackOnlyWhatTheClassDoesNotKeep)
{
    CWStr text = Letters(600);
    text.GetBuffer(700);
    EXPECT_EQ(700, text.GetAllocLength());
    text.FreeExtra();
    EXPECT_EQ(600, text.GetAllocLength());
    CWStr shorter = Letters(10);
    shorter.GetBuffer(100);
    shorter.FreeExtra();
    EXPECT_EQ(64, shorter.GetAllocLength());
    EXPECT_EQ(u"xxxxxxxxxx", Units(shorter));
}

TEST(WStr, RawBlockMembers)
{
    CWStr text(u"0123456789"_w);
    CWStr part;
    text.AllocCopy(part, 3, 2, 6);
    EXPECT_EQ(9, part.GetLength());
    EXPECT_EQ(u"234", Units(part).substr(0, 3));
    CWStr none(u"abc"_w);
    CWStrData* const held = none.GetData();
    text.AllocCopy(none, 0, 5, 0);
    EXPECT_TRUE(SharesBlock(none, AfxGetEmptyWStr())) << "the old block is not given back";
    EXPECT_EQ(1, held->nRefCount);
    CWStr::Release(held);

    text.AllocBeforeWrite(64);
    EXPECT_EQ(u"0123456789", Units(text)) << "room enough: nothing changes";
    text.AllocBeforeWrite(65);
    EXPECT_EQ(65, text.GetLength());
    text.AssignCopy(3, u"a\0b"_w);
    EXPECT_EQ(std::u16string(u"a\0b", 3), Units(text));
    text.ReleaseBuffer();
    EXPECT_EQ(1, text.GetLength());
    text.ReleaseBuffer(1000);
    EXPECT_EQ(128, text.GetLength()) << "no further than the block";
    text.ConcatInPlace(0, nullptr);
    EXPECT_EQ(128, text.GetLength());

    const CWStr zeros = CWStr(u"a\0b"_w, 3) + CWStr(u"\0c"_w, 2);
    EXPECT_EQ(std::u16string(u"a\0b\0c", 5), Units(zeros));
    EXPECT_EQ(u"xay", Units(u"x"_w + CWStr(u"a"_w) + u"y"_w));
    EXPECT_EQ(u"xay", Units(static_cast<unsigned short>('x') + CWStr(u"a"_w) + static_cast<unsigned short>('y')));
    EXPECT_EQ(u"a", Units(CWStr(u"a"_w) + static_cast<const unsigned short*>(nullptr)));
}

TEST(WStr, BlocksPassBetweenThreads)
{
    // Each thread frees what another made, and its end gives back what it kept.
    constexpr int kThreads = 4;
    constexpr int kStrings = 3000;
    std::vector<std::vector<CWStr>> made(kThreads);
    const CWStr shared(u"everybody's"_w);
    const auto run = [](auto&& work) {
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back(work, i);
        for (std::thread& thread : threads)
            thread.join();
    };
    run([&](int i) {
        for (int n = 0; n < kStrings; ++n) {
            made[static_cast<std::size_t>(i)].push_back(Letters(1 + (n * 37) % 600));
            made[static_cast<std::size_t>(i)].push_back(shared);
        }
    });
    EXPECT_EQ(1 + kThreads * kStrings, shared.GetData()->nRefCount);
    run([&](int i) {
        std::vector<CWStr>& strings = made[static_cast<std::size_t>((i + 1) % kThreads)];
        for (CWStr& text : strings) {
            const std::u16string expected = Units(text);
            text += u"!"_w;
            EXPECT_EQ(expected + u"!", Units(text));
        }
        strings.clear();
    });
    EXPECT_EQ(1, shared.GetData()->nRefCount);
    EXPECT_EQ(u"everybody's", Units(shared));
}
