// SafeArrays.h: arrays of one or more dimensions that know their bounds and element size.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/ole/api/OleTypes.h>
#include <kelgen/platform/posix/ole/api/Variants.h>

struct SAFEARRAYBOUND
{
    ULONG cElements;
    LONG lLbound;
};

/// The bounds lie in the order last dimension first; the first dimension's index moves fastest through the elements.
struct SAFEARRAY
{
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    PVOID pvData;
    SAFEARRAYBOUND rgsabound[1];
};

#define FADF_HAVEVARTYPE 0x0080
#define FADF_BSTR 0x0100
#define FADF_UNKNOWN 0x0200
#define FADF_DISPATCH 0x0400
#define FADF_VARIANT 0x0800

/// An array of zeros; null for no dimension, an unknown type or without memory.
KELGEN_PLATFORM_API SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds);
/// An array of one dimension.
KELGEN_PLATFORM_API SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count);
/// Frees the array with its elements; DISP_E_ARRAYISLOCKED for a locked one, S_OK for null.
KELGEN_PLATFORM_API HRESULT SafeArrayDestroy(SAFEARRAY* array);
/// A copy with elements of its own; a null @p array gives null.
KELGEN_PLATFORM_API HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);
/// Changes the last dimension's bounds; elements that go are freed, new ones are zero.
KELGEN_PLATFORM_API HRESULT SafeArrayRedim(SAFEARRAY* array, SAFEARRAYBOUND* bound);
/// The number of dimensions; 0 for null.
KELGEN_PLATFORM_API UINT SafeArrayGetDim(SAFEARRAY* array);
/// An element's size in bytes; 0 for null.
KELGEN_PLATFORM_API UINT SafeArrayGetElemsize(SAFEARRAY* array);
/// Stores the first index of dimension 1 to SafeArrayGetDim. DISP_E_BADINDEX for another, E_INVALIDARG for null.
KELGEN_PLATFORM_API HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
/// Stores the last index of a dimension; one less than the first when it has no elements. Errors as SafeArrayGetLBound.
KELGEN_PLATFORM_API HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
/// Stores the type that the array was made for. E_INVALIDARG for null.
KELGEN_PLATFORM_API HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
/// Locks: the elements' place and bounds stay until as many SafeArrayUnlock calls.
KELGEN_PLATFORM_API HRESULT SafeArrayLock(SAFEARRAY* array);
/// Unlocks. E_UNEXPECTED when not locked.
KELGEN_PLATFORM_API HRESULT SafeArrayUnlock(SAFEARRAY* array);
/// Locks and stores the first element's address.
KELGEN_PLATFORM_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
/// Unlocks what SafeArrayAccessData has locked.
KELGEN_PLATFORM_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
/// Stores the address of the element at @p indices (first dimension first). DISP_E_BADINDEX outside the bounds.
KELGEN_PLATFORM_API HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, LONG* indices, void** element);
/// Copies the element at @p indices to @p value; texts, variants and objects become the caller's own.
KELGEN_PLATFORM_API HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* value);
/// Stores a copy of @p value (the text, variant or object itself, or a pointer to the number) at @p indices; the old one is freed.
KELGEN_PLATFORM_API HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* value);
