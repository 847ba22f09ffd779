// FastArray.h: CFastArray, an array that keeps its element objects for reuse, and CFastArrayArray, such an array of arrays.
#pragma once

#include <kelgen/containers/BaseArray.h>

#include <algorithm>
#include <climits>
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
/// Every member speaks of the used elements; what is removed does not come back, but through EnsureSize. By contract, element access is
/// checked against the slots alone, since those behind the used ones keep their values, and through a reference to CArray or CBaseArray
/// the non-virtual members speak of the slots.
template <class TYPE, class ARG_TYPE = TYPE>
class CFastArray : public CBaseArray<TYPE, ARG_TYPE>
{
public:
    /// Survives being moved bit by bit: see kelgen::is_movable_bitwise.
    using MovableBitwise = CFastArray;
    using typename CBaseArray<TYPE, ARG_TYPE>::Compare;

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
    /// Both as the standard's, for places and blocks of the operator above.
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* block) noexcept { std::free(block); }

    /// The used count (GetSize, GetCount), whether it is 0 (IsEmpty), and the last used index, -1 for none (GetUpperBound).
    int GetSize() const { return m_nUsedCount; }
    int GetCount() const { return m_nUsedCount; }
    bool IsEmpty() const { return m_nUsedCount == 0; }
    int GetUpperBound() const { return m_nUsedCount - 1; }

    /// As CArray's; slots that come into use are value-initialised, those beyond are destroyed.
    void SetSize(int n, int growBy = -1);
    /// SetSize of the used count and @p delta.
    void IncrementSize(int delta);
    /// Destroys the slots that are not in use and gives their memory back.
    void FreeExtra();

    /// Appends, into the slot behind the used ones when there is one, and returns the new element's index.
    int Add(ARG_TYPE value);
    void StdAdd(ARG_TYPE value) override { CFastArray::Add(value); }
    int StdArrayGetSize() override { return m_nUsedCount; }
    void StdRemoveAll() override { CFastArray::RemoveAll(); }
    /// Add, without the index.
    void Push(ARG_TYPE value) { CFastArray::Add(value); }
    /// Takes the last element out of use and returns it; its slot keeps its value.
    TYPE Pop();
    /// Assigns to the element at @p index; the used elements grow to hold it.
    void SetAtGrow(int index, ARG_TYPE value);
    /// Both append the used elements of @p other, which may be this array, or all slots of a plain array; both return the used count
    /// before.
    int Append(const CFastArray& other);
    int Append(const CArray<TYPE, ARG_TYPE>& other);
    /// Each inserts before @p index, which may lie behind the used elements, what is given: copies of a value, or the elements of an array.
    void InsertAt(int index, ARG_TYPE value, int count = 1);
    void InsertAt(int index, CFastArray* other);
    void InsertAt(int index, CArray<TYPE, ARG_TYPE>* other);

    /// Both: an end's used element; there must be one.
    TYPE& FirstElement() { return m_pData[CheckedFirst()]; }
    const TYPE& FirstElement() const { return m_pData[CheckedFirst()]; }
    TYPE& LastElement() { return this->ElementAt(m_nUsedCount - 1); }
    const TYPE& LastElement() const { return this->ElementAt(m_nUsedCount - 1); }

    /// Each does what the member of that name does in CBaseArray, with the used elements.
    int FindFirst(ARG_TYPE value, Compare compare, int start) const { return this->FindFirstIn(m_nUsedCount, value, compare, start); }
    int FindFirst(const TYPE* element) const;
    void AddUnique(ARG_TYPE value, Compare compare);
    void RemoveDuplicates(Compare compare);
    void BubbleSort(Compare compare) { this->BubbleSortIn(m_nUsedCount, compare); }
    bool SortFind(ARG_TYPE value, Compare compare, int& index) const { return this->SortFindIn(m_nUsedCount, value, compare, index); }
    void SortAdd(ARG_TYPE value, Compare compare) { CFastArray::InsertAt(this->SortPlaceIn(m_nUsedCount, value, compare), value); }

    bool CopySafeArray(SAFEARRAY* array) override;
    /// Each does what the member of that name does in CBaseArray, with the used elements.
    SAFEARRAY* CreateSafeArray(VARTYPE type) const { return this->CreateSafeArrayOf(type, Readable()); }
    void SetSafeArray(VARTYPE type, VARIANT& variant) const;
    template <class RESULT = COleVariant>
    static RESULT GetOleVariantArray(VARTYPE type, CFastArray& array)
    {
        RESULT variant;
        array.SetSafeArray(type, variant);
        return variant;
    }

    /// Writes or reads the used count and the used elements, by SerializeElements.
    void Serialize(CArchive& ar) override;

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

