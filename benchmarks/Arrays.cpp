// Arrays.cpp: the library's arrays and the framework's map beside the standard library's.
#include "ArrayOperations.h"

#include <kelgen/containers/BaseComparableArray.h>
#include <kelgen/framework/collections/Map.h>
#include <kelgen/text/WStr.h>

#include <unordered_map>

using namespace bench;

namespace {

// The library's array under the standard library's names, as the operations spell them.
template <class T, class Argument>
class Array : public CBaseComparableArray<T, Argument>
{
public:
    void push_back(Argument value) { this->Add(value); }
    bool empty() const { return this->GetSize() == 0; }
    void clear() { this->CArray<T, Argument>::RemoveAll(); }
    T* begin() { return this->GetData(); }
    T* end() { return this->GetData() + this->GetSize(); }
    void erase(T* at) { this->RemoveAt(static_cast<int>(at - this->GetData())); }
    void insert(T* at, Argument value) { this->InsertAt(static_cast<int>(at - this->GetData()), value); }
    int indexOf(const T& value) const { return this->FindFirst(value); }
};

using IntArray = Array<int, int>;
using StringArray = CBaseArray<CWStr, const CWStr&>;

class Strings : public StringArray
{
public:
    void push_back(const CWStr& value) { Add(value); }
};

#define ARRAYS(op)                                                                                                                         \
    COUNTED(op<std::vector<int>>)->Name("Array/" #op "/vector");                                                                           \
    COUNTED(op<IntArray>)->Name("Array/" #op "/kelgen");

ARRAYS(AppendInt)
BENCHMARK_TEMPLATE(AppendString, std::vector<std::u16string>, std::u16string)->Name("Array/AppendString/vector");
BENCHMARK_TEMPLATE(AppendString, Strings, CWStr)->Name("Array/AppendString/kelgen");
ARRAYS(RemoveFront)
ARRAYS(InsertFront)
ARRAYS(FindMiss)

void InsertMap(State& st)
{
    const auto all = keys<int>();
    for (auto _ : st) {
        CMap<int, int, int, int> map;
        map.InitHashTable(12007);
        for (const int key : all)
            map[key] = key;
        DoNotOptimize(map);
    }
}

void FindInMap(State& st)
{
    auto all = keys<int>();
    CMap<int, int, int, int> map;
    map.InitHashTable(12007);
    for (const int key : all)
        map[key] = key;
    std::shuffle(all.begin(), all.end(), std::mt19937(4));
    for (auto _ : st)
        for (const int key : all) {
            int value;
            require(map.Lookup(key, value), "Find");
            DoNotOptimize(value);
        }
}

template <class K>
using StdMap = std::unordered_map<K, K>;

BENCHMARK_TEMPLATE(Insert, StdMap<int>, int)->Name("Map/IntInsert/unordered_map");
COUNTED(InsertMap)->Name("Map/IntInsert/kelgen");
BENCHMARK_TEMPLATE(Find, StdMap<int>, int)->Name("Map/IntFind/unordered_map");
COUNTED(FindInMap)->Name("Map/IntFind/kelgen");

}  // namespace
