// StdSortTest.cpp: the reporting quicksort.
#include <kelgen/containers/StdSort.h>

#include "Elements.h"
#include "support/Rows.h"

#include <algorithm>
#include <numeric>

using namespace kelgen::test;

namespace {

using Numbers = CBaseArray<DWORD, DWORD>;

struct Follower
{
    std::vector<std::pair<int, int>> exchanges;
    std::vector<DWORD> parallel;

    static void OnSwap(void* context, int i, int j)
    {
        auto& self = *static_cast<Follower*>(context);
        self.exchanges.emplace_back(i, j);
        if (!self.parallel.empty())
            std::swap(self.parallel[static_cast<std::size_t>(i)], self.parallel[static_cast<std::size_t>(j)]);
    }
};

int ByTens(DWORD a, DWORD b)
{
    return CStdSort::DWordCompare(a / 10, b / 10);
}

}  // namespace

TEST(StdSort, QuickSortReportsEveryExchange)
{
    for (const auto& [before, after, exchanges] : Table<std::vector<DWORD>, std::vector<DWORD>, std::vector<std::pair<int, int>>>{
             {{}, {}, {}},
             {{1}, {1}, {}},
             {{1, 2}, {1, 2}, {}},
             {{2, 1}, {1, 2}, {{1, 0}}},
             {{3, 1, 2}, {1, 2, 3}, {{2, 0}, {1, 0}}},
             {{2, 3, 1}, {1, 2, 3}, {{2, 0}, {1, 2}}},
             {{5, 5, 5}, {5, 5, 5}, {}},
         }) {
        Numbers numbers;
        for (const DWORD number : before)
            numbers.Add(number);
        Follower follower;
        CStdSort::QuickSort(numbers, CStdSort::DWordCompare, Follower::OnSwap, &follower);
        EXPECT_EQ(after, ElementsOf(numbers));
        EXPECT_EQ(exchanges, follower.exchanges) << testing::PrintToString(before);
    }
}

TEST(StdSort, QuickSortSortsAndTheReportsKeepAnotherArrayInStep)
{
    Random random;
    for (int round = 0; round < 300; ++round) {
        Numbers numbers;
        FillRandomly(numbers, random, 200, round % 2 == 0 ? 30 : 100000);
        Follower follower;
        follower.parallel = ElementsOf(numbers);
        std::vector<DWORD> sorted = follower.parallel;
        std::sort(sorted.begin(), sorted.end());

        CStdSort::QuickSort(numbers, ByTens, Follower::OnSwap, &follower);
        ASSERT_EQ(follower.parallel, ElementsOf(numbers));
        ASSERT_TRUE(std::is_sorted(follower.parallel.begin(), follower.parallel.end(), [](DWORD a, DWORD b) { return a / 10 < b / 10; }));
        CStdSort::QuickSort(numbers, CStdSort::DWordCompare, nullptr, nullptr);
        ASSERT_EQ(sorted, ElementsOf(numbers));
    }
}

TEST(StdSort, TheReportMayGrowTheArrayAndFindsACutOneRefused)
{
    Numbers numbers(4, 3u, 1u, 4u, 2u);
    CStdSort::QuickSort(
        numbers, CStdSort::DWordCompare, [](void* context, int, int) { static_cast<Numbers*>(context)->SetSize(10000); }, &numbers);
    std::vector<DWORD> first = ElementsOf(numbers);
    first.resize(4);
    EXPECT_EQ((std::vector<DWORD>{1, 2, 3, 4}), first);

    Numbers cut(3, 3u, 1u, 2u);
    const auto cutShort = [](void* context, int, int) { static_cast<Numbers*>(context)->SetSize(0); };
    EXPECT_THROW(CStdSort::QuickSort(cut, CStdSort::DWordCompare, cutShort, &cut), CInvalidArgException*);
}

TEST(StdSort, DoubleWordsAreUnsignedAndBubbleSortIsSigned)
{
    EXPECT_EQ(1, CStdSort::DWordCompare(0x80000000u, 1));
    EXPECT_EQ(-1, CStdSort::DWordCompare(1, 0xFFFFFFFFu));
    EXPECT_EQ(0, CStdSort::DWordCompare(7, 7));

    int values[] = {3, -1, 2, -7};
    CStdSort::BubbleSort(values, 3);
    EXPECT_EQ(Ints({-1, 2, 3, -7}), Ints(values, values + 4));
    CStdSort::BubbleSort(nullptr, 0);
    CStdSort::BubbleSort(values, -1);
}
