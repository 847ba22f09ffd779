// CurveOperations.h: what is timed of one among many, of many at once and from many threads. Times are those of one.
#pragma once

#include "Bench.h"

#include <condition_variable>
#include <thread>

namespace bench {

inline std::size_t many(const State& st)
{
    return static_cast<std::size_t>(st.range(0));
}

// One among many goes and another one comes, each in turn.
template <class All, class Remove, class Make>
void replaceEach(State& st, All& all, Remove remove, Make make)
{
    std::size_t i = 0;
    for (auto _ : st) {
        auto& one = all[i = (i + 7919) % all.size()];
        remove(one);
        one = make();
    }
}

// A call that reaches all.
template <class Call>
void callEach(State& st, Call call)
{
    for (auto _ : st)
        call();
    st.SetItemsProcessed(st.iterations() * st.range(0));
}

// All are made in a call.
template <class Call>
void fillEach(State& st, Call call)
{
    callEach(st, call);
}

// One of many names, each in turn.
template <class Add, class Use>
void oneOfMany(State& st, Add add, Use use)
{
    std::vector<std::string> names(many(st));
    for (std::size_t i = 0; i < names.size(); ++i)
        add(names[i] = "name " + std::to_string(i));
    std::size_t i = 0;
    for (auto _ : st)
        use(names[i = (i + 7919) % names.size()]);
}

// Threads post to this one, which takes as many: 8192 in all at each turn.
template <class Post, class Take>
void postFromThreads(State& st, Post post, Take take)
{
    constexpr std::size_t posts = 8192;
    for (auto _ : st) {
        std::vector<std::thread> threads;
        for (std::size_t t = 0; t < many(st); ++t) {
            threads.emplace_back([&] {
                for (std::size_t i = 0; i < posts / many(st); ++i)
                    post();
            });
        }
        for (std::size_t i = 0; i < posts; ++i)
            take();
        for (std::thread& thread : threads)
            thread.join();
    }
    st.SetItemsProcessed(st.iterations() * static_cast<std::int64_t>(posts));
}

// Threads make texts of 12 units, this one frees them.
template <class Text>
void freeElsewhere(State& st)
{
    constexpr std::size_t texts = 64 * 1024;
    const Text from = text<Text>(letters(12));
    for (auto _ : st) {
        std::vector<std::vector<Text>> made(many(st));
        std::vector<std::thread> threads;
        for (std::vector<Text>& own : made) {
            threads.emplace_back([&] {
                own.resize(texts / many(st));
                for (Text& one : own) {
                    one = from;
                    one += one;
                }
            });
        }
        for (std::size_t t = 0; t < made.size(); ++t) {
            threads[t].join();
            made[t] = {};
        }
    }
    st.SetItemsProcessed(st.iterations() * static_cast<std::int64_t>(texts));
}

}  // namespace bench

#define CURVE(name, ours, peer, theirs, ...)                                                                                               \
    COUNTED(ours)->Name("Curve/" name "/kelgen")->ArgsProduct({{__VA_ARGS__}});                                                            \
    COUNTED(theirs)->Name("Curve/" name "/" peer)->ArgsProduct({{__VA_ARGS__}});
#define CURVE_OF_THREADS(name, ours, peer, theirs, ...)                                                                                    \
    COUNTED(ours)->Name("Curve/" name "/kelgen")->ArgsProduct({{__VA_ARGS__}})->UseRealTime();                                             \
    COUNTED(theirs)->Name("Curve/" name "/" peer)->ArgsProduct({{__VA_ARGS__}})->UseRealTime();
