// Heap.cpp: walks the runtime's heap and the process's.
#include "support/Heap.h"

#include <kelgen/platform/Win32.h>

#include <malloc.h>

bool kelgen::test::IsHeapSound()
{
    return _heapchk() == _HEAPOK && HeapValidate(GetProcessHeap(), 0, nullptr);
}
