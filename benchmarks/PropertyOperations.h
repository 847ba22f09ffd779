// PropertyOperations.h: what is timed of properties: a value with synchronous listeners, and one found by name among 20.
#pragma once

#include "Bench.h"

namespace bench {

inline constexpr const char* names[20] = {"name",   "caption", "left", "top",   "width",  "height", "color", "font",  "visible", "enabled",
                                          "cursor", "hint",    "tag",  "align", "anchor", "border", "owner", "style", "state",   "value"};

inline void finish(State& st, long sum, int last)
{
    require(sum == st.range(0) * (long(last) * (last + 1) / 2), "every listener heard every value");
}

template <class Signal>
void FunctionList(State& st)  // sigc, boost::signals2: one signal beside the value
{
    int value = 0;
    long sum = 0;
    Signal changed;
    for (int i = 0; i < st.range(0); ++i)
        changed.connect([&sum](int x) { sum += x; });
    int v = 0;
    for (auto _ : st) {
        if (++v != value) {
            value = v;
            changed(value);
        }
        DoNotOptimize(sum);
    }
    finish(st, sum, v);
}

#define LISTENERS ->Arg(1)->Arg(3)->Arg(10)

template <class Find>
void findByName(State& st, Find find)  // the 20 names in turn; one find per iteration
{
    unsigned i = 0;
    for (auto _ : st)
        DoNotOptimize(find(i++ % 20));
}

template <class M, class S>
void FindMap(State& st)
{
    M m;
    std::vector<S> keys;
    for (int i = 0; i < 20; ++i) {
        const std::string n = names[i];
        keys.push_back(text<S>(std::u16string(n.begin(), n.end())));
        m[keys.back()] = i;
    }
    findByName(st, [&](unsigned i) { return m.find(keys[i]); });
}

}  // namespace bench
