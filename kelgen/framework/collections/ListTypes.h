// ListTypes.h: lists of texts, pointers and objects, and lists of pointers to one type.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/List.h>

/// A list of narrow texts, which archives hold.
class KELGEN_FRAMEWORK_API CStringList : public CList<CString, const CString&>
{
    DECLARE_SERIAL(CStringList)

public:
    /// Elements are allocated @p nBlockSize at a time.
    explicit CStringList(int nBlockSize = 10) : CList(nBlockSize) {}
};

/// A list of pointers that it does not own.
class KELGEN_FRAMEWORK_API CPtrList : public CList<void*, void*>
{
    DECLARE_DYNAMIC(CPtrList)

public:
    /// Elements are allocated @p nBlockSize at a time.
    explicit CPtrList(int nBlockSize = 10) : CList(nBlockSize) {}
    /// Throws: the not-supported exception: addresses mean nothing in a file.
    void Serialize(CArchive& ar) override;
};

/// A list of objects that it does not own. Loading creates the objects.
class KELGEN_FRAMEWORK_API CObList : public CList<CObject*, CObject*>
{
    DECLARE_SERIAL(CObList)

public:
    /// Elements are allocated @p nBlockSize at a time.
    explicit CObList(int nBlockSize = 10) : CList(nBlockSize) {}
};

/// A CPtrList or CObList whose elements are all TYPE, a pointer type.
template <class BASE_CLASS, class TYPE>
class CTypedPtrList : public BASE_CLASS
{
public:
    /// Elements are allocated @p nBlockSize at a time.
    explicit CTypedPtrList(int nBlockSize = 10) : BASE_CLASS(nBlockSize) {}

    /// Each: the base's call of that name, whose element is a TYPE.
    TYPE& GetHead() { return reinterpret_cast<TYPE&>(BASE_CLASS::GetHead()); }
    TYPE GetHead() const { return static_cast<TYPE>(BASE_CLASS::GetHead()); }
    TYPE& GetTail() { return reinterpret_cast<TYPE&>(BASE_CLASS::GetTail()); }
    TYPE GetTail() const { return static_cast<TYPE>(BASE_CLASS::GetTail()); }
    TYPE RemoveHead() { return static_cast<TYPE>(BASE_CLASS::RemoveHead()); }
    TYPE RemoveTail() { return static_cast<TYPE>(BASE_CLASS::RemoveTail()); }

    /// Each: the base's call of that name, which takes TYPE alone.
    POSITION AddHead(TYPE newElement) { return BASE_CLASS::AddHead(newElement); }
    POSITION AddTail(TYPE newElement) { return BASE_CLASS::AddTail(newElement); }
    void AddHead(CTypedPtrList* pNewList) { BASE_CLASS::AddHead(pNewList); }
    void AddTail(CTypedPtrList* pNewList) { BASE_CLASS::AddTail(pNewList); }

    /// Each: the base's call of that name, which takes and gives TYPE alone.
    TYPE& GetNext(POSITION& rPosition) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetNext(rPosition)); }
    TYPE GetNext(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetNext(rPosition)); }
    TYPE& GetPrev(POSITION& rPosition) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetPrev(rPosition)); }
    TYPE GetPrev(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetPrev(rPosition)); }
    TYPE& GetAt(POSITION position) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetAt(position)); }
    TYPE GetAt(POSITION position) const { return static_cast<TYPE>(BASE_CLASS::GetAt(position)); }
    void SetAt(POSITION position, TYPE newElement) { BASE_CLASS::SetAt(position, newElement); }
    POSITION InsertBefore(POSITION position, TYPE newElement) { return BASE_CLASS::InsertBefore(position, newElement); }
    POSITION InsertAfter(POSITION position, TYPE newElement) { return BASE_CLASS::InsertAfter(position, newElement); }
};
