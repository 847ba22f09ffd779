// SafeArrays.cpp: a descriptor with its bounds, behind a hidden word for the element type.
#include <kelgen/platform/posix/ole/api/SafeArrays.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/ole/ElementTypes.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

using namespace kelgen::posix;

namespace {

// The type stands before the descriptor, where the real one keeps it too.
constexpr size_t kPrefix = 16;

VARTYPE& TypeOf(SAFEARRAY* array)
{
    return *reinterpret_cast<VARTYPE*>(reinterpret_cast<char*>(array) - sizeof(DWORD));
}

/// The bound of dimension 1 to cDims.
SAFEARRAYBOUND& BoundOf(SAFEARRAY* array, UINT dimension)
{
    return array->rgsabound[array->cDims - dimension];
}

/// The number of elements, or no value when their bytes are past any address.
bool CountElements(const SAFEARRAYBOUND* bounds, UINT dimensions, size_t elementSize, size_t& count)
{
    count = 1;
    for (UINT i = 0; i < dimensions; ++i) {
        if (__builtin_mul_overflow(count, size_t{bounds[i].cElements}, &count))
            return false;
    }
    return count <= static_cast<size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / elementSize;
}

size_t ElementCount(SAFEARRAY* array)
{
    size_t count = 0;
    CountElements(array->rgsabound, array->cDims, array->cbElements, count);
    return count;
}

void* ElementAt(SAFEARRAY* array, size_t index)
{
    return static_cast<char*>(array->pvData) + index * array->cbElements;
}

void FreeElements(SAFEARRAY* array, size_t first, size_t end)
{
    for (size_t i = first; i < end; ++i)
        FreeElement(TypeOf(array), ElementAt(array, i));
}

USHORT FeaturesOf(VARTYPE type)
{
    switch (type) {
    case VT_BSTR:
        return FADF_BSTR | FADF_HAVEVARTYPE;
    case VT_UNKNOWN:
        return FADF_UNKNOWN | FADF_HAVEVARTYPE;
    case VT_DISPATCH:
        return FADF_DISPATCH | FADF_HAVEVARTYPE;
    case VT_VARIANT:
        return FADF_VARIANT | FADF_HAVEVARTYPE;
    default:
        return FADF_HAVEVARTYPE;
    }
}

SAFEARRAY* AllocateDescriptor(VARTYPE type, UINT dimensions)
{
    const size_t size = sizeof(SAFEARRAY) + (dimensions - 1) * sizeof(SAFEARRAYBOUND);
    auto* const block = static_cast<char*>(std::calloc(1, kPrefix + size));
    if (!block)
        return nullptr;
    auto* const array = reinterpret_cast<SAFEARRAY*>(block + kPrefix);
    array->cDims = static_cast<USHORT>(dimensions);
    array->fFeatures = FeaturesOf(type);
    array->cbElements = static_cast<ULONG>(ElementSize(type));
    TypeOf(array) = type;
    return array;
}

void FreeDescriptor(SAFEARRAY* array)
{
    std::free(reinterpret_cast<char*>(array) - kPrefix);
}

/// Finds the element; DISP_E_BADINDEX outside the bounds.
HRESULT Find(SAFEARRAY* array, const LONG* indices, void** element)
{
    if (!array || !indices)
        return E_INVALIDARG;
    size_t index = 0;
    for (UINT dimension = array->cDims; dimension >= 1; --dimension) {
        const SAFEARRAYBOUND& bound = BoundOf(array, dimension);
        const LONGLONG offset = LONGLONG{indices[dimension - 1]} - bound.lLbound;
        if (offset < 0 || offset >= LONGLONG{bound.cElements})
            return DISP_E_BADINDEX;
        index = index * bound.cElements + static_cast<size_t>(offset);
    }
    *element = ElementAt(array, index);
    return S_OK;
}

}  // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds)
{
    return OrNoMemory(static_cast<SAFEARRAY*>(nullptr), [&]() -> SAFEARRAY* {
        size_t count = 0;
        const size_t size = ElementSize(type);
        if (!bounds || dimensions == 0 || dimensions > 0xFFFF || size == 0 || !CountElements(bounds, dimensions, size, count))
            return nullptr;

        SAFEARRAY* const array = AllocateDescriptor(type, dimensions);
        if (!array)
            return nullptr;
        for (UINT dimension = 1; dimension <= dimensions; ++dimension)
            BoundOf(array, dimension) = bounds[dimension - 1];
        array->pvData = std::calloc(count ? count : 1, size);
        if (!array->pvData) {
            FreeDescriptor(array);
            return nullptr;
        }
        return array;
    });
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count)
{
    return OrNoMemory(static_cast<SAFEARRAY*>(nullptr), [&]() -> SAFEARRAY* {
        SAFEARRAYBOUND bound{count, lowerBound};
        return SafeArrayCreate(type, 1, &bound);
    });
}