private:
    int CheckedFirst() const
    {
        if (Readable() < 1)
            KELGEN_THROW_BAD_INDEX(0, Readable());
        return 0;
    }
    /// The used elements that there are: slots can be taken away through the base.
    int Readable() const { return std::min(m_nUsedCount, m_nSize); }
    static int CheckedSize(long long size);
    void Use(int n);
    void OpenGap(int index, int count);
    void InsertCopy(int index, const TYPE* elements, int count);
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
        CArray<TYPE, ARG_TYPE>::SetAtGrow(m_nUsedCount, value);
    return m_nUsedCount++;
}

template <class TYPE, class ARG_TYPE>
int CFastArray<TYPE, ARG_TYPE>::CheckedSize(long long size)
{
    if (size < 0 || size > INT_MAX)
        AfxThrowInvalidArgException();
    return static_cast<int>(size);
}

/// The used count becomes @p n; slots that come into use are value-initialised.
template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::Use(int n)
{
    const int kept = std::min(n, m_nSize);
    if (n > m_nSize)
        CArray<TYPE, ARG_TYPE>::SetSize(n);
    for (int i = m_nUsedCount; i < kept; ++i)
        m_pData[i] = TYPE();
    m_nUsedCount = n;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::SetSize(int n, int growBy)
{
    CheckedSize(n);
    const int kept = std::min(n, m_nSize);
    CArray<TYPE, ARG_TYPE>::SetSize(n, growBy);
    for (int i = m_nUsedCount; i < kept; ++i)
        m_pData[i] = TYPE();
    m_nUsedCount = n;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::IncrementSize(int delta)
{
    CFastArray::SetSize(CheckedSize(static_cast<long long>(m_nUsedCount) + delta));
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::FreeExtra()
{
    CFastArray::SetSize(m_nUsedCount);
    CArray<TYPE, ARG_TYPE>::FreeExtra();
}

template <class TYPE, class ARG_TYPE>
TYPE CFastArray<TYPE, ARG_TYPE>::Pop()
{
    TYPE last(CFastArray::LastElement());
    --m_nUsedCount;
    return last;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::SetAtGrow(int index, ARG_TYPE value)
{
    if (index < m_nUsedCount) {
        this->SetAt(index, value);
        return;
    }
    TYPE held;
    held = value;
    Use(CheckedSize(index + 1LL));
    m_pData[index] = held;
}

template <class TYPE, class ARG_TYPE>
int CFastArray<TYPE, ARG_TYPE>::Append(const CFastArray& other)
{
    const int oldCount = m_nUsedCount;
    const int added = other.Readable();
    CheckedSize(static_cast<long long>(oldCount) + added);
    for (int i = 0; i < added; ++i)
        CFastArray::Add(other.m_pData[i]);
    return oldCount;
}

template <class TYPE, class ARG_TYPE>
int CFastArray<TYPE, ARG_TYPE>::Append(const CArray<TYPE, ARG_TYPE>& other)
{
    const int oldCount = m_nUsedCount;
    const int added = other.GetCount();
    CheckedSize(static_cast<long long>(oldCount) + added);
    for (int i = 0; i < added; ++i)
        CFastArray::Add(other.GetData()[i]);
    return oldCount;
}

/// Moves @p count slots from behind the used ones to @p index; from there to the old end, elements move up. Past the end nothing moves.
template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::OpenGap(int index, int count)
{
    const int oldCount = m_nUsedCount;
    Use(CheckedSize(static_cast<long long>(std::max(index, oldCount)) + count));
    if (index >= oldCount)
        return;
    auto* const bytes = reinterpret_cast<unsigned char*>(m_pData);
    const auto place = [bytes](int i) { return bytes + static_cast<std::size_t>(i) * sizeof(TYPE); };
    std::rotate(place(index), place(oldCount), place(m_nUsedCount));
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::InsertAt(int index, ARG_TYPE value, int count)
{
    if (index < 0 || count <= 0)
        AfxThrowInvalidArgException();
    TYPE held;
    held = value;
    OpenGap(index, count);
    for (int i = 0; i < count; ++i)
        m_pData[index + i] = held;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::InsertCopy(int index, const TYPE* elements, int count)
{
    if (index < 0)
        KELGEN_THROW_BAD_INDEX(index, m_nUsedCount);
    if (count == 0)
        return;
    // The elements may lie in this array.
    CArray<TYPE, ARG_TYPE> copy;
    copy.SetSize(count);
    CopyElements<TYPE>(copy.GetData(), elements, count);
    OpenGap(index, count);
    CopyElements<TYPE>(m_pData + index, copy.GetData(), count);
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::InsertAt(int index, CFastArray* other)
{
    if (other == nullptr)
        AfxThrowInvalidArgException();
    InsertCopy(index, other->m_pData, other->Readable());
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::InsertAt(int index, CArray<TYPE, ARG_TYPE>* other)
{
    if (other == nullptr)
        AfxThrowInvalidArgException();
    InsertCopy(index, other->GetData(), other->GetCount());
}

template <class TYPE, class ARG_TYPE>
int CFastArray<TYPE, ARG_TYPE>::FindFirst(const TYPE* element) const
{
    const int found = CBaseArray<TYPE, ARG_TYPE>::FindFirst(element);
    return found < m_nUsedCount ? found : -1;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::AddUnique(ARG_TYPE value, Compare compare)
{
    if (CFastArray::FindFirst(value, compare, 0) < 0)
        CFastArray::Add(value);
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::RemoveDuplicates(Compare compare)
{
    for (int i = 0; i < m_nUsedCount; ++i) {
        for (int found = i + 1; (found = CFastArray::FindFirst(this->ElementAt(i), compare, found)) >= 0;)
            CFastArray::RemoveAt(found);
    }
}

template <class TYPE, class ARG_TYPE>
bool CFastArray<TYPE, ARG_TYPE>::CopySafeArray(SAFEARRAY* array)
{
    CFastArray::RemoveAll();
    this->ReadSafeArray(array, [this](TYPE& element) { CFastArray::Add(element); });
    return true;
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::SetSafeArray(VARTYPE type, VARIANT& variant) const
{
    kelgen::detail::StoreSafeArray(type, CFastArray::CreateSafeArray(type), variant);
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);  // NOLINT(bugprone-parent-virtual-call): what CArray writes is written below
    // Elements without a form in an archive throw here, before the count is written.
    SerializeElements<TYPE>(ar, m_pData, 0);
    const int count = kelgen::detail::SerializeCount(ar, Readable());
    if (!kelgen::detail::IsStoring(ar))
        Use(count);
    SerializeElements<TYPE>(ar, m_pData, count);
}

template <class TYPE, class ARG_TYPE>
void CFastArray<TYPE, ARG_TYPE>::RemoveAt(int index)
{
    if (index < 0 || index >= m_nUsedCount || m_nUsedCount > m_nSize)
        KELGEN_THROW_BAD_INDEX(index, m_nUsedCount);
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
        CArray<TYPE, ARG_TYPE>::SetSize(n);
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
