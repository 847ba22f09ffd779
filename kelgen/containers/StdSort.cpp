// StdSort.cpp: bubble sort, and the quicksort that reports its exchanges.
#include <kelgen/containers/StdSort.h>

#include <kelgen/containers/PivotSort.h>

#include <utility>

CStdSort::~CStdSort() = default;

int CStdSort::DWordCompare(DWORD a, DWORD b)
{
    return (a > b) - (a < b);
}

void CStdSort::BubbleSort(int* values, int count)
{
    for (int i = 0; i < count; ++i) {
        for (int j = i + 1; j < count; ++j) {
            if (values[i] > values[j])
                std::swap(values[i], values[j]);
        }
    }
}

void CStdSort::QuickSort(CBaseArray<DWORD, DWORD>& array, int (*compare)(DWORD, DWORD), void (*onSwap)(void* context, int i, int j),
                         void* context)
{
    // Every access is checked: the functions are a host's and may reach the array.
    const auto notAfter = [&array, compare](int i, int j) { return compare(array.GetAt(i), array.GetAt(j)) <= 0; };
    const auto exchange = [&array, onSwap, context](int pivot, int cursor) {
        std::swap(array.GetAt(cursor), array.GetAt(pivot));
        if (onSwap != nullptr)
            onSwap(context, cursor, pivot);
    };
    const auto fetch = [](int) {};
    kelgen::detail::PivotSort(array.GetSize(), notAfter, exchange, fetch);
}
