// PivotSort.h: the quicksort of the string arrays, whose comparisons and exchanges come in a fixed order. Not for hosts.
#pragma once

#include <kelgen/containers/DWordStack.h>

namespace kelgen::detail {

/// Two cursors close in on the pivot, which each exchange carries over to the cursor's place. Returns where the pivot ends.
template <class NOT_AFTER, class EXCHANGE>
int PivotPartition(int low, int high, const NOT_AFTER& notAfter, const EXCHANGE& exchange)
{
    for (;;) {
        while (low != high && notAfter(low, high))
            --high;
        if (low == high)
            return low;
        exchange(low, high);

        while (low != high && notAfter(low, high))
            ++low;
        if (low == high)
            return low;
        exchange(high, low);
    }
}

/// Sorts the elements 0 to count - 1, which only the two functions see: @p notAfter(i, j) tells whether element i may stay before
/// element j; @p exchange(pivot, cursor) makes the two change places. Both may throw.
template <class NOT_AFTER, class EXCHANGE>
void PivotSort(int count, const NOT_AFTER& notAfter, const EXCHANGE& exchange)
{
    if (count < 2)
        return;

    CDWordStack lows;
    CDWordStack highs;
    const auto push = [&lows, &highs](int low, int high) {
        lows.Push(static_cast<DWORD>(low));
        highs.Push(static_cast<DWORD>(high));
    };
    push(0, count - 1);
    while (!lows.IsEmpty()) {
        const int low = static_cast<int>(lows.Pop());
        const int high = static_cast<int>(highs.Pop());
        const int pivot = PivotPartition(low, high, notAfter, exchange);
        if (low < pivot - 1)
            push(low, pivot - 1);
        if (pivot + 1 < high)
            push(pivot + 1, high);
    }
}

}  // namespace kelgen::detail
