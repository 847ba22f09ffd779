// PropertySetListener.cpp: one assignment fans out to all listeners.
#include <kelgen/property/PropertySetListener.h>

#include <kelgen/framework/base/internal/LinkTable.h>
#include <kelgen/property/PropertySet.h>

namespace gen {

CPropertySetListener::~CPropertySetListener()
{
    while (CPropertySet* const set = kelgen::detail::LinkTable<CPropertySetListener, CPropertySet>::Only().Take(this))
        set->RemoveListener(this);
}

void CPropertySetListener::OnPropertyValueChange(CPropertySet*, CProperty*) {}

void CPropertySetListenerArray::OnPropertyValueChange(CPropertySet* set, CProperty* property)
{
    const kelgen::detail::PresenceWatch watch(property->m_presence);
    for (int i = 0; !watch.IsGone() && i < GetSize(); ++i)
        GetAt(i)->OnPropertyValueChange(set, property);
}

}  // namespace gen
