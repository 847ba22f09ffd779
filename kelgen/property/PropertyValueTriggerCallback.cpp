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

CPropertyValueTriggerCallback::CPropertyValueTriggerCallback(const CPropertyValueTriggerCallback& other) : m_triggers(other.m_triggers)
{
    EnterTable();
}

CPropertyValueTriggerCallback& CPropertyValueTriggerCallback::operator=(const CPropertyValueTriggerCallback& other)
{
    m_triggers = other.m_triggers;
    EnterTable();
    return *this;
}

/// The triggers do not list a copy, but are to leave it when they go.
void CPropertyValueTriggerCallback::EnterTable()
{
    for (int i = 0; i < m_triggers.GetSize(); ++i) {
        if (m_triggers.GetAt(i) != nullptr)
            detail::CallbacksOfTrigger::Only().Add(m_triggers.GetAt(i), this);
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
    // The others keep their link, which must not lead into freed memory.
    while (CPropertyValueTrigger* const trigger = detail::TriggersOfCallback::Only().Take(this))
        detail::EmptyPlaces(trigger->m_callbacks, this);
    detail::CallbacksOfTrigger::Only().Remove(this);
}

void CPropertyValueTriggerCallback::OnPropertyValueTrigger(const CBaseId&, bool) {}

}  // namespace gen
