// OleVariant.h: a variant that owns what it holds.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/framework/ole/OleDateTime.h>
#include <kelgen/framework/ole/OleException.h>

/// A VARIANT by value: it copies deeply and frees on destruction. Narrow text is converted by the ANSI code page.
/// Throws: COleException for failures, CMemoryException without memory.
class KELGEN_FRAMEWORK_API COleVariant : public tagVARIANT
{
public:
    COleVariant() { VariantInit(this); }
    COleVariant(const COleVariant& source) : COleVariant(static_cast<const VARIANT&>(source)) {}
    /// A copy of the value, text included.
    COleVariant(const VARIANT& source);
    /// Text: VT_BSTR, or VT_EMPTY for null.
    COleVariant(LPCSTR text);
    /// Text: VT_BSTR, even when it is empty.
    COleVariant(const CString& text) : COleVariant(static_cast<LPCSTR>(text)) {}
    /// VT_UI1.
    COleVariant(BYTE value);
    /// @p type is VT_I2, VT_BOOL or VT_ERROR.
    COleVariant(short value, VARTYPE type = VT_I2);
    /// @p type is VT_I4, VT_BOOL or VT_ERROR.
    COleVariant(LONG value, VARTYPE type = VT_I4);
    /// VT_I8.
    COleVariant(LONGLONG value);
    /// VT_R4.
    COleVariant(float value);
    /// VT_R8.
    COleVariant(double value);
    /// VT_DATE.
    COleVariant(const COleDateTime& value);
    ~COleVariant() { VariantClear(this); }

    COleVariant& operator=(const COleVariant& source) { return *this = static_cast<const VARIANT&>(source); }
    /// Frees the value and copies another; its own is left as it is.
    COleVariant& operator=(const VARIANT& source);

    /// Frees the value; the variant is empty then.
    void Clear();
    /// Changes the type, from @p source when given; see VariantChangeType.
    void ChangeType(VARTYPE type, const VARIANT* source = nullptr);
    /// Takes over @p source, which becomes empty.
    void Attach(VARIANT& source);
    /// Hands the value to the caller, who frees it; the variant is empty then.
    VARIANT Detach();

    /// Whether both hold the same type and value; arrays and objects are equal when they are the same one.
    bool operator==(const VARIANT& other) const;
    /// The opposite of ==.
    bool operator!=(const VARIANT& other) const { return !(*this == other); }

    /// Both: the variant itself, for calls that take a pointer.
    operator VARIANT*() { return this; }
    operator const VARIANT*() const { return this; }
};
