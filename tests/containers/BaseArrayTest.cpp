// BaseArrayTest.cpp: stack, searches and sorting by a compare function, against slow models.
#include <kelgen/containers/BaseArray.h>

#include "Elements.h"
#include "support/NullCall.h"
#include "support/Rows.h"

#include <algorithm>
#include <climits>

using namespace kelgen::test;

namespace {

using IntArray = CBaseArray<int, int>;
using TextArray = CBaseArray<CString, const CString&>;

int Difference(const int& a, const int& b)
{
    return a - b;
}

// Every comparison in the order of asking.
std::vector<std::pair<int, int>> g_asked;

int NotedDifference(const int& a, const int& b)
{
    g_asked.emplace_back(a, b);
    return a - b;
}

int TextOrder(const CString& a, const CString& b)
{
    return a.Compare(b);
}

}  // namespace

TEST(BaseArray, ConstructorsFillInOrder)
{
    for (const auto& [expected, array] : Table<Ints, IntArray>{
             {{}, {}},
             {{5}, {5}},
             {{5, 1, 2}, {5, IntArray(2, 1, 2)}},
             {{7, 8, 9}, {3, 7, 8, 9}},
             {{7}, {1, 7, 8}},
             {{}, {0, 7}},
             {{}, {-2, 7}},
         })
        EXPECT_EQ(expected, ElementsOf(array));

    const TextArray texts(2, "one", "two");
    const TextArray copy(texts);
    EXPECT_EQ(ElementsOf(texts), ElementsOf(copy));
    EXPECT_NE(texts.GetData(), copy.GetData());
}

TEST(BaseArray, MisuseThrowsAndChangesNothing)
{
    IntArray array(3, 1, 2, 3);
    IntArray empty;

    EXPECT_THROW(empty.Pop(), CInvalidArgException*);
    EXPECT_THROW(empty.FirstElement(), CInvalidArgException*);
    EXPECT_THROW(empty.LastElement(), CInvalidArgException*);
    EXPECT_THROW(array.IncrementSize(-4), CInvalidArgException*);
    EXPECT_THROW(array.IncrementSize(INT_MAX), CInvalidArgException*);
    EXPECT_THROW(array.FindFirst(1, Difference, -1), CInvalidArgException*);
    EXPECT_THROW(empty.FindFirst(1, Difference, -1), CInvalidArgException*);
    EXPECT_THROW(array.Swap(0, 3), CInvalidArgException*);
    EXPECT_THROW(array.Swap(-1, 0), CInvalidArgException*);
    EXPECT_THROW(array.StdArrayElementAt(3), CInvalidArgException*);
    EXPECT_THROW(array.StdArraySetAt(-1, 0), CInvalidArgException*);
    for (int index : {4, INT_MAX, -8})
        EXPECT_THROW(array.SortFind(1, Difference, index), CInvalidArgException*);

    EXPECT_EQ(Ints({1, 2, 3}), ElementsOf(array));
    EXPECT_EQ(0, empty.GetSize());
}

TEST(BaseArray, RemoveAllKeepsTheBlockUnlessReleased)
{
    TextArray array(2, "one", "two");
    const CString* const block = array.GetData();
    array.RemoveAll(false);
    EXPECT_EQ(0, array.GetSize());
    EXPECT_EQ(block, array.GetData());
    CStdArrayInterface<CString, const CString&>& view = array;
    view.StdAdd("three");
    view.StdArraySetAt(0, "four");
    EXPECT_EQ(std::vector<CString>{"four"}, ElementsOf(array));
    EXPECT_EQ(block, array.GetData());
    view.StdRemoveAll();
    EXPECT_EQ(block, array.GetData());
    array.IncrementSize(2);
    EXPECT_EQ(std::vector<CString>(2), ElementsOf(array));

    array.RemoveAll(true);
    EXPECT_EQ(nullptr, array.GetData());
}

TEST(BaseArray, FindFirstSearchesFromTheStart)
{
    IntArray array(4, 3, 1, 3, 2);
    for (const auto& [start, at] : Table<int, int>{
             {0, 0},
             {1, 2},
             {3, -1},
             {4, -1},
             {INT_MAX, -1},
         })
        EXPECT_EQ(at, array.FindFirst(3, Difference, start)) << start;

    g_asked.clear();
    array.FindFirst(2, NotedDifference, 2);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{3, 2}, {2, 2}}), g_asked) << "the element comes first";

    // By address equality does not count.
    const int other = 3;
    EXPECT_EQ(2, array.FindFirst(&array[2]));
    for (const int* missing : {&other, static_cast<const int*>(array.GetData() + 4), static_cast<const int*>(nullptr)})
        EXPECT_EQ(-1, array.FindFirst(missing));
    EXPECT_EQ(-1, IntArray().FindFirst(&other));
}

