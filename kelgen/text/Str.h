// Str.h: CStr, the framework's narrow string with an order across types and some more text operations.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseComparable.h>
#include <kelgen/framework/base/String.h>

/// A CString that is a CBaseComparable: it compares by its text with other CStr, by class with everything else.
///
///     CStr text;
///     text = CString("abxab");
///     text.ReverseFind("ab", -1);  // 3
///     text.ReverseFind("ab", 4);   // 0
///
/// The members of this class go by bytes, in every code page; those of CString go by the characters of the multibyte page.
class KELGEN_API CStr : public CString, public CBaseComparable
{
public:
    using MovableBitwise = CStr;

    CStr();
    CStr(const CStr& other);
    virtual ~CStr();

    CStr& operator=(const CStr& other);
    /// Takes the text of any string.
    CString& operator=(const CString& other);

    using CString::Compare;
    using CString::ReverseFind;

    /// The order of the two texts by byte value when @p other is a CStr; else CBaseComparable's.
    int Compare(const CBaseComparable& other) const override;

    using CBaseComparable::operator==;
    using CBaseComparable::operator!=;
    using CBaseComparable::operator<;
    using CBaseComparable::operator>;
    using CBaseComparable::operator<=;
    using CBaseComparable::operator>=;

    // The same as through the bases; without these two CStr would be as good a CString as a CBaseComparable.
    bool operator==(const CStr& other) const { return *this == static_cast<const CBaseComparableEq&>(other); }
    bool operator!=(const CStr& other) const { return *this != static_cast<const CBaseComparableEq&>(other); }
    bool operator<(const CStr& other) const { return *this < static_cast<const CBaseComparable&>(other); }
    bool operator>(const CStr& other) const { return *this > static_cast<const CBaseComparable&>(other); }
    bool operator<=(const CStr& other) const { return *this <= static_cast<const CBaseComparable&>(other); }
    bool operator>=(const CStr& other) const { return *this >= static_cast<const CBaseComparable&>(other); }

    /// Takes the first @p n bytes at @p p, which may lie in this text; none when @p n is 0 or less. Always true.
    bool Copy(const char* p, int n);

    /// Appends @p text, which may lie in this text, @p n times; nothing when @p n is 0 or less.
    /// Throws: the memory exception, and nothing has changed, when the text would be longer than a string can be.
    void AppendRepetition(const char* text, int n);

    /// The last index at which @p sub occurs and ends at or before @p nEnd, or -1. A negative @p nEnd stands for the length. An
    /// empty @p sub is found at that limit itself.
    int ReverseFind(const char* sub, int nEnd) const;
};
