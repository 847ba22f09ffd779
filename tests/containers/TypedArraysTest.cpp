// TypedArraysTest.cpp: integer and number arrays, the stack, maps and the owning array.
#include <kelgen/containers/BaseIntArray.h>
#include <kelgen/containers/BaseMap.h>
#include <kelgen/containers/BaseMapPtrToPtr.h>
#include <kelgen/containers/BasePtrAllocArray.h>
#include <kelgen/containers/DWArray.h>
#include <kelgen/containers/DWordStack.h>

#include "Elements.h"

#include <climits>

using namespace kelgen::test;

TEST(BaseIntArray, SortAddDescends)
{
    CBaseIntArray array;
    for (const int value : {5, 7, 6})
        array.SortAdd(value);
    EXPECT_EQ(Ints({7, 6, 5}), ElementsOf(array));
    EXPECT_EQ(2, array.SortFind(5));
    EXPECT_EQ(0, array.SortFind(7));
    EXPECT_EQ(-1, array.SortFind(4));
    EXPECT_EQ(-1, CBaseIntArray().SortFind(4));
    EXPECT_EQ(INT_MAX, CBaseIntArray::IntCompare(INT_MIN, 1)) << "the difference wraps";
}

TEST(BaseIntArray, TextBecomesNumbers)
{
    struct
    {
        const char* text;
        const char* separator;
        bool keepEmpty;
        Ints numbers;
    } const rows[] = {
        {"3;1;;2", ";", true, {3, 1, -9, 2}},
        {"3;1;;2", ";", false, {3, 1, 2}},
        {";4;", ";", true, {-9, 4}},
        {"12x; -7;y", ";", false, {12, -7, 0}},
        {"1::2", "::", true, {1, 0}},  // the rest of a longer separator opens the next piece: ":2"
        {"", ";", true, {}},
    };
    for (const auto& row : rows) {
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
}

TEST(Base2DIntArray, HoldsCopiesAndGivesThemBack)
{
    CBaseIntArray row(2, 1, 2);
    CBase2DIntArray rows(row);
    for (int i = 0; i < 20; ++i)
        rows.Add(rows[0]);
    row.Add(3);
    CBase2DIntArray copy(row, rows);
    EXPECT_EQ(22, copy.GetSize());
    EXPECT_EQ(Ints({1, 2, 3}), ElementsOf(copy[0]));
    EXPECT_EQ(Ints({1, 2}), ElementsOf(copy.Pop()));
    rows = copy;
    copy.RemoveAll(true);
    EXPECT_EQ(21, rows.GetSize());
    EXPECT_EQ(Ints({1, 2, 3}), ElementsOf(rows[0]));
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
    for (DWORD i = 0; i < 100; ++i)
        stack.Push(i);
    for (DWORD i = 100; i-- > 0;)
        ASSERT_EQ(i, stack.Pop());
    EXPECT_THROW(stack.Pop(), CInvalidArgException*);
    stack.Push(4);
    EXPECT_EQ(4u, stack.Pop());
}

TEST(BaseMap, CopiesAreIndependentAndPointersAreCountedByWalking)
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

    CBaseMapPtrToPtr pointers;
    int keys[40];
    for (int& key : keys)
        pointers.SetAt(&key, nullptr);
    EXPECT_EQ(40, pointers.GetSize_());
    pointers.RemoveKey(&keys[7]);
    EXPECT_EQ(39, pointers.GetSize_());
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
    array = array;
    array = copy;
    EXPECT_EQ(50, array.GetCount());
    EXPECT_NE(copy.PtrAt(1), array.PtrAt(1));

    array.RemoveAll();
    for (int i = 0; i < 3; ++i) {
        array.Add(Owned(i));
        array.PtrAt(i)->array = &array;
    }
    Owned::s_destroyed.clear();
    array.RemoveAll();
    EXPECT_EQ((std::vector<std::pair<int, int>>{{0, 3}, {1, 2}, {2, 1}}), Owned::s_destroyed);
}
