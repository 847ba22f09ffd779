// ElementTypes.h: what each type that arrays and variants hold needs: its size, copies, and the end of them.
#pragma once

#include <kelgen/platform/posix/ole/api/OleTypes.h>

namespace kelgen::posix {

/// The size of an array's element of @p type in bytes; 0 for a type that arrays do not hold.
size_t ElementSize(VARTYPE type);

/// Copies the element at @p source into the uninitialised @p destination; text and variants are duplicated, objects counted.
HRESULT CopyElement(VARTYPE type, void* destination, const void* source);

/// Frees what the element owns; its bytes stay.
void FreeElement(VARTYPE type, void* element);

}  // namespace kelgen::posix
