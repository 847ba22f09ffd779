// arrays.cpp: the peers' arrays and hash maps.
#include "../ArrayOperations.h"

#include <wx/arrstr.h>
#include <wx/dynarray.h>
#include <wx/hashmap.h>
#include <wx/vector.h>

#include <QHash>
#include <QList>
#include <QString>

#include <boost/sort/spreadsort/integer_sort.hpp>
#include <boost/unordered_map.hpp>

using namespace bench;

namespace {

WX_DECLARE_HASH_MAP(int, int, wxIntegerHash, wxIntegerEqual, WxIntMap);

int compareInts(int* a, int* b)
{
    return unsigned(*a) < unsigned(*b) ? -1 : *a != *b;
}

template <class C>
struct SpreadSort
{
    void operator()(C& c) const { boost::sort::spreadsort::integer_sort(c.begin(), c.end()); }
};
struct WxSort
{
    void operator()(wxArrayInt& c) const { c.Sort(compareInts); }
};

template <class K>
using BoostMap = boost::unordered_map<K, K>;
template <class K>
using QtMap = QHash<K, K>;

#define ARRAYS(op)                                                                                                                         \
    BENCHMARK(op<QList<int>>)->Name("Array/" #op "/QList");                                                                                \
    BENCHMARK(op<wxArrayInt>)->Name("Array/" #op "/wxArrayInt");                                                                           \
    BENCHMARK(op<wxVector<int>>)->Name("Array/" #op "/wxVector");

ARRAYS(AppendInt)
BENCHMARK_TEMPLATE(AppendString, QList<QString>, QString)->Name("Array/AppendString/QList");
BENCHMARK_TEMPLATE(AppendString, wxArrayString, wxString)->Name("Array/AppendString/wxArrayString");
BENCHMARK_TEMPLATE(AppendString, wxVector<wxString>, wxString)->Name("Array/AppendString/wxVector");
ARRAYS(RemoveFront)
ARRAYS(InsertFront)
ARRAYS(FindMiss)
BENCHMARK_TEMPLATE(SortUint32, QList<std::uint32_t>, StdSort<QList<std::uint32_t>>)->Name("Array/SortUint32/QList");
BENCHMARK_TEMPLATE(SortUint32, wxArrayInt, WxSort)->Name("Array/SortUint32/wxArrayInt");
BENCHMARK_TEMPLATE(SortUint32, std::vector<std::uint32_t>, SpreadSort<std::vector<std::uint32_t>>)->Name("Array/SortUint32/spreadsort");

#define MAPS(op, key, K, S)                                                                                                                \
    BENCHMARK_TEMPLATE(op, BoostMap<K>, K)->Name("Map/" key #op "/boost");                                                                 \
    BENCHMARK_TEMPLATE(op, QtMap<S>, S)->Name("Map/" key #op "/QHash");

MAPS(Insert, "Int", int, int)
BENCHMARK_TEMPLATE(Insert, WxIntMap, int)->Name("Map/IntInsert/wxHashMap");
MAPS(Find, "Int", int, int)
BENCHMARK_TEMPLATE(Find, WxIntMap, int)->Name("Map/IntFind/wxHashMap");
MAPS(Insert, "String", std::u16string, QString)
BENCHMARK_TEMPLATE(Insert, wxStringToStringHashMap, wxString)->Name("Map/StringInsert/wxHashMap");
MAPS(Find, "String", std::u16string, QString)
BENCHMARK_TEMPLATE(Find, wxStringToStringHashMap, wxString)->Name("Map/StringFind/wxHashMap");

}  // namespace
