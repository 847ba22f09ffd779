// Elements.h: what an array holds, for comparison and messages.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/Array.h>

#include "support/Random.h"

#include <vector>

namespace kelgen::test {

/// All slots of @p array.
template <class TYPE, class ARG_TYPE>
std::vector<TYPE> ElementsOf(const CArray<TYPE, ARG_TYPE>& array)
{
    return std::vector<TYPE>(array.GetData(), array.GetData() + array.GetCount());
}

/// Fills @p array with up to @p maxCount numbers from 0 to @p highest.
template <class ARRAY>
void FillRandomly(ARRAY& array, Random& random, int maxCount, int highest)
{
    const int count = random.Between(0, maxCount);
    for (int i = 0; i < count; ++i)
        array.Add(random.Between(0, highest));
}

inline void PrintTo(const CString& text, std::ostream* out)
{
    *out << '"' << text.GetString() << '"';
}

}  // namespace kelgen::test

using Ints = std::vector<int>;
