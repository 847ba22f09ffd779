// OleVariant.cpp: values into variants, deep copies, and comparison by type.
#include <kelgen/framework/ole/OleVariant.h>

#include <kelgen/framework/ole/internal/NarrowToSystem.h>
#include <kelgen/platform/support/ValueSizes.h>

#include <cstring>

COleVariant::COleVariant(const VARIANT& source)
{
    VariantInit(this);
    *this = source;
}

COleVariant::COleVariant(LPCSTR text)
{
    VariantInit(this);
    if (!text)
        return;
    bstrVal = kelgen::detail::NewSystemString(text);
    if (!bstrVal)
        AfxThrowMemoryException();
    vt = VT_BSTR;
}

COleVariant::COleVariant(BYTE value)
{
    vt = VT_UI1;
    bVal = value;
}

COleVariant::COleVariant(short value, VARTYPE type)
{
    vt = type;
    if (type == VT_BOOL)
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    else if (type == VT_ERROR)
        scode = value;
    else
        iVal = value;
}

COleVariant::COleVariant(LONG value, VARTYPE type)
{
    vt = type;
    if (type == VT_BOOL)
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    else
        lVal = value;
}

COleVariant::COleVariant(LONGLONG value)
{
    vt = VT_I8;
    llVal = value;
}

COleVariant::COleVariant(float value)
{
    vt = VT_R4;
    fltVal = value;
}

COleVariant::COleVariant(double value)
{
    vt = VT_R8;
    dblVal = value;
}

COleVariant::COleVariant(const COleDateTime& value)
{
    vt = VT_DATE;
    date = value.m_dt;
}

COleVariant& COleVariant::operator=(const VARIANT& source)
{
    if (this == &source)
        return *this;
    VARIANT copy = source;  // the platform's call takes no const, but only reads
    kelgen::CheckOle(VariantCopy(this, &copy));
    return *this;
}

void COleVariant::Clear()
{
    kelgen::CheckOle(VariantClear(this));
}

void COleVariant::ChangeType(VARTYPE type, const VARIANT* source)
{
    VARIANT copy = source ? *source : *this;
    if (source) {
        kelgen::CheckOle(VariantChangeType(this, &copy, 0, type));
        return;
    }
    VARIANT changed;
    VariantInit(&changed);
    kelgen::CheckOle(VariantChangeType(&changed, &copy, 0, type));
    Attach(changed);
}

void COleVariant::Attach(VARIANT& source)
{
    Clear();
    static_cast<VARIANT&>(*this) = source;
    VariantInit(&source);
}

VARIANT COleVariant::Detach()
{
    const VARIANT value = *this;
    VariantInit(this);
    return value;
}

bool COleVariant::operator==(const VARIANT& other) const
{
    if (vt != other.vt)
        return false;
    if (vt == VT_BSTR) {
        const UINT size = SysStringByteLen(bstrVal);
        return size == SysStringByteLen(other.bstrVal) && std::memcmp(bstrVal, other.bstrVal, size) == 0;
    }
    if (vt == VT_EMPTY || vt == VT_NULL)
        return true;
    // What is no plain value is compared by all bytes, objects and arrays by where they are.
    const std::size_t size = kelgen::PlainValueSize(vt);
    return std::memcmp(&llVal, &other.llVal, size ? size : sizeof llVal) == 0;
}
