// WStrResource.cpp: string resources.
#include <kelgen/text/WStr.h>

bool CWStr::LoadStringA(UINT id)
{
    static_cast<void>(id);
    Empty();
    return false;
}
