// Variants.h: values whose type is known at run time.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/ole/api/OleTypes.h>

struct SAFEARRAY;

/// 24 bytes: the type, three reserved words, and the value in the member that the type names.
struct tagVARIANT
{
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    __extension__ union {
        LONGLONG llVal;
        LONG lVal;
        BYTE bVal;
        SHORT iVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        CY cyVal;
        DATE date;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        SAFEARRAY* parray;
        CHAR cVal;
        USHORT uiVal;
        ULONG ulVal;
        ULONGLONG ullVal;
        INT intVal;
        UINT uintVal;
        PVOID byref;
        BYTE* pbVal;
        SHORT* piVal;
        LONG* plVal;
        LONGLONG* pllVal;
        float* pfltVal;
        double* pdblVal;
        VARIANT_BOOL* pboolVal;
        BSTR* pbstrVal;
        SAFEARRAY** pparray;
        tagVARIANT* pvarVal;
        __extension__ struct
        {
            PVOID pvRecord;
            PVOID pRecInfo;
        };
    };
};
using VARIANT = tagVARIANT;
using VARIANTARG = tagVARIANT;
using LPVARIANT = VARIANT*;

#define V_VT(variant) ((variant)->vt)
#define V_I2(variant) ((variant)->iVal)
#define V_I4(variant) ((variant)->lVal)
#define V_UI1(variant) ((variant)->bVal)
#define V_R4(variant) ((variant)->fltVal)
#define V_R8(variant) ((variant)->dblVal)
#define V_BOOL(variant) ((variant)->boolVal)
#define V_BSTR(variant) ((variant)->bstrVal)
#define V_DATE(variant) ((variant)->date)
#define V_ARRAY(variant) ((variant)->parray)
#define V_ARRAYREF(variant) ((variant)->pparray)

#define VARIANT_ALPHABOOL 0x0002

/// Makes @p variant empty without freeing what it held.
KELGEN_PLATFORM_API void VariantInit(VARIANT* variant);
/// Frees what @p variant owns and makes it empty. DISP_E_BADVARTYPE for an unknown type, DISP_E_ARRAYISLOCKED for a locked array.
KELGEN_PLATFORM_API HRESULT VariantClear(VARIANT* variant);
/// Frees what @p destination owns and makes it a copy with text and arrays of its own; nothing for the same variant.
KELGEN_PLATFORM_API HRESULT VariantCopy(VARIANT* destination, const VARIANT* source);
/// Stores @p source as @p type in @p destination, which may be the same. Numbers, booleans, dates (as numbers) and text change into
/// each other; fractions round half to even. DISP_E_TYPEMISMATCH when there is no such change (text must be a whole number
/// spelling), DISP_E_OVERFLOW past the type's limits. @p flags: VARIANT_ALPHABOOL spells booleans "True" and "False", not -1 and 0.
KELGEN_PLATFORM_API HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type);
