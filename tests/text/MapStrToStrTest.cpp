// MapStrToStrTest.cpp: what becomes of groups, and of bare names.
#include <kelgen/text/MapStrToStr.h>

#include "support/Rows.h"

using namespace kelgen::test;

namespace {

struct Row
{
    const char* name;
    std::vector<std::pair<const char*, const char*>> variables;
    const char* text;
    const char* expected;
};

class MapStrToStrGroups : public testing::TestWithParam<Row>
{
};

}  // namespace

TEST_P(MapStrToStrGroups, AreResolved)
{
    CMapStrToStr map;
    for (const auto& [name, value] : GetParam().variables)
        map.SetAt(name, value);
    CString text(GetParam().text);
    map.ReplaceVars(text);
    EXPECT_STREQ(GetParam().expected, text);
}

INSTANTIATE_TEST_SUITE_P(, MapStrToStrGroups, testing::Values(
    Row{"Filled", {{"path", "C:\\x"}}, "open{ $path}", "open C:\\x"},
    Row{"Emptied", {{"path", ""}}, "open{ $path} now", "open now"},
    Row{"Short", {{"n", "5"}}, "{$n}", "5"},
    Row{"LongerName", {{"n", "5"}}, "{$nx}", "{$nx}"},
    Row{"DigitAfterName", {{"n", "5"}}, "{$n1}{$n_}{$n-}", "{$n1}{$n_}5-"},
    Row{"LongerNameHidesLaterOnes", {{"n", "5"}}, "{$nx $n}", "{$nx $n}"},
    Row{"InnerReplacementLooksAtNoCharacter", {{"n", "5"}}, "{$n $nx}", "5 5x"},
    Row{"GroupsWithoutVariableStay", {{"n", "5"}}, "{a} {$n}", "{a} 5"},
    Row{"OutsideGroups", {{"n", "5"}}, "$n {a} $n", "$n {a} $n"},
    Row{"NoGroups", {{"n", "5"}}, "$n}", "$n}"},
    Row{"GroupThatFollowsAtOnceIsPassedOver", {{"n", "5"}}, "{$n}{$n} {$n}", "5{$n} 5"},
    Row{"NotNested", {{"n", "5"}}, "{a{$n}b}", "a{5b}"},
    Row{"ValuesWithReferences", {{"n", "$n"}}, "{$n} {$n}", "$n $n"},
    Row{"CaseCounts", {{"n", "5"}}, "{$N}", "{$N}"},
    Row{"NoVariables", {}, "{$n}", "{$n}"},
    Row{"EmptyName", {{"", "5"}}, "{$ a}", "5 a"}), RowName);

TEST(MapStrToStr, TheFirstVariableOfTheMapsOrderTakesTheGroup)
{
    CMapStrToStr map;
    map.SetAt("a", "1");
    map.SetAt("b", "2");
    CString first, value;
    POSITION position = map.GetStartPosition();
    map.GetNextAssoc(position, first, value);
    CString text("{$a$b}{$b$a} {$b}");
    map.ReplaceVars(text);
    // The first one resolves its first group and passes over the next, which the second one resolves.
    EXPECT_STREQ(first == "a" ? "1$b2$a 2" : "$a2{$b$a} 2", text);
}

TEST(MapStrToStr, FormatStringReplacesBareNames)
{
    CMapStrToStr map;
    map.SetAt("n", "5");
    map.SetAt("", "never");
    CString text("n and $n {$n}");
    map.FormatString(text);
    EXPECT_STREQ("5 a5d $5 {$5}", text);
}

TEST(MapStrToStr, NameCharacters)
{
    std::string with, without;
    for (int c = 0; c < 256; ++c) {
        if (CMapStrToStr::IsVarChar(static_cast<char>(c), false))
            with += static_cast<char>(c);
        if (CMapStrToStr::IsVarChar(static_cast<char>(c), true))
            without += static_cast<char>(c);
    }
    EXPECT_EQ("ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz", without);
    EXPECT_EQ("0123456789" + without, with);
}
