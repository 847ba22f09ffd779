// null_hooks.cpp: null where a window, a module or a listener could be meant.
// compiles
#include <kelgen/containers/BaseComparableArray.h>
#include <kelgen/property/PropertySet.h>
#include <kelgen/window/MessageHook.h>
#include <kelgen/window/WindowHook.h>

int Check(_kelgen::CWindowHook& hook, CMouseHook& mouse, gen::CPropertySet& set, CBaseComparableArray<int*>& pointers,
          const CBaseComparableArray<int>& numbers)
{
    const bool isFound = set.FindFirst(nullptr, 0) != nullptr || set[nullptr] != nullptr;
    return hook.HookWindow(nullptr) + mouse.MouseHook(nullptr) + isFound + pointers.FindFirst(nullptr) + numbers.FindFirst(nullptr);
}
