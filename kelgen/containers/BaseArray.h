// BaseArray.h: CBaseArray, the library's working array: stack, search, sorted insertion and sorting by a compare function.
#pragma once

#include <kelgen/containers/ArrayMemory.h>
#include <kelgen/containers/SafeArrayElements.h>
#include <kelgen/containers/StdArrayInterface.h>
#include <kelgen/framework/collections/Array.h>
#include <kelgen/platform/support/Assert.h>

#include <cstdint>
#include <memory>
#include <type_traits>

class COleVariant;

/// CArray with the operations that take a compare function, and with the general view of an array.
///
///     int Ascending(const int& a, const int& b) { return a < b ? -1 : a > b; }
///
///     CBaseArray<int, int> numbers(3, 7, 5, 6);  // three values: 7, 5, 6
///     numbers.BubbleSort(Ascending);             // 5, 6, 7
///     int last = numbers.Pop();                  // 7
///
/// Growth, element moves and what stays valid are CArray's: elements move bit-wise. An index is valid in [0, size).
/// Throws: the invalid-argument exception, before anything changes, for invalid indices, negative sizes and the empty array where
/// an element is asked for.
/// Threads: one at a time.
template <class TYPE, class ARG_TYPE = TYPE>
class CBaseArray : public CArray<TYPE, ARG_TYPE>, public CStdArrayInterface<TYPE, ARG_TYPE>
{
public:
    /// Survives being moved bit by bit: see kelgen::is_movable_bitwise.
    using MovableBitwise = CBaseArray;

    /// Negative, zero or positive, as the first comes before the second, beside it, or after it.
    using Compare = int (*)(const TYPE&, const TYPE&);

    CBaseArray() = default;
    /// One element.
    CBaseArray(ARG_TYPE first) { this->Add(first); }
    /// @p first, then all elements of @p rest.
    CBaseArray(ARG_TYPE first, const CBaseArray& rest)
    {
        this->Add(first);
        this->Append(rest);
    }
    /// The first @p count of the values that follow it, each converted to TYPE; none when @p count is 0 or less. At least
    /// @p count values must be given.
    template <class... VALUES>
    requires(sizeof...(VALUES) > 0 && (std::is_convertible_v<VALUES, TYPE> && ...)) CBaseArray(int count, VALUES... values)
    {
        TYPE elements[] = {static_cast<TYPE>(values)...};
        KELGEN_ASSERT(count <= static_cast<int>(sizeof...(VALUES)));
        for (int i = 0; i < count && i < static_cast<int>(sizeof...(VALUES)); ++i)
            this->Add(elements[i]);
    }
    CBaseArray(const CBaseArray& other) : CArray<TYPE, ARG_TYPE>(), CStdArrayInterface<TYPE, ARG_TYPE>() { this->Copy(other); }
    CBaseArray& operator=(const CBaseArray& other)
    {
        this->Copy(other);
        return *this;
    }

    using CArray<TYPE, ARG_TYPE>::RemoveAll;
    /// Destroys all elements. The block is freed when @p release is true, else kept with its capacity.
    void RemoveAll(bool release);

    /// Appends @p value; with Pop the array is a stack.
    void Push(ARG_TYPE value) { this->Add(value); }
    /// Removes the last element and returns it.
    TYPE Pop();
    /// SetSize(size + @p delta).
    void IncrementSize(int delta);

    /// The first element. Throws: the invalid-argument exception when the array is empty.
    TYPE& FirstElement() { return this->ElementAt(0); }
    const TYPE& FirstElement() const { return this->ElementAt(0); }
    /// The last element. Throws: the invalid-argument exception when the array is empty.
    TYPE& LastElement() { return this->ElementAt(m_nSize - 1); }
    const TYPE& LastElement() const { return this->ElementAt(m_nSize - 1); }

    /// The first index from @p start on for which @p compare(element, value) is 0; -1 when there is none, or when @p start is at
    /// or past the end. A negative @p start throws.
    int FindFirst(ARG_TYPE value, Compare compare, int start) const { return FindFirstIn(m_nSize, value, compare, start); }
    /// The index of the element that lies at this very address, or -1. Equality plays no part.
    int FindFirst(const TYPE* element) const;

    /// Adds @p value unless FindFirst(value, compare, 0) finds an element.
    void AddUnique(ARG_TYPE value, Compare compare);
    /// Keeps the first of all elements that compare equal, each in its place; removes the others.
    void RemoveDuplicates(Compare compare);

    /// Sorts ascending by @p compare, which is asked compare(element j, element i) for every i < j; equal elements may change
    /// order.
    /// Cost: quadratic.
    void BubbleSort(Compare compare) { BubbleSortIn(m_nSize, compare); }
    /// Exchanges two elements by moving their bytes.
    void Swap(int i, int j);

