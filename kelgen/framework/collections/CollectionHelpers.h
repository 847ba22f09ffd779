// CollectionHelpers.h: what the collection templates do with their elements; hosts specialise these for their own types.
#pragma once

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Export.h>
#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

#include <concepts>
#include <cstddef>
#include <type_traits>

class CArchive;

namespace kelgen::detail {

/// Writes @p size when storing and returns it; returns the count read when loading.
/// Throws: the archive exception (end of file) for a count that what is left cannot hold at one bit an element.
KELGEN_FRAMEWORK_API int SerializeCount(CArchive& archive, int size);

[[nodiscard]] KELGEN_FRAMEWORK_API bool IsStoring(const CArchive& archive);

/// Writes or reads @p count bytes. Throws: the archive exception (end of file) when fewer are left.
KELGEN_FRAMEWORK_API void SerializeBytes(CArchive& archive, void* bytes, std::size_t count);

/// The text hash of the string-keyed maps: hash * 33 + character, from 0.
template <class CHARACTER>
[[nodiscard]] UINT HashText(const CHARACTER* text)
{
    UINT hash = 0;
    while (*text != 0)
        hash = hash * 33 + static_cast<UINT>(*text++);
    return hash;
}

}  // namespace kelgen::detail

namespace kelgen {

/// Whether an object of TYPE may be moved by copying its bytes and forgetting the old ones, as arrays move their elements: true for what
/// is trivially copyable, and for classes that say so: the library's strings, arrays and property values. A class that keeps its own
/// address, as std::string does, is none. A class that has only such members opts in:
///
///     struct Row { CString name; int size; };
///     template <> constexpr bool kelgen::is_movable_bitwise<Row> = true;
template <class TYPE>
constexpr bool is_movable_bitwise = std::is_trivially_copyable_v<TYPE> || requires
{
    requires std::same_as<typename TYPE::MovableBitwise, TYPE>;
};

}  // namespace kelgen

/// Assigns @p nCount elements of @p pSrc, first to last, to those of @p pDest.
template <class TYPE>
void CopyElements(TYPE* pDest, const TYPE* pSrc, int nCount)
{
    for (int i = 0; i < nCount; ++i)
        pDest[i] = pSrc[i];
}

/// Writes or reads @p nCount elements, as the bytes that they are in memory. Types that hold more than plain data
/// need a specialisation. Throws: the not-supported exception when such a type has none.
template <class TYPE>
void SerializeElements(CArchive& ar, TYPE* pElements, int nCount)
{
    if constexpr (std::is_trivially_copyable_v<TYPE>)
        kelgen::detail::SerializeBytes(ar, static_cast<void*>(pElements), sizeof(TYPE) * static_cast<std::size_t>(nCount));
    else
        AfxThrowNotSupportedException();
}

/// Texts and objects go in the archive's own forms.
template <>
KELGEN_FRAMEWORK_API void SerializeElements<CString>(CArchive& ar, CString* pElements, int nCount);
template <>
KELGEN_FRAMEWORK_API void SerializeElements<CObject*>(CArchive& ar, CObject** pElements, int nCount);

/// Whether the two are equal, by their ==.
template <class TYPE, class ARG_TYPE>
BOOL CompareElements(const TYPE* pElement1, const ARG_TYPE* pElement2)
{
    return *pElement1 == *pElement2 ? TRUE : FALSE;
}

/// The full hash of @p key, which maps take modulo their table size: for numbers and pointers the value >> 4, numbers of
/// up to 32 bits as 32 unsigned bits; for constant texts, 8-bit or 16-bit, and classes that convert to them, the text's hash.
/// Other key types need a specialisation, for the map's ARG_KEY: `template <> UINT HashKey<CKey&>(CKey& key)`.
template <class ARG_KEY>
UINT HashKey(ARG_KEY key)
{
    using KEY = std::remove_cvref_t<ARG_KEY>;
    if constexpr (std::is_pointer_v<KEY>) {
        using POINTEE = std::remove_pointer_t<KEY>;
        if constexpr (std::is_same_v<POINTEE, const char> || std::is_same_v<POINTEE, const WCHAR> ||
                      std::is_same_v<POINTEE, const unsigned short>)
            return kelgen::detail::HashText(key);
        else
            return static_cast<UINT>(reinterpret_cast<DWORD_PTR>(key) >> 4);
    } else if constexpr (std::is_arithmetic_v<KEY> || std::is_enum_v<KEY>) {
        if constexpr (sizeof(KEY) <= sizeof(UINT))
            return static_cast<UINT>(key) >> 4;
        else
            return static_cast<UINT>(static_cast<ULONGLONG>(key) >> 4);
    } else if constexpr (std::is_convertible_v<const KEY&, LPCSTR>) {
        return kelgen::detail::HashText(static_cast<LPCSTR>(key));
    } else {
        return kelgen::detail::HashText(static_cast<const unsigned short*>(key));
    }
}

/// A place in a list or map; null is none. A place holds until its element is removed.
struct CollectionPosition;
using POSITION = CollectionPosition*;
