// PropertyValueTriggerCallback.h: who is told when a value trigger's condition was evaluated.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseComparableArray.h>
#include <kelgen/containers/BaseId.h>

namespace gen {

class CPropertyValueTrigger;
class CPropertyValueTriggerCallback;

/// Triggers in order; not owned.
class KELGEN_API CPropertyValueTriggerPtrArray : public CBaseComparableArray<CPropertyValueTrigger*, CPropertyValueTrigger*>
{
public:
    /// CPropertyValueTrigger::Check of each trigger in order; the count is read again after each. Null is passed over.
    void Check();
};

/// Callbacks in order; not owned.
class KELGEN_API CPropertyValueTriggerCallbackPtrArray
    : public CBaseComparableArray<CPropertyValueTriggerCallback*, CPropertyValueTriggerCallback*>
{
public:
    /// Tells every callback from index 0 upward. By contract: the count is read again after each call, so a callback that is
    /// added is told in the same walk, and one that removes itself makes the walk pass over its successor. Null is passed over.
    virtual void OnPropertyValueTrigger(const CBaseId& id, bool match);
};

/// Told by the triggers it is attached to (CPropertyValueTrigger::AddCallback) of every evaluation of their conditions.
class KELGEN_API CPropertyValueTriggerCallback
{
public:
    CPropertyValueTriggerCallback() = default;
    /// By contract: copies the list of triggers, but the triggers tell only the source, so a host adds the copy to each by AddCallback.
    CPropertyValueTriggerCallback(const CPropertyValueTriggerCallback& other);
    CPropertyValueTriggerCallback& operator=(const CPropertyValueTriggerCallback& other);

    /// Detaches from its triggers by a rising index. By contract: each detachment moves the next trigger into the visited place, so
    /// every second one is passed over and keeps its link, as an empty place in its list. A host calls
    /// CPropertyValueTrigger::RemoveCallback for each trigger first.
    virtual ~CPropertyValueTriggerCallback();

    /// The condition of the trigger with @p id was evaluated to @p match. By contract: told at every assignment to a watched
    /// property, so the same result comes again and again. Must not end the trigger's life. The base does nothing.
    virtual void OnPropertyValueTrigger(const CBaseId& id, bool match);

    /// CPropertyValueTrigger::Check of each trigger it is attached to, in order.
    void Check() { m_triggers.Check(); }
    /// The triggers it is attached to; null where one was destroyed while attached.
    const CPropertyValueTriggerPtrArray& GetTriggers() const { return m_triggers; }

private:
    friend class CPropertyValueTrigger;

    void EnterTable();

    CPropertyValueTriggerPtrArray m_triggers;
};

}  // namespace gen
