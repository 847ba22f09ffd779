// StdSort.cpp: bubble sort, and the quicksort that reports its exchanges.
#include <kelgen/containers/StdSort.h>

#include <kelgen/containers/BaseIntArray.h>

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

namespace {

struct Sorting
{
    DWORD* elements;
    int (*compare)(DWORD, DWORD);
    void (*onSwap)(void*, int, int);
    void* context;

    bool InOrder(int first, int second) const { return compare(elements[first], elements[second]) <= 0; }
    void Exchange(int cursor, int pivot) const
    {
        std::swap(elements[cursor], elements[pivot]);
        if (onSwap != nullptr)
            onSwap(context, cursor, pivot);
    }
};

// Two cursors close in on the pivot, which each exchange carries over to the cursor's place. Returns where the pivot ends.
int Partition(const Sorting& sorting, int low, int high)
{
    int pivot = low;
    int left = low;
    int right = high;
    for (;;) {
        while (right != pivot && sorting.InOrder(pivot, right))
            --right;
        if (right == pivot)
            return pivot;
        sorting.Exchange(right, pivot);
        pivot = right;

        while (left != pivot && sorting.InOrder(left, pivot))
            ++left;
        if (left == pivot)
            return pivot;
        sorting.Exchange(left, pivot);
        pivot = left;
    }
}

}  // namespace

void CStdSort::QuickSort(CBaseArray<DWORD, DWORD>& array, int (*compare)(DWORD, DWORD),
    void (*onSwap)(void* context, int i, int j), void* context)
{
    if (array.GetSize() < 2)
        return;

    const Sorting sorting{array.GetData(), compare, onSwap, context};
    CBaseIntArray lows(0);
    CBaseIntArray highs(array.GetSize() - 1);
    while (!lows.IsEmpty()) {
        const int low = lows.Pop();
        const int high = highs.Pop();
        const int pivot = Partition(sorting, low, high);
        if (low < pivot - 1) {
            lows.Push(low);
            highs.Push(pivot - 1);
        }
        if (pivot + 1 < high) {
            lows.Push(pivot + 1);
            highs.Push(high);
        }
    }
}
