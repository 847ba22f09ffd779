// List.h: CList, the doubly linked list.
#pragma once

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/collections/CollectionHelpers.h>
#include <kelgen/framework/collections/NodePool.h>

#include <new>

/// A doubly linked list of values.
///
///     CList<int, int> numbers;
///     numbers.AddTail(7);
///     for (POSITION position = numbers.GetHeadPosition(); position != nullptr;)
///         Use(numbers.GetNext(position));
///
/// Elements stay where they are until removed. Positions are not checked: they must come from this list.
/// Throws: the invalid-argument exception for a null position where one is needed and for the head or tail of an empty list.
/// Threads: one at a time. Cost: every step and change is constant; Find and FindIndex walk.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject
{
public:
    /// Elements are allocated @p nBlockSize at a time.
    explicit CList(int nBlockSize = 10) : m_nodes(nBlockSize) {}
    ~CList() override { RemoveAll(); }

    /// The number of elements; GetSize is another name for it.
    int GetCount() const { return m_nCount; }
    int GetSize() const { return m_nCount; }
    /// Whether there are no elements.
    bool IsEmpty() const { return m_nCount == 0; }

    /// The first element; the list must not be empty.
    TYPE& GetHead() { return At(m_pNodeHead); }
    const TYPE& GetHead() const { return At(m_pNodeHead); }
    /// The last element; the list must not be empty.
    TYPE& GetTail() { return At(m_pNodeTail); }
    const TYPE& GetTail() const { return At(m_pNodeTail); }

    /// Both remove an end's element and return it; the list must not be empty.
    TYPE RemoveHead() { return Taken(m_pNodeHead); }
    TYPE RemoveTail() { return Taken(m_pNodeTail); }

    /// Both add at an end and return the new element's position.
    POSITION AddHead(ARG_TYPE newElement) { return Link(static_cast<ARG_TYPE>(newElement), nullptr, m_pNodeHead); }
    POSITION AddTail(ARG_TYPE newElement) { return Link(static_cast<ARG_TYPE>(newElement), m_pNodeTail, nullptr); }

    /// Both add copies of another list's elements, which keep their order.
    void AddHead(CList* pNewList);
    void AddTail(CList* pNewList);

    /// Removes all elements and frees their memory.
    void RemoveAll();

    /// Both: an end's position; null for an empty list.
    POSITION GetHeadPosition() const { return AsPosition(m_pNodeHead); }
    POSITION GetTailPosition() const { return AsPosition(m_pNodeTail); }

    /// Both: the element at @p rPosition, which moves on to the next (GetPrev: the one before); null after the last.
    TYPE& GetNext(POSITION& rPosition) { return Step(rPosition, &CNode::pNext); }
    const TYPE& GetNext(POSITION& rPosition) const { return Step(rPosition, &CNode::pNext); }
    TYPE& GetPrev(POSITION& rPosition) { return Step(rPosition, &CNode::pPrev); }
    const TYPE& GetPrev(POSITION& rPosition) const { return Step(rPosition, &CNode::pPrev); }

    /// The element at that position.
    TYPE& GetAt(POSITION position) { return At(AsNode(position)); }
    const TYPE& GetAt(POSITION position) const { return At(AsNode(position)); }
    /// Assigns to the element at that position.
    void SetAt(POSITION position, ARG_TYPE newElement) { GetAt(position) = static_cast<ARG_TYPE>(newElement); }
    /// Removes the element at that position.
    void RemoveAt(POSITION position) { Unlink(Checked(AsNode(position))); }

    /// Both add before (InsertAfter: after) @p position and return the new element's position. By contract: a null position stands for the
    /// head (the tail), so that loops need not treat an empty list apart.
    POSITION InsertBefore(POSITION position, ARG_TYPE newElement);
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement);

    /// The first element equal to @p searchValue by CompareElements, after @p startAfter if given; null when there is none.
    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const;

    /// The position of element @p nIndex, counted from 0; null outside [0, count).
    POSITION FindIndex(int nIndex) const;

    /// Writes the count and then the elements, by SerializeElements; or reads and appends such elements.
    void Serialize(CArchive& ar) override;

protected:
    /// An element with its neighbours; null at the ends.
    struct CNode
    {
        CNode* pNext;  ///< towards the tail
        CNode* pPrev;  ///< towards the head
        TYPE data;     ///< the element
    };

