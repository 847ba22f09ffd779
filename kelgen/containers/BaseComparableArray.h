// BaseComparableArray.h: CBaseComparableArray, which works with its elements' own == and <.
#pragma once

#include <kelgen/containers/BaseArray.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>

/// Searches, set operations and sorting by the elements' own == and <; for pointers, by identity and address.
///
///     CBaseComparableArray<int> numbers(4, 2, 1, 2, 2);
///     numbers.Remove(2);     // 3: that many went; 1 is left
///     numbers.Contains(1);   // true
///
/// Argument arrays may be this array itself.
template <class TYPE, class ARG_TYPE = TYPE, class BASE = CBaseArray<TYPE, ARG_TYPE>>
class CBaseComparableArray : public BASE
{
public:
    using MovableBitwise = CBaseComparableArray;
    using BASE::BASE;
    CBaseComparableArray() = default;
    CBaseComparableArray(const CBaseComparableArray&) = default;
    CBaseComparableArray& operator=(const CBaseComparableArray&) = default;
    /// Copies the elements of an array that need not know equality.
    CBaseComparableArray& operator=(const CBaseArray<TYPE, ARG_TYPE>& other)
    {
        this->Copy(other);
        return *this;
    }

    using BASE::AddUnique;
    using BASE::BubbleSort;
    using BASE::FindFirst;

    /// The first index of @p value, or -1. Cost: numbers of 32 and 64 bits and pointers are compared several at a time.
    int FindFirst(const TYPE& value) const { return kelgen::detail::FindEqual(m_pData, m_nSize, value); }
    /// For pointers the first index of null; else -1, as no element lies at null.
    int FindFirst(std::nullptr_t) const
    {
        if constexpr (std::is_pointer_v<TYPE>)
            return FindFirst(TYPE{nullptr});
        else
            return -1;
    }
    /// Whether @p value occurs; the same cost.
    bool Contains(const TYPE& value) const { return FindFirst(value) >= 0; }
    /// Whether every element of @p other occurs here; true for an empty one.
    bool Contains(const CBaseArray<TYPE, ARG_TYPE>& other) const;

    /// Removes the first element equal to @p value; false when there is none.
    bool RemoveFirst(TYPE value);
    /// Removes all elements equal to @p value and returns how many.
    int Remove(TYPE value);
    /// Removes all elements that occur in @p other and returns how many. The others keep their order.
    int Remove(const CBaseComparableArray& other);

    /// Appends @p value unless it occurs already; true when appended.
    bool AddUnique(TYPE value);
    /// AddUnique of every element of @p other in order.
    void AddUnique(const CBaseArray<TYPE, ARG_TYPE>& other);

    /// Sorts ascending by <; equal elements may change order. Cost: quadratic.
    void BubbleSort();

    /// The index of the first maximum. By contract: -1 when no later element exceeds the first, though that then is the maximum: a caller
    /// reads -1 as index 0.
    /// Throws: the invalid-argument exception when empty.
    int GetMaxValueIndex() const;
    /// The maximum, in the first element. By contract: every element that exceeds the first overwrites it, so its own value is
    /// lost.
    /// Throws: the invalid-argument exception when empty.
    TYPE& GetMaxValue();

    /// Removes all elements that occur in @p other, but for the one at index @p keep. Returns this array.
    CBaseComparableArray& DiffPreserveIndex(const CBaseComparableArray& other, int keep);

    /// Same size, and equal elements in the same order.
    bool operator==(const CBaseComparableArray& other) const;
    bool operator!=(const CBaseComparableArray& other) const { return !(*this == other); }
    /// Keeps only the elements that occur in @p other; order and repetitions stay.
    CBaseComparableArray& operator&=(const CBaseComparableArray& other);
    /// Remove(other).
    CBaseComparableArray& operator-=(const CBaseComparableArray& other);

protected:
    using BASE::m_nSize;
    using BASE::m_pData;

private:
    class Compaction;

