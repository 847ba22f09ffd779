// ElementTypes.cpp: sizes, copies and ends of elements by type.
#include <kelgen/platform/posix/ole/ElementTypes.h>

#include <kelgen/platform/posix/ole/api/SystemStrings.h>
#include <kelgen/platform/posix/ole/api/Variants.h>

#include <cstring>

namespace kelgen::posix {

size_t ElementSize(VARTYPE type)
{
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_DATE:
    case VT_CY:
        return 8;
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
        return sizeof(void*);
    case VT_VARIANT:
        return sizeof(VARIANT);
    default:
        return 0;
    }
}

HRESULT CopyElement(VARTYPE type, void* destination, const void* source)
{
    if (type == VT_BSTR) {
        const BSTR text = *static_cast<const BSTR*>(source);
        const BSTR copy = text ? SysAllocStringByteLen(reinterpret_cast<LPCSTR>(text), SysStringByteLen(text)) : nullptr;
        *static_cast<BSTR*>(destination) = copy;
        return text && !copy ? E_OUTOFMEMORY : S_OK;
    }
    if (type == VT_VARIANT) {
        auto* const copy = static_cast<VARIANT*>(destination);
        VariantInit(copy);
        return VariantCopy(copy, static_cast<const VARIANT*>(source));
    }
    std::memcpy(destination, source, ElementSize(type));
    if (type == VT_UNKNOWN || type == VT_DISPATCH) {
        if (IUnknown* object = *static_cast<IUnknown* const*>(source))
            object->AddRef();
    }
    return S_OK;
}

void FreeElement(VARTYPE type, void* element)
{
    if (type == VT_BSTR) {
        SysFreeString(*static_cast<BSTR*>(element));
    } else if (type == VT_VARIANT) {
        VariantClear(static_cast<VARIANT*>(element));
    } else if (type == VT_UNKNOWN || type == VT_DISPATCH) {
        if (IUnknown* object = *static_cast<IUnknown**>(element))
            object->Release();
    }
}

}  // namespace kelgen::posix
