// PropertySet.cpp: look-up, copies and reports of property sets.
#include <kelgen/property/PropertySet.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/internal/LinkTable.h>

#include <string_view>
#include <utility>

namespace gen {

namespace {

using ListenerTable = kelgen::detail::LinkTable<CPropertySetListener, CPropertySet>;

bool CopyValue(const CProperty* property, CPropertyValue& value)
{
    if (property == nullptr)
        return false;
    value = property->GetValue();
    return true;
}

}  // namespace

// The first property from start on with that key, as the predicate knows it; null when there is none.
template <class KEY, class PREDICATE>
CProperty* CPropertySet::FindProperty(KEY key, int start, PREDICATE accepts) const
{
    const int count = m_properties.GetCount();
    if (start < 0)
        KELGEN_THROW_BAD_INDEX(start, count);
    const int first = count < kelgen::detail::kLeastIndexedProperties ? -1 : m_index.FirstOf(m_properties, key);
    if (first >= start)
        return first < count ? m_properties.PtrAt(first) : nullptr;
    for (int i = start; i < count; ++i) {
        CProperty* property = m_properties.PtrAt(i);
        if (accepts(*property))
            return property;
    }
    return nullptr;
}

CPropertySetLink::CPropertySetLink(CPropertySet* set)
{
    if (set == nullptr)
        return;
    if (!set->m_place)
        set->m_place = std::make_shared<CPropertySet*>(set);
    m_place = set->m_place;
}

CPropertySet::~CPropertySet()
{
    if (m_hadListeners)
        ListenerTable::Only().Remove(this);
    if (m_place)
        *m_place = nullptr;
}

void CPropertySet::AddListener(CPropertySetListener* listener)
{
    if (listener == nullptr)
        return;
    // What is left of an object that has ended is its base.
    KELGEN_CHECK(typeid(*listener) != typeid(CPropertySetListener), "CPropertySet::AddListener: the listener has been destroyed");
    ListenerTable::Only().Add(listener, this);
    m_hadListeners = true;
    m_listeners.Add(listener);
}

CPropertySet::CPropertySet(const CPropertySet& other)
{
    *this = other;
}

CPropertySet& CPropertySet::operator=(const CPropertySet& other)
{
    m_index.Forget();
    try {
        m_properties = other.m_properties;
    } catch (...) {
        // Those that were copied stay.
        AdoptProperties();
        throw;
    }
    AdoptProperties();
    return *this;
}

void CPropertySet::AdoptProperties()
{
    for (int i = 0; i < m_properties.GetCount(); ++i)
        m_properties.PtrAt(i)->m_set = this;
}

void CPropertySet::AddProperty(CProperty& property)
{
    m_properties.Add(property);
    m_properties.PtrAt(m_properties.GetCount() - 1)->m_set = this;
    m_index.Added(m_properties);
}

void CPropertySet::AddProperty(const CProperty& property)
{
    CProperty copy(property);
    AddProperty(copy);
}

CProperty& CPropertySet::PropertyAt(int index)
{
    return *m_properties.PtrAt(index);
}

void CPropertySet::PropertyAt(int index, CProperty& out) const
{
    out = *m_properties.PtrAt(index);
}

CProperty* CPropertySet::FindFirst(const char* name, int start)
{
    const std::string_view wanted(name != nullptr ? name : "");
    return FindProperty(wanted, start, [wanted](const CProperty& property) {
        return wanted == std::string_view(property.m_name, static_cast<std::size_t>(property.m_name.GetLength()));
    });
}

CProperty* CPropertySet::FindFirst(int id, int start)
{
    return FindProperty(id, start, [id](const CProperty& property) { return property.m_id == id; });
}

// The properties of a constant set are found by the same search; they leave as constants.
const CProperty* CPropertySet::FindFirst(const char* name, int start) const
{
    return const_cast<CPropertySet*>(this)->FindFirst(name, start);
}

const CProperty* CPropertySet::FindFirst(int id, int start) const
{
    return const_cast<CPropertySet*>(this)->FindFirst(id, start);
}

void CPropertySet::Set(const char* name, const CPropertyValue& value)
{
    if (CProperty* property = FindFirst(name, 0))
        property->m_value = value;
}

void CPropertySet::Set(int id, const CPropertyValue& value)
{
    if (CProperty* property = FindFirst(id, 0))
        property->m_value = value;
}

bool CPropertySet::Get(const char* name, CPropertyValue& value)
{
    return std::as_const(*this).Get(name, value);
}

bool CPropertySet::Get(int id, CPropertyValue& value)
{
    return std::as_const(*this).Get(id, value);
}

bool CPropertySet::Get(const char* name, CPropertyValue& value) const
{
    return CopyValue(FindFirst(name, 0), value);
}

bool CPropertySet::Get(int id, CPropertyValue& value) const
{
    return CopyValue(FindFirst(id, 0), value);
}

void CPropertySet::Copy(int id, CPropertySet& source, int sourceId)
{
    if (const CProperty* property = source.FindFirst(sourceId, 0))
        Set(id, property->m_value);
}

bool CPropertySet::operator==(const CPropertySet& other) const
{
    for (int i = 0; i < GetPropertyCount(); ++i) {
        if (*m_properties.PtrAt(i) != *other.m_properties.PtrAt(i))
            return false;
    }
    return true;
}

void CPropertySet::PulsePropertyChange()
{
    for (int i = 0; i < GetPropertyCount(); ++i)
        OnChangeValue(m_properties.PtrAt(i));
}

void CPropertySet::OnChangeValue(CProperty* property)
{
    m_listeners.OnPropertyValueChange(this, property);
}

void CPropertySetPtrArray::PulsePropertyChange()
{
    for (int i = 0; i < GetSize(); ++i)
        GetAt(i)->PulsePropertyChange();
}

}  // namespace gen
