// BaseMapPtrToPtr.h: CBaseMapPtrToPtr, a map of pointers that counts its entries.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/MapTypes.h>

class KELGEN_API CBaseMapPtrToPtr : public CMapPtrToPtr
{
public:
    /// The number of entries, counted by walking the map. Cost: linear.
    int GetSize_() const;
};