    /// Whether a binary search finds an element for which @p compare(element, value) is 0. @p index is the lower bound of the
    /// search on entry (0, to search everything), the place that was looked at last on return.
    /// By contract: elements for which compare(element, value) is positive are taken to lie before the value, so that a compare
    /// of the form a - b searches a descending array, as SortAdd keeps it; and compare is called once more after the range is
    /// empty.
    /// Throws: the invalid-argument exception when the search leaves the array, which a bound past the end brings about.
    bool SortFind(ARG_TYPE value, Compare compare, int& index) const { return SortFindIn(m_nSize, value, compare, index); }
    /// Inserts @p value into an array that SortAdd keeps sorted: before the first element equal to it.
    /// By contract: a compare of the form a - b keeps the array descending, as SortFind looks for it. The scans ask compare(value,
    /// element).
    void SortAdd(ARG_TYPE value, Compare compare) { this->InsertAt(SortPlaceIn(m_nSize, value, compare), value); }

    /// Whether the object pointer itself is null. By contract: may be called through a null pointer, for which hosts use it.
    bool IsThisNull() const { return reinterpret_cast<std::uintptr_t>(this) == 0; }

    /// Empties the array, whose block stays, and appends every element of @p array from its lower to its upper bound. Always
    /// true. Numbers narrower than TYPE are widened with zeros; texts and objects that are read become the caller's. An array
    /// that has several dimensions or larger elements, or a TYPE that is more than plain bytes, gives no elements.
    virtual bool CopySafeArray(SAFEARRAY* array);
    /// A new automation array of @p type with the elements from index 0 on, which the caller destroys; null when elements of @p
    /// type have another size than TYPE, or without memory.
    SAFEARRAY* CreateSafeArray(VARTYPE type) const { return CreateSafeArrayOf(type, m_nSize); }
    /// Frees what the initialised @p variant holds and gives it CreateSafeArray(type); leaves it empty when there is none.
    void SetSafeArray(VARTYPE type, VARIANT& variant) const;
    /// A variant that holds such an array of the elements of @p array. Callers include kelgen/framework/ole/OleVariant.h.
    template <class RESULT = COleVariant>
    static RESULT GetOleVariantArray(VARTYPE type, CBaseArray& array)
    {
        RESULT variant;
        array.SetSafeArray(type, variant);
        return variant;
    }

    void StdArraySetAt(int index, ARG_TYPE value) override { this->SetAt(index, value); }
    int StdArrayGetSize() override { return m_nSize; }
    TYPE& StdArrayElementAt(int index) override { return this->ElementAt(index); }
    void StdAdd(ARG_TYPE value) override { this->Add(value); }
    void StdRemoveAll() override { CBaseArray::RemoveAll(false); }

protected:
    /// Each does what the member of that name does with the first @p size elements, which the compare function may change; every access is
    /// checked.
    int FindFirstIn(const int& size, ARG_TYPE value, Compare compare, int start) const;
    void BubbleSortIn(const int& size, Compare compare);
    bool SortFindIn(const int& size, ARG_TYPE value, Compare compare, int& index) const;
    /// Where SortAdd inserts.
    int SortPlaceIn(const int& size, ARG_TYPE value, Compare compare) const;
    /// CreateSafeArray of the first @p count elements.
    SAFEARRAY* CreateSafeArrayOf(VARTYPE type, int count) const;
    /// Calls @p add with every element of @p array.
    template <class ADD>
    static void ReadSafeArray(SAFEARRAY* array, ADD add);

    using CArray<TYPE, ARG_TYPE>::m_pData;
    using CArray<TYPE, ARG_TYPE>::m_nSize;
};

template <class TYPE, class ARG_TYPE>
void CBaseArray<TYPE, ARG_TYPE>::RemoveAll(bool release)
{
    if (release) {
        CArray<TYPE, ARG_TYPE>::RemoveAll();
        return;
    }
    std::destroy_n(m_pData, m_nSize);
    m_nSize = 0;
}

template <class TYPE, class ARG_TYPE>
TYPE CBaseArray<TYPE, ARG_TYPE>::Pop()
{
    TYPE last(LastElement());
    this->RemoveAt(m_nSize - 1);
    return last;
}

template <class TYPE, class ARG_TYPE>
void CBaseArray<TYPE, ARG_TYPE>::IncrementSize(int delta)
{
    const long long newSize = static_cast<long long>(m_nSize) + delta;
    if (newSize > INT_MAX)
        AfxThrowInvalidArgException();
    this->SetSize(static_cast<int>(newSize));
}

template <class TYPE, class ARG_TYPE>
int CBaseArray<TYPE, ARG_TYPE>::FindFirstIn(const int& size, ARG_TYPE value, Compare compare, int start) const
{
    if (start < 0)
        KELGEN_THROW_BAD_INDEX(start, size);
    for (int i = start; i < size; ++i) {
        if (compare(this->ElementAt(i), value) == 0)
            return i;
    }
    return -1;
}

