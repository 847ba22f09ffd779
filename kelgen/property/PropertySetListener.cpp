// PropertySetListener.cpp: one assignment fans out to all listeners.
#include <kelgen/property/PropertySetListener.h>

namespace gen {

void CPropertySetListener::OnPropertyValueChange(CPropertySet*, CProperty*) {}

void CPropertySetListenerArray::OnPropertyValueChange(CPropertySet* set, CProperty* property)
{
    for (int i = 0; i < GetSize(); ++i)
        GetAt(i)->OnPropertyValueChange(set, property);
}

}  // namespace gen
