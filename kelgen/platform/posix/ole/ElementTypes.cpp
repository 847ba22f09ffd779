// ElementTypes.cpp: sizes, copies and ends of elements by type.
#include <kelgen/platform/posix/ole/ElementTypes.h>

#include <kelgen/platform/posix/ole/api/SystemStrings.h>
#include <kelgen/platform/posix/ole/api/Variants.h>
#include <kelgen/platform/support/ValueSizes.h>

#include <cstring>

namespace kelgen::posix {

size_t ElementSize(VARTYPE type)
{
    switch (type) {
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
        return sizeof(void*);
    case VT_VARIANT:
        return sizeof(VARIANT);
    default:
        return PlainValueSize(type);
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
