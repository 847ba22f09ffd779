// PropertyValueTest.cpp: conversion between the types, equality across them, and how often a store reports.
#include <kelgen/property/Property.h>
#include <kelgen/text/IntegerText.h>

#include "framework/Thrown.h"
#include "support/Rows.h"

#include <climits>

using namespace gen;
using kelgen::test::Table;
using kelgen::test::Thrown;

namespace {

CPropertyValue Typed(EPropertyType type)
{
    CPropertyValue value;
    value.SetType(type);
    return value;
}

CPropertyValue TypedText(EPropertyType type, const char* text)
{
    CPropertyValue value = Typed(type);
    value.SetValueString(text);
    return value;
}

// A property that counts the reports of its value.
struct Counted : CProperty
{
    explicit Counted(EPropertyType type) : CProperty(1, "counted", type) {}
    void OnChangeValue() override { ++reports; }

    int reports = 0;
};

}  // namespace

TEST(PropertyValue, IntegersAreConvertedIntoTheType)
{
    struct Case
    {
        const char* name;
        EPropertyType type;
        int number;
        int integer;
        const char* text;
    };
    for (const Case& row : std::vector<Case>{
             {"none stores nothing", eptNone, 5, 0, ""},
             {"unknown stores nothing", EPropertyType(99), 5, 0, ""},
             {"lowest", eptInteger, INT_MIN, INT_MIN, "-2147483648"},
             {"unsigned", eptUnsignedInteger, -1, -1, "4294967295"},
             {"short keeps the low 16 bits", eptShort, 70000, 4464, "4464"},
             {"short extends its sign", eptShort, 40000, -25536, "-25536"},
             {"unsigned short keeps the low 16 bits", eptUnsignedShort, -1, 65535, "65535"},
             {"text", eptString, -1, -1, "-1"},
             {"true by high bits only", eptBool, 0x100, 1, "1"},
             {"false", eptBool, 0, 0, "0"},
         }) {
        SCOPED_TRACE(row.name);
        CPropertyValue value = Typed(row.type);
        value.SetValueInteger(row.number);
        EXPECT_EQ(row.integer, value.GetValueInteger());
        EXPECT_EQ(static_cast<unsigned int>(row.integer), value.GetValueUnsignedInteger());
        EXPECT_STREQ(row.text, value.GetValueString());

        value.SetValueUnsignedInteger(static_cast<unsigned int>(row.number));
        EXPECT_EQ(row.integer, value.GetValueInteger());
        EXPECT_STREQ(row.type == eptString ? "4294967295" : row.text, value.GetValueString());
    }
}

TEST(PropertyValue, TextsReadAsTheirLeadingNumber)
{
    for (const auto& [text, number] : Table<const char*, int>{
             {nullptr, 0},
             {"", 0},
             {"abc", 0},
             {"  42x", 42},
             {"\t\n\v\f\r 7", 7},
             {"\x08"
              "7",
              0},
             {"\xA0"
              "7",
              0},
             {"+9", 9},
             {"+-9", 0},
             {"- 9", 0},
             {"0x1F", 0},
             {"-3", -3},
             {"70000", 70000},
             {"4294967295", -1},
             {"4294967303", 7},
         }) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_EQ(number, CPropertyValue(text).GetValueInteger());
        EXPECT_EQ(number, TypedText(eptInteger, text).GetValueInteger());
        EXPECT_EQ(static_cast<short>(number), TypedText(eptShort, text).GetValueInteger());
        EXPECT_EQ(number != 0 ? 1 : 0, TypedText(eptBool, text).GetValueInteger());
    }
}