    template <class UNWANTED>
    int RemoveWhere(UNWANTED unwanted);
};

/// An array of pointers to objects that it does not own.
template <class TYPE, class ARG_TYPE = TYPE>
class CBaseObjectPtrArray : public CBaseComparableArray<TYPE, ARG_TYPE>
{
public:
    using CBaseComparableArray<TYPE, ARG_TYPE>::CBaseComparableArray;
    using CBaseComparableArray<TYPE, ARG_TYPE>::operator=;
};

/// Removal in one pass: runs of kept elements move down over the holes. Closes the last hole when it ends, even by an exception of the
/// elements' ==.
template <class TYPE, class ARG_TYPE, class BASE>
class CBaseComparableArray<TYPE, ARG_TYPE, BASE>::Compaction
{
public:
    /// Begins before the first element.
    explicit Compaction(CBaseComparableArray& array) : m_array(array) {}
    Compaction(const Compaction&) = delete;
    Compaction& operator=(const Compaction&) = delete;
    ~Compaction()
    {
        next = m_array.m_nSize;
        MoveRunDown();
        m_array.m_nSize = m_kept;
    }

    /// Keeps the next @p count elements.
    void Keep(int count) { next += count; }
    /// Destroys the next element.
    void Drop()
    {
        MoveRunDown();
        std::destroy_at(m_array.m_pData + next);
        m_run = ++next;
    }

    int next = 0;  ///< The index of the next element.

private:
    void MoveRunDown()
    {
        const int count = next - m_run;
        if (m_kept != m_run && count != 0)
            std::memmove(static_cast<void*>(m_array.m_pData + m_kept), static_cast<const void*>(m_array.m_pData + m_run),
                         static_cast<std::size_t>(count) * sizeof(TYPE));
        m_kept += count;
    }

    CBaseComparableArray& m_array;
    int m_kept = 0;  // how many are in their final place
    int m_run = 0;   // where those begin that are kept and not yet moved
};

template <class TYPE, class ARG_TYPE, class BASE>
template <class UNWANTED>
int CBaseComparableArray<TYPE, ARG_TYPE, BASE>::RemoveWhere(UNWANTED unwanted)
{
    const int oldSize = m_nSize;
    {
        Compaction compaction(*this);
        while (compaction.next < oldSize) {
            if (unwanted(m_pData[compaction.next], compaction.next))
                compaction.Drop();
            else
                compaction.Keep(1);
        }
    }
    return oldSize - m_nSize;
}

template <class TYPE, class ARG_TYPE, class BASE>
bool CBaseComparableArray<TYPE, ARG_TYPE, BASE>::Contains(const CBaseArray<TYPE, ARG_TYPE>& other) const
{
    const TYPE* const elements = other.GetData();
    return std::all_of(elements, elements + other.GetCount(), [this](const TYPE& element) { return Contains(element); });
}

template <class TYPE, class ARG_TYPE, class BASE>
bool CBaseComparableArray<TYPE, ARG_TYPE, BASE>::RemoveFirst(TYPE value)
{
    const int index = FindFirst(value);
    if (index < 0)
        return false;
    CArray<TYPE, ARG_TYPE>::RemoveAt(index);
    return true;
}

template <class TYPE, class ARG_TYPE, class BASE>
int CBaseComparableArray<TYPE, ARG_TYPE, BASE>::Remove(TYPE value)
{
    if constexpr (std::is_integral_v<TYPE> || std::is_pointer_v<TYPE>) {
        const int oldSize = m_nSize;
        {
            Compaction compaction(*this);
            for (int run; (run = kelgen::detail::FindEqual(m_pData + compaction.next, oldSize - compaction.next, value)) >= 0;) {
                compaction.Keep(run);
                compaction.Drop();
            }
        }
        return oldSize - m_nSize;
    } else {
        return RemoveWhere([&value](const TYPE& element, int) { return element == value; });
    }
}

