// WStrTest.cpp: blocks, sharing, locking and capacity.
#include <kelgen/text/WStr.h>

#include "support/Rows.h"
#include "text/Units.h"

#include <thread>

using namespace kelgen::test;

namespace {

bool SharesBlock(const CWStr& left, const CWStr& right)
{
    return BlockOf(left) == BlockOf(right);
}

CWStr Letters(int n)
{
    return Text(std::u16string(static_cast<std::size_t>(n), u'x'));
}

}  // namespace

TEST(WStr, EveryWayToTheEmptyStringEndsInTheSharedBlockWhichNothingWrites)
{
    const unsigned short* const empty = AfxGetEmptyWStr();
    CWStr emptied(u"abc"_w), released(u"abc"_w), cut(u"abc"_w);
    emptied.Empty();
    released.Release();
    cut.Delete(0, 3);
    cut.FreeExtra();
    for (const unsigned short* block :
         {BlockOf(emptied), BlockOf(released), BlockOf(cut), BlockOf(CWStr(u""_w)), BlockOf(CWStr(u"abc"_w, 0)),
          BlockOf(CWStr(static_cast<const unsigned short*>(nullptr))), BlockOf(CWStr(static_cast<unsigned short>('x'), 0)),
          BlockOf(CWStr() + CWStr()), BlockOf(CWStr(u"abc"_w).Mid(1, 0))})
        EXPECT_EQ(empty, block);

    for (void (*const write)(CWStr&) : std::initializer_list<void (*)(CWStr&)>{[](CWStr& s) {
                                                                                   s.ReleaseBuffer(0);
                                                                                   s.ReleaseBuffer();
                                                                                   s.GetBufferSetLength(0);
                                                                               },
                                                                               [](CWStr& s) {
                                                                                   s.LockBuffer();
                                                                                   s.UnlockBuffer();
                                                                               },
                                                                               [](CWStr& s) {
                                                                                   s.AssignCopy(0, nullptr);
                                                                                   s = CWStr();
                                                                               },
                                                                               [](CWStr& s) {
                                                                                   s.MakeUpper();
                                                                                   s.MakeReverse();
                                                                                   s.TrimLeft();
                                                                                   s.TrimRight();
                                                                               },
                                                                               [](CWStr& s) {
                                                                                   s.Remove('x');
                                                                                   s.Replace(u"x"_w, u"y"_w);
                                                                                   s.Replace('x', 'y');
                                                                               }}) {
        CWStr text;
        write(text);
        EXPECT_EQ(empty, BlockOf(text));
    }
    const CWStrData* const data = AfxGetEmptyWStr().GetData();
    EXPECT_EQ((std::vector<int>{-1, 0, 0, 0}),
              (std::vector<int>{static_cast<int>(data->nRefCount), data->nLength, data->nAllocLength, data->data()[0]}));
}

TEST(WStr, CapacityIsThatOfTheClass)
{
    for (const auto& [length, capacity] : Table<int, int>{
             {1, 8},
             {8, 8},
             {9, 64},
             {64, 64},
             {65, 128},
             {128, 128},
             {129, 256},
             {256, 256},
             {257, 512},
             {512, 512},
             {513, 513},
             {100000, 100000},
         }) {
        SCOPED_TRACE(length);
        CWStr text = Letters(length);
        EXPECT_EQ(capacity, text.GetAllocLength());
        EXPECT_EQ(1, text.GetData()->nRefCount);
        text.FreeExtra();
        while (text.GetLength() < capacity)
            text += static_cast<unsigned short>('x');
        EXPECT_EQ(capacity, text.GetAllocLength());
        EXPECT_EQ(Units(Letters(capacity)), Units(text));
    }

    struct Case
    {
        int length;
        int room;
        int got;
        int kept;
    };
    for (const Case& row : std::vector<Case>{
             {600, 700, 700, 600},
             {10, 100, 128, 64},
         }) {
        CWStr text = Letters(row.length);
        text.GetBuffer(row.room);
        EXPECT_EQ(row.got, text.GetAllocLength());
        text.FreeExtra();
        EXPECT_EQ(row.kept, text.GetAllocLength()) << "no less than the class keeps";
    }
}

