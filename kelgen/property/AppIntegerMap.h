// AppIntegerMap.h: gen::CAppIntegerMap, where any object keeps integers without storage of its own.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseComparable.h>
#include <kelgen/framework/collections/Map.h>

#include <cstdint>

namespace gen {

/// Whose integer, and which. The owner counts by its address only.
class CAppIntegerMapKey
{
public:
    CAppIntegerMapKey() = default;
    /// @p owner is not owned and may be null.
    CAppIntegerMapKey(const CBaseComparable* owner, int id) : m_owner(owner), m_id(id) {}
    bool operator==(const CAppIntegerMapKey& other) const { return m_owner == other.m_owner && m_id == other.m_id; }

    const CBaseComparable* m_owner = nullptr;  ///< not looked into
    int m_id = 0;                              ///< which of the owner's integers
};

}  // namespace gen

/// By contract, since hosts see the order in which a map is walked: the address's bits and the number's, in one.
template <>
inline UINT HashKey<gen::CAppIntegerMapKey&>(gen::CAppIntegerMapKey& key)
{
    return static_cast<UINT>(reinterpret_cast<std::uintptr_t>(key.m_owner)) | static_cast<UINT>(key.m_id);
}

namespace gen {

/// Integers by owner and number.
///
///     map.Set(this, 1, 42);
///     int width = 0;
///     map.Get(this, 1, width);  // true; 42
///
/// An owner's entries stay when it goes.
class KELGEN_API CAppIntegerMap : public CMap<CAppIntegerMapKey, CAppIntegerMapKey&, int, int>
{
public:
    using CKey = CAppIntegerMapKey;

    CAppIntegerMap();
    ~CAppIntegerMap() override;

    /// Replaces an earlier value.
    void Set(const CBaseComparable* owner, int id, int value);
    /// Writes the value and returns true; false, and @p value as it was, when there is none.
    bool Get(const CBaseComparable* owner, int id, int& value) const;
};

}  // namespace gen
