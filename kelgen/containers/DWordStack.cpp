// DWordStack.cpp: taking from the stack.
#include <kelgen/containers/DWordStack.h>

DWORD CDWordStack::Pop()
{
    const DWORD value = GetAt(GetUpperBound());
    RemoveAt(GetUpperBound());
    return value;
}
