// AutomationTest.cpp: counted strings, variants, arrays and dates as hosts exchange them.
#include <kelgen/platform/support/WideText.h>

#include <cstring>

using kelgen::AsWide;

namespace {

BSTR NewText(const char16_t* text, size_t length)
{
    return SysAllocStringLen(AsWide(reinterpret_cast<const unsigned short*>(text)), static_cast<UINT>(length));
}

std::string Narrow(BSTR text)
{
    return std::string(text, text + SysStringLen(text));
}

VARIANT TextVariant(const char* text)
{
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_BSTR;
    variant.bstrVal = SysAllocStringLen(nullptr, static_cast<UINT>(std::strlen(text)));
    std::copy(text, text + std::strlen(text), variant.bstrVal);
    return variant;
}

VARIANT NumberVariant(double value)
{
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_R8;
    variant.dblVal = value;
    return variant;
}

}  // namespace

TEST(SystemString, KeepsZerosAndItsLength)
{
    BSTR text = NewText(u"a\0b", 3);
    EXPECT_EQ(3u, SysStringLen(text));
    EXPECT_EQ(6u, SysStringByteLen(text));
    EXPECT_EQ(0, text[3]);

    // From inside itself.
    EXPECT_TRUE(SysReAllocStringLen(&text, text + 1, 2));
    EXPECT_EQ(2u, SysStringLen(text));
    EXPECT_EQ('b', text[1]);
    EXPECT_TRUE(SysReAllocString(&text, AsWide(u"xyz"_w)));
    EXPECT_EQ("xyz", Narrow(text));
    SysFreeString(text);

    const BSTR odd = SysAllocStringByteLen("abc", 3);
    EXPECT_EQ(3u, SysStringByteLen(odd));
    EXPECT_EQ(1u, SysStringLen(odd));
    SysFreeString(odd);
    EXPECT_EQ(nullptr, SysAllocString(nullptr));
    EXPECT_EQ(0u, SysStringLen(nullptr));
    SysFreeString(nullptr);
}

TEST(Variant, CopyOwnsItsText)
{
    VARIANT source = TextVariant("kept"), copy = NumberVariant(1);
    EXPECT_EQ(S_OK, VariantCopy(&copy, &source));
    EXPECT_NE(source.bstrVal, copy.bstrVal);
    EXPECT_EQ(S_OK, VariantCopy(&copy, &copy));
    EXPECT_EQ(S_OK, VariantClear(&source));
    EXPECT_EQ(VT_EMPTY, source.vt);
    EXPECT_EQ("kept", Narrow(copy.bstrVal));
    VariantClear(&copy);

    VARIANT unknown = NumberVariant(1);
    unknown.vt = 999;
    EXPECT_EQ(DISP_E_BADVARTYPE, VariantClear(&unknown));
}

TEST(Variant, ChangesBetweenNumbersAndText)
{
    struct Row
    {
        VARIANT source;
        VARTYPE type;
        HRESULT result;
        LONG number;
        const char* text;
    };
    VARIANT truth = NumberVariant(0);
    truth.vt = VT_BOOL;
    truth.boolVal = VARIANT_TRUE;
    const Row rows[] = {
        {TextVariant("42"), VT_I4, S_OK, 42, ""},
        {TextVariant(" -7 "), VT_I4, S_OK, -7, ""},
        {TextVariant("abc"), VT_I4, DISP_E_TYPEMISMATCH, 0, ""},
        {TextVariant(""), VT_I4, DISP_E_TYPEMISMATCH, 0, ""},
        {NumberVariant(2.5), VT_I4, S_OK, 2, ""},
        {NumberVariant(3.5), VT_I4, S_OK, 4, ""},
        {NumberVariant(1e10), VT_I4, DISP_E_OVERFLOW, 0, ""},
        {NumberVariant(1.5), VT_BSTR, S_OK, 0, "1.5"},
        {truth, VT_BSTR, S_OK, 0, "-1"},
        {truth, VT_I4, S_OK, -1, ""},
        {NumberVariant(2147483647), VT_I4, S_OK, 2147483647, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        VARIANT source = row.source, changed;
        VariantInit(&changed);
        ASSERT_EQ(row.result, VariantChangeType(&changed, &source, 0, row.type));
        if (SUCCEEDED(row.result)) {
            EXPECT_EQ(row.type, changed.vt);
            if (row.type == VT_BSTR)
                EXPECT_EQ(row.text, Narrow(changed.bstrVal));
            else
                EXPECT_EQ(row.number, changed.lVal);
        }
        VariantClear(&changed);
        VariantClear(&source);
    }
}

TEST(SafeArray, GivesElementsOutAsTheCallersOwn)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, -1, 3);
    LONG index = 1;
    const BSTR text = NewText(u"x\0y", 3);
    EXPECT_EQ(S_OK, SafeArrayPutElement(array, &index, text));
    SysFreeString(text);
    BSTR read = nullptr;
    EXPECT_EQ(S_OK, SafeArrayGetElement(array, &index, &read));
    EXPECT_EQ(std::string("x\0y", 3), Narrow(read));
    SysFreeString(read);

    LONG low = 0, high = 0;
    EXPECT_EQ(S_OK, SafeArrayGetLBound(array, 1, &low));
    EXPECT_EQ(S_OK, SafeArrayGetUBound(array, 1, &high));
    EXPECT_EQ(-1, low);
    EXPECT_EQ(1, high);
    EXPECT_EQ(DISP_E_BADINDEX, SafeArrayGetUBound(array, 2, &high));
    for (const LONG bad : {-2, 2}) {
        LONG outside = bad;
        EXPECT_EQ(DISP_E_BADINDEX, SafeArrayGetElement(array, &outside, &read)) << bad;
    }

    VARIANT holder;
    VariantInit(&holder);
    holder.vt = VT_ARRAY | VT_BSTR;
    holder.parray = array;
    VARIANT copy;
    VariantInit(&copy);
    EXPECT_EQ(S_OK, VariantCopy(&copy, &holder));
    EXPECT_EQ(S_OK, VariantClear(&holder));
    EXPECT_EQ(S_OK, SafeArrayGetElement(copy.parray, &index, &read));
    EXPECT_EQ(3u, SysStringLen(read));
    SysFreeString(read);
    VariantClear(&copy);
    EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_EMPTY, 0, 5));
}

