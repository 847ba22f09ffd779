// StringArray.h: CStringArray, the array of narrow texts.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/Array.h>

/// An array of narrow texts, which archives hold. Texts given as CString are shared, not copied.
class KELGEN_FRAMEWORK_API CStringArray : public CArray<CString, const CString&>
{
    DECLARE_SERIAL(CStringArray)

public:
    using MovableBitwise = CStringArray;
};