TEST(BaseArray, DuplicatesGoAndBubbleSortAsksLaterElementFirst)
{
    IntArray array(6, 3, 1, 3, 3, 2, 1);
    array.RemoveDuplicates(Difference);
    EXPECT_EQ(Ints({3, 1, 2}), ElementsOf(array));
    array.AddUnique(1, Difference);
    array.AddUnique(4, Difference);
    EXPECT_EQ(Ints({3, 1, 2, 4}), ElementsOf(array));

    TextArray texts(5, "b", "a", "b", "a", "b");
    texts.RemoveDuplicates(TextOrder);
    EXPECT_EQ((std::vector<CString>{"b", "a"}), ElementsOf(texts));
    texts.Swap(0, 1);
    texts.Swap(1, 1);
    EXPECT_EQ((std::vector<CString>{"a", "b"}), ElementsOf(texts));

    array = IntArray(3, 2, 3, 1);
    g_asked.clear();
    array.BubbleSort(NotedDifference);
    EXPECT_EQ(Ints({1, 2, 3}), ElementsOf(array));
    EXPECT_EQ((std::vector<std::pair<int, int>>{{3, 2}, {1, 2}, {2, 3}}), g_asked);
}

TEST(BaseArray, ElementsOfTheArrayAreValidArgumentsWhileItGrows)
{
    TextArray array("first text, long enough for a block of its own");
    const std::vector<CString> expected(200, array[0]);
    while (array.GetSize() < 200) {
        array.Push(array.FirstElement());
        if (array.GetSize() < 200)
            array.InsertAt(0, array.LastElement());
        if (array.GetSize() < 200)
            array.SortAdd(array[array.GetSize() / 2], TextOrder);
    }
    EXPECT_EQ(expected, ElementsOf(array));
}

TEST(BaseArray, SortFindGivesResultPlaceAndComparisons)
{
    struct Case
    {
        const char* name;
        Ints elements;
        int wanted;
        int start;
        bool found;
        int place;
        std::size_t comparisons;
    };
    for (const Case& row : std::vector<Case>{
             {"empty", {}, 1, 5, false, 0, 0},
             {"only one", {4}, 4, 0, true, 0, 1},
             {"missing compares once more", {4}, 3, 0, false, 0, 2},
             {"below all", {9, 7, 5, 3}, 1, 0, false, 3, 4},
             {"above all", {9, 7, 5, 3}, 10, 0, false, 0, 3},
             {"bound leaves out the first", {9, 7, 5, 3}, 9, 1, false, 0, 3},
             {"bound at the end", {9, 7, 5, 3}, 3, 4, false, 3, 1},
         }) {
        SCOPED_TRACE(row.name);
        IntArray array;
        for (const int element : row.elements)
            array.Add(element);
        int index = row.start;
        g_asked.clear();
        EXPECT_EQ(row.found, array.SortFind(row.wanted, NotedDifference, index));
        EXPECT_EQ(row.place, index);
        EXPECT_EQ(row.comparisons, g_asked.size());
        for (const auto& [element, value] : g_asked)
            EXPECT_EQ(row.wanted, value) << "the element comes first";
    }
}

TEST(BaseArray, SortAddKeepsDescendingOrderAndPutsEqualsInFront)
{
    // Pairs whose order looks at the tens only, so that the units show who came when.
    const auto byTens = [](const int& a, const int& b) { return a / 10 - b / 10; };
    Random random;
    for (int round = 0; round < 200; ++round) {
        IntArray array;
        Ints model;
        const int count = random.Between(0, 60);
        for (int i = 0; i < count; ++i) {
            const int value = random.Between(0, 12) * 10 + i % 10;
            array.SortAdd(value, byTens);
            const auto place = std::find_if(model.begin(), model.end(), [&](int element) { return element / 10 <= value / 10; });
            model.insert(place, value);
            ASSERT_EQ(model, ElementsOf(array));
        }
        for (int tens = -1; tens < 14; ++tens) {
            int index = 0;
            const bool expected = std::any_of(model.begin(), model.end(), [&](int element) { return element / 10 == tens; });
            ASSERT_EQ(expected, array.SortFind(tens * 10, byTens, index)) << tens;
            ASSERT_TRUE(!expected || model[static_cast<std::size_t>(index)] / 10 == tens) << tens;
        }
    }
}

TEST(BaseArray, NullCanBeAskedForNull)
{
    IntArray array;
    EXPECT_TRUE(kelgen::test::IsNull<IntArray>(nullptr));
    EXPECT_FALSE(kelgen::test::IsNull(&array));
}