TEST(SafeArray, FirstIndexMovesFastest)
{
    SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 10}};
    SAFEARRAY* array = SafeArrayCreate(VT_I4, 2, bounds);
    ASSERT_EQ(2u, SafeArrayGetDim(array));
    for (LONG second = 10; second < 13; ++second) {
        for (LONG first = 0; first < 2; ++first) {
            LONG indices[] = {first, second}, value = first + 100 * second;
            ASSERT_EQ(S_OK, SafeArrayPutElement(array, indices, &value));
        }
    }
    void* data = nullptr;
    ASSERT_EQ(S_OK, SafeArrayAccessData(array, &data));
    const auto* numbers = static_cast<const LONG*>(data);
    EXPECT_EQ(1000, numbers[0]);
    EXPECT_EQ(1001, numbers[1]);
    EXPECT_EQ(1100, numbers[2]);
    EXPECT_EQ(1201, numbers[5]);
    EXPECT_EQ(DISP_E_ARRAYISLOCKED, SafeArrayDestroy(array));
    EXPECT_EQ(S_OK, SafeArrayUnaccessData(array));
    EXPECT_EQ(E_UNEXPECTED, SafeArrayUnaccessData(array));
    EXPECT_EQ(S_OK, SafeArrayDestroy(array));
}

TEST(VariantTime, CountsFromTheEndOf1899)
{
    struct Row
    {
        SYSTEMTIME time;
        double date;
    };
    const Row rows[] = {
        {{1899, 12, 6, 30, 0, 0, 0, 0}, 0.0},
        {{2020, 2, 6, 29, 12, 30, 15, 0}, 43890.5210069444},
        {{1899, 12, 5, 29, 6, 0, 0, 0}, -1.25},
        {{9999, 12, 5, 31, 23, 59, 59, 0}, 2958465.99998843},
    };
    for (const Row& row : rows) {
        SYSTEMTIME time = row.time;
        double date = 0;
        ASSERT_TRUE(SystemTimeToVariantTime(&time, &date)) << row.date;
        EXPECT_NEAR(row.date, date, 1e-8);
        SYSTEMTIME back{};
        ASSERT_TRUE(VariantTimeToSystemTime(date, &back)) << row.date;
        EXPECT_EQ(0, std::memcmp(&row.time, &back, sizeof back)) << row.date;
    }
    SYSTEMTIME pastTheMonth{2021, 2, 0, 29, 0, 0, 0, 0}, next{2021, 3, 0, 1, 0, 0, 0, 0};
    double date = 0, expected = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(&pastTheMonth, &date));
    EXPECT_TRUE(SystemTimeToVariantTime(&next, &expected));
    EXPECT_EQ(expected, date);
    pastTheMonth.wDay = 32;
    EXPECT_FALSE(SystemTimeToVariantTime(&pastTheMonth, &date));
}
