// Collections.cpp: the run-time records of the ready-made collections, and what they cannot store.
#include <kelgen/framework/collections/ArrayTypes.h>
#include <kelgen/framework/collections/ListTypes.h>
#include <kelgen/framework/collections/MapTypes.h>
#include <kelgen/framework/collections/StringArray.h>

IMPLEMENT_SERIAL(CByteArray, CObject, 0)
IMPLEMENT_SERIAL(CWordArray, CObject, 0)
IMPLEMENT_SERIAL(CDWordArray, CObject, 0)
IMPLEMENT_DYNAMIC(CUIntArray, CObject)
IMPLEMENT_DYNAMIC(CPtrArray, CObject)
IMPLEMENT_SERIAL(CObArray, CObject, 0)
IMPLEMENT_SERIAL(CStringArray, CObject, 0)

IMPLEMENT_SERIAL(CStringList, CObject, 0)
IMPLEMENT_DYNAMIC(CPtrList, CObject)
IMPLEMENT_SERIAL(CObList, CObject, 0)

IMPLEMENT_SERIAL(CMapStringToString, CObject, 0)
IMPLEMENT_DYNAMIC(CMapStringToPtr, CObject)
IMPLEMENT_SERIAL(CMapStringToOb, CObject, 0)
IMPLEMENT_DYNAMIC(CMapPtrToPtr, CObject)
IMPLEMENT_DYNAMIC(CMapPtrToWord, CObject)
IMPLEMENT_DYNAMIC(CMapWordToPtr, CObject)
IMPLEMENT_SERIAL(CMapWordToOb, CObject, 0)

void CUIntArray::Serialize(CArchive&)
{
    AfxThrowNotSupportedException();
}

void CPtrArray::Serialize(CArchive&)
{
    AfxThrowNotSupportedException();
}

void CPtrList::Serialize(CArchive&)
{
    AfxThrowNotSupportedException();
}

void CMapStringToPtr::Serialize(CArchive&)
{
    AfxThrowNotSupportedException();
}

void CMapPtrToPtr::Serialize(CArchive&)
{
    AfxThrowNotSupportedException();
}

void CMapPtrToWord::Serialize(CArchive&)
{
    AfxThrowNotSupportedException();
}

void CMapWordToPtr::Serialize(CArchive&)
{
    AfxThrowNotSupportedException();
}
