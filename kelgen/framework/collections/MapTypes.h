// MapTypes.h: maps between texts, numbers, pointers and objects, and maps to pointers of one type.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/Map.h>

/// A map whose keys are texts, compared with case.
template <class VALUE, class ARG_VALUE>
class CStringKeyMap : public CMap<CString, LPCSTR, VALUE, ARG_VALUE>
{
public:
    using CMap<CString, LPCSTR, VALUE, ARG_VALUE>::CMap;

    /// The key's hash: hash * 33 + character over its characters.
    static UINT HashKey(LPCSTR key) { return ::HashKey<LPCSTR>(key); }

    /// Nonzero when @p key is present; @p rKey is then the map's own text, which lives as long as the entry.
    BOOL LookupKey(LPCSTR key, LPCSTR& rKey) const
    {
        const auto* pair = this->PLookup(key);
        if (pair == nullptr)
            return FALSE;
        rKey = pair->key;
        return TRUE;
    }
};

/// Texts by text.
class KELGEN_FRAMEWORK_API CMapStringToString : public CStringKeyMap<CString, LPCSTR>
{
    DECLARE_SERIAL(CMapStringToString)

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CMapStringToString(int nBlockSize = 10) : CStringKeyMap(nBlockSize) {}
};

/// Pointers, not owned, by text.
class KELGEN_FRAMEWORK_API CMapStringToPtr : public CStringKeyMap<void*, void*>
{
    DECLARE_DYNAMIC(CMapStringToPtr)

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CMapStringToPtr(int nBlockSize = 10) : CStringKeyMap(nBlockSize) {}
    /// Throws: the not-supported exception: addresses mean nothing in a file.
    void Serialize(CArchive& ar) override;
};

/// Maps to objects do not own them; loading creates the objects.
class KELGEN_FRAMEWORK_API CMapStringToOb : public CStringKeyMap<CObject*, CObject*>
{
    DECLARE_SERIAL(CMapStringToOb)

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CMapStringToOb(int nBlockSize = 10) : CStringKeyMap(nBlockSize) {}
};

/// Pointers by pointer; neither is owned.
class KELGEN_FRAMEWORK_API CMapPtrToPtr : public CMap<void*, void*, void*, void*>
{
    DECLARE_DYNAMIC(CMapPtrToPtr)

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CMapPtrToPtr(int nBlockSize = 10) : CMap(nBlockSize) {}

    /// The value of @p key, or null.
    void* GetValueAt(void* key) const
    {
        const CPair* pair = PLookup(key);
        return pair != nullptr ? pair->value : nullptr;
    }
    /// Throws: the not-supported exception: addresses mean nothing in a file. So do the next two.
    void Serialize(CArchive& ar) override;
};

/// Numbers by pointer, which is not owned.
class KELGEN_FRAMEWORK_API CMapPtrToWord : public CMap<void*, void*, WORD, WORD>
{
    DECLARE_DYNAMIC(CMapPtrToWord)

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CMapPtrToWord(int nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override;
};

/// Pointers, not owned, by number.
class KELGEN_FRAMEWORK_API CMapWordToPtr : public CMap<WORD, WORD, void*, void*>
{
    DECLARE_DYNAMIC(CMapWordToPtr)

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CMapWordToPtr(int nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override;
};

/// Objects, not owned, by number; loading creates the objects.
class KELGEN_FRAMEWORK_API CMapWordToOb : public CMap<WORD, WORD, CObject*, CObject*>
{
    DECLARE_SERIAL(CMapWordToOb)

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CMapWordToOb(int nBlockSize = 10) : CMap(nBlockSize) {}
};

namespace kelgen::detail {

template <class BASE_CLASS>
struct MapArguments;
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
struct MapArguments<CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>>
{
    using BaseKey = KEY;
    using BaseValue = VALUE;
};
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
MapArguments<CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>> ArgumentsOf(const CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>*);

}  // namespace kelgen::detail

/// One of the maps above whose keys and values are used as KEY and VALUE, types that convert by static_cast.
template <class BASE_CLASS, class KEY, class VALUE>
class CTypedPtrMap : public BASE_CLASS
{
    using Arguments = decltype(kelgen::detail::ArgumentsOf(static_cast<const BASE_CLASS*>(nullptr)));
    using BaseKey = typename Arguments::BaseKey;
    using BaseValue = typename Arguments::BaseValue;

public:
    /// Entries are allocated @p nBlockSize at a time.
    explicit CTypedPtrMap(int nBlockSize = 10) : BASE_CLASS(nBlockSize) {}

    /// Each does what the member of that name does in the map below, with KEY and VALUE.
    BOOL Lookup(KEY key, VALUE& rValue) const
    {
        BaseValue value{};
        if (!BASE_CLASS::Lookup(key, value))
            return FALSE;
        rValue = static_cast<VALUE>(value);
        return TRUE;
    }
    VALUE& operator[](KEY key) { return reinterpret_cast<VALUE&>(BASE_CLASS::operator[](key)); }
    void SetAt(KEY key, VALUE newValue) { BASE_CLASS::SetAt(key, newValue); }
    BOOL RemoveKey(KEY key) { return BASE_CLASS::RemoveKey(key); }
    void GetNextAssoc(POSITION& rPosition, KEY& rKey, VALUE& rValue) const
    {
        BaseKey key{};
        BaseValue value{};
        BASE_CLASS::GetNextAssoc(rPosition, key, value);
        rKey = static_cast<KEY>(key);
        rValue = static_cast<VALUE>(value);
    }
};
