// OleTypes.h: result codes and small types that automation calls share.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

using BSTR = WCHAR*;
using OLECHAR = WCHAR;
using LPOLESTR = WCHAR*;
using LPCOLESTR = const WCHAR*;
using SCODE = LONG;
using DATE = double;
using VARTYPE = unsigned short;
using VARIANT_BOOL = short;

#define VARIANT_TRUE (static_cast<VARIANT_BOOL>(-1))
#define VARIANT_FALSE (static_cast<VARIANT_BOOL>(0))

#define SUCCEEDED(result) (static_cast<HRESULT>(result) >= 0)
#define FAILED(result) (static_cast<HRESULT>(result) < 0)

#define KELGEN_HRESULT(code) (static_cast<HRESULT>(code##u))
#define S_OK (static_cast<HRESULT>(0))
#define S_FALSE (static_cast<HRESULT>(1))
#define E_NOTIMPL KELGEN_HRESULT(0x80004001)
#define E_NOINTERFACE KELGEN_HRESULT(0x80004002)
#define E_POINTER KELGEN_HRESULT(0x80004003)
#define E_FAIL KELGEN_HRESULT(0x80004005)
#define E_UNEXPECTED KELGEN_HRESULT(0x8000FFFF)
#define E_ACCESSDENIED KELGEN_HRESULT(0x80070005)
#define E_OUTOFMEMORY KELGEN_HRESULT(0x8007000E)
#define E_INVALIDARG KELGEN_HRESULT(0x80070057)
#define DISP_E_TYPEMISMATCH KELGEN_HRESULT(0x80020005)
#define DISP_E_BADVARTYPE KELGEN_HRESULT(0x80020008)
#define DISP_E_OVERFLOW KELGEN_HRESULT(0x8002000A)
#define DISP_E_BADINDEX KELGEN_HRESULT(0x8002000B)
#define DISP_E_ARRAYISLOCKED KELGEN_HRESULT(0x8002000D)
#define RPC_E_CHANGED_MODE KELGEN_HRESULT(0x80010106)

struct GUID
{
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
};
using IID = GUID;
using CLSID = GUID;

/// An object with a count of its users and interfaces by identifier.
struct IUnknown
{
    /// Stores the object's interface of that identifier, which counts as used; E_NOINTERFACE and null if there is none.
    virtual HRESULT QueryInterface(const IID& identifier, void** object) = 0;
    /// Counts one more user. Returns the count.
    virtual ULONG AddRef() = 0;
    /// Counts one user less; at 0 the object goes. Returns the count.
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};
using LPUNKNOWN = IUnknown*;
struct IDispatch;

/// A fixed-point number of ten-thousandths.
union CY {
    __extension__ struct
    {
        DWORD Lo;
        LONG Hi;
    };
    LONGLONG int64;
};

/// What a variant holds; VT_ARRAY and VT_BYREF are added to one of them.
enum VARENUM : unsigned short
{
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_TYPEMASK = 0x0FFF,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
};
