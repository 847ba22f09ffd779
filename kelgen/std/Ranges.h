// Ranges.h: range-for, the standard algorithms and std::span over the library's strings, arrays, lists, maps and memory blocks.
#pragma once

#include <kelgen/containers/FastArray.h>
#include <kelgen/containers/MemoryStorage.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/Array.h>
#include <kelgen/framework/collections/List.h>
#include <kelgen/framework/collections/Map.h>
#include <kelgen/text/WStr.h>

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <span>
#include <type_traits>
#include <utility>

namespace kelgen {

/// Walks a list from one element to the next. It holds until its element is removed.
template <class LIST, class ELEMENT>
class ListIterator
{
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::remove_const_t<ELEMENT>;
    using difference_type = std::ptrdiff_t;
    using pointer = ELEMENT*;
    using reference = ELEMENT&;

    ListIterator() = default;
    /// At @p position; null stands for the end.
    ListIterator(LIST& list, POSITION position) : m_list(&list), m_position(position) {}

    reference operator*() const { return m_list->GetAt(m_position); }
    pointer operator->() const { return &m_list->GetAt(m_position); }
    ListIterator& operator++()
    {
        m_list->GetNext(m_position);
        return *this;
    }
    ListIterator operator++(int)
    {
        ListIterator before(*this);
        ++*this;
        return before;
    }
    bool operator==(const ListIterator& other) const { return m_position == other.m_position; }

private:
    LIST* m_list = nullptr;
    POSITION m_position = nullptr;
};

/// Walks a map from one entry, a CPair with key and value, to the next, in the map's order. It holds until its entry is removed.
template <class MAP, class PAIR>
class MapIterator
{
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::remove_const_t<PAIR>;
    using difference_type = std::ptrdiff_t;
    using pointer = PAIR*;
    using reference = PAIR&;

    MapIterator() = default;
    /// At @p pair; null stands for the end.
    MapIterator(MAP& map, PAIR* pair) : m_map(&map), m_pair(pair) {}

    reference operator*() const { return *m_pair; }
    pointer operator->() const { return m_pair; }
    MapIterator& operator++()
    {
        m_pair = m_map->PGetNextAssoc(m_pair);
        return *this;
    }
    MapIterator operator++(int)
    {
        MapIterator before(*this);
        ++*this;
        return before;
    }
    bool operator==(const MapIterator& other) const { return m_pair == other.m_pair; }

private:
    MAP* m_map = nullptr;
    PAIR* m_pair = nullptr;
};

}  // namespace kelgen

// Range-for finds these by their argument: they live where the classes do.

/// Each end of a string's units, zeros inside included; to be read only. They hold until the string is changed.
inline const unsigned short* begin(const CWStr& text)
{
    return text;
}
inline const unsigned short* end(const CWStr& text)
{
    return begin(text) + text.GetLength();
}
inline const char* begin(const CString& text)
{
    return text.GetString();
}
inline const char* end(const CString& text)
{
    return begin(text) + text.GetLength();
}

/// Each end of an array's elements. They hold until the array grows, shrinks or is freed.
template <class TYPE, class ARG_TYPE>
TYPE* begin(CArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData();
}
template <class TYPE, class ARG_TYPE>
TYPE* end(CArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData() + array.GetSize();
}
template <class TYPE, class ARG_TYPE>
const TYPE* begin(const CArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData();
}
template <class TYPE, class ARG_TYPE>
const TYPE* end(const CArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData() + array.GetSize();
}
/// Each end of the used elements of an array with a used count.
template <class TYPE, class ARG_TYPE>
TYPE* begin(CFastArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData();
}
template <class TYPE, class ARG_TYPE>
TYPE* end(CFastArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData() + array.GetSize();
}
template <class TYPE, class ARG_TYPE>
const TYPE* begin(const CFastArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData();
}
template <class TYPE, class ARG_TYPE>
const TYPE* end(const CFastArray<TYPE, ARG_TYPE>& array)
{
    return array.GetData() + array.GetSize();
}

