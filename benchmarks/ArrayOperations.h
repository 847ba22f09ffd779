// ArrayOperations.h: what is timed of arrays and hash maps, for any container with the standard library's spelling.
#pragma once

#include "Bench.h"

#include <algorithm>

namespace bench {

template <class C>
void AppendInt(State& st)
{
    for (auto _ : st) {
        C c;
        for (int i = 0; i < 100000; ++i)
            c.push_back(i);
        DoNotOptimize(c);
        benchmark::ClobberMemory();
    }
}

template <class C, class S>
void AppendString(State& st)  // copies of 64 strings of 12 units
{
    std::vector<S> from;
    for (const auto& w : words(64, 12, 12))
        from.push_back(text<S>(w));
    for (auto _ : st) {
        C c;
        for (int i = 0; i < 100000; ++i)
            c.push_back(from[i % 64]);
        DoNotOptimize(c);
    }
}

template <class C>
void RemoveFront(State& st)  // until empty; the fill is outside the time
{
    for (auto _ : st) {
        st.PauseTiming();
        C c;
        for (int i = 0; i < 10000; ++i)
            c.push_back(i);
        st.ResumeTiming();
        while (!c.empty()) {
            c.erase(c.begin());
            DoNotOptimize(c);
        }
    }
}

template <class C>
void InsertFront(State& st)
{
    for (auto _ : st) {
        C c;
        for (int i = 0; i < 2000; ++i) {
            c.insert(c.begin(), i);
            DoNotOptimize(c);
        }
        require(c[0] == 1999, "InsertFront");
    }
}

template <class C>
void FindMiss(State& st)
{
    C c;
    for (int i = 0; i < 100000; ++i)
        c.push_back(i);
    int key = -7;
    for (auto _ : st) {
        DoNotOptimize(key);
        benchmark::ClobberMemory();
        if constexpr (requires { c.indexOf(key); })
            DoNotOptimize(c.indexOf(key));
        else if constexpr (requires { c.Index(key); })
            DoNotOptimize(c.Index(key));
        else
            DoNotOptimize(std::find(c.begin(), c.end(), key));
    }
}

template <class C>
struct StdSort
{
    void operator()(C& c) const { std::sort(c.begin(), c.end()); }
};
template <class C, class Sort>
void SortUint32(State& st)  // the copy is outside the time
{
    C c;
    const auto from = numbers(100000);
    for (auto _ : st) {
        st.PauseTiming();
        c.clear();
        for (auto x : from)
            c.push_back(x);
        st.ResumeTiming();
        Sort()(c);
        DoNotOptimize(c);
    }
    require(std::is_sorted(c.begin(), c.end(), [](unsigned a, unsigned b) { return a < b; }), "SortUint32");
}

template <class K>
std::vector<K> keys()
{
    std::vector<K> v;
    if constexpr (std::is_same_v<K, int>)
        for (auto x : numbers(10000))
            v.push_back(int(x));
    else
        for (const auto& w : words(10000, 12, 12))
            v.push_back(text<K>(w));
    return v;
}

template <class M, class K>
void Insert(State& st)  // from empty, without reserve; includes destruction
{
    const auto ks = keys<K>();
    for (auto _ : st) {
        M m;
        for (const K& k : ks)
            m[k] = k;
        DoNotOptimize(m);
    }
}

template <class M, class K>
void Find(State& st)  // every key present, in another order
{
    auto ks = keys<K>();
    M m;
    for (const K& k : ks)
        m[k] = k;
    std::shuffle(ks.begin(), ks.end(), std::mt19937(4));
    for (auto _ : st)
        for (const K& k : ks) {
            auto at = m.find(k);
            DoNotOptimize(at);
            require(at != m.end(), "Find");
        }
}

}  // namespace bench
