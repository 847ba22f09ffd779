// SafeArrayTest.cpp: arrays to and from automation's arrays and variants.
#include <kelgen/containers/BaseIntArray.h>
#include <kelgen/containers/DWArray.h>
#include <kelgen/framework/ole/OleVariant.h>
#include <kelgen/text/BSTR.h>

#include "Elements.h"

#include <climits>

using namespace kelgen::test;

namespace {

// A vector from index 5 on.
template <class NUMBER>
void Hold(COleVariant& variant, VARTYPE type, const std::vector<NUMBER>& numbers)
{
    VariantClear(&variant);
    variant.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    variant.parray = SafeArrayCreateVector(type, 5, static_cast<ULONG>(numbers.size()));
    LONG index = 5;
    for (NUMBER number : numbers) {
        ASSERT_EQ(S_OK, SafeArrayPutElement(variant.parray, &index, &number));
        ++index;
    }
}

using Numbers = std::vector<DWORD>;

}  // namespace

TEST(SafeArray, NumbersGoThereAndBack)
{
    const CDWArray source(3, 1u, 0xFFFFFFFFu, 3u);
    COleVariant variant;
    EXPECT_TRUE(source.CreateSafeArray(&variant));
    EXPECT_EQ(VT_ARRAY | VT_UI4, variant.vt);
    CDWArray copy(9u);
    EXPECT_TRUE(copy.Copy(&variant));
    EXPECT_EQ(ElementsOf(source), ElementsOf(copy));

    CBaseIntArray numbers(2, -1, -2);
    numbers.SetSafeArray(VT_I4, variant);
    EXPECT_EQ(VT_ARRAY | VT_I4, variant.vt);
    EXPECT_TRUE(copy.Copy(&variant));
    EXPECT_EQ(Numbers({0xFFFFFFFFu, 0xFFFFFFFEu}), ElementsOf(copy));
    EXPECT_TRUE(CDWArray().CreateSafeArray(&variant));
    EXPECT_TRUE(copy.Copy(&variant));
    EXPECT_EQ(0, copy.GetSize());
    EXPECT_FALSE(source.CreateSafeArray(static_cast<VARIANT*>(nullptr)));
}

TEST(SafeArray, VariantsByValueHoldNumbers)
{
    using Doubles = CBaseArray<double, double>;
    Doubles source(2, 1.5, -2.0), copy;
    const COleVariant variant = Doubles::GetOleVariantArray(VT_R8, source);
    ASSERT_EQ(VT_ARRAY | VT_R8, variant.vt);
    EXPECT_TRUE(copy.CopySafeArray(variant.parray));
    EXPECT_EQ(ElementsOf(source), ElementsOf(copy));
    EXPECT_EQ(VT_EMPTY, Doubles::GetOleVariantArray(VT_I2, source).vt) << "of another size";
}

TEST(SafeArray, EveryBoundIsReadAndOtherElementSizesNeverOverrun)
{
    COleVariant variant;
    CDWArray array(4, 1u, 1u, 1u, 1u);
    Hold<DWORD>(variant, VT_UI4, {7, 8, 9});
    COleVariant reference;
    reference.vt = VT_ARRAY | VT_BYREF | VT_UI4;
    reference.pparray = &variant.parray;
    EXPECT_TRUE(array.Copy(&reference));
    EXPECT_EQ(Numbers({7, 8, 9}), ElementsOf(array));

    Hold<DWORD>(variant, VT_UI4, {7});
    EXPECT_TRUE(array.Copy(&variant));
    EXPECT_EQ(Numbers({7}), ElementsOf(array));
    Hold<unsigned short>(variant, VT_UI2, {0xFFFF, 2});
    EXPECT_TRUE(array.Copy(&variant));
    EXPECT_EQ(Numbers({0xFFFF, 2}), ElementsOf(array)) << "narrower numbers are widened";

    Hold<double>(variant, VT_R8, {1.0, 2.0});
    EXPECT_FALSE(array.Copy(&variant));
    EXPECT_EQ(0, array.GetSize());

    array.Add(1);
    EXPECT_EQ(nullptr, array.CreateSafeArray(VT_R8));
    EXPECT_EQ(nullptr, array.CreateSafeArray(VT_UI1));
    array.SetSafeArray(VT_R8, variant);
    EXPECT_EQ(VT_EMPTY, variant.vt);
}

TEST(SafeArray, WhatIsNoVectorGivesNothing)
{
    COleVariant variant;
    CDWArray array(2, 1u, 2u);
    const DWORD* const block = array.GetData();
    EXPECT_FALSE(array.Copy(&variant));
    EXPECT_EQ(0, array.GetSize());
    EXPECT_EQ(block, array.GetData()) << "the block is kept";
    EXPECT_FALSE(array.Copy(static_cast<VARIANT*>(nullptr)));
    COleVariant number(LONG{8});
    EXPECT_FALSE(array.Copy(&number)) << "no array, but something where one would be";

    SAFEARRAYBOUND bounds[2] = {{2, 0}, {3, 0}};
    variant.vt = VT_ARRAY | VT_UI4;
    variant.parray = SafeArrayCreate(VT_UI4, 2, bounds);
    array.Add(4);
    EXPECT_FALSE(array.Copy(&variant));
    EXPECT_EQ(0, array.GetSize());

    // Bounds alone: nothing lies behind them.
    array.Add(4);
    SAFEARRAY huge = {1, 0, 4, 0, nullptr, {{0x80000000u, INT_MIN}}};
    SAFEARRAY* place = &huge;
    COleVariant reference;
    reference.vt = VT_ARRAY | VT_BYREF | VT_UI4;
    reference.pparray = &place;
    EXPECT_FALSE(array.Copy(&reference)) << "more than an array can hold";
    EXPECT_EQ(0, array.GetSize());

    array.Add(4);
    EXPECT_TRUE(array.CopySafeArray(nullptr));
    EXPECT_EQ(0, array.GetSize());
}

TEST(SafeArray, TextsAreCopied)
{
    CBaseArray<BSTR> texts;
    for (const unsigned short* text : {u"one"_w, u"two"_w})
        texts.Add(SysAllocString(kelgen::AsWide(text)));
    SAFEARRAY* const array = texts.CreateSafeArray(VT_BSTR);
    ASSERT_NE(nullptr, array);
    CBaseArray<BSTR> copy;
    EXPECT_TRUE(copy.CopySafeArray(array));
    SafeArrayDestroy(array);
    ASSERT_EQ(2, copy.GetSize());
    EXPECT_NE(texts[1], copy[1]);
    EXPECT_TRUE(CBSTR::IsEqual(texts[1], copy[1]));
    for (int i = 0; i < 2; ++i) {
        SysFreeString(texts[i]);
        SysFreeString(copy[i]);
    }
}
