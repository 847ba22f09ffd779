// BasePtrAllocArray.h: CBasePtrAllocArray, an array that owns heap copies of what is added to it.
#pragma once

#include <kelgen/containers/BaseArray.h>

#include <memory>

/// Objects on the heap that stay where they are while the array grows and shrinks; each is a copy of what was added.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CBasePtrAllocArray
{
public:
    CBasePtrAllocArray() = default;
    CBasePtrAllocArray(const CBasePtrAllocArray& other) { *this = other; }
    ~CBasePtrAllocArray() { RemoveAll(); }
    /// Removes all, then adds a copy of each element of @p other in order. Onto itself nothing happens.
    CBasePtrAllocArray& operator=(const CBasePtrAllocArray& other);

    /// Appends a new copy of @p item and returns its index.
    int Add(ARG_TYPE item);

    /// A copy of the element. Throws: the invalid-argument exception for an index outside [0, count).
    TYPE ElementAt(int index) const { return *PtrAt(index); }
    /// The element itself; the array keeps it. Throws: the invalid-argument exception for an index outside [0, count).
    TYPE* PtrAt(int index) const { return m_pointers.GetAt(index); }

    /// The number of elements; GetSize is another name for it.
    int GetCount() const { return m_pointers.GetSize(); }
    int GetSize() const { return m_pointers.GetSize(); }

    /// Deletes one element; those behind it move down. Throws: the invalid-argument exception for an index outside [0, count).
    void RemoveAt(int index);

    /// Deletes the elements from the first to the last. By contract: each leaves the array, and the others move down, before the next is
    /// deleted, so that a destructor which looks there finds living elements only. Cost: quadratic moves of pointers.
    void RemoveAll();

private:
    CBaseArray<TYPE*, TYPE*> m_pointers;
};

template <class TYPE, class ARG_TYPE>
CBasePtrAllocArray<TYPE, ARG_TYPE>& CBasePtrAllocArray<TYPE, ARG_TYPE>::operator=(const CBasePtrAllocArray& other)
{
    if (this == &other)
        return *this;
    RemoveAll();
    for (int i = 0; i < other.GetCount(); ++i)
        Add(*other.PtrAt(i));
    return *this;
}

template <class TYPE, class ARG_TYPE>
int CBasePtrAllocArray<TYPE, ARG_TYPE>::Add(ARG_TYPE item)
{
    auto copy = std::make_unique<TYPE>(item);
    const int index = m_pointers.Add(copy.get());
    static_cast<void>(copy.release());
    return index;
}

template <class TYPE, class ARG_TYPE>
void CBasePtrAllocArray<TYPE, ARG_TYPE>::RemoveAt(int index)
{
    delete m_pointers.GetAt(index);
    m_pointers.RemoveAt(index);
}

template <class TYPE, class ARG_TYPE>
void CBasePtrAllocArray<TYPE, ARG_TYPE>::RemoveAll()
{
    while (!m_pointers.IsEmpty())
        RemoveAt(0);
}
