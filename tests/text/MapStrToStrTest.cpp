// MapStrToStrTest.cpp: what becomes of groups, and of bare names.
#include <kelgen/text/MapStrToStr.h>

#include "support/Rows.h"

TEST(MapStrToStr, GroupsAreResolved)
{
    struct Case
    {
        const char* name;
        std::vector<std::pair<const char*, const char*>> variables;
        const char* before;
        const char* expected;
    };
    for (const Case& row : std::vector<Case>{
             {"filled", {{"path", "C:\\x"}}, "open{ $path}", "open C:\\x"},
             {"emptied", {{"path", ""}}, "open{ $path} now", "open now"},
             {"longer name", {{"n", "5"}}, "{$nx}", "{$nx}"},
             {"digit after name", {{"n", "5"}}, "{$n1}{$n_}{$n-}", "{$n1}{$n_}5-"},
             {"longer name hides later ones", {{"n", "5"}}, "{$nx $n}", "{$nx $n}"},
             {"inner replacement looks at no character", {{"n", "5"}}, "{$n $nx}", "5 5x"},
             {"groups without variable stay", {{"n", "5"}}, "{a} {$n}", "{a} 5"},
             {"outside groups", {{"n", "5"}}, "$n {a} $n", "$n {a} $n"},
             {"no groups", {{"n", "5"}}, "$n}", "$n}"},
             {"group that follows at once is passed over", {{"n", "5"}}, "{$n}{$n} {$n}", "5{$n} 5"},
             {"not nested", {{"n", "5"}}, "{a{$n}b}", "a{5b}"},
             {"values with references", {{"n", "$n"}}, "{$n} {$n}", "$n $n"},
             {"case counts", {{"n", "5"}}, "{$N}", "{$N}"},
             {"no variables", {}, "{$n}", "{$n}"},
             {"empty name", {{"", "5"}}, "{$ a}", "5 a"},
         }) {
        CMapStrToStr map;
        for (const auto& [variable, value] : row.variables)
            map.SetAt(variable, value);
        CString text(row.before);
        map.ReplaceVars(text);
        EXPECT_STREQ(row.expected, text) << row.name;
    }
}

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
