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

// One row a kind of container: what range-for gives is what was put in, in order.
TEST(Ranges, WalkEveryKind)
{
    const auto walked = [](const auto& container) {
        std::string seen;
        for (const auto& element : container) {
            if constexpr (requires { element.GetString(); })
                seen += element.GetString();
            else if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(element)>>)
                seen += element == nullptr ? "-" : "*";
            else
                seen += std::to_string(element);
        }
        return seen;
    };
    CStringArray narrow;
    kelgen::AppendRange(narrow, {"a", "b"});
    CStrArray lines;
    kelgen::AppendRange(lines, narrow);
    CStringList list;
    kelgen::AppendRange(list, {"c", "d"});
    CDWordArray numbers;
    kelgen::AppendRange(numbers, std::vector<DWORD>{1, 2});
    CBaseIntArray integers;
    kelgen::AppendRange(integers, {3, 4});
    CDWArray words;
    kelgen::AppendRange(words, {5u, 6u});
    CFastIntList fast;
    kelgen::AppendRange(fast, {7, 8, 9});
    fast.RemoveAt(1);
    CPtrArray pointers;
    kelgen::AppendRange(pointers, std::vector<void*>{nullptr, &pointers});
    CObList objects;
    kelgen::AppendRange(objects, std::vector<CObject*>{&objects, nullptr});
    for (const auto& [kind, seen, expected] : kelgen::test::Table<const char*, std::string, std::string>{
             {"CStringArray", walked(narrow), "ab"},
             {"CStrArray", walked(lines), "ab"},
             {"CStringList", walked(list), "cd"},
             {"CDWordArray", walked(numbers), "12"},
             {"CBaseIntArray", walked(integers), "34"},
             {"CDWArray", walked(words), "56"},
             {"CFastIntList", walked(fast), "79"},
             {"CPtrArray", walked(pointers), "-*"},
             {"CObList", walked(objects), "*-"},
             {"CWStr", walked(CWStr(std::u16string(u"a\0", 2))), "970"},
             {"CString", walked(CString("a\0", 2)), "970"},
         })
        EXPECT_EQ(expected, seen) << kind;
}

TEST(Ranges, MapsOfEveryKindGiveKeysAndValues)
{
    CMapStringToString texts;
    kelgen::SetEntries(texts, {{"a", "1"}, {"b", "2"}, {"a", "3"}});
    std::map<std::string, std::string> seen;
    for (const auto& [key, value] : texts)
        seen[key.GetString()] = value.GetString();
    EXPECT_EQ((std::map<std::string, std::string>{{"a", "3"}, {"b", "2"}}), seen);
    CMapWordToPtr numbers;
    kelgen::SetEntries(numbers, {{WORD{7}, &texts}});
    for (const auto& [key, value] : numbers) {
        EXPECT_EQ(7, key);
        EXPECT_EQ(&texts, value);
    }
}

TEST(Ranges, SpansAreTheMemoryItself)
{
    CDWordArray numbers;
    kelgen::AppendRange(numbers, {1u, 2u});
    kelgen::Span(numbers)[1] = 5;
    EXPECT_EQ(5u, numbers[1]);
    CMemoryStorage storage(nullptr);
    storage.Allocate(4);
    ASSERT_EQ(4u, kelgen::Span(storage).size());
    kelgen::Span(storage)[3] = 9;
    EXPECT_EQ(9, storage.GetAllocation()[3]);
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
