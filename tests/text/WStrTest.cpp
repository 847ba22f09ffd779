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
    EXPECT_EQ(std::u16string(static_cast<std::size_t>(length), u'x') + std::u16string(static_cast<std::size_t>(capacity - length), u'y'),
              Units(text));
}

INSTANTIATE_TEST_SUITE_P(, WStrCapacity,
                         testing::Values(Capacity{"One", 1, 8}, Capacity{"Eight", 8, 8}, Capacity{"Nine", 9, 64}, Capacity{"SixtyFour", 64, 64},
                                         Capacity{"SixtyFive", 65, 128}, Capacity{"Third", 128, 128}, Capacity{"Fourth", 129, 256},
                                         Capacity{"FourthFull", 256, 256}, Capacity{"Fifth", 257, 512}, Capacity{"FifthFull", 512, 512},
                                         Capacity{"Heap", 513, 513}, Capacity{"HeapLong", 100000, 100000}),
                         kelgen::test::RowName);
