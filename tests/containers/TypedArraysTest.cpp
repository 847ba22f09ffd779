// TypedArraysTest.cpp: integer and number arrays, the stack, maps and the owning array.
#include <kelgen/containers/BaseIntArray.h>
#include <kelgen/containers/BaseMap.h>
#include <kelgen/containers/BasePtrAllocArray.h>
#include <kelgen/containers/DWArray.h>
#include <kelgen/containers/DWordStack.h>

#include "Elements.h"
#include "support/Rows.h"

#include <climits>

using namespace kelgen::test;

TEST(BaseIntArray, SortAddDescends)
{
    CBaseIntArray array;
    for (const int value : {5, 7, 6})
        array.SortAdd(value);
    EXPECT_EQ(Ints({7, 6, 5}), ElementsOf(array));
    for (const auto& [value, at] : Table<int, int>{
             {5, 2},
             {7, 0},
             {4, -1},
         })
        EXPECT_EQ(at, array.SortFind(value)) << value;
    EXPECT_EQ(-1, CBaseIntArray().SortFind(4));
    EXPECT_EQ(INT_MAX, CBaseIntArray::IntCompare(INT_MIN, 1)) << "the difference wraps";
}

TEST(BaseIntArray, TextBecomesNumbers)
{
    struct Case
    {
        const char* text;
        const char* separator;
        bool keepEmpty;
        Ints numbers;
    };
    for (const Case& row : std::vector<Case>{
             {"3;1;;2", ";", true, {3, 1, -9, 2}},
             {"3;1;;2", ";", false, {3, 1, 2}},
             {";4;", ";", true, {-9, 4}},
             {"12x; -7;y", ";", false, {12, -7, 0}},
             {"1::2", "::", true, {1, 0}},  // the rest of a longer separator opens the next piece: ":2"
             {"", ";", true, {}},
             {"4294967295;99999999999999999999", ";", true, {-1, 1661992959}},  // the low 32 bits
         }) {
        CBaseIntArray array(100);
        array.AddString(row.text, row.separator, row.keepEmpty, -9);
        Ints expected = row.numbers;
        expected.insert(expected.begin(), 100);
        EXPECT_EQ(expected, ElementsOf(array)) << row.text;
    }
}

TEST(BaseIntArray, NumbersAreAppendedToText)
{
    CString out = "numbers: ";
    CBaseIntArray(3, 1, -2, 300).FormatString(out, "<%03d>", "; ");
    EXPECT_EQ("numbers: <001>; <-02>; <300>", out);
    CBaseIntArray().FormatString(out, "%d", ";");
    CBaseIntArray(7).FormatString(out, "%d", ";");
    EXPECT_EQ("numbers: <001>; <-02>; <300>7", out);

    CString own = "%d";
    CBaseIntArray(3, 1, 2, 3).FormatString(own, own, own);
    EXPECT_EQ("%d1%d2%d3", own);
}

TEST(DWArray, ItemsAreFoundAndRemovedFromTheFront)
{
    CDWArray array(4, 5u, 6u, 5u, 0xFFFFFFFFu);
    EXPECT_TRUE(array.HasItem(0xFFFFFFFFu));
    EXPECT_FALSE(array.HasItem(7));
    EXPECT_EQ(2, (array.RemoveItem(7), array.RemoveItem(5), array.FindItem(0xFFFFFFFFu)));
    EXPECT_EQ(1, array.FindItem(5));
    CDWArray copy;
    copy.Copy(array);
    copy.Copy(copy);
    EXPECT_TRUE(copy == array);
}

TEST(DWordStack, GivesBackInReverse)
{
    CDWordStack stack;
    stack.Push(5);
    stack.Push(6);
    EXPECT_EQ(6u, stack.Pop());
    EXPECT_EQ(5u, stack.Pop());
    EXPECT_THROW(stack.Pop(), CInvalidArgException*);
}

TEST(BaseMap, CopiesAreIndependent)
{
    CBaseMapIntegerToInteger map;
    for (int i = 0; i < 100; ++i)
        map.SetAt(i * 17, i);
    CBaseMapIntegerToInteger copy(map);
    map.RemoveAll();
    EXPECT_EQ(100, copy.GetCount());
    int value = -1;
    EXPECT_TRUE(copy.Lookup(99 * 17, value));
    EXPECT_EQ(99, value);
    copy = map;
    EXPECT_EQ(0, copy.GetCount());
}

namespace {

// Notes its destruction and how many elements its array still had then.
struct Owned
{
    explicit Owned(int n) : number(n) {}
    Owned(const Owned&) = default;
    virtual ~Owned()
    {
        if (array != nullptr)
            s_destroyed.emplace_back(number, array->GetCount());
    }

    int number;
    CBasePtrAllocArray<Owned, const Owned&>* array = nullptr;
    static inline std::vector<std::pair<int, int>> s_destroyed;
};

}  // namespace

TEST(BasePtrAllocArray, OwnsCopiesAndDeletesFromTheFront)
{
    CBasePtrAllocArray<Owned, const Owned&> array;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(i, array.Add(Owned(i)));
    Owned* const first = array.PtrAt(0);
    for (int i = 3; i < 50; ++i)
        array.Add(*array.PtrAt(0));
    EXPECT_EQ(first, array.PtrAt(0)) << "elements stay in place";
    EXPECT_EQ(2, array.ElementAt(2).number);
    EXPECT_THROW(array.ElementAt(50), CInvalidArgException*);
    EXPECT_THROW(array.PtrAt(-1), CInvalidArgException*);

    CBasePtrAllocArray<Owned, const Owned&> copy(array);
    auto& same = array;
    array = same;
    array = copy;
    EXPECT_EQ(50, array.GetCount());
    EXPECT_NE(copy.PtrAt(1), array.PtrAt(1));

    for (int i = 0; i < 3; ++i)
        copy.PtrAt(i)->array = &copy;
    copy.RemoveAll();
    EXPECT_EQ((std::vector<std::pair<int, int>>{{0, 50}, {1, 49}, {2, 48}}), Owned::s_destroyed);
}
