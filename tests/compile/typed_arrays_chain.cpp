// typed_arrays_chain.cpp: results of set operations assigned to typed arrays.
// compiles
#include <kelgen/containers/BaseIntArray.h>
#include <kelgen/containers/DWArray.h>

void Check(CBaseIntArray& numbers, CDWArray& words, CBaseObjectPtrArray<int*>& pointers)
{
    CBaseIntArray moreNumbers;
    moreNumbers = (numbers &= moreNumbers);
    CDWArray moreWords;
    moreWords = (words -= moreWords);
    CBaseObjectPtrArray<int*> morePointers;
    morePointers = (pointers &= morePointers);
    moreNumbers = numbers;
}
