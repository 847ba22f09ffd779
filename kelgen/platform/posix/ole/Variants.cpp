// Variants.cpp: the life of variants, and changes of type through one number or text in between.
#include <kelgen/platform/posix/ole/api/Variants.h>

#include <kelgen/platform/posix/ole/ElementTypes.h>
#include <kelgen/platform/posix/ole/api/SafeArrays.h>
#include <kelgen/platform/posix/ole/api/SystemStrings.h>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>

using namespace kelgen::posix;

namespace {

bool IsByReference(const VARIANT& value)
{
    return value.vt & VT_BYREF;
}

bool IsArray(const VARIANT& value)
{
    return value.vt & VT_ARRAY;
}

bool IsKnown(VARTYPE type)
{
    return type == VT_EMPTY || type == VT_NULL || ElementSize(type) != 0;
}

std::string NarrowText(BSTR text)
{
    std::string narrow;
    for (UINT i = 0, length = SysStringLen(text); i < length; ++i)
        narrow.push_back(text[i] < 0x80 ? static_cast<char>(text[i]) : '?');
    return narrow;
}

BSTR WideText(const std::string& narrow)
{
    const BSTR text = SysAllocStringLen(nullptr, static_cast<UINT>(narrow.size()));
    for (size_t i = 0; text && i < narrow.size(); ++i)
        text[i] = static_cast<unsigned char>(narrow[i]);
    return text;
}

bool EqualsIgnoringCase(const std::string& text, const char* small)
{
    size_t i = 0;
    for (; i < text.size() && small[i]; ++i) {
        if (std::tolower(static_cast<unsigned char>(text[i])) != small[i])
            return false;
    }
    return i == text.size() && !small[i];
}

std::optional<double> ParseNumber(const std::string& text)
{
    // Hexadecimal, "inf" and "nan", which the parser would take, are no spellings of numbers here.
    if (text.find_first_not_of(" \t0123456789+-.eE") != std::string::npos || text.find_first_of("0123456789") == std::string::npos)
        return std::nullopt;
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    while (*end == ' ' || *end == '\t')
        ++end;
    return *end ? std::nullopt : std::optional(number);
}

/// Any value in between two types: whole numbers keep all their bits.
using Number = std::variant<LONGLONG, ULONGLONG, double>;

/// The value as a number; no value when it has none.
std::optional<Number> NumberOf(const VARIANT& value)
{
    switch (value.vt) {
    case VT_EMPTY:
        return LONGLONG{0};
    case VT_I1:
        return LONGLONG{static_cast<signed char>(value.cVal)};
    case VT_UI1:
        return LONGLONG{value.bVal};
    case VT_I2:
        return LONGLONG{value.iVal};
    case VT_UI2:
        return LONGLONG{value.uiVal};
    case VT_BOOL:
        return LONGLONG{value.boolVal};
    case VT_I4:
    case VT_INT:
    case VT_ERROR:
        return LONGLONG{value.lVal};
    case VT_UI4:
    case VT_UINT:
        return LONGLONG{value.ulVal};
    case VT_I8:
        return value.llVal;
    case VT_UI8:
        return value.ullVal;
    case VT_CY:
        return static_cast<double>(value.cyVal.int64) / 10000;
    case VT_R4:
        return double{value.fltVal};
    case VT_R8:
    case VT_DATE:
        return value.dblVal;
    case VT_BSTR:
        if (const auto number = ParseNumber(NarrowText(value.bstrVal)))
            return *number;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

/// Stores a whole number within the limits of Integer; fractions round half to even.
template <class Integer>
HRESULT StoreInteger(const Number& number, Integer& destination)
{
    if (const auto* real = std::get_if<double>(&number)) {
        const double rounded = std::nearbyint(*real);
        // The limits as doubles: the upper one of 64 bits is one too high, hence no equality there.
        if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
              rounded < std::ldexp(1.0, std::numeric_limits<Integer>::digits)))
            return DISP_E_OVERFLOW;
        destination = static_cast<Integer>(rounded);
        return S_OK;
    }
    return std::visit(
        [&destination](auto whole) -> HRESULT {
            if constexpr (std::is_integral_v<decltype(whole)>) {
                if (!std::in_range<Integer>(whole))
                    return DISP_E_OVERFLOW;
            }
            destination = static_cast<Integer>(whole);
            return S_OK;
        },
        number);
}

double RealOf(const Number& number)
{
    return std::visit([](auto value) { return static_cast<double>(value); }, number);
}

std::string SpellingOf(const VARIANT& value, const Number& number, USHORT flags)
{
    if (value.vt == VT_BOOL && flags & VARIANT_ALPHABOOL)
        return value.boolVal ? "True" : "False";
    if (const auto* whole = std::get_if<LONGLONG>(&number))
        return std::to_string(*whole);
    if (const auto* positive = std::get_if<ULONGLONG>(&number))
        return std::to_string(*positive);
    char text[40];
    std::snprintf(text, sizeof text, "%.*G", value.vt == VT_R4 ? 7 : 15, std::get<double>(number));
    return text;
}

HRESULT ChangeToText(const VARIANT& source, USHORT flags, VARIANT& result)
{
    if (source.vt == VT_BSTR || source.vt == VT_EMPTY) {
        result.bstrVal =
            source.vt == VT_EMPTY ? SysAllocStringLen(nullptr, 0) : SysAllocStringLen(source.bstrVal, SysStringLen(source.bstrVal));
    } else {
        const auto number = NumberOf(source);
        if (!number)
            return DISP_E_TYPEMISMATCH;
        result.bstrVal = WideText(SpellingOf(source, *number, flags));
    }
    return result.bstrVal ? S_OK : E_OUTOFMEMORY;
}

HRESULT ChangeToBoolean(const VARIANT& source, VARIANT& result)
{
    if (source.vt == VT_BSTR) {
        const std::string text = NarrowText(source.bstrVal);
        if (EqualsIgnoringCase(text, "true") || EqualsIgnoringCase(text, "false")) {
            result.boolVal = EqualsIgnoringCase(text, "true") ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        }
    }
    const auto number = NumberOf(source);
    if (!number)
        return DISP_E_TYPEMISMATCH;
    result.boolVal = RealOf(*number) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT ChangeToNumber(const VARIANT& source, VARTYPE type, VARIANT& result)
{
    const auto number = NumberOf(source);
    if (!number)
        return DISP_E_TYPEMISMATCH;
    switch (type) {
    case VT_I1:
        return StoreInteger(*number, reinterpret_cast<signed char&>(result.cVal));
    case VT_UI1:
        return StoreInteger(*number, result.bVal);
    case VT_I2:
        return StoreInteger(*number, result.iVal);
    case VT_UI2:
        return StoreInteger(*number, result.uiVal);
    case VT_I4:
    case VT_INT:
        return StoreInteger(*number, result.lVal);
    case VT_UI4:
    case VT_UINT:
        return StoreInteger(*number, result.ulVal);
    case VT_I8:
        return StoreInteger(*number, result.llVal);
    case VT_UI8:
        return StoreInteger(*number, result.ullVal);
    case VT_CY:
        return StoreInteger(Number(RealOf(*number) * 10000), result.cyVal.int64);
    case VT_R8:
    case VT_DATE:
        result.dblVal = RealOf(*number);
        return S_OK;
    case VT_R4:
        if (std::fabs(RealOf(*number)) > double{std::numeric_limits<float>::max()})
            return DISP_E_OVERFLOW;
        result.fltVal = static_cast<float>(RealOf(*number));
        return S_OK;
    default:
        return DISP_E_TYPEMISMATCH;
    }
}

}  // namespace

void VariantInit(VARIANT* variant)
{
    variant->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANT* variant)
{
    const auto type = static_cast<VARTYPE>(variant->vt & VT_TYPEMASK);
    if (!IsKnown(type))
        return DISP_E_BADVARTYPE;
    if (!IsByReference(*variant)) {
        if (IsArray(*variant)) {
            if (const HRESULT result = SafeArrayDestroy(variant->parray); FAILED(result))
                return result;
        } else if (type != VT_VARIANT) {
            FreeElement(type, &variant->byref);
        }
    }
    variant->vt = VT_EMPTY;
    return S_OK;
}

HRESULT VariantCopy(VARIANT* destination, const VARIANT* source)
{
    if (destination == source)
        return S_OK;
    const auto type = static_cast<VARTYPE>(source->vt & VT_TYPEMASK);
    if (!IsKnown(type))
        return DISP_E_BADVARTYPE;

    VARIANT copy = *source;
    HRESULT result = S_OK;
    if (!IsByReference(*source)) {
        if (IsArray(*source))
            result = SafeArrayCopy(source->parray, &copy.parray);
        else if (type == VT_BSTR || type == VT_UNKNOWN || type == VT_DISPATCH)
            result = CopyElement(type, &copy.byref, &source->byref);
    }
    if (SUCCEEDED(result))
        result = VariantClear(destination);
    if (SUCCEEDED(result))
        *destination = copy;
    else if (!IsByReference(copy) && copy.byref != source->byref)
        VariantClear(&copy);
    return result;
}

HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type)
{
    if (source->vt == type)
        return VariantCopy(destination, source);
    if (!IsKnown(type))
        return DISP_E_BADVARTYPE;

    VARIANT value{};
    VariantInit(&value);
    if (IsByReference(*source) && !IsArray(*source) && ElementSize(source->vt & VT_TYPEMASK) <= sizeof value.llVal) {
        value.vt = source->vt & VT_TYPEMASK;
        std::memcpy(&value.byref, source->byref, ElementSize(value.vt));
    } else {
        value = *source;
    }
    VARIANT result{};
    result.vt = type;
    HRESULT changed = DISP_E_TYPEMISMATCH;
    if (type == VT_BSTR)
        changed = ChangeToText(value, flags, result);
    else if (type == VT_BOOL)
        changed = ChangeToBoolean(value, result);
    else
        changed = ChangeToNumber(value, type, result);
    if (SUCCEEDED(changed))
        changed = VariantClear(destination);
    if (SUCCEEDED(changed))
        *destination = result;
    return changed;
}
