// FastArray.h: CFastArray, an array that keeps its element objects for reuse, and CFastArrayArray, such an array of arrays.
#pragma once

#include <kelgen/containers/BaseArray.h>

#include <cstdlib>
#include <memory>

/// An array with a used count over slots that stay constructed: emptying and refilling assigns into existing objects, so strings
/// and arrays as elements keep their blocks.
///
///     CFastArray<CString, const CString&> names;
///     names.Add("one");
///     names.Add("two");
///     names.RemoveAll();   // GetSize() is 0; both slots keep their texts
///     names.Add("three");  // GetSize() is 1; assigned into the first slot
///
/// By contract: the members here go by the used count; those of CBaseArray and CArray that are not replaced here (GetCount,
/// IsEmpty, SetSize, FindFirst, Push, Pop and so on) go by the slots, and element access is checked against the slots.
template <class TYPE, class ARG_TYPE = TYPE>
class CFastArray : public CBaseArray<TYPE, ARG_TYPE>
{
public:
    CFastArray() = default;
    CFastArray(const CFastArray& other) : CBaseArray<TYPE, ARG_TYPE>() { Copy(other); }
    CFastArray& operator=(const CFastArray& other)
    {
        Copy(other);
        return *this;
    }

    /// Throws: the memory exception.
    static void* operator new(std::size_t size)
    {
        void* const block = std::malloc(size);
        if (block == nullptr)
            AfxThrowMemoryException();
        return block;
    }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* block) noexcept { std::free(block); }

    /// The used count.
    int GetSize() const { return m_nUsedCount; }

    /// Appends, into the slot behind the used ones when there is one, and returns the new element's index.
    int Add(ARG_TYPE value);
    void StdAdd(ARG_TYPE value) override { CFastArray::Add(value); }
    int StdArrayGetSize() override { return m_nUsedCount; }
    void StdRemoveAll() override { CFastArray::RemoveAll(); }

    /// The used count becomes 0; no element is destroyed.
    void RemoveAll() { m_nUsedCount = 0; }

    /// Assigns each later used element one place down. By contract: the vacated last slot keeps its
    /// value, for the element that takes it next.
    void RemoveAt(int index);

    /// Exchanges by assignment through a temporary.
    void Swap(int i, int j);

    /// The used count becomes @p n, after growing to @p n slots when there are fewer. Slots that come into use keep their values.
    void EnsureSize(int n);

    /// Takes all slots of @p other and its used count.
    void Copy(const CFastArray& other);

protected:
    using CBaseArray<TYPE, ARG_TYPE>::m_pData;
    using CBaseArray<TYPE, ARG_TYPE>::m_nSize;

    int m_nUsedCount = 0;
};

/// An array of arrays that keeps the inner arrays, and through them their elements, for reuse.
template <class TYPE, class ARG_TYPE = TYPE>
class CFastArrayArray : public CFastArray<TYPE, ARG_TYPE>
{
public:
    /// Orders the used inner arrays by their GetSize(), smallest first when @p ascending. Arrays of equal size may change order.
    /// Cost: quadratic; exchanges copy whole arrays.
    void BubbleSortByGetSize(bool ascending);
};

template <class TYPE, class ARG_TYPE>
inline int CFastArray<TYPE, ARG_TYPE>::Add(ARG_TYPE value)
{
    if (static_cast<unsigned>(m_nUsedCount) < static_cast<unsigned>(m_nSize))
        m_pData[m_nUsedCount] = value;
    else
        this->SetAtGrow(m_nUsedCount, value);
    return m_nUsedCount++;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::RemoveAt(int index)
{
    if (index < 0 || index >= m_nUsedCount || m_nUsedCount > m_nSize)
        AfxThrowInvalidArgException();
    for (int i = index + 1; i < m_nUsedCount; ++i)
        m_pData[i - 1] = m_pData[i];
    --m_nUsedCount;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::Swap(int i, int j)
{
    TYPE& first = this->ElementAt(i);
    TYPE& second = this->ElementAt(j);
    TYPE held;
    held = first;
    first = second;
    second = held;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::EnsureSize(int n)
{
    if (n < 0)
        AfxThrowInvalidArgException();
    if (n > m_nSize)
        this->SetSize(n);
    m_nUsedCount = n;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::Copy(const CFastArray& other)
{
    CArray<TYPE, ARG_TYPE>::Copy(other);
    m_nUsedCount = other.m_nUsedCount;
}

template <class TYPE, class ARG_TYPE>
void CFastArrayArray<TYPE, ARG_TYPE>::BubbleSortByGetSize(bool ascending)
{
    for (int i = 0; i < this->GetSize(); ++i) {
        for (int j = i + 1; j < this->GetSize(); ++j) {
            const int first = this->ElementAt(i).GetSize();
            const int second = this->ElementAt(j).GetSize();
            if (ascending ? first > second : first < second)
                this->Swap(i, j);
        }
    }
}
