// BaseMapPtrToPtr.cpp: counting by walking.
#include <kelgen/containers/BaseMapPtrToPtr.h>

int CBaseMapPtrToPtr::GetSize_() const
{
    int count = 0;
    for (POSITION position = GetStartPosition(); position != nullptr; ++count) {
        void* key;
        void* value;
        GetNextAssoc(position, key, value);
    }
    return count;
}
