// Heap.cpp: nothing to walk.
#include "support/Heap.h"

bool kelgen::test::IsHeapSound()
{
    return true;
}
