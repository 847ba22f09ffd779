// BaseComparable.h: CBaseComparableEq and CBaseComparable, comparison of objects whose types may differ.
#pragma once

#include <kelgen/Export.h>

/// Equality by dynamic type: two objects are equal when they are of the same class. Derived classes refine that.
/// By contract: no virtual destructor in this tree, so hosts never delete through these bases.
class KELGEN_API CBaseComparableEq
{
public:
    virtual bool operator==(const CBaseComparableEq& other) const;
    virtual bool operator!=(const CBaseComparableEq& other) const;
};

/// An order over objects of any classes, from one virtual comparison.
///
/// The names of the run-time classes decide first; their order is the compiler's, stable within a build. Classes replace Compare
/// to order their own objects, and the six operators follow.
class KELGEN_API CBaseComparable : public CBaseComparableEq
{
public:
    /// Compare(other) == 0; false when @p other is not a CBaseComparable.
    bool operator==(const CBaseComparableEq& other) const override;
    /// Compare(other) != 0; true when @p other is not a CBaseComparable.
    bool operator!=(const CBaseComparableEq& other) const override;

    /// -1, 0 or 1 as the name of this object's class, taken as unsigned bytes, comes before the other's, equals it, or comes
    /// after it.
    virtual int Compare(const CBaseComparable& other) const;
    virtual bool operator>(const CBaseComparable& other) const;
    virtual bool operator<(const CBaseComparable& other) const;
    virtual bool operator>=(const CBaseComparable& other) const;
    virtual bool operator<=(const CBaseComparable& other) const;

    // Both sides of == may be of classes below this one; these keep the language's reversed candidate from competing.
    bool operator==(const CBaseComparable& other) const { return *this == static_cast<const CBaseComparableEq&>(other); }
    bool operator!=(const CBaseComparable& other) const { return *this != static_cast<const CBaseComparableEq&>(other); }
};