TEST(PropertyValue, EqualityIsDecidedByTheLeftType)
{
    struct Case
    {
        const char* name;
        CPropertyValue left;
        CPropertyValue right;
        bool leftEqualsRight;
        bool rightEqualsLeft;
    };
    for (const Case& row : std::vector<Case>{
             {"none and none", Typed(eptNone), Typed(eptNone), true, true},
             {"none and undefined", Typed(eptNone), Typed(eptUndefined), false, false},
             {"none and zero", Typed(eptNone), CPropertyValue(0), false, true},
             {"integer and its bits unsigned", CPropertyValue(-1), TypedText(eptUnsignedInteger, "4294967295"), true, true},
             {"shorts of one bit pattern", TypedText(eptShort, "-1"), TypedText(eptUnsignedShort, "-1"), false, false},
             {"integer and number with rest", CPropertyValue(12), CPropertyValue("12abc"), true, true},
             {"texts by case", CPropertyValue("a"), CPropertyValue("A"), false, false},
             {"texts with one number", CPropertyValue("12"), CPropertyValue("12abc"), false, false},
             {"text and true", CPropertyValue("1x"), CPropertyValue(true), false, true},
             {"true and other number", CPropertyValue(true), CPropertyValue(7), true, false},
             {"false and none", CPropertyValue(false), Typed(eptNone), true, false},
             {"unknown type equals nothing", Typed(EPropertyType(99)), Typed(EPropertyType(99)), false, false},
         }) {
        EXPECT_EQ(row.leftEqualsRight, row.left == row.right) << row.name;
        EXPECT_EQ(row.rightEqualsLeft, row.right == row.left) << row.name;
    }
}

TEST(PropertyValue, EveryTypeReportsSettersOnceAndAssignmentsTwice)
{
    for (int type = eptNone; type <= eptBool + 1; ++type) {
        SCOPED_TRACE(type);
        Counted property{EPropertyType(type)};
        CPropertyValue& value = property.GetValue();
        const auto reports = [&](auto store) {
            property.reports = 0;
            store();
            return property.reports;
        };
        EXPECT_EQ(1, reports([&] { value.SetValueInteger(5); }));
        EXPECT_EQ(1, reports([&] { value.SetValueInteger(5); })) << "unchanged";
        EXPECT_EQ(1, reports([&] { value.SetValueUnsignedInteger(5u); }));
        EXPECT_EQ(1, reports([&] { value.SetValueString("5"); }));
        const auto assigned = [&](auto number) { return reports([&] { value = number; }); };
        const auto low = static_cast<short>(5);
        const auto unsignedLow = static_cast<unsigned short>(5);
        EXPECT_EQ((std::vector{2, 2, 2, 2, 2, 2}),
                  (std::vector{assigned(5), assigned(low), assigned(true), assigned(5u), assigned(unsignedLow), assigned("5")}));
        EXPECT_EQ(type, value.GetType());
        value = 5;
        value = false;
        EXPECT_EQ(0, value.GetValueInteger());
        EXPECT_EQ(1, reports([&] { value = CPropertyValue("text"); }));
        EXPECT_EQ(eptString, value.GetType()) << "assignment from a value takes its type";
    }
}

TEST(PropertyValue, SetTypeAndCopiesReportNothing)
{
    Counted property(eptInteger);
    CPropertyValue& value = property.GetValue();
    value.SetValueInteger(0x12345);
    property.reports = 0;

    value.SetType(eptShort);
    EXPECT_EQ(0x2345, value.GetValueInteger());
    value.SetType(eptString);
    EXPECT_STREQ("", value.GetValueString());
    value.SetType(eptInteger);
    EXPECT_EQ(0x12345, value.GetValueInteger()) << "number and text stay";
    CPropertyValue copy(value);
    copy.SetValueInteger(6);
    EXPECT_EQ(0x12345, value.GetValueInteger());
    EXPECT_EQ(0, property.reports);
}

TEST(PropertyValue, NarrowTypesKeepTheRestOfTheNumber)
{
    struct Row
    {
        EPropertyType type;
        int stored;
        int whole;
    };
    for (const Row& row :
         {Row{eptBool, 0, 0x12300}, Row{eptBool, 9, 0x12301}, Row{eptShort, 7, 0x10007}, Row{eptUnsignedShort, -1, 0x1FFFF}}) {
        CPropertyValue value(0x12345);
        value.SetType(row.type);
        value.SetValueInteger(row.stored);
        value.SetType(eptInteger);
        EXPECT_EQ(row.whole, value.GetValueInteger()) << row.type << ' ' << row.stored;
    }
}

TEST(PropertyValue, TextsOfATableAndOfAnArray)
{
    CIntegerText table;
    table.Add(10, "ten");
    table.Add(1, "one");
    CBaseIntegerText& byInteger = table;
    CBaseTextArray& byIndex = table;
    EXPECT_STREQ("ten", CPropertyValue("10x").GetValueText(byInteger));
    EXPECT_STREQ("", CPropertyValue(2).GetValueText(byInteger));
    EXPECT_STREQ("one", CPropertyValue(1).GetValueText(byIndex));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { CPropertyValue(2).GetValueText(byIndex); })) << "an index past the end";
}
