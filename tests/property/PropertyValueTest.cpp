// PropertyValueTest.cpp: conversion between the types, equality across them, and how often a store reports.
#include <kelgen/property/Property.h>
#include <kelgen/text/IntegerText.h>

#include "support/Rows.h"

#include <climits>

using namespace gen;
using kelgen::test::RowName;

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
class Counted : public CProperty
{
public:
    explicit Counted(EPropertyType type) : CProperty(1, "counted", type) {}

    int reports = 0;

    void OnChangeValue() override { ++reports; }
};

}  // namespace

struct Stored
{
    const char* name;
    EPropertyType type;
    int number;
    int integer;
    const char* text;
    const char* unsignedText;  // after SetValueUnsignedInteger of the same bits
};

class PropertyValueInteger : public testing::TestWithParam<Stored>
{};

TEST_P(PropertyValueInteger, IsConvertedIntoTheType)
{
    const Stored& row = GetParam();
    CPropertyValue value = Typed(row.type);
    value.SetValueInteger(row.number);
    EXPECT_EQ(row.integer, value.GetValueInteger());
    EXPECT_EQ(static_cast<unsigned int>(row.integer), value.GetValueUnsignedInteger());
    EXPECT_STREQ(row.text, value.GetValueString());
    EXPECT_EQ(row.type, value.GetType());

    value.SetValueUnsignedInteger(static_cast<unsigned int>(row.number));
    EXPECT_EQ(row.integer, value.GetValueInteger());
    EXPECT_STREQ(row.unsignedText, value.GetValueString());
}

INSTANTIATE_TEST_SUITE_P(, PropertyValueInteger, testing::Values(
    Stored{"NoneStoresNothing", eptNone, 5, 0, "", ""},
    Stored{"UndefinedStoresNothing", eptUndefined, 5, 0, "", ""},
    Stored{"UnknownStoresNothing", EPropertyType(99), 5, 0, "", ""},
    Stored{"IntegerLowest", eptInteger, INT_MIN, INT_MIN, "-2147483648", "-2147483648"},
    Stored{"UnsignedAllOnes", eptUnsignedInteger, -1, -1, "4294967295", "4294967295"},
    Stored{"ShortKeepsLow16Bits", eptShort, 70000, 4464, "4464", "4464"},
    Stored{"ShortExtendsItsSign", eptShort, 40000, -25536, "-25536", "-25536"},
    Stored{"UnsignedShortKeepsLow16Bits", eptUnsignedShort, -1, 65535, "65535", "65535"},
    Stored{"TextWritesTheSetterSign", eptString, -1, -1, "-1", "4294967295"},
    Stored{"BooleanOfNegative", eptBool, -3, 1, "1", "1"},
    Stored{"BooleanOfHighBitsOnly", eptBool, 0x100, 1, "1", "1"},
    Stored{"BooleanOfZero", eptBool, 0, 0, "0", "0"}), RowName);

struct Text
{
    const char* name;
    const char* text;
    int number;
};

class PropertyValueText : public testing::TestWithParam<Text>
{};

TEST_P(PropertyValueText, ReadsItsLeadingNumber)
{
    const auto& [name, text, number] = GetParam();
    EXPECT_EQ(number, CPropertyValue(text).GetValueInteger());
    EXPECT_EQ(static_cast<unsigned int>(number), CPropertyValue(text).GetValueUnsignedInteger());
    EXPECT_EQ(number, TypedText(eptInteger, text).GetValueInteger());
    EXPECT_EQ(static_cast<short>(number), TypedText(eptShort, text).GetValueInteger());
    EXPECT_EQ(static_cast<unsigned short>(number), TypedText(eptUnsignedShort, text).GetValueInteger());
    EXPECT_EQ(number != 0 ? 1 : 0, TypedText(eptBool, text).GetValueInteger());
}

