// SafeArrayElements.cpp: bounds, elements and ownership of automation's arrays.
#include <kelgen/containers/SafeArrayElements.h>

#include <climits>
#include <cstring>

namespace kelgen::detail {

SafeArraySource::SafeArraySource(SAFEARRAY* array, std::size_t elementSize) : m_array(array), m_elementSize(elementSize)
{
    LONG last = 0;
    if (array == nullptr || SafeArrayGetDim(array) != 1 || SafeArrayGetElemsize(array) > elementSize)
        return;
    if (FAILED(SafeArrayGetLBound(array, 1, &m_first)) || FAILED(SafeArrayGetUBound(array, 1, &last)))
        return;
    const long long count = static_cast<long long>(last) - m_first + 1;
    if (count > INT_MAX)
        return;
    m_readable = true;
    m_count = count > 0 ? static_cast<int>(count) : 0;
}

bool SafeArraySource::Read(int position, void* element) const
{
    std::memset(element, 0, m_elementSize);
    LONG index = m_first + position;
    return SUCCEEDED(SafeArrayGetElement(m_array, &index, element));
}

SAFEARRAY* SafeArrayIn(const VARIANT* variant)
{
    if (variant == nullptr || (variant->vt & VT_ARRAY) == 0)
        return nullptr;
    if ((variant->vt & VT_BYREF) == 0)
        return variant->parray;
    return variant->pparray != nullptr ? *variant->pparray : nullptr;
}

SAFEARRAY* MakeSafeArray(VARTYPE type, const void* elements, int count, std::size_t elementSize)
{
    SAFEARRAY* const array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(count));
    if (array == nullptr)
        return nullptr;

    // Texts and objects are put as the pointers that they are, all else by its address.
    const bool byPointer = (array->fFeatures & (FADF_BSTR | FADF_UNKNOWN | FADF_DISPATCH)) != 0;
    bool done = SafeArrayGetElemsize(array) == elementSize;
    for (LONG i = 0; done && i < count; ++i) {
        const char* const element = static_cast<const char*>(elements) + static_cast<std::size_t>(i) * elementSize;
        void* value = const_cast<char*>(element);
        if (byPointer)
            std::memcpy(&value, element, sizeof(value));
        done = SUCCEEDED(SafeArrayPutElement(array, &i, value));
    }
    if (done)
        return array;
    SafeArrayDestroy(array);
    return nullptr;
}

bool StoreSafeArray(VARTYPE type, SAFEARRAY* array, VARIANT& variant)
{
    VariantClear(&variant);
    if (array == nullptr)
        return false;
    variant.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    variant.parray = array;
    return true;
}

}  // namespace kelgen::detail
