// BaseMap.h: maps that can be copied, and the integer map.
#pragma once

#include <kelgen/framework/collections/Map.h>

/// CMap with copying: a copy holds the same keys and values.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CBaseMap : public CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>
{
public:
    CBaseMap() = default;
    CBaseMap(const CBaseMap& other) : CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>() { *this = other; }
    CBaseMap& operator=(const CBaseMap& other);
};

/// Numbers by number, copyable.
class CBaseMapIntegerToInteger : public CBaseMap<int, int, int, int>
{};

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
CBaseMap<KEY, ARG_KEY, VALUE, ARG_VALUE>& CBaseMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::operator=(const CBaseMap& other)
{
    if (this == &other)
        return *this;
    this->RemoveAll();
    for (POSITION position = other.GetStartPosition(); position != nullptr;) {
        KEY key{};
        VALUE value{};
        other.GetNextAssoc(position, key, value);
        this->SetAt(key, value);
    }
    return *this;
}
