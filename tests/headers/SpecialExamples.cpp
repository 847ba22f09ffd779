// SpecialExamples.cpp: the examples that add to a name of the library's, which no other source is compiled together with.
#include <kelgen/framework/collections/Array.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/system/Savings.h>

// quote kelgen/system/Savings.h
enum CSavings::ESaveWhat : int
{
    saveWindows,
    saveHistory
};
// end

namespace {

// quote kelgen/framework/collections/CollectionHelpers.h
struct Row
{
    CString name;
    int size;
};
// end

}  // namespace

// quote kelgen/framework/collections/CollectionHelpers.h
template <>
constexpr bool kelgen::is_movable_bitwise<Row> = true;
// end

TEST(HeaderExamples, OfElementsOfArrays)
{
    CArray<Row> rows;
    rows.Add({"one", 1});
    EXPECT_STREQ("one", rows[0].name);
}

TEST(HeaderExamples, OfSavings)
{
    // quote kelgen/system/Savings.h
    class CHostApp : public CWinApp, public CSavings
    {};
    // end
    CHostApp app;
    // quote kelgen/system/Savings.h
    CSavings::AppGetSavings().SavingsSaveWhat().Set(CSavings::saveHistory);
    // end
    EXPECT_TRUE(app.SavingsSaveWhat().IsSet(CSavings::saveHistory));
    EXPECT_FALSE(app.SavingsSaveWhat().IsSet(CSavings::saveWindows));
}
