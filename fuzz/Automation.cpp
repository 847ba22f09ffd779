// Automation.cpp: variants and arrays of any values through any changes: what they hold stays readable, and a copy is equal.
#include "Input.h"

#include <kelgen/framework/ole/OleVariant.h>

#include <cmath>

using namespace fuzz;

namespace {

constexpr VARTYPE kTypes[] = {VT_EMPTY, VT_NULL, VT_I2,  VT_I4,  VT_R4,  VT_R8, VT_CY,  VT_DATE, VT_BSTR, VT_ERROR,
                              VT_BOOL,  VT_I1,   VT_UI1, VT_UI2, VT_UI4, VT_I8, VT_UI8, VT_INT,  VT_UINT, VT_VARIANT};
constexpr unsigned kPlainTypes = std::size(kTypes) - 1;

bool IsNumber(const VARIANT& value)
{
    return value.vt != VT_R4 && value.vt != VT_R8 && value.vt != VT_DATE ? true
           : value.vt == VT_R4                                           ? !std::isnan(value.fltVal)
                                                                         : !std::isnan(value.dblVal);
}

VARIANT TakeValue(Input& input)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = kTypes[input.Below(kPlainTypes)];
    if (value.vt == VT_BSTR) {
        const auto text = input.Counted<char>();
        value.bstrVal = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
        for (std::size_t i = 0; i < text.size(); ++i)
            value.bstrVal[i] = static_cast<WCHAR>(static_cast<unsigned char>(text[i]));
    } else {
        value.llVal = input.Take<LONGLONG>();
    }
    return value;
}

void IsReadable(const VARIANT& value)
{
    if (value.vt != VT_BSTR || !value.bstrVal)
        return;
    // As anybody who reads it would.
    const COleVariant copy(value);
    Require(SysStringLen(copy.bstrVal) == SysStringLen(value.bstrVal) && value.bstrVal[SysStringLen(value.bstrVal)] == 0);
}

/// A number written as text and read again is the same one.
void TextComesBack(const COleVariant& value)
{
    VARIANT text, again;
    VariantInit(&text);
    VariantInit(&again);
    const bool isWhole = value.vt != VT_BSTR && value.vt != VT_R4 && value.vt != VT_R8 && value.vt != VT_DATE && value.vt != VT_CY &&
                         value.vt != VT_I8 && value.vt != VT_UI8 && value.vt != VT_EMPTY && value.vt != VT_NULL && value.vt != VT_BOOL &&
                         value.vt != VT_ERROR;
    if (isWhole && SUCCEEDED(VariantChangeType(&text, &value, 0, VT_BSTR))) {
        Require(VariantChangeType(&again, &text, 0, value.vt) == S_OK);
        VARIANT left, right;
        VariantInit(&left);
        VariantInit(&right);
        Require(VariantChangeType(&left, &value, 0, VT_I8) == S_OK && VariantChangeType(&right, &again, 0, VT_I8) == S_OK);
        Require(left.llVal == right.llVal);
    }
    VariantClear(&text);
    VariantClear(&again);
}

void Change(Input& input)
{
    COleVariant value;
    {
        VARIANT taken = TakeValue(input);
        value.Attach(taken);
    }
    for (int i = 0; i < 8 && input.Left() > 0; ++i) {
        const COleVariant before(value);
        Require(before == value || !IsNumber(value));
        TextComesBack(value);
        const VARTYPE type = kTypes[input.Below(std::size(kTypes))];
        VARIANT changed;
        VariantInit(&changed);
        const HRESULT result = VariantChangeType(&changed, &value, input.Below(2) ? VARIANT_ALPHABOOL : 0, type);
        Require(SUCCEEDED(result) ? changed.vt == type : changed.vt == VT_EMPTY);
        Require(before == value || !IsNumber(value));
        IsReadable(changed);
        if (SUCCEEDED(result))
            value.Attach(changed);
    }
}

void Arrays(Input& input)
{
    const VARTYPE type = kTypes[2 + input.Below(std::size(kTypes) - 2)];
    const UINT dimensions = 1 + input.Below(3);
    SAFEARRAYBOUND bounds[3] = {};
    for (SAFEARRAYBOUND& bound : bounds)
        bound = {input.Below(6), static_cast<LONG>(input.Take<signed char>())};
    SAFEARRAY* const array = SafeArrayCreate(type, dimensions, bounds);
    if (!array)
        return;
    while (input.Left() > 0) {
        LONG indices[3];
        for (UINT i = 0; i < 3; ++i)
            indices[i] = input.Take<signed char>();
        bool isInside = true;
        for (UINT i = 0; i < dimensions; ++i) {
            LONG first = 0, last = 0;
            Require(SafeArrayGetLBound(array, i + 1, &first) == S_OK && SafeArrayGetUBound(array, i + 1, &last) == S_OK);
            isInside = isInside && indices[i] >= first && indices[i] <= last;
        }
        if (input.Below(8) == 0) {
            SAFEARRAYBOUND bound = {input.Below(9), static_cast<LONG>(input.Take<signed char>())};
            SafeArrayRedim(array, &bound);
            continue;
        }
        VARIANT value = TakeValue(input);
        void* const source = type == VT_BSTR      ? static_cast<void*>(value.vt == VT_BSTR ? value.bstrVal : nullptr)
                             : type == VT_VARIANT ? static_cast<void*>(&value)
                                                  : &value.llVal;
        const HRESULT put = SafeArrayPutElement(array, indices, source);
        Require(isInside ? SUCCEEDED(put) : put == DISP_E_BADINDEX);
        VARIANT read;
        VariantInit(&read);
        if (type == VT_VARIANT) {
            Require(isInside == SUCCEEDED(SafeArrayGetElement(array, indices, &read)));
        } else {
            Require(isInside == SUCCEEDED(SafeArrayGetElement(array, indices, &read.llVal)));
            if (type == VT_BSTR && isInside)
                read.vt = VT_BSTR;
        }
        IsReadable(read);
        VariantClear(&read);
        VariantClear(&value);
    }
    SAFEARRAY* copy = nullptr;
    Require(SafeArrayCopy(array, &copy) == S_OK && SafeArrayGetDim(copy) == dimensions);
    Require(SafeArrayDestroy(copy) == S_OK && SafeArrayDestroy(array) == S_OK);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    if (input.Below(2) == 0)
        Change(input);
    else
        Arrays(input);
    return 0;
}
