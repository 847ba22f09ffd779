// Property.cpp: a property's copies and its report to the set.
#include <kelgen/property/Property.h>

#include <kelgen/property/PropertySet.h>

namespace gen {

CProperty::CProperty(int id, const char* name, EPropertyType type) : m_id(id), m_name(name)
{
    m_value.m_owner = this;
    m_value.SetType(type);
}

CProperty::CProperty(const CProperty& other) : CProperty()
{
    *this = other;
}

CProperty& CProperty::operator=(const CProperty& other)
{
    const kelgen::detail::PresenceWatch watch(m_presence);
    m_value = other.m_value;
    if (watch.IsGone())
        return *this;
    ForgetPlace();
    m_id = other.m_id;
    m_name = other.m_name;
    return *this;
}

bool CProperty::operator==(const CProperty& other) const
{
    return m_id == other.m_id && m_name == other.m_name && m_value == other.m_value;
}

void CProperty::SetId(int id)
{
    ForgetPlace();
    m_id = id;
}

void CProperty::SetName(const char* name)
{
    ForgetPlace();
    m_name = name;
}

void CProperty::ForgetPlace()
{
    if (m_set != nullptr)
        m_set->m_index.Forget();
}

void CProperty::OnChangeValue()
{
    if (m_set != nullptr)
        m_set->OnChangeValue(this);
}

}  // namespace gen
