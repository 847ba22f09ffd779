// Fast2DWStrArray.h: CFast2DWStrArray, a table of 16-bit strings whose rows are kept for reuse.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/FastArray.h>
#include <kelgen/text/WStrArray.h>

/// An array of string arrays.
///
///     CFast2DWStrArray rows;
///     rows.EnsureSize(2);
///     rows[0].Add(u"name"_w);
///     rows.RemoveAll();    // no row, and all rows are empty
///     rows.EnsureSize(1);  // the first row again, with no entry
class KELGEN_API CFast2DWStrArray : public CFastArrayArray<CWStrArray, const CWStrArray&>
{
public:
    CFast2DWStrArray();
    CFast2DWStrArray(const CFast2DWStrArray& other);
    CFast2DWStrArray& operator=(const CFast2DWStrArray& other);
    ~CFast2DWStrArray() override;

    /// The used counts of all used rows and then of the array itself become 0; no string and no row is destroyed.
    void RemoveAll();
    void StdRemoveAll() override;
};
