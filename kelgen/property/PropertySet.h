// PropertySet.h: an ordered collection of properties whose listeners hear of every assignment.
#pragma once

#include <kelgen/containers/BasePtrAllocArray.h>
#include <kelgen/property/Property.h>
#include <kelgen/property/PropertyIndex.h>
#include <kelgen/property/PropertySetListener.h>

#include <memory>

namespace gen {

class CPropertySet;

/// A pointer to a set, not owned, that becomes null when the set is destroyed.
class KELGEN_API CPropertySetLink
{
public:
    CPropertySetLink() = default;
    /// A pointer to @p set, or to nothing for null.
    CPropertySetLink(CPropertySet* set);

    /// The set; null when it is destroyed, and for none.
    operator CPropertySet*() const { return m_place ? *m_place : nullptr; }
    /// The set, which must exist.
    CPropertySet* operator->() const { return *this; }

private:
    std::shared_ptr<CPropertySet*> m_place;  ///< Shared by the set and all links to it.
};

/// Properties in the order in which they were added, owned by the set, and the listeners that are told of every assignment to
/// any of them: at once, in the order of their registration, on the assigning thread, whether or not the value changed.
///
///     gen::CPropertySet settings;
///     gen::CProperty width(1, "width", gen::eptInteger);
///     settings.AddProperty(width);            // the set holds a copy
///     settings.AddListener(&view);
///     settings.Set("width", 640);             // view is told once
///     settings["width"]->GetValue() = 800;    // told twice: see CPropertyValue
///
/// Threads: none of its own; a set shared between threads needs a lock held across the assignment.
class KELGEN_API CPropertySet
{
public:
    CPropertySet() = default;
    /// Copies the properties; the copy has no listeners.
    CPropertySet(const CPropertySet& other);
    /// Deletes the properties and replaces them by copies of @p other's, which report to this set. Assignment to itself changes
    /// nothing. By contract: the listeners stay as they are and hear nothing of it, since no value was assigned.
    CPropertySet& operator=(const CPropertySet& other);
    virtual ~CPropertySet();

    /// Appends a copy of @p property. Names and ids may occur more than once.
    void AddProperty(CProperty& property);
    /// Does the same to a property that may not change.
    void AddProperty(const CProperty& property);
    /// The number of properties.
    int GetPropertyCount() const { return m_properties.GetCount(); }
    /// The property at @p index. Throws: the invalid-argument exception for an index outside [0, count).
    CProperty& PropertyAt(int index);
    /// Assigns the property at @p index to @p out. Throws: as above, with @p out as it was.
    void PropertyAt(int index, CProperty& out) const;

    /// The first property at or after @p start named @p name (by case); null when there is none or @p start is past the end.
    /// Throws: the invalid-argument exception for a negative @p start. Cost: one comparison a property in small sets; in large ones a
    /// look-up in an index, once a few searches have been made since a name or an id was changed.
    CProperty* FindFirst(const char* name, int start);
    /// Does the same by id.
    CProperty* FindFirst(int id, int start);
    /// Both: the same of a set that may not change.
    const CProperty* FindFirst(const char* name, int start) const;
    const CProperty* FindFirst(int id, int start) const;
    /// The first property named @p name, null when there is none.
    CProperty* operator[](const char* name) { return FindFirst(name, 0); }
    /// The first property with @p id, null when there is none.
    CProperty* operator[](int id) { return FindFirst(id, 0); }
    /// Both: the same of a set that may not change.
    const CProperty* operator[](const char* name) const { return FindFirst(name, 0); }
    const CProperty* operator[](int id) const { return FindFirst(id, 0); }

    /// Copies @p value, its type included, into the first property named @p name, and tells the listeners once. Nothing happens if there
    /// is none: no property is added.
    void Set(const char* name, const CPropertyValue& value);
    /// Does the same by id.
    void Set(int id, const CPropertyValue& value);
    /// Copies the value of the first property named @p name into @p value, which reports to its own owner. True on success; false, and @p
    /// value as it was, if there is none.
    bool Get(const char* name, CPropertyValue& value);
    /// Does the same by id.
    bool Get(int id, CPropertyValue& value);
    /// Both: the same of a set that may not change.
    bool Get(const char* name, CPropertyValue& value) const;
    bool Get(int id, CPropertyValue& value) const;
    /// Set(@p id, the value of @p source's first property with @p sourceId); nothing when there is none.
    void Copy(int id, CPropertySet& source, int sourceId);

    /// Whether each property of this set equals the one of @p other at the same index: id, name and value. By contract: only this set's
    /// properties are walked, so @p other may have more. Throws: the invalid-argument exception when it has fewer and all it has are
    /// equal.
    bool operator==(const CPropertySet& other) const;

    /// Appends @p listener, which is told once for each time it was added; null is ignored. Not owned.
    void AddListener(CPropertySetListener* listener);
    /// Removes every occurrence of @p listener; null has none.
    void RemoveListener(CPropertySetListener* listener) { m_listeners.Remove(listener); }
    /// Tells the listeners of every property in order, as if each had been assigned once.
    void PulsePropertyChange();

protected:
    /// Tells the listeners that @p property was assigned.
    virtual void OnChangeValue(CProperty* property);

private:
    friend class CProperty;
    friend class CPropertySetLink;

    template <class KEY, class PREDICATE>
    CProperty* FindProperty(KEY key, int start, PREDICATE accepts) const;
    void AdoptProperties();

    CPropertySetListenerArray m_listeners;
    CBasePtrAllocArray<CProperty, CProperty&> m_properties;
    mutable kelgen::detail::PropertyIndex m_index;
    std::shared_ptr<CPropertySet*> m_place;  ///< Where the links to this look; made for the first of them.
    bool m_hadListeners = false;
};

/// Sets in order; not owned.
class KELGEN_API CPropertySetPtrArray : public CBaseComparableArray<CPropertySet*, CPropertySet*>
{
public:
    /// CPropertySet::PulsePropertyChange of each set in order.
    void PulsePropertyChange();
};

}  // namespace gen
