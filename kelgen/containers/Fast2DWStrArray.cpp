// Fast2DWStrArray.cpp: emptying the rows with the table.
#include <kelgen/containers/Fast2DWStrArray.h>

CFast2DWStrArray::CFast2DWStrArray() = default;

CFast2DWStrArray::CFast2DWStrArray(const CFast2DWStrArray& other) = default;

CFast2DWStrArray& CFast2DWStrArray::operator=(const CFast2DWStrArray& other) = default;

CFast2DWStrArray::~CFast2DWStrArray() = default;

void CFast2DWStrArray::RemoveAll()
{
    for (int i = 0; i < GetSize(); ++i)
        GetAt(i).RemoveAll();
    CFastArrayArray::RemoveAll();
}

void CFast2DWStrArray::StdRemoveAll()
{
    RemoveAll();
}