/// Each end of the elements of a list, from head to tail.
template <class TYPE, class ARG_TYPE>
auto begin(CList<TYPE, ARG_TYPE>& list)
{
    return kelgen::ListIterator<CList<TYPE, ARG_TYPE>, TYPE>(list, list.GetHeadPosition());
}
template <class TYPE, class ARG_TYPE>
auto end(CList<TYPE, ARG_TYPE>& list)
{
    return kelgen::ListIterator<CList<TYPE, ARG_TYPE>, TYPE>(list, nullptr);
}
template <class TYPE, class ARG_TYPE>
auto begin(const CList<TYPE, ARG_TYPE>& list)
{
    return kelgen::ListIterator<const CList<TYPE, ARG_TYPE>, const TYPE>(list, list.GetHeadPosition());
}
template <class TYPE, class ARG_TYPE>
auto end(const CList<TYPE, ARG_TYPE>& list)
{
    return kelgen::ListIterator<const CList<TYPE, ARG_TYPE>, const TYPE>(list, nullptr);
}

/// Each end of the entries of a map: `for (const auto& [key, value] : map)`.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
auto begin(CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>& map)
{
    using Map = CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>;
    return kelgen::MapIterator<Map, typename Map::CPair>(map, map.PGetFirstAssoc());
}
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
auto end(CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>& map)
{
    using Map = CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>;
    return kelgen::MapIterator<Map, typename Map::CPair>(map, nullptr);
}
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
auto begin(const CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>& map)
{
    using Map = CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>;
    return kelgen::MapIterator<const Map, const typename Map::CPair>(map, map.PGetFirstAssoc());
}
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
auto end(const CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>& map)
{
    using Map = CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>;
    return kelgen::MapIterator<const Map, const typename Map::CPair>(map, nullptr);
}

namespace kelgen {

/// The elements of an array, of one with a used count the used ones. The span holds until the array grows, shrinks or is freed.
template <class ARRAY>
[[nodiscard]] auto Span(ARRAY& array) requires requires
{
    array.GetData();
    array.GetSize();
}
{
    return std::span(array.GetData(), static_cast<std::size_t>(array.GetSize()));
}

/// The bytes of a memory block; none while it is closed. The span holds until the block moves.
[[nodiscard]] inline std::span<unsigned char> Span(const CMemoryStorage& storage)
{
    unsigned char* const bytes = storage.GetAllocation();
    return {bytes, bytes != nullptr ? storage.GetStorageSize() : std::size_t{0}};
}

/// An array with the elements of @p values, each converted to the array's own type.
///
///     auto names = kelgen::MakeArray<CWStrArray>({u"alpha"_w, u"beta"_w});
/// Throws: as the array's Add.
template <class ARRAY, class VALUE>
[[nodiscard]] ARRAY MakeArray(std::initializer_list<VALUE> values)
{
    ARRAY array;
    for (const VALUE& value : values)
        array.Add(value);
    return array;
}

/// Adds the elements of a range of the standard library, or of ours, to an array, or to the tail of a list.
template <class CONTAINER, class RANGE>
void AppendRange(CONTAINER& container, const RANGE& range)
{
    for (const auto& element : range) {
        if constexpr (requires { container.AddTail(element); })
            container.AddTail(element);
        else
            container.Add(element);
    }
}
/// The same with a list in braces.
template <class CONTAINER, class VALUE>
void AppendRange(CONTAINER& container, std::initializer_list<VALUE> values)
{
    AppendRange<CONTAINER, std::initializer_list<VALUE>>(container, values);
}

/// Sets entries of a map, of equal keys the last.
///
///     CMapStringToString ports;
///     kelgen::SetEntries(ports, {{"http", "80"}, {"ssh", "22"}});
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void SetEntries(CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>& map,
                std::initializer_list<std::pair<std::type_identity_t<KEY>, std::type_identity_t<VALUE>>> entries)
{
    for (const auto& [key, value] : entries)
        map.SetAt(key, value);
}

}  // namespace kelgen
