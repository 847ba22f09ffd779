// EmptyPlaces.h: what is left of a link between a trigger and a callback when one of them dies while attached.
#pragma once

namespace gen::detail {

/// Sets every element of @p pointers that equals @p dead to null: the place stays and counts, and leads nowhere.
template <class ARRAY, class POINTER>
void EmptyPlaces(ARRAY& pointers, POINTER dead)
{
    for (int i = 0; i < pointers.GetSize(); ++i) {
        if (pointers.GetAt(i) == dead)
            pointers.SetAt(i, nullptr);
    }
}

}  // namespace gen::detail
