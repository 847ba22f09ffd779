// SafeArrayElements.h: elements from and to automation's arrays of one dimension.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/platform/Win32.h>

#include <cstddef>

namespace kelgen::detail {

/// The elements of an automation array, as values of @p elementSize bytes.
class KELGEN_API SafeArraySource
{
public:
    SafeArraySource(SAFEARRAY* array, std::size_t elementSize);

    /// Whether the array has one dimension, readable bounds and elements no larger than the values.
    bool IsReadable() const { return m_readable; }
    /// 0 for an unreadable array.
    int GetCount() const { return m_count; }
    /// Copies the element at @p position, counted from 0, into @p element, whose further bytes become 0. False when that fails.
    bool Read(int position, void* element) const;

private:
    SAFEARRAY* m_array;
    std::size_t m_elementSize;
    LONG m_first = 0;
    int m_count = 0;
    bool m_readable = false;
};

/// The array in a variant, held or referred to; null when there is none.
KELGEN_API SAFEARRAY* SafeArrayIn(const VARIANT* variant);

/// A new array of @p count elements of @p type from index 0, copied from values of @p elementSize bytes. Null when elements of
/// that type have another size, or without memory.
KELGEN_API SAFEARRAY* MakeSafeArray(VARTYPE type, const void* elements, int count, std::size_t elementSize);

/// Frees what @p variant holds and gives it @p array; false, with @p variant empty, when @p array is null.
KELGEN_API bool StoreSafeArray(VARTYPE type, SAFEARRAY* array, VARIANT& variant);

}  // namespace kelgen::detail
