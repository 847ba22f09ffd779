// RangesTest.cpp: our containers in range-for, algorithms and spans.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include "support/Rows.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <string>

TEST(Ranges, WalkUsedElementsOnly)
{
    auto names = kelgen::MakeArray<CWStrArray>({u"b"_w, u"a"_w, u"c"_w});
    names.RemoveAt(1);
    std::u16string seen;
    for (const CWStr& name : names)
        seen += kelgen::View(name);
    EXPECT_EQ(u"bc", seen);
    EXPECT_EQ(2u, kelgen::Span(names).size());
}

TEST(Ranges, SortByTheStandardLibrary)
{
    auto names = kelgen::MakeArray<CWStrArray>({u"b"_w, u"a"_w, u"ab"_w});
    std::sort(begin(names), end(names));
    EXPECT_EQ(u"a", kelgen::ToU16(names.GetAt(0)));
    EXPECT_EQ(u"ab", kelgen::ToU16(names.GetAt(1)));
    EXPECT_EQ(u"b", kelgen::ToU16(names.GetAt(2)));
}

TEST(Ranges, ListsAndMapsKeepTheirOrder)
{
    CList<int, int> list;
    CMap<int, int, CString, const CString&> map;
    std::vector<int> fromMap;
    for (const int number : {3, 1, 20})
        list.AddTail(number);
    EXPECT_EQ((std::vector<int>{3, 1, 20}), std::vector<int>(begin(list), end(list)));
    for (int& number : list)
        number *= 2;
    EXPECT_EQ(48, std::accumulate(begin(std::as_const(list)), end(std::as_const(list)), 0));

    for (const int number : list)
        map.SetAt(number, CString('x', number));
    for (auto& [key, value] : map)
        value += "!";
    for (const auto& [key, value] : std::as_const(map)) {
        EXPECT_EQ(key + 1, value.GetLength());
        fromMap.push_back(key);
    }
    std::vector<int> byPosition;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        int key = 0;
        CString value;
        map.GetNextAssoc(position, key, value);
        byPosition.push_back(key);
    }
    EXPECT_EQ(byPosition, fromMap);
}

TEST(Ranges, EmptyContainersHaveNoElements)
{
    for ([[maybe_unused]] const int number : CArray<int, int>())
        FAIL();
    for ([[maybe_unused]] const int number : CList<int, int>())
        FAIL();
    for ([[maybe_unused]] const auto& pair : CMap<int, int, int, int>())
        FAIL();
    CMemoryStorage storage(nullptr);
    EXPECT_TRUE(kelgen::Span(storage).empty());
}
