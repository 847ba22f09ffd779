// PropertyValueTrigger.h: watches properties and reports whether they hold given values.
#pragma once

#include <kelgen/containers/BaseArray.h>
#include <kelgen/containers/BaseId.h>
#include <kelgen/property/PropertySet.h>
#include <kelgen/property/PropertyValueTriggerCallback.h>

namespace gen {

/// Evaluates a condition over properties, possibly of several sets, whenever one of them is assigned, and reports the result
/// with its own identifier to its callbacks: inside the assignment, on the assigning thread.
///
///     gen::CPropertyValueTrigger offline;
///     offline.AddCallback(&statusBar);
///     offline.SetSimpleCondition(&settings, kConnected, false);
///     settings.Set(kConnected, false);  // statusBar.OnPropertyValueTrigger(offline.GetId(), true)
///
/// By contract: every assignment is reported, as values report it, not only a change of the result; an assignment that notifies twice
/// reports twice.
///
/// The trigger owns neither sets nor callbacks. The sets list it as a listener until it is destroyed or given another condition. A set
/// that is destroyed first is a null one in the condition from then on.
/// Threads: construct on one thread at a time (CBaseIdentifiable); no locks otherwise.
class KELGEN_API CPropertyValueTrigger : public CPropertySetListener, public CBaseIdentifiable
{
public:
    /// One watched property and the value it is to hold.
    class KELGEN_API CItem
    {
    public:
        using MovableBitwise = CItem;

        CItem() = default;
        /// Watches @p itemSet, not owned, for @p itemValue in its first property with @p itemId.
        CItem(int itemId, CPropertySet* itemSet, const CPropertyValue& itemValue) : id(itemId), set(itemSet), value(itemValue) {}
        CItem(const CItem&) = default;
        CItem& operator=(const CItem&) = default;
        virtual ~CItem() = default;

        /// Whether the first property with the id equals the value, as the property's type compares them (CPropertyValue). False
        /// without a set or such a property.
        bool DoesMatchValue() const;
        /// Removes every occurrence of @p listener from the set's listeners; nothing without a set.
        void RemoveListener(CPropertySetListener* listener);

        int id = -1;           ///< of the property
        CPropertySetLink set;  ///< not owned; null when the set is destroyed
        CPropertyValue value;  ///< has no owner
    };

    /// The items of a trigger, in the order in which they were added.
    class KELGEN_API CItemArray : public CBaseArray<CItem, CItem&>
    {
    public:
        /// The first item with this set and this id; null when there is none.
        CItem* FindItem(CPropertySet* set, int id);
        /// CItem::RemoveListener of every item.
        void RemoveListener(CPropertySetListener* listener);
    };

    /// Items and how they combine. A condition with several items is filled by the host, which also adds the trigger to the
    /// listeners of each item's set.
    class KELGEN_API CCondition
    {
    public:
        enum EMode : int
        {
            modeAll = 0,  ///< every item matches; true without items
            modeAny = 1   ///< some item matches; false without items
        };

        /// Whether the items match as the mode says, looking no further than needed. Any other mode: false.
        bool DoesMatch();
        /// Whether some item watches the property @p id of @p set.
        bool Intersects(CPropertySet* set, int id) { return items.FindItem(set, id) != nullptr; }
        /// CItem::RemoveListener of every item.
        void RemoveListener(CPropertySetListener* listener) { items.RemoveListener(listener); }

        int mode = modeAll;  ///< How the items combine, an EMode.
        CItemArray items;    ///< What is watched.
    };

    /// A new identifier; no callbacks, no items.
    CPropertyValueTrigger();
    /// By contract: copies member by member, the identifier included, though sets and callbacks know only the source. So the sets go on
    /// listing a trigger that is assigned to, which does not answer any more, and the callbacks do.
    CPropertyValueTrigger(const CPropertyValueTrigger& other);
    /// Does the same to a trigger that is there.
    CPropertyValueTrigger& operator=(const CPropertyValueTrigger& other);

    /// Leaves the sets of all items, then detaches callbacks by a rising index. By contract: each detachment moves the next callback
    /// into the visited place, so every second one is passed over: of A, B, C, D, only A and C are detached. B and D keep their
    /// link, as an empty place in their lists. A host calls RemoveCallback for each callback first.
    virtual ~CPropertyValueTrigger();

    /// Watches one property: leaves the sets of all present items, then becomes a listener of @p set with the one condition that
    /// the property @p id equals @p value. Reports nothing. A null @p set matches nothing.
    void SetSimpleCondition(CPropertySet* set, int id, CPropertyValue value);
    /// The condition, for hosts that build one of their own.
    CCondition& GetCondition() { return m_condition; }
    /// The attached callbacks; null where one was destroyed while attached.
    const CPropertyValueTriggerCallbackPtrArray& GetCallbacks() const { return m_callbacks; }

    /// Links this trigger and @p callback, which is told once for each time it was added; null is ignored.
    void AddCallback(CPropertyValueTriggerCallback* callback);
    /// Undoes one AddCallback. Nothing when there was none, and for null.
    void RemoveCallback(CPropertyValueTriggerCallback* callback);

    /// Reports the present truth of the condition to every callback.
    void Check();
    /// Check() when the condition has an item for @p property of @p set.
    void OnPropertyValueChange(CPropertySet* set, CProperty* property) override;

private:
    friend class CPropertyValueTriggerCallback;

    void EnterTable();

    CPropertyValueTriggerCallbackPtrArray m_callbacks;
    CCondition m_condition;
};

}  // namespace gen
