// EmptyPlaces.h: what is left of a link between a trigger and a callback when one of them dies while attached.
#pragma once

#include <kelgen/framework/base/internal/LinkTable.h>

namespace gen {

class CPropertyValueTrigger;
class CPropertyValueTriggerCallback;

}  // namespace gen

namespace gen::detail {

/// Who lists whom, or did. After a copy of either the lists of both sides differ.
using TriggersOfCallback = kelgen::detail::LinkTable<CPropertyValueTriggerCallback, CPropertyValueTrigger>;
using CallbacksOfTrigger = kelgen::detail::LinkTable<CPropertyValueTrigger, CPropertyValueTriggerCallback>;

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
