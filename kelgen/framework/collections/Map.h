// Map.h: CMap, the hash map of keys to values.
#pragma once

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/collections/CollectionHelpers.h>
#include <kelgen/framework/collections/NodePool.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

/// A hash map: one value a key.
///
///     CMap<int, int, CString, const CString&> names;
///     names.SetAt(1, "one");
///     for (POSITION position = names.GetStartPosition(); position != nullptr;) {
///         int key;
///         CString name;
///         names.GetNextAssoc(position, key, name);
///     }
///
/// HashKey<ARG_KEY> hashes and CompareElements compares keys. By contract, since hosts see the order of iteration, the table has 17
/// buckets unless InitHashTable says otherwise and never grows; iteration runs from bucket 0 upward, and inside a bucket from the newest
/// entry to the oldest. Entries stay where they are until removed; removing the entry that was just returned does not disturb an
/// iteration.
/// Threads: one at a time. Cost: a look-up walks one bucket; choose a table of about the expected count.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject
{
public:
    /// A key with its value, as it lies in the map.
    struct CPair
    {
        const KEY key;  ///< Fixed while the entry lives.
        VALUE value;    ///< May be assigned to.

    protected:
        /// For the map: a value-initialised value.
        explicit CPair(ARG_KEY newKey) : key(static_cast<ARG_KEY>(newKey)), value() {}
    };

    /// Entries are allocated @p nBlockSize at a time.
    explicit CMap(int nBlockSize = 10) : m_nodes(nBlockSize) {}
    ~CMap() override { RemoveAll(); }

    /// The number of keys; GetSize is another name for it.
    int GetCount() const { return m_nCount; }
    int GetSize() const { return m_nCount; }
    /// Whether there are no elements.
    bool IsEmpty() const { return m_nCount == 0; }
    /// The number of the table's slots; 0 stands for one that is not made yet.
    UINT GetHashTableSize() const { return m_nHashTableSize; }

    /// Sets the number of buckets of an empty map and allocates them at once, or with the first entry.
    /// Throws: the invalid-argument exception when the map holds entries or @p hashSize is 0.
    void InitHashTable(UINT hashSize, BOOL bAllocNow = TRUE);

    /// Nonzero when @p key is present; @p rValue is set only then.
    BOOL Lookup(ARG_KEY key, VALUE& rValue) const;

    /// The entry of @p key, or null.
    const CPair* PLookup(ARG_KEY key) const { return Find(static_cast<ARG_KEY>(key), Hash(static_cast<ARG_KEY>(key))); }
    CPair* PLookup(ARG_KEY key) { return Find(static_cast<ARG_KEY>(key), Hash(static_cast<ARG_KEY>(key))); }

    /// The value of @p key; a missing key is added with a value-initialised one.
    VALUE& operator[](ARG_KEY key);

    /// Sets the value of @p key, adding the key when it is missing.
    void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[static_cast<ARG_KEY>(key)] = static_cast<ARG_VALUE>(newValue); }

    /// Nonzero when @p key was present and is removed.
    BOOL RemoveKey(ARG_KEY key);

    /// Removes all entries and frees the table; its size stays.
    void RemoveAll();

    /// Where GetNextAssoc begins; null for an empty map.
    POSITION GetStartPosition() const { return m_nCount == 0 ? nullptr : BeforeStart(); }

    /// Gives the entry at @p rNextPosition and moves that to the next one, null after the last.
    /// Throws: the invalid-argument exception for a null position.
    void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const;

    /// Iteration by entries, both of all and of those behind one (PGetNextAssoc); null at the end.
    const CPair* PGetFirstAssoc() const { return FirstFrom(0); }
    CPair* PGetFirstAssoc() { return FirstFrom(0); }
    const CPair* PGetNextAssoc(const CPair* pAssoc) const { return After(static_cast<const CAssoc*>(pAssoc)); }
    CPair* PGetNextAssoc(const CPair* pAssoc) { return After(static_cast<const CAssoc*>(pAssoc)); }

    /// Writes the count and then each key and value, by SerializeElements; or reads and adds such entries.
    void Serialize(CArchive& ar) override;

protected:
    /// An entry in its bucket.
    struct CAssoc : CPair
    {
        /// Of a key with that hash; linked to nothing yet.
        CAssoc(ARG_KEY newKey, UINT hashValue) : CPair(static_cast<ARG_KEY>(newKey)), nHashValue(hashValue) {}

        CAssoc* pNext = nullptr;  ///< The next one of the bucket.
        UINT nHashValue;          ///< The key's hash.
    };

