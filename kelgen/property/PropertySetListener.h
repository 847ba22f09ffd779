// PropertySetListener.h: the interface of those who watch a property set, and the set's list of them.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseComparableArray.h>

namespace gen {

class CProperty;
class CPropertySet;

/// Told of every assignment to any property of the sets it was added to (CPropertySet::AddListener).
/// A set does not own its listeners; one that is destroyed leaves the sets. A copy listens to none.
class KELGEN_API CPropertySetListener
{
public:
    CPropertySetListener() = default;
    CPropertySetListener(const CPropertySetListener&) = default;
    CPropertySetListener& operator=(const CPropertySetListener&) = default;
    ~CPropertySetListener();

protected:
    /// @p property of @p set was assigned, changed or not. Runs inside the assignment, on the assigning thread; it may add and
    /// remove listeners of the set. When it ends the property, by an assignment to the set for instance, or the set, nobody else is told.
    /// The base does nothing.
    virtual void OnPropertyValueChange(CPropertySet* set, CProperty* property);

private:
    friend class CPropertySetListenerArray;
};

/// Listeners in the order in which they are told; not owned.
class KELGEN_API CPropertySetListenerArray : public CBaseComparableArray<CPropertySetListener*, CPropertySetListener*>
{
protected:
    /// Tells every listener from index 0 upward. By contract: the count is read again after each call, so a listener that is
    /// added is told in the same walk, and one that removes itself makes the walk pass over its successor.
    virtual void OnPropertyValueChange(CPropertySet* set, CProperty* property);

private:
    friend class CPropertySet;
};

}  // namespace gen
