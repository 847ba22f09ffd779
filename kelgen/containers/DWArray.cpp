// DWArray.cpp: items of a number array, and exchange with variants.
#include <kelgen/containers/DWArray.h>

int CDWArray::FindItem(DWORD value) const
{
    return FindFirst(value);
}

void CDWArray::RemoveItem(DWORD value)
{
    RemoveFirst(value);
}

void CDWArray::Copy(const CDWArray& other)
{
    CArray<DWORD, const DWORD>::Copy(other);
}

bool CDWArray::Copy(VARIANT* variant)
{
    SAFEARRAY* const array = kelgen::detail::SafeArrayIn(variant);
    CopySafeArray(array);
    return kelgen::detail::SafeArraySource(array, sizeof(DWORD)).IsReadable();
}

bool CDWArray::CreateSafeArray(VARIANT* variant) const
{
    return variant != nullptr && kelgen::detail::StoreSafeArray(VT_UI4, CreateSafeArray(VT_UI4), *variant);
}
