// StrArrayVariant.cpp: exchange with automation's arrays of strings.
#include <kelgen/text/StrArray.h>

#include <kelgen/containers/SafeArrayElements.h>
#include <kelgen/framework/ole/OleVariant.h>

#include <memory>

namespace {

struct FreeBstr
{
    using pointer = BSTR;
    void operator()(BSTR text) const { SysFreeString(text); }
};
using OwnedBstr = std::unique_ptr<OLECHAR, FreeBstr>;

/// Null without memory.
BSTR ToBstr(const CString& text)
{
    const int bytes = text.GetLength();
    const int units = bytes > 0 ? MultiByteToWideChar(CP_ACP, 0, text, bytes, nullptr, 0) : 0;
    BSTR const converted = SysAllocStringLen(nullptr, static_cast<UINT>(units));
    if (converted != nullptr && units > 0)
        MultiByteToWideChar(CP_ACP, 0, text, bytes, converted, units);
    return converted;
}

/// Null without memory.
SAFEARRAY* ToSafeArray(const CStringArray& texts)
{
    SAFEARRAY* const array = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.GetSize()));
    void* data = nullptr;
    if (array == nullptr || FAILED(SafeArrayAccessData(array, &data)))
        return nullptr;

    const auto elements = static_cast<BSTR*>(data);
    bool done = true;
    for (int i = 0; done && i < texts.GetSize(); ++i) {
        elements[i] = ToBstr(texts[i]);
        done = elements[i] != nullptr;
    }
    SafeArrayUnaccessData(array);
    if (done)
        return array;
    SafeArrayDestroy(array);
    return nullptr;
}

bool HoldsStrings(SAFEARRAY* array)
{
    VARTYPE type = VT_EMPTY;
    return array != nullptr && SUCCEEDED(SafeArrayGetVartype(array, &type)) && type == VT_BSTR;
}

}  // namespace

bool CStrArray::Copy(VARIANT* variant)
{
    RemoveAll();
    SAFEARRAY* const array = kelgen::detail::SafeArrayIn(variant);
    if (!HoldsStrings(array))
        return false;
    const kelgen::detail::SafeArraySource source(array, sizeof(BSTR));
    for (int i = 0; i < source.GetCount(); ++i) {
        BSTR text = nullptr;
        if (!source.Read(i, &text))
            continue;
        const OwnedBstr owner(text);
        Add(text != nullptr ? CString(text, static_cast<int>(SysStringLen(text))) : CString());
    }
    return source.IsReadable();
}

bool CStrArray::CreateSafeArray(VARIANT* variant) const
{
    return variant != nullptr && kelgen::detail::StoreSafeArray(VT_BSTR, ToSafeArray(*this), *variant);
}

COleVariant CStrArray::CreateSafeArray() const
{
    COleVariant variant;
    CreateSafeArray(&variant);
    return variant;
}
