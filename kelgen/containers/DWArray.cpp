// DWArray.cpp: items of a number array.
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