private:
    static CNode* AsNode(POSITION position) { return reinterpret_cast<CNode*>(position); }
    static POSITION AsPosition(CNode* node) { return reinterpret_cast<POSITION>(node); }
    static CNode* Checked(CNode* node)
    {
        if (node == nullptr) [[unlikely]]
            AfxThrowInvalidArgException();
        return node;
    }
    static TYPE& At(CNode* node) { return Checked(node)->data; }
    static TYPE& Step(POSITION& position, CNode* CNode::*direction)
    {
        CNode* node = Checked(AsNode(position));
        position = AsPosition(node->*direction);
        return node->data;
    }

    TYPE Taken(CNode* node);
    POSITION Link(ARG_TYPE newElement, CNode* before, CNode* after);
    void Unlink(CNode* node);

    CNode* m_pNodeHead = nullptr;
    CNode* m_pNodeTail = nullptr;
    int m_nCount = 0;
    kelgen::detail::NodePool<CNode> m_nodes;
};

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Link(ARG_TYPE newElement, CNode* before, CNode* after)
{
    CNode* node = static_cast<CNode*>(m_nodes.Take());
    bool constructed = false;
    try {
        ::new (static_cast<void*>(node)) CNode{after, before, TYPE()};
        constructed = true;
        node->data = static_cast<ARG_TYPE>(newElement);
    } catch (...) {
        if (constructed)
            node->~CNode();
        m_nodes.GiveBack(node);
        throw;
    }
    (before != nullptr ? before->pNext : m_pNodeHead) = node;
    (after != nullptr ? after->pPrev : m_pNodeTail) = node;
    ++m_nCount;
    return AsPosition(node);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::Unlink(CNode* node)
{
    (node->pPrev != nullptr ? node->pPrev->pNext : m_pNodeHead) = node->pNext;
    (node->pNext != nullptr ? node->pNext->pPrev : m_pNodeTail) = node->pPrev;
    --m_nCount;
    node->~CNode();
    m_nodes.GiveBack(node);
    if (m_nCount == 0)
        RemoveAll();
}

template <class TYPE, class ARG_TYPE>
TYPE CList<TYPE, ARG_TYPE>::Taken(CNode* node)
{
    TYPE result = At(node);
    Unlink(node);
    return result;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddHead(CList* pNewList)
{
    if (pNewList == nullptr)
        AfxThrowInvalidArgException();
    CNode* node = pNewList->m_pNodeTail;
    for (int left = pNewList->m_nCount; left > 0; --left, node = node->pPrev)
        Link(node->data, nullptr, m_pNodeHead);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddTail(CList* pNewList)
{
    if (pNewList == nullptr)
        AfxThrowInvalidArgException();
    CNode* node = pNewList->m_pNodeHead;
    for (int left = pNewList->m_nCount; left > 0; --left, node = node->pNext)
        Link(node->data, m_pNodeTail, nullptr);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAll()
{
    for (CNode* node = m_pNodeHead; node != nullptr;) {
        CNode* next = node->pNext;
        node->~CNode();
        node = next;
    }
    m_pNodeHead = nullptr;
    m_pNodeTail = nullptr;
    m_nCount = 0;
    m_nodes.FreeBlocks();
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertBefore(POSITION position, ARG_TYPE newElement)
{
    CNode* after = position != nullptr ? AsNode(position) : m_pNodeHead;
    return Link(static_cast<ARG_TYPE>(newElement), after != nullptr ? after->pPrev : nullptr, after);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertAfter(POSITION position, ARG_TYPE newElement)
{
    CNode* before = position != nullptr ? AsNode(position) : m_pNodeTail;
    return Link(static_cast<ARG_TYPE>(newElement), before, before != nullptr ? before->pNext : nullptr);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Find(ARG_TYPE searchValue, POSITION startAfter) const
{
    for (CNode* node = startAfter != nullptr ? AsNode(startAfter)->pNext : m_pNodeHead; node != nullptr; node = node->pNext) {
        if (CompareElements(&node->data, &searchValue))
            return AsPosition(node);
    }
    return nullptr;
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::FindIndex(int nIndex) const
{
    if (nIndex < 0 || nIndex >= m_nCount)
        return nullptr;
    CNode* node = m_pNodeHead;
    while (nIndex-- > 0)
        node = node->pNext;
    return AsPosition(node);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    // Elements without a form in an archive throw here, before the count is written.
    SerializeElements<TYPE>(ar, nullptr, 0);
    const int stored = kelgen::detail::SerializeCount(ar, m_nCount);
    if (kelgen::detail::IsStoring(ar)) {
        for (CNode* node = m_pNodeHead; node != nullptr; node = node->pNext)
            SerializeElements<TYPE>(ar, &node->data, 1);
        return;
    }
    for (int i = 0; i < stored; ++i) {
        TYPE element{};
        SerializeElements<TYPE>(ar, &element, 1);
        Link(element, m_pNodeTail, nullptr);
    }
}
