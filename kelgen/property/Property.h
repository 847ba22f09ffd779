// Property.h: a numbered and named value that may belong to a property set.
#pragma once

#include <kelgen/framework/base/Presence.h>
#include <kelgen/property/PropertyValue.h>

namespace gen {

class CPropertySet;

/// A number, a name and a typed value. While it belongs to a set, every assignment to the value reaches the set's listeners.
///
/// Its value points back at it: a property stays where it was made, so sets hold properties by pointer.
class KELGEN_API CProperty
{
public:
    /// Id -1, no name, a value of type eptNone, in no set.
    CProperty() : CProperty(-1, "", eptNone) {}
    /// An empty value of @p type, in no set. A null @p name counts as "".
    CProperty(int id, const char* name, EPropertyType type);
    /// Copies value, id and name. The copy is in no set and its value reports to the copy.
    CProperty(const CProperty& other);
    virtual ~CProperty() = default;

    /// Copies the value, which reports while id and name are still the old ones, then id, then name. By contract: this property stays in
    /// its own set, since only what it holds is copied.
    CProperty& operator=(const CProperty& other);

    /// Id, name (by case) and value are equal. By contract: this property's value decides how the two compare, so the relation
    /// is not symmetric when the types differ.
    bool operator==(const CProperty& other) const;
    /// Whether id, name or value differ.
    bool operator!=(const CProperty& other) const { return !(*this == other); }

    /// The number by which a set finds the property.
    int GetId() const { return m_id; }
    /// Sets the number. Reports nothing.
    void SetId(int id);
    /// The name by which a set finds the property, and under which the registry keeps it.
    const CString& GetName() const { return m_name; }
    /// Sets the name. Reports nothing.
    void SetName(const char* name);
    /// The value. Assigning to it reports to the set.
    CPropertyValue& GetValue() { return m_value; }
    const CPropertyValue& GetValue() const { return m_value; }
    /// The set that holds this property, null when none does.
    CPropertySet* GetSet() const { return m_set; }

    /// Tells the set that holds this property; nothing without one.
    virtual void OnChangeValue();

private:
    friend class CPropertySet;
    friend class CPropertySetListenerArray;
    friend class CPropertyValue;
    friend class ::CRegistryPropertyExchange;

    void ForgetPlace();

    int m_id;
    CString m_name;
    CPropertyValue m_value;
    CPropertySet* m_set = nullptr;
    kelgen::detail::Presence m_presence;
};

}  // namespace gen
