// BaseMapPtrToPtr.h: CBaseMapPtrToPtr, a map of pointers that counts its entries and its visible windows.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/collections/MapTypes.h>

class CWnd;

/// A map of pointers whose values may be windows' objects.
class KELGEN_API CBaseMapPtrToPtr : public CMapPtrToPtr
{
public:
    /// The number of entries, counted by walking the map. Cost: linear.
    int GetSize_() const;
    /// The number of values that are windows that can be seen (IsWindowVisible). Every value must be a CWnd* or null.
    int GetWndVisibleCount() const;
    /// The same without the entries whose value is @p except.
    int GetWndVisibleCountExcept(const CWnd* except) const;
};