template <class TYPE, class ARG_TYPE>
int CBaseArray<TYPE, ARG_TYPE>::FindFirst(const TYPE* element) const
{
    // By numbers: the pointer may lie outside the block, where pointers cannot be compared.
    const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(element) - reinterpret_cast<std::uintptr_t>(m_pData);
    if (element == nullptr || offset % sizeof(TYPE) != 0 || offset / sizeof(TYPE) >= static_cast<std::size_t>(m_nSize))
        return -1;
    return static_cast<int>(offset / sizeof(TYPE));
}

template <class TYPE, class ARG_TYPE>
void CBaseArray<TYPE, ARG_TYPE>::AddUnique(ARG_TYPE value, Compare compare)
{
    if (FindFirst(value, compare, 0) < 0)
        this->Add(value);
}

template <class TYPE, class ARG_TYPE>
void CBaseArray<TYPE, ARG_TYPE>::RemoveDuplicates(Compare compare)
{
    for (int i = 0; i < m_nSize; ++i) {
        for (int found = i + 1; (found = FindFirst(m_pData[i], compare, found)) >= 0;)
            this->RemoveAt(found, 1);
    }
}

template <class TYPE, class ARG_TYPE>
void CBaseArray<TYPE, ARG_TYPE>::BubbleSortIn(const int& size, Compare compare)
{
    for (int i = 0; i < size; ++i) {
        for (int j = i + 1; j < size; ++j) {
            if (compare(this->ElementAt(j), this->ElementAt(i)) < 0)
                kelgen::detail::ExchangeBytes(this->ElementAt(i), this->ElementAt(j));
        }
    }
}

template <class TYPE, class ARG_TYPE>
void CBaseArray<TYPE, ARG_TYPE>::Swap(int i, int j)
{
    TYPE& first = this->ElementAt(i);
    TYPE& second = this->ElementAt(j);
    kelgen::detail::ExchangeBytes(first, second);
}

template <class TYPE, class ARG_TYPE>
bool CBaseArray<TYPE, ARG_TYPE>::SortFindIn(const int& size, ARG_TYPE value, Compare compare, int& index) const
{
    if (size == 0) {
        index = 0;
        return false;
    }
    // Wide sums: the lower bound is the caller's and may be any number.
    long long low = index;
    long long high = size - 1;
    for (;;) {
        index = static_cast<int>((low + high) / 2);
        if (index >= size)
            AfxThrowInvalidArgException();
        const int order = compare(this->ElementAt(index), value);
        if (high < low)
            return false;
        if (order == 0)
            return true;
        if (order > 0)
            low = index + 1LL;
        else
            high = index - 1LL;
    }
}

template <class TYPE, class ARG_TYPE>
int CBaseArray<TYPE, ARG_TYPE>::SortPlaceIn(const int& size, ARG_TYPE value, Compare compare) const
{
    int index = 0;
    SortFindIn(size, value, compare, index);
    while (index < size && compare(value, this->ElementAt(index)) <= 0)
        ++index;
    if (index >= size)
        index = size - 1;
    while (index >= 0 && compare(value, this->ElementAt(index)) >= 0)
        --index;
    return index + 1;
}

template <class TYPE, class ARG_TYPE>
template <class ADD>
void CBaseArray<TYPE, ARG_TYPE>::ReadSafeArray(SAFEARRAY* array, ADD add)
{
    if constexpr (std::is_trivially_copyable_v<TYPE> && std::is_default_constructible_v<TYPE>) {
        const kelgen::detail::SafeArraySource source(array, sizeof(TYPE));
        for (int i = 0; i < source.GetCount(); ++i) {
            TYPE element{};
            if (source.Read(i, &element))
                add(element);
        }
    }
}

template <class TYPE, class ARG_TYPE>
bool CBaseArray<TYPE, ARG_TYPE>::CopySafeArray(SAFEARRAY* array)
{
    CBaseArray::RemoveAll(false);
    ReadSafeArray(array, [this](TYPE& element) { this->Add(element); });
    return true;
}

template <class TYPE, class ARG_TYPE>
SAFEARRAY* CBaseArray<TYPE, ARG_TYPE>::CreateSafeArrayOf(VARTYPE type, int count) const
{
    if constexpr (std::is_trivially_copyable_v<TYPE>)
        return kelgen::detail::MakeSafeArray(type, m_pData, count, sizeof(TYPE));
    else
        return nullptr;
}

template <class TYPE, class ARG_TYPE>
void CBaseArray<TYPE, ARG_TYPE>::SetSafeArray(VARTYPE type, VARIANT& variant) const
{
    kelgen::detail::StoreSafeArray(type, CreateSafeArray(type), variant);
}
