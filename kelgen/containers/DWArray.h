// DWArray.h: CDWArray, an array of unsigned 32-bit numbers.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseNumericArray.h>

/// An array of 32-bit numbers with comparison and arithmetic.
class KELGEN_API CDWArray : public CBaseNumericArray<DWORD, const DWORD>
{
public:
    using CBaseNumericArray<DWORD, const DWORD>::CBaseNumericArray;
    /// Takes the elements of another comparable array, such as what &= returns.
    using CBaseNumericArray<DWORD, const DWORD>::operator=;

    /// Whether an element equals @p value.
    bool HasItem(DWORD value) const { return FindItem(value) >= 0; }
    /// The first index of @p value, or -1.
    int FindItem(DWORD value) const;
    /// Removes the first element equal to @p value, if there is one.
    void RemoveItem(DWORD value);

    /// Becomes equal to @p other. Onto itself nothing happens.
    void Copy(const CDWArray& other);
    /// Empties the array, whose block stays, and appends the elements of the variant's array. False, with the array empty, unless
    /// the variant holds an array of one dimension and readable bounds whose elements have 32 bits or less.
    bool Copy(VARIANT* variant);

    using CBaseNumericArray<DWORD, const DWORD>::CreateSafeArray;
    /// Frees what the initialised @p variant holds and gives it an array of the elements (VT_UI4). False for null and without
    /// memory.
    bool CreateSafeArray(VARIANT* variant) const;
};