TEST(WStr, AppendingToALongTextLooksLikeANewBlockOfThatLength)
{
    CWStr text = Letters(500);
    CWStr longest;
    for (int length = 501; length <= 5000; ++length) {
        text += static_cast<unsigned short>('a' + length % 26);
        ASSERT_EQ(length <= 512 ? 512 : length, text.GetAllocLength());
        ASSERT_EQ(0, text.GetData()->data()[length]);
        if (length % 16 == 0)
            longest = text;
    }
    EXPECT_EQ(4992, longest.GetLength()) << "a sharer keeps what it had";
    for (int i = 500; i < 5000; ++i)
        ASSERT_EQ('a' + (i + 1) % 26, text[i]);

    CWStr itself = Letters(1100);
    itself.ConcatInPlace(30, itself.GetData()->data() + 1070);
    EXPECT_EQ(Units(Letters(1100)) + Units(Letters(1100)).substr(1070), Units(itself)) << "from its own end";

    CWStr locked = Letters(1100);
    locked.LockBuffer();
    locked += static_cast<unsigned short>('x');
    EXPECT_EQ(1, locked.GetData()->nRefCount) << "the new block is not locked";
}

TEST(WStr, CopiesAndWholePartsShareUntilOneIsWritten)
{
    const CWStr original(u"abc"_w);
    CWStr copy(original);
    CWStr assigned;
    assigned = copy;
    EXPECT_TRUE(SharesBlock(original, assigned));
    EXPECT_EQ(3, original.GetData()->nRefCount);
    copy.SetAt(0, 'S');
    EXPECT_EQ(2, original.GetData()->nRefCount);
    assigned = u"other"_w;
    EXPECT_EQ(1, original.GetData()->nRefCount);
    EXPECT_EQ(u"abc", Units(original));

    for (const CWStr& whole :
         {original.Mid(0), original.Mid(-1, 99), original.Left(3), original.Right(10), original.SpanIncluding(u"cba"_w)})
        EXPECT_TRUE(SharesBlock(original, whole));
    EXPECT_FALSE(SharesBlock(original, original.Mid(0, 2)));
}

TEST(WStr, WritersThatFindNothingToDoKeepTheSharing)
{
    CWStr text(u"abc"_w);
    const CWStr other(text);
    EXPECT_EQ(3, text.Delete(3, 1));
    EXPECT_EQ(3, text.Delete(1, 0));
    EXPECT_EQ(0, text.Replace('a', 'a'));
    EXPECT_EQ(0, text.Replace(u"x"_w, u"y"_w));
    for (const unsigned short* none : {u""_w, static_cast<const unsigned short*>(nullptr)}) {
        EXPECT_EQ(3, text.Insert(1, none));
        EXPECT_EQ(0, text.Replace(none, u"y"_w));
        text.TrimLeft(none);
        text += none;
    }
    EXPECT_TRUE(SharesBlock(text, other));
    EXPECT_EQ(0, text.Replace('x', 'y'));
    EXPECT_FALSE(SharesBlock(text, other)) << "replacing a unit copies before it looks";
}

TEST(WStr, AssignmentFromEmptyKeepsTheOwnBlockUnlessItIsShared)
{
    CWStr text(u"abc"_w);
    const unsigned short* const block = text;
    text = CWStr();
    EXPECT_EQ(0, text.GetLength());
    text = u"de"_w;
    EXPECT_EQ(block, BlockOf(text));
    const CWStr other(text);
    text = CWStr();
    EXPECT_TRUE(SharesBlock(text, AfxGetEmptyWStr()));
    EXPECT_EQ(u"de", Units(other));
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
    EXPECT_EQ(u"abc|abc|abc|Xbc", Units(copy) + u"|" + Units(assigned) + u"|" + Units(moved) + u"|" + Units(locked));
    EXPECT_EQ(own, BlockOf(assigned)) << "assignment from a locked string copies into the own block";
}

TEST(WStr, LockedStringsKeepTheirBlockUntilItIsTooSmall)
{
    CWStr locked(u"abc"_w);
    const unsigned short* const block = locked.LockBuffer();
    locked = CWStr(u"assigne"_w);
    EXPECT_EQ(u"assigne", Units(locked));
    locked.Empty();
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

TEST(WStr, MovedFromStringsStayValid)
{
    CWStr source(u"abc"_w), target(std::move(source));
    EXPECT_EQ(u"abc", Units(target));
    source = u"new"_w;
    target = std::move(source);
    source += u"!"_w;
    CWStr& same = target;
    target = std::move(same);
    EXPECT_EQ(u"new", Units(target));
}

TEST(WStr, RepeatConstructorFillsBytes)
{
    const CWStr text(static_cast<unsigned short>(0x4178), 5);
    EXPECT_EQ(5, text.GetLength());
    EXPECT_EQ((std::vector<int>{0x7878, 0x7878, 0x78, 0}), (std::vector<int>{text[0], text[1], text[2] & 0xFF, text[5]}));
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

    EXPECT_EQ(std::u16string(u"a\0b\0c", 5), Units(CWStr(u"a\0b"_w, 3) + CWStr(u"\0c"_w, 2)));
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