HRESULT SafeArrayDestroy(SAFEARRAY* array)
{
    if (!array)
        return S_OK;
    if (array->cLocks > 0)
        return DISP_E_ARRAYISLOCKED;
    FreeElements(array, 0, ElementCount(array));
    std::free(array->pvData);
    FreeDescriptor(array);
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy)
{
    if (!copy)
        return E_INVALIDARG;
    *copy = nullptr;
    if (!array)
        return S_OK;

    std::unique_ptr<SAFEARRAYBOUND[]> bounds(new SAFEARRAYBOUND[array->cDims]);
    for (UINT dimension = 1; dimension <= array->cDims; ++dimension)
        bounds[dimension - 1] = BoundOf(array, dimension);
    SAFEARRAY* const made = SafeArrayCreate(TypeOf(array), array->cDims, bounds.get());
    if (!made)
        return E_OUTOFMEMORY;
    for (size_t i = 0, count = ElementCount(array); i < count; ++i) {
        if (const HRESULT result = CopyElement(TypeOf(array), ElementAt(made, i), ElementAt(array, i)); FAILED(result)) {
            SafeArrayDestroy(made);
            return result;
        }
    }
    *copy = made;
    return S_OK;
}

HRESULT SafeArrayRedim(SAFEARRAY* array, SAFEARRAYBOUND* bound)
{
    if (!array || !bound)
        return E_INVALIDARG;
    if (array->cLocks > 0)
        return DISP_E_ARRAYISLOCKED;

    const size_t before = ElementCount(array);
    const SAFEARRAYBOUND old = array->rgsabound[0];
    array->rgsabound[0] = *bound;
    size_t count = 0;
    if (!CountElements(array->rgsabound, array->cDims, array->cbElements, count)) {
        array->rgsabound[0] = old;
        return E_OUTOFMEMORY;
    }
    if (count < before)
        FreeElements(array, count, before);
    void* const data = std::realloc(array->pvData, std::max<size_t>(count, 1) * array->cbElements);
    if (!data && count > before) {
        array->rgsabound[0] = old;
        return E_OUTOFMEMORY;
    }
    array->pvData = data ? data : array->pvData;
    if (count > before)
        std::memset(ElementAt(array, before), 0, (count - before) * array->cbElements);
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array)
{
    return array ? array->cDims : 0;
}

UINT SafeArrayGetElemsize(SAFEARRAY* array)
{
    return array ? array->cbElements : 0;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound)
{
    if (!array || !bound)
        return E_INVALIDARG;
    if (dimension == 0 || dimension > array->cDims)
        return DISP_E_BADINDEX;
    *bound = BoundOf(array, dimension).lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound)
{
    const HRESULT result = SafeArrayGetLBound(array, dimension, bound);
    if (SUCCEEDED(result))
        *bound = static_cast<LONG>(static_cast<ULONG>(*bound) + BoundOf(array, dimension).cElements - 1);
    return result;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type)
{
    if (!array || !type)
        return E_INVALIDARG;
    *type = TypeOf(array);
    return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY* array)
{
    if (!array)
        return E_INVALIDARG;
    if (array->cLocks == 0xFFFF)
        return E_UNEXPECTED;
    ++array->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* array)
{
    if (!array)
        return E_INVALIDARG;
    if (array->cLocks == 0)
        return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data)
{
    if (!array || !data)
        return E_INVALIDARG;
    const HRESULT result = SafeArrayLock(array);
    *data = SUCCEEDED(result) ? array->pvData : nullptr;
    return result;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array)
{
    return SafeArrayUnlock(array);
}

HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, LONG* indices, void** element)
{
    return element ? Find(array, indices, element) : E_INVALIDARG;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* value)
{
    void* element = nullptr;
    const HRESULT result = value ? Find(array, indices, &element) : E_INVALIDARG;
    return FAILED(result) ? result : CopyElement(TypeOf(array), value, element);
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* value)
{
    void* element = nullptr;
    const HRESULT found = Find(array, indices, &element);
    if (FAILED(found))
        return found;

    const VARTYPE type = TypeOf(array);
    const bool isPointer = type == VT_BSTR || type == VT_UNKNOWN || type == VT_DISPATCH;
    if (!isPointer && !value)
        return E_INVALIDARG;

    alignas(VARIANT) char copy[sizeof(VARIANT)] = {};
    const HRESULT result = CopyElement(type, copy, isPointer ? static_cast<void*>(&value) : value);
    if (FAILED(result))
        return result;
    FreeElement(type, element);
    std::memcpy(element, copy, array->cbElements);
    return S_OK;
}
