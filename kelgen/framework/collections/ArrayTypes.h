// ArrayTypes.h: arrays of numbers, pointers and objects, and arrays of pointers to one type.
#pragma once

#include <kelgen/framework/collections/Array.h>

/// Arrays of bytes and of 16-bit and 32-bit numbers, which archives hold.
class KELGEN_FRAMEWORK_API CByteArray : public CArray<BYTE, BYTE>
{
    DECLARE_SERIAL(CByteArray)
};

/// An array of 16-bit numbers.
class KELGEN_FRAMEWORK_API CWordArray : public CArray<WORD, WORD>
{
    DECLARE_SERIAL(CWordArray)
};

/// An array of 32-bit numbers.
class KELGEN_FRAMEWORK_API CDWordArray : public CArray<DWORD, DWORD>
{
    DECLARE_SERIAL(CDWordArray)
};

/// An array of numbers that no archive takes.
class KELGEN_FRAMEWORK_API CUIntArray : public CArray<UINT, UINT>
{
    DECLARE_DYNAMIC(CUIntArray)

public:
    /// Throws: the not-supported exception.
    void Serialize(CArchive& ar) override;
};

/// An array of pointers that it does not own.
class KELGEN_FRAMEWORK_API CPtrArray : public CArray<void*, void*>
{
    DECLARE_DYNAMIC(CPtrArray)

public:
    /// Throws: the not-supported exception: addresses mean nothing in a file.
    void Serialize(CArchive& ar) override;
};

/// An array of objects that it does not own. Loading creates the objects.
class KELGEN_FRAMEWORK_API CObArray : public CArray<CObject*, CObject*>
{
    DECLARE_SERIAL(CObArray)
};

/// A CPtrArray or CObArray whose elements are all TYPE, a pointer type.
template <class BASE_CLASS, class TYPE>
class CTypedPtrArray : public BASE_CLASS
{
public:
    /// Each: the element at that index, which must be inside [0, size).
    TYPE GetAt(int nIndex) const { return static_cast<TYPE>(BASE_CLASS::GetAt(nIndex)); }
    TYPE& ElementAt(int nIndex) { return reinterpret_cast<TYPE&>(BASE_CLASS::ElementAt(nIndex)); }
    TYPE operator[](int nIndex) const { return GetAt(nIndex); }
    TYPE& operator[](int nIndex) { return ElementAt(nIndex); }

    /// Each: the base's call of that name, which takes and gives TYPE alone.
    void SetAt(int nIndex, TYPE ptr) { BASE_CLASS::SetAt(nIndex, ptr); }
    void SetAtGrow(int nIndex, TYPE newElement) { BASE_CLASS::SetAtGrow(nIndex, newElement); }
    int Add(TYPE newElement) { return BASE_CLASS::Add(newElement); }
    int Append(const CTypedPtrArray& src) { return BASE_CLASS::Append(src); }
    void Copy(const CTypedPtrArray& src) { BASE_CLASS::Copy(src); }
    void InsertAt(int nIndex, TYPE newElement, int nCount = 1) { BASE_CLASS::InsertAt(nIndex, newElement, nCount); }
    void InsertAt(int nStartIndex, CTypedPtrArray* pNewArray) { BASE_CLASS::InsertAt(nStartIndex, pNewArray); }
};
