// PropertyValueTrigger.cpp: conditions, reports, and the links between triggers and callbacks.
#include <kelgen/property/PropertyValueTrigger.h>

#include <kelgen/property/internal/EmptyPlaces.h>

namespace gen {

namespace {

// All triggers of a process draw their identifiers from this seed; the name is part of what hosts compare.
constexpr char kSeedName[] = "kelgen::CPropertyValueTrigger::{DADE80E6-308A-4a51-AD1A-F2BE42AE4283}";

}  // namespace

bool CPropertyValueTrigger::CItem::DoesMatchValue() const
{
    if (set == nullptr)
        return false;
    const CProperty* property = set->FindFirst(id, 0);
    return property != nullptr && property->GetValue() == value;
}

void CPropertyValueTrigger::CItem::RemoveListener(CPropertySetListener* listener)
{
    if (set != nullptr)
        set->RemoveListener(listener);
}

CPropertyValueTrigger::CItem* CPropertyValueTrigger::CItemArray::FindItem(CPropertySet* set, int id)
{
    for (int i = 0; i < GetSize(); ++i) {
        CItem& item = ElementAt(i);
        if (item.set == set && item.id == id)
            return &item;
    }
    return nullptr;
}

void CPropertyValueTrigger::CItemArray::RemoveListener(CPropertySetListener* listener)
{
    for (int i = 0; i < GetSize(); ++i)
        ElementAt(i).RemoveListener(listener);
}

bool CPropertyValueTrigger::CCondition::DoesMatch()
{
    if (mode != modeAll && mode != modeAny)
        return false;

    // The first item that settles the result ends the walk: a mismatch under "all", a match under "any".
    const bool settling = mode == modeAny;
    for (int i = 0; i < items.GetSize(); ++i) {
        if (items.ElementAt(i).DoesMatchValue() == settling)
            return settling;
    }
    return !settling;
}

CPropertyValueTrigger::CPropertyValueTrigger() : CBaseIdentifiable(kSeedName) {}

CPropertyValueTrigger::CPropertyValueTrigger(const CPropertyValueTrigger& other)
    : CPropertySetListener(other), CBaseIdentifiable(other), m_callbacks(other.m_callbacks), m_condition(other.m_condition)
{
    EnterTable();
}

CPropertyValueTrigger& CPropertyValueTrigger::operator=(const CPropertyValueTrigger& other)
{
    CBaseIdentifiable::operator=(other);
    m_callbacks = other.m_callbacks;
    m_condition = other.m_condition;
    EnterTable();
    return *this;
}

/// The callbacks do not list a copy, but are to leave it when they go.
void CPropertyValueTrigger::EnterTable()
{
    for (int i = 0; i < m_callbacks.GetSize(); ++i) {
        if (m_callbacks.GetAt(i) != nullptr)
            detail::TriggersOfCallback::Only().Add(m_callbacks.GetAt(i), this);
    }
}

CPropertyValueTrigger::~CPropertyValueTrigger()
{
    m_condition.RemoveListener(this);
    // The index rises although each removal shifts the rest down: every second callback is passed over, by contract.
    for (int i = 0; i < m_callbacks.GetSize(); ++i) {
        if (CPropertyValueTriggerCallback* callback = m_callbacks.GetAt(i))
            RemoveCallback(callback);
        else
            m_callbacks.RemoveAt(i);
    }
    // The others keep their link, which must not lead into freed memory.
    while (CPropertyValueTriggerCallback* const callback = detail::CallbacksOfTrigger::Only().Take(this))
        detail::EmptyPlaces(callback->m_triggers, this);
    detail::TriggersOfCallback::Only().Remove(this);
}

void CPropertyValueTrigger::SetSimpleCondition(CPropertySet* set, int id, CPropertyValue value)
{
    m_condition.RemoveListener(this);
    m_condition.items.RemoveAll(true);
    CItem item(id, set, value);
    if (set != nullptr)
        set->AddListener(this);
    m_condition.mode = CCondition::modeAll;
    m_condition.items.Add(item);
}

void CPropertyValueTrigger::AddCallback(CPropertyValueTriggerCallback* callback)
{
    if (callback == nullptr)
        return;
    // What is left of an object that has ended is its base.
    KELGEN_CHECK(typeid(*callback) != typeid(CPropertyValueTriggerCallback),
                 "CPropertyValueTrigger::AddCallback: the callback has been destroyed");
    m_callbacks.Add(callback);
    callback->m_triggers.Add(this);
    detail::TriggersOfCallback::Only().Add(callback, this);
    detail::CallbacksOfTrigger::Only().Add(this, callback);
}

void CPropertyValueTrigger::RemoveCallback(CPropertyValueTriggerCallback* callback)
{
    if (callback == nullptr)
        return;
    callback->m_triggers.RemoveFirst(this);
    m_callbacks.RemoveFirst(callback);
}

void CPropertyValueTrigger::Check()
{
    m_callbacks.OnPropertyValueTrigger(GetId(), m_condition.DoesMatch());
}

void CPropertyValueTrigger::OnPropertyValueChange(CPropertySet* set, CProperty* property)
{
    if (m_condition.Intersects(set, property->GetId()))
        Check();
}

}  // namespace gen
