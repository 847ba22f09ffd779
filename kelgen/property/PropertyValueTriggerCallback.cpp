// PropertyValueTriggerCallback.cpp: reports to callbacks, and a callback's end.
#include <kelgen/property/PropertyValueTriggerCallback.h>

#include <kelgen/property/PropertyValueTrigger.h>
#include <kelgen/property/internal/EmptyPlaces.h>

namespace gen {

void CPropertyValueTriggerPtrArray::Check()
{
    for (int i = 0; i < GetSize(); ++i) {
        if (CPropertyValueTrigger* trigger = GetAt(i))
            trigger->Check();
    }
}

void CPropertyValueTriggerCallbackPtrArray::OnPropertyValueTrigger(const CBaseId& id, bool match)
{
    for (int i = 0; i < GetSize(); ++i) {
        if (CPropertyValueTriggerCallback* callback = GetAt(i))
            callback->OnPropertyValueTrigger(id, match);
    }
}

CPropertyValueTriggerCallback::~CPropertyValueTriggerCallback()
{
    // The index rises although each removal shifts the rest down: every second trigger is passed over, by contract.
    for (int i = 0; i < m_triggers.GetSize(); ++i) {
        if (CPropertyValueTrigger* trigger = m_triggers.GetAt(i))
            trigger->RemoveCallback(this);
        else
            m_triggers.RemoveAt(i);
    }
    // Those keep their link, which must not lead into freed memory.
    for (int i = 0; i < m_triggers.GetSize(); ++i) {
        if (CPropertyValueTrigger* trigger = m_triggers.GetAt(i))
            detail::EmptyPlaces(trigger->m_callbacks, this);
    }
}

void CPropertyValueTriggerCallback::OnPropertyValueTrigger(const CBaseId&, bool) {}

}  // namespace gen