INSTANTIATE_TEST_SUITE_P(, PropertyValueText, testing::Values(
    Text{"Null", nullptr, 0}, Text{"Empty", "", 0}, Text{"Letters", "abc", 0}, Text{"BlanksAndRest", "  42x", 42},
    Text{"AllBlanks", "\t\n\v\f\r 7", 7}, Text{"OtherControl", "\x08" "7", 0}, Text{"NoBreakSpace", "\xA0" "7", 0},
    Text{"Plus", "+9", 9}, Text{"TwoSigns", "+-9", 0}, Text{"BlankAfterSign", "- 9", 0}, Text{"Hexadecimal", "0x1F", 0},
    Text{"Negative", "-3", -3}, Text{"BeyondShort", "70000", 70000}, Text{"UnsignedKeepsItsBits", "4294967295", -1},
    Text{"Beyond32BitsWraps", "4294967303", 7}), RowName);

struct Equal
{
    const char* name;
    CPropertyValue left, right;
    bool leftEqualsRight, rightEqualsLeft;
};

class PropertyValueEquality : public testing::TestWithParam<Equal>
{};

TEST_P(PropertyValueEquality, IsDecidedByTheLeftType)
{
    const Equal& row = GetParam();
    EXPECT_EQ(row.leftEqualsRight, row.left == row.right);
    EXPECT_EQ(row.rightEqualsLeft, row.right == row.left);
}

INSTANTIATE_TEST_SUITE_P(, PropertyValueEquality, testing::Values(
    Equal{"NoneAndNone", Typed(eptNone), Typed(eptNone), true, true},
    Equal{"NoneAndUndefined", Typed(eptNone), Typed(eptUndefined), false, false},
    Equal{"NoneAndZero", Typed(eptNone), CPropertyValue(0), false, true},
    Equal{"NoneAndEmptyText", Typed(eptNone), CPropertyValue(""), false, true},
    Equal{"IntegerAndItsBitsUnsigned", CPropertyValue(-1), TypedText(eptUnsignedInteger, "4294967295"), true, true},
    Equal{"ShortAndUnsignedShortOfOneBitPattern", TypedText(eptShort, "-1"), TypedText(eptUnsignedShort, "-1"), false, false},
    Equal{"IntegerAndNumberWithRest", CPropertyValue(12), CPropertyValue("12abc"), true, true},
    Equal{"TextsByCase", CPropertyValue("a"), CPropertyValue("A"), false, false},
    Equal{"TextsWithOneNumber", CPropertyValue("12"), CPropertyValue("12abc"), false, false},
    Equal{"TextAndTrue", CPropertyValue("1x"), CPropertyValue(true), false, true},
    Equal{"TextOneAndTrue", CPropertyValue("1"), CPropertyValue(true), true, true},
    Equal{"TrueAndOtherNumber", CPropertyValue(true), CPropertyValue(7), true, false},
    Equal{"FalseAndNone", CPropertyValue(false), Typed(eptNone), true, false},
    Equal{"UnknownTypeEqualsNothing", Typed(EPropertyType(99)), Typed(EPropertyType(99)), false, false}), RowName);

TEST(PropertyValue, SetTypeKeepsNumberAndTextAndReportsNothing)
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
    EXPECT_EQ(0x12345, value.GetValueInteger());
    EXPECT_EQ(0, property.reports);
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
        EXPECT_EQ(2, reports([&] { value = 5; }));
        EXPECT_EQ(2, reports([&] { value = static_cast<short>(5); }));
        EXPECT_EQ(2, reports([&] { value = true; }));
        EXPECT_EQ(2, reports([&] { value = 5u; }));
        EXPECT_EQ(2, reports([&] { value = static_cast<unsigned short>(5); }));
        EXPECT_EQ(2, reports([&] { value = "5"; }));
        EXPECT_EQ(type, value.GetType());
        EXPECT_EQ(1, reports([&] { value = CPropertyValue("text"); }));
        EXPECT_EQ(eptString, value.GetType()) << "assignment from a value takes its type";
    }
}

TEST(PropertyValue, CopiesDoNotReportToTheSourcesOwner)
{
    Counted property(eptInteger);
    property.GetValue().SetValueInteger(5);
    property.reports = 0;

    CPropertyValue copy(property.GetValue());
    EXPECT_EQ(5, copy.GetValueInteger());
    copy.SetValueInteger(6);
    EXPECT_EQ(0, property.reports);
    EXPECT_EQ(5, property.GetValue().GetValueInteger());
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
    try {
        CPropertyValue(2).GetValueText(byIndex);
        FAIL() << "an index past the end";
    } catch (CInvalidArgException* exception) {
        exception->Delete();
    }
}
