// PivotSort.h: the quicksort whose comparisons and exchanges come in a fixed order. Not for hosts.
#pragma once

#include <kelgen/containers/DWordStack.h>

namespace kelgen::detail {

/// Two cursors close in on the pivot, which each exchange carries over to the cursor's place. Returns where the pivot ends.
template <class NOT_AFTER, class EXCHANGE, class FETCH>
int PivotPartition(int low, int high, const NOT_AFTER& notAfter, const EXCHANGE& exchange, const FETCH& fetch)
{
    constexpr int kAhead = 8;
    for (;;) {
        for (; low != high && notAfter(low, high); --high)
            fetch(high - kAhead);
        if (low == high)
            return low;
        exchange(low, high);

        for (; low != high && notAfter(low, high); ++low)
            fetch(low + kAhead);
        if (low == high)
            return low;
        exchange(high, low);
    }
}

/// Sorts the elements 0 to count - 1, which only the functions see: @p notAfter(i, j) tells whether element i may stay before
/// element j; @p exchange(pivot, cursor) makes the two change places; @p fetch(i) is told which element is compared soon, which
/// need not exist. All may throw.
template <class NOT_AFTER, class EXCHANGE, class FETCH>
void PivotSort(int count, const NOT_AFTER& notAfter, const EXCHANGE& exchange, const FETCH& fetch)
{
    if (count < 2)
        return;

    CDWordStack lows;
    CDWordStack highs;
    for (int low = 0, high = count - 1;;) {
        const int pivot = PivotPartition(low, high, notAfter, exchange, fetch);
        if (low < pivot - 1) {
            lows.Push(static_cast<DWORD>(low));
            highs.Push(static_cast<DWORD>(pivot - 1));
        }
        // The upper range comes next: as if it were pushed and popped.
        if (pivot + 1 < high) {
            low = pivot + 1;
            continue;
        }
        if (lows.IsEmpty())
            return;
        low = static_cast<int>(lows.Pop());
        high = static_cast<int>(highs.Pop());
    }
}

}  // namespace kelgen::detail