template <class TYPE, class ARG_TYPE, class BASE>
int CBaseComparableArray<TYPE, ARG_TYPE, BASE>::Remove(const CBaseComparableArray& other)
{
    if (this == &other)
        return Remove(CBaseComparableArray(other));
    return RemoveWhere([&other](const TYPE& element, int) { return other.Contains(element); });
}

template <class TYPE, class ARG_TYPE, class BASE>
bool CBaseComparableArray<TYPE, ARG_TYPE, BASE>::AddUnique(TYPE value)
{
    if (Contains(value))
        return false;
    this->Add(value);
    return true;
}

template <class TYPE, class ARG_TYPE, class BASE>
void CBaseComparableArray<TYPE, ARG_TYPE, BASE>::AddUnique(const CBaseArray<TYPE, ARG_TYPE>& other)
{
    // Counted first: of this array itself, elements that are not even equal to themselves would be added for ever.
    const int count = other.GetCount();
    for (int i = 0; i < count; ++i)
        AddUnique(other.GetData()[i]);
}

template <class TYPE, class ARG_TYPE, class BASE>
void CBaseComparableArray<TYPE, ARG_TYPE, BASE>::BubbleSort()
{
    for (int i = 0; i < m_nSize; ++i) {
        for (int j = i + 1; j < m_nSize; ++j) {
            if (m_pData[j] < m_pData[i])
                kelgen::detail::ExchangeBytes(m_pData[i], m_pData[j]);
        }
    }
}

template <class TYPE, class ARG_TYPE, class BASE>
int CBaseComparableArray<TYPE, ARG_TYPE, BASE>::GetMaxValueIndex() const
{
    const TYPE* maximum = &this->FirstElement();
    int index = -1;
    for (int i = 1; i < m_nSize; ++i) {
        if (*maximum < m_pData[i]) {
            maximum = &m_pData[i];
            index = i;
        }
    }
    return index;
}

template <class TYPE, class ARG_TYPE, class BASE>
TYPE& CBaseComparableArray<TYPE, ARG_TYPE, BASE>::GetMaxValue()
{
    TYPE& first = this->FirstElement();
    for (int i = 1; i < m_nSize; ++i) {
        if (first < m_pData[i])
            first = m_pData[i];
    }
    return first;
}

template <class TYPE, class ARG_TYPE, class BASE>
CBaseComparableArray<TYPE, ARG_TYPE, BASE>& CBaseComparableArray<TYPE, ARG_TYPE, BASE>::DiffPreserveIndex(const CBaseComparableArray& other,
                                                                                                          int keep)
{
    if (this == &other)
        return DiffPreserveIndex(CBaseComparableArray(other), keep);
    RemoveWhere([&other, keep](const TYPE& element, int index) { return index != keep && other.Contains(element); });
    return *this;
}

template <class TYPE, class ARG_TYPE, class BASE>
bool CBaseComparableArray<TYPE, ARG_TYPE, BASE>::operator==(const CBaseComparableArray& other) const
{
    return m_nSize == other.m_nSize && std::equal(m_pData, m_pData + m_nSize, other.m_pData);
}

template <class TYPE, class ARG_TYPE, class BASE>
CBaseComparableArray<TYPE, ARG_TYPE, BASE>& CBaseComparableArray<TYPE, ARG_TYPE, BASE>::operator&=(const CBaseComparableArray& other)
{
    if (this == &other)
        return *this &= CBaseComparableArray(other);
    RemoveWhere([&other](const TYPE& element, int) { return !other.Contains(element); });
    return *this;
}

template <class TYPE, class ARG_TYPE, class BASE>
CBaseComparableArray<TYPE, ARG_TYPE, BASE>& CBaseComparableArray<TYPE, ARG_TYPE, BASE>::operator-=(const CBaseComparableArray& other)
{
    Remove(other);
    return *this;
}
