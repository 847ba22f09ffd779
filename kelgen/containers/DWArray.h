// DWArray.h: CDWArray, an array of unsigned 32-bit numbers.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseNumericArray.h>

class KELGEN_API CDWArray : public CBaseNumericArray<DWORD, const DWORD>
{
public:
    using CBaseNumericArray<DWORD, const DWORD>::CBaseNumericArray;

    bool HasItem(DWORD value) const { return FindItem(value) >= 0; }
    /// The first index of @p value, or -1.
    int FindItem(DWORD value) const;
    /// Removes the first element equal to @p value, if there is one.
    void RemoveItem(DWORD value);

    /// Becomes equal to @p other. Onto itself nothing happens.
    void Copy(const CDWArray& other);
};