private:
    static UINT Hash(ARG_KEY key) { return HashKey<ARG_KEY>(static_cast<ARG_KEY>(key)); }
    static POSITION BeforeStart() { return reinterpret_cast<POSITION>(static_cast<std::intptr_t>(-1)); }

    CAssoc* Find(ARG_KEY key, UINT hashValue) const;
    CAssoc* FirstFrom(UINT bucket) const;
    CAssoc* After(const CAssoc* assoc) const;

    CAssoc** m_pHashTable = nullptr;
    UINT m_nHashTableSize = 17;
    int m_nCount = 0;
    kelgen::detail::NodePool<CAssoc> m_nodes;
};

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::InitHashTable(UINT hashSize, BOOL bAllocNow)
{
    if (m_nCount != 0 || hashSize == 0)
        AfxThrowInvalidArgException();

    CAssoc** table = nullptr;
    if (bAllocNow) {
        table = static_cast<CAssoc**>(std::calloc(hashSize, sizeof(CAssoc*)));
        if (table == nullptr)
            AfxThrowMemoryException();
    }
    std::free(m_pHashTable);
    m_pHashTable = table;
    m_nHashTableSize = hashSize;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc* CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Find(ARG_KEY key, UINT hashValue) const
{
    if (m_pHashTable == nullptr)
        return nullptr;
    for (CAssoc* assoc = m_pHashTable[hashValue % m_nHashTableSize]; assoc != nullptr; assoc = assoc->pNext) {
        if (assoc->nHashValue == hashValue && CompareElements(&assoc->key, &key))
            return assoc;
    }
    return nullptr;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Lookup(ARG_KEY key, VALUE& rValue) const
{
    const CPair* pair = PLookup(static_cast<ARG_KEY>(key));
    if (pair == nullptr)
        return FALSE;
    rValue = pair->value;
    return TRUE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
VALUE& CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::operator[](ARG_KEY key)
{
    const UINT hashValue = Hash(static_cast<ARG_KEY>(key));
    if (CAssoc* assoc = Find(static_cast<ARG_KEY>(key), hashValue))
        return assoc->value;

    if (m_pHashTable == nullptr)
        InitHashTable(m_nHashTableSize);
    void* room = m_nodes.Take();
    CAssoc* assoc;
    try {
        assoc = ::new (room) CAssoc(static_cast<ARG_KEY>(key), hashValue);
    } catch (...) {
        m_nodes.GiveBack(static_cast<CAssoc*>(room));
        throw;
    }
    CAssoc*& head = m_pHashTable[hashValue % m_nHashTableSize];
    assoc->pNext = head;
    head = assoc;
    ++m_nCount;
    return assoc->value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveKey(ARG_KEY key)
{
    if (m_pHashTable == nullptr)
        return FALSE;
    const UINT hashValue = Hash(static_cast<ARG_KEY>(key));
    for (CAssoc** link = &m_pHashTable[hashValue % m_nHashTableSize]; *link != nullptr; link = &(*link)->pNext) {
        CAssoc* assoc = *link;
        if (assoc->nHashValue != hashValue || !CompareElements(&assoc->key, &key))
            continue;
        *link = assoc->pNext;
        --m_nCount;
        assoc->~CAssoc();
        m_nodes.GiveBack(assoc);
        if (m_nCount == 0)
            RemoveAll();
        return TRUE;
    }
    return FALSE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveAll()
{
    for (CAssoc* assoc = FirstFrom(0); assoc != nullptr;) {
        CAssoc* next = After(assoc);
        assoc->~CAssoc();
        assoc = next;
    }
    std::free(m_pHashTable);
    m_pHashTable = nullptr;
    m_nCount = 0;
    m_nodes.FreeBlocks();
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc* CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::FirstFrom(UINT bucket) const
{
    if (m_nCount == 0)
        return nullptr;
    for (; bucket < m_nHashTableSize; ++bucket) {
        if (m_pHashTable[bucket] != nullptr)
            return m_pHashTable[bucket];
    }
    return nullptr;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc* CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::After(const CAssoc* assoc) const
{
    if (assoc == nullptr)
        return nullptr;
    return assoc->pNext != nullptr ? assoc->pNext : FirstFrom(assoc->nHashValue % m_nHashTableSize + 1);
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const
{
    if (rNextPosition == nullptr)
        AfxThrowInvalidArgException();
    const CAssoc* assoc = rNextPosition == BeforeStart() ? FirstFrom(0) : reinterpret_cast<const CAssoc*>(rNextPosition);
    if (assoc == nullptr)
        AfxThrowInvalidArgException();
    rNextPosition = reinterpret_cast<POSITION>(After(assoc));
    rKey = assoc->key;
    rValue = assoc->value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    // Keys and values without a form in an archive throw here, before the count is written.
    SerializeElements<KEY>(ar, nullptr, 0);
    SerializeElements<VALUE>(ar, nullptr, 0);
    const int stored = kelgen::detail::SerializeCount(ar, m_nCount);
    if (kelgen::detail::IsStoring(ar)) {
        for (CAssoc* assoc = FirstFrom(0); assoc != nullptr; assoc = After(assoc)) {
            SerializeElements<KEY>(ar, const_cast<KEY*>(&assoc->key), 1);
            SerializeElements<VALUE>(ar, &assoc->value, 1);
        }
        return;
    }
    for (int i = 0; i < stored; ++i) {
        KEY key{};
        VALUE value{};
        SerializeElements<KEY>(ar, &key, 1);
        SerializeElements<VALUE>(ar, &value, 1);
        SetAt(key, value);
    }
}
