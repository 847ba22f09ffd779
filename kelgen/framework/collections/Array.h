// Array.h: CArray, the growable array under every list of the library.
#pragma once

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/collections/CollectionHelpers.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

/// An array of values that grows by exact steps.
///
///     CArray<int, int> numbers;
///     numbers.Add(7);
///     numbers.SetAtGrow(3, 9);  // 7, 0, 0, 9
///
/// New elements are value-initialised: numbers and pointers are zero. Elements move bit-wise when the block grows and when
/// others are inserted or removed, so a type that keeps its own address does not compile (kelgen::is_movable_bitwise). An argument may
/// refer to an element of the same array. References and the block's address hold until the array grows, shrinks or is freed.
/// Throws: the invalid-argument exception for an index outside [0, size), a negative size or count, and a capacity that
/// 32 bits cannot hold; the memory exception when the block cannot be had. Nothing has changed then.
/// Threads: one at a time.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject
{
    static_assert(alignof(TYPE) <= alignof(std::max_align_t), "the block is aligned as malloc aligns");

public:
    /// Survives being moved bit by bit: see kelgen::is_movable_bitwise.
    using MovableBitwise = CArray;

    CArray() = default;
    ~CArray() override { Release(); }

    /// The number of elements; GetCount is another name for it.
    int GetSize() const { return m_nSize; }
    int GetCount() const { return m_nSize; }
    /// Whether there are no elements.
    bool IsEmpty() const { return m_nSize == 0; }
    /// The last index; -1 when empty.
    int GetUpperBound() const { return m_nSize - 1; }

    /// Makes the array hold @p nNewSize elements: new ones are value-initialised, those beyond are destroyed. 0 frees the
    /// block. @p nGrowBy >= 0 becomes the growth step; 0 stands for a step of size / 8, at least 4 and at most 1024.
    /// Cost: the first block holds exactly max(size, step) elements; a full one grows by the step, or to the new size if that is
    /// larger.
    void SetSize(int nNewSize, int nGrowBy = -1);

    /// Shrinks the block to the elements in use.
    void FreeExtra();

    /// Destroys all elements and frees the block.
    void RemoveAll() { Release(); }

    /// Each: the element at that index, which must be inside [0, size).
    const TYPE& GetAt(int nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& GetAt(int nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE& ElementAt(int nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& ElementAt(int nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE& operator[](int nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& operator[](int nIndex) { return m_pData[Checked(nIndex)]; }
    /// Assigns to the element at that index, which must be inside [0, size).
    void SetAt(int nIndex, ARG_TYPE newElement) { m_pData[Checked(nIndex)] = newElement; }

    /// The block; null when the array holds none.
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }

    /// Sets the element, after growing to @p nIndex + 1 elements when the array is shorter.
    void SetAtGrow(int nIndex, ARG_TYPE newElement);

    /// Appends and returns the new element's index.
    int Add(ARG_TYPE newElement);

    /// Appends all elements of @p src, which may be this array, and returns the size before.
    int Append(const CArray& src);

    /// Becomes equal to @p src, element by element. Onto itself nothing happens.
    void Copy(const CArray& src);

    /// Inserts @p nCount (1 or more) copies before @p nIndex. An index at or past the end first grows the array to it.
    void InsertAt(int nIndex, ARG_TYPE newElement, int nCount = 1);

    /// Inserts all elements of @p pNewArray, which may be this array, before @p nStartIndex.
    void InsertAt(int nStartIndex, CArray* pNewArray);

    /// Removes @p nCount (0 or more) elements from @p nIndex on; all of them must exist. The block stays as it is.
    void RemoveAt(int nIndex, int nCount = 1);

    /// Writes or reads the count and then the elements, by SerializeElements.
    void Serialize(CArchive& ar) override;

protected:
    TYPE* m_pData = nullptr;  // malloc's, so that realloc can grow it where it lies
    int m_nSize = 0;
    int m_nMaxSize = 0;
    int m_nGrowBy = 0;

private:
    int Checked(int index) const
    {
        if (static_cast<unsigned>(index) >= static_cast<unsigned>(m_nSize)) [[unlikely]]
            KELGEN_THROW_BAD_INDEX(index, m_nSize);
        return index;
    }
    static int CheckedSize(long long size)
    {
        if (size < 0 || size > INT_MAX)
            AfxThrowInvalidArgException();
        return static_cast<int>(size);
    }

    void Release();
    void Reserve(int newSize, int growBy);
    void OpenGap(int index, int count);
    int AddToFullBlock(ARG_TYPE newElement);
    std::ptrdiff_t OffsetInBlock(const void* address) const;
    /// The address to use for an argument whose offset in the block was @p offset, -1 for one that lay elsewhere.
    template <class ARGUMENT>
    ARGUMENT* Relocated(ARGUMENT* argument, std::ptrdiff_t offset) const;
};

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Release()
{
    std::destroy_n(m_pData, m_nSize);
    std::free(static_cast<void*>(m_pData));
    m_pData = nullptr;
    m_nSize = 0;
    m_nMaxSize = 0;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reserve(int newSize, int growBy)
{
    static_assert(kelgen::is_movable_bitwise<TYPE>, "arrays move their elements bit by bit: hold pointers to such objects, or a list");
    if (newSize <= m_nMaxSize)
        return;

    int newMax = std::max(newSize, growBy);
    if (m_pData != nullptr) {
        const int step = growBy != 0 ? growBy : std::clamp(m_nSize / 8, 4, 1024);
        newMax = std::max(newSize, CheckedSize(static_cast<long long>(m_nMaxSize) + step));
    }
    const std::size_t count = static_cast<std::size_t>(newMax);
    if (count > PTRDIFF_MAX / sizeof(TYPE))
        AfxThrowMemoryException();
    // The first block is cleared throughout; the end of a grown one is cleared as it is used.
    void* block = m_pData == nullptr ? std::calloc(count, sizeof(TYPE)) : std::realloc(static_cast<void*>(m_pData), count * sizeof(TYPE));
    if (block == nullptr)
        AfxThrowMemoryException();

    m_pData = static_cast<TYPE*>(block);
    m_nMaxSize = newMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(int nNewSize, int nGrowBy)
{
    CheckedSize(nNewSize);
    const int growBy = nGrowBy >= 0 ? nGrowBy : m_nGrowBy;
    if (nNewSize == 0) {
        m_nGrowBy = growBy;
        Release();
        return;
    }

    Reserve(nNewSize, growBy);
    m_nGrowBy = growBy;
    if (nNewSize > m_nSize)
        std::uninitialized_value_construct_n(m_pData + m_nSize, nNewSize - m_nSize);
    else
        std::destroy_n(m_pData + nNewSize, m_nSize - nNewSize);
    m_nSize = nNewSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeExtra()
{
    if (m_nSize == m_nMaxSize)
        return;
    if (m_nSize == 0) {
        Release();
        return;
    }
    void* block = std::realloc(static_cast<void*>(m_pData), static_cast<std::size_t>(m_nSize) * sizeof(TYPE));
    if (block == nullptr)
        AfxThrowMemoryException();
    m_pData = static_cast<TYPE*>(block);
    m_nMaxSize = m_nSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(int nIndex, ARG_TYPE newElement)
{
    if (nIndex < 0)
        KELGEN_THROW_BAD_INDEX(nIndex, m_nSize);
    auto* argument = std::addressof(newElement);
    if (nIndex >= m_nSize) {
        const std::ptrdiff_t offset = OffsetInBlock(argument);
        SetSize(CheckedSize(nIndex + 1LL));
        argument = Relocated(argument, offset);
    }
    m_pData[nIndex] = *argument;
}

template <class TYPE, class ARG_TYPE>
inline int CArray<TYPE, ARG_TYPE>::Add(ARG_TYPE newElement)
{
    const int index = m_nSize;
    if (index >= m_nMaxSize) [[unlikely]]
        return AddToFullBlock(newElement);

    // Unsigned: the size is then reloaded as it was stored, which the processor does without waiting.
    TYPE* const added = m_pData + static_cast<unsigned>(index);
    // By contract an addition is a SetSize followed by an assignment, and elements see both; a plain value needs only the latter.
    if constexpr (!std::is_trivially_default_constructible_v<TYPE> || !std::is_trivially_copy_assignable_v<TYPE>)
        ::new (static_cast<void*>(added)) TYPE();
    m_nSize = index + 1;
    *added = newElement;
    return index;
}

template <class TYPE, class ARG_TYPE>
[[gnu::noinline]] int CArray<TYPE, ARG_TYPE>::AddToFullBlock(ARG_TYPE newElement)
{
    const int index = m_nSize;
    SetAtGrow(index, newElement);
    return index;
}

template <class TYPE, class ARG_TYPE>
int CArray<TYPE, ARG_TYPE>::Append(const CArray& src)
{
    const int oldSize = m_nSize;
    const int count = src.m_nSize;
    if (count == 0)
        return oldSize;
    SetSize(CheckedSize(static_cast<long long>(oldSize) + count));
    CopyElements<TYPE>(m_pData + oldSize, src.m_pData, count);
    return oldSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src)
{
    if (this == &src)
        return;
    SetSize(src.m_nSize);
    CopyElements<TYPE>(m_pData, src.m_pData, src.m_nSize);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(int nIndex, ARG_TYPE newElement, int nCount)
{
    if (nIndex < 0 || nCount <= 0)
        KELGEN_THROW_BAD_INDEX(nIndex < 0 ? nIndex : nCount, m_nSize);

    auto* argument = std::addressof(newElement);
    std::ptrdiff_t offset = OffsetInBlock(argument);
    if (nIndex >= m_nSize) {
        SetSize(CheckedSize(static_cast<long long>(nIndex) + nCount));
    } else {
        OpenGap(nIndex, nCount);
        const auto elementSize = static_cast<std::ptrdiff_t>(sizeof(TYPE));
        if (offset >= nIndex * elementSize)
            offset += nCount * elementSize;
    }
    argument = Relocated(argument, offset);
    for (int i = 0; i < nCount; ++i)
        m_pData[nIndex + i] = *argument;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(int nStartIndex, CArray* pNewArray)
{
    if (nStartIndex < 0 || pNewArray == nullptr)
        AfxThrowInvalidArgException();
    if (pNewArray->m_nSize == 0)
        return;
    if (pNewArray == this) {
        CArray copy;
        copy.Copy(*this);
        InsertAt(nStartIndex, &copy);
        return;
    }
    const int count = pNewArray->m_nSize;
    if (nStartIndex >= m_nSize)
        SetSize(CheckedSize(static_cast<long long>(nStartIndex) + count));
    else
        OpenGap(nStartIndex, count);
    CopyElements<TYPE>(m_pData + nStartIndex, pNewArray->m_pData, count);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(int nIndex, int nCount)
{
    if (nIndex < 0 || nCount < 0 || static_cast<long long>(nIndex) + nCount > m_nSize)
        KELGEN_THROW_BAD_INDEX(nIndex < 0 || nCount < 0 ? std::min(nIndex, nCount) : nIndex + static_cast<long long>(nCount) - 1, m_nSize);
    if (nCount == 0)
        return;

    std::destroy_n(m_pData + nIndex, nCount);
    const int tail = m_nSize - nIndex - nCount;
    if (tail != 0)
        std::memmove(static_cast<void*>(m_pData + nIndex), static_cast<const void*>(m_pData + nIndex + nCount),
                     static_cast<std::size_t>(tail) * sizeof(TYPE));
    m_nSize -= nCount;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    // Elements without a form in an archive throw here, before the count is written.
    SerializeElements<TYPE>(ar, m_pData, 0);
    const int size = kelgen::detail::SerializeCount(ar, m_nSize);
    if (size != m_nSize)
        SetSize(size);
    SerializeElements<TYPE>(ar, m_pData, m_nSize);
}

/// Makes room for @p count value-initialised elements before @p index, which is inside the array.
template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::OpenGap(int index, int count)
{
    const int newSize = CheckedSize(static_cast<long long>(m_nSize) + count);
    Reserve(newSize, m_nGrowBy);

    TYPE* const gap = m_pData + index;
    const std::size_t tailBytes = static_cast<std::size_t>(m_nSize - index) * sizeof(TYPE);
    std::memmove(static_cast<void*>(gap + count), static_cast<const void*>(gap), tailBytes);
    try {
        std::uninitialized_value_construct_n(gap, count);
    } catch (...) {
        std::memmove(static_cast<void*>(gap), static_cast<const void*>(gap + count), tailBytes);
        throw;
    }
    m_nSize = newSize;
}

template <class TYPE, class ARG_TYPE>
std::ptrdiff_t CArray<TYPE, ARG_TYPE>::OffsetInBlock(const void* address) const
{
    const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(m_pData);
    return offset < static_cast<std::size_t>(m_nSize) * sizeof(TYPE) ? static_cast<std::ptrdiff_t>(offset) : -1;
}

template <class TYPE, class ARG_TYPE>
template <class ARGUMENT>
ARGUMENT* CArray<TYPE, ARG_TYPE>::Relocated(ARGUMENT* argument, std::ptrdiff_t offset) const
{
    if (offset < 0)
        return argument;
    return reinterpret_cast<ARGUMENT*>(reinterpret_cast<std::uintptr_t>(m_pData) + static_cast<std::uintptr_t>(offset));
}
