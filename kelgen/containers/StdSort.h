// StdSort.h: CStdSort, sorting routines that do not belong to one array class.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseArray.h>

/// Comparisons and sorts, as static members.
class KELGEN_API CStdSort
{
public:
    virtual ~CStdSort();

    /// 1, 0 or -1 as @p a is greater than, equal to or less than @p b.
    static int DWordCompare(DWORD a, DWORD b);

    /// Sorts @p count numbers ascending. Cost: quadratic.
    static void BubbleSort(int* values, int count);

    /// Sorts ascending by @p compare and tells every exchange, so that the caller can keep another array in step:
    ///
    ///     void Follow(void* names, int i, int j) { static_cast<CFastArray<CString>*>(names)->Swap(i, j); }
    ///
    ///     CStdSort::QuickSort(ids, CStdSort::DWordCompare, Follow, &names);
    ///
    /// @p onSwap, when not null, is called after each exchange with @p context and the two indices. Elements that compare equal
    /// to the pivot, which is the first of its range, are never exchanged with it; others of equal value may change order. What the
    /// functions do to the array is seen: elements beyond the first count are not sorted, and one that is gone throws the invalid-argument
    /// exception.
    /// Cost: n log n comparisons on random input, quadratic on sorted input; no recursion.
    static void QuickSort(CBaseArray<DWORD, DWORD>& array, int (*compare)(DWORD, DWORD), void (*onSwap)(void* context, int i, int j),
                          void* context);
};
