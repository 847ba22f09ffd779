// StringOperations.h: what is timed of strings and string lists, for any string that has a struct like StdStr.
#pragma once

#include "Bench.h"

#include <algorithm>
#include <cwctype>

namespace bench {

struct StdStr
{  // std::u16string, with the loops a user writes where it has no member
    using S = std::u16string;
    using List = std::vector<S>;
    using Unit = char16_t;
    static S fromZ(const Unit* p) { return S(p); }
    static S fromN(const Unit* p, int n) { return S(p, n); }
    static void put(S& s, int i, Unit c) { s[i] = c; }
    static void append(S& s, Unit c) { s.push_back(c); }
    static void append(S& s, const S& t) { s.append(t); }
    static long find(const S& s, const S& t) { return long(s.find(t)); }
    static long find(const S& s, Unit c) { return long(s.find(c)); }
    static long rfind(const S& s, const S& t) { return long(s.rfind(t)); }
    static long rfind(const S& s, Unit c) { return long(s.rfind(c)); }
    static void replaceAll(S& s, const S& a, const S& b)
    {
        S r;
        r.reserve(s.size());
        std::size_t from = 0;
        for (std::size_t at; (at = s.find(a, from)) != S::npos; from = at + a.size())
            r.append(s, from, at - from).append(b);
        s = std::move(r.append(s, from));
    }
    static bool equalNoCase(const S& a, const S& b)
    {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](Unit x, Unit y) { return std::towlower(x) == std::towlower(y); });
    }
    static S upper(const S& s)
    {
        S r(s);
        for (Unit& c : r)
            c = Unit(std::towupper(c));
        return r;
    }
    static S trim(const S& s)
    {
        const auto from = s.find_first_not_of(u" \t\r\n");
        return from == S::npos ? S() : s.substr(from, s.find_last_not_of(u" \t\r\n") - from + 1);
    }
    static S mid(const S& s, int pos, int n) { return s.substr(pos, n); }
    static List split(const S& s, Unit c)
    {
        List l;
        std::size_t from = 0;
        for (std::size_t at; (at = s.find(c, from)) != S::npos; from = at + 1)
            l.emplace_back(s, from, at - from);
        l.emplace_back(s, from);
        return l;
    }
    static S join(const List& l, Unit c)
    {
        S r;
        for (const S& s : l) {
            if (&s != l.data())
                r.push_back(c);
            r.append(s);
        }
        return r;
    }
    static void sort(List& l) { std::sort(l.begin(), l.end()); }
    static bool containsNoCase(const List& l, const S& s)
    {
        return std::any_of(l.begin(), l.end(), [&](const S& x) { return equalNoCase(x, s); });
    }
};

template <class P>
using StringOf = typename P::S;

template <class P>
typename P::List list(const std::vector<std::u16string>& from)
{
    typename P::List l;
    for (const auto& w : from)
        l.push_back(text<StringOf<P>>(w));
    return l;
}

template <class P>
void Construct(State& st)  // from a zero-terminated literal: length and copy
{
    const std::u16string u = letters(st.range(0));
    const std::basic_string<typename P::Unit> lit(u.begin(), u.end());
    const typename P::Unit* p = lit.c_str();
    for (auto _ : st) {
        DoNotOptimize(p);
        auto s = P::fromZ(p);
        DoNotOptimize(s);
    }
}

template <class P>
void ConstructN(State& st)  // the length is known
{
    const std::u16string u = letters(st.range(0));
    const std::basic_string<typename P::Unit> lit(u.begin(), u.end());
    const typename P::Unit* p = lit.c_str();
    const int n = int(lit.size());
    for (auto _ : st) {
        DoNotOptimize(p);
        auto s = P::fromN(p, n);
        DoNotOptimize(s);
    }
}

template <class P>
void CopyConstruct(State& st)
{
    const auto s = text<StringOf<P>>(letters(st.range(0)));
    for (auto _ : st) {
        StringOf<P> c(s);
        DoNotOptimize(c);
    }
}

template <class P>
void CopyAssign(State& st)  // two sources in turn, so the target always changes
{
    const StringOf<P> from[2] = {text<StringOf<P>>(letters(st.range(0), 26, 1)), text<StringOf<P>>(letters(st.range(0), 26, 2))};
    StringOf<P> c;
    unsigned i = 0;
    for (auto _ : st) {
        c = from[i++ & 1];
        DoNotOptimize(c);
    }
}

template <class P>
void CopyWrite(State& st)  // copy, then write one unit: a shared string detaches
{
    const auto s = text<StringOf<P>>(letters(st.range(0)));
    for (auto _ : st) {
        StringOf<P> c(s);
        P::put(c, 1, 'X');
        DoNotOptimize(c);
    }
}

template <class P>
void AppendUnit64(State& st)
{
    typename P::Unit u = 'x';
    for (auto _ : st) {
        StringOf<P> s;
        for (int i = 0; i < 64; ++i) {
            DoNotOptimize(u);
            P::append(s, u);
        }
        DoNotOptimize(s);
    }
}

template <class P>
void AppendUnits(State& st)  // one at a time
{
    const typename P::Unit u = 'x';
    for (auto _ : st) {
        StringOf<P> s;
        for (int i = 0; i < st.range(0); ++i)
            P::append(s, u);
        DoNotOptimize(s);
    }
}

template <class P>
void AppendText10(State& st)
{
    const auto t = text<StringOf<P>>(letters(20));
    for (auto _ : st) {
        StringOf<P> s;
        for (int i = 0; i < 10; ++i)
            P::append(s, t);
        DoNotOptimize(s);
    }
}

template <class P>
void FindText(State& st)  // 8 units, absent
{
    const auto s = text<StringOf<P>>(letters(4096)), t = text<StringOf<P>>(u"abcdefgh");
    require(P::find(s, t) == -1, "FindText");
    for (auto _ : st)
        DoNotOptimize(P::find(s, t));
}

template <class P>
void FindUnit(State& st)
{
    const auto s = text<StringOf<P>>(letters(4096));
    auto u = static_cast<typename P::Unit>(0x20AC);
    require(P::find(s, u) == -1, "FindUnit");
    for (auto _ : st) {
        DoNotOptimize(u);
        DoNotOptimize(P::find(s, u));
    }
}

template <class P>
void ReverseFindText(State& st)
{
    const auto s = text<StringOf<P>>(letters(4096)), t = text<StringOf<P>>(u"abcdefgh");
    require(P::rfind(s, t) == -1, "ReverseFindText");
    for (auto _ : st)
        DoNotOptimize(P::rfind(s, t));
}

template <class P>
void ReverseFindUnit(State& st)
{
    const auto s = text<StringOf<P>>(letters(4096));
    auto u = static_cast<typename P::Unit>(0x20AC);
    require(P::rfind(s, u) == -1, "ReverseFindUnit");
    for (auto _ : st) {
        DoNotOptimize(u);
        DoNotOptimize(P::rfind(s, u));
    }
}

template <class P>
void ReplaceAll(State& st)  // includes the copy it works on; about 200 hits
{
    const auto s = text<StringOf<P>>(letters(4096, 4)), a = text<StringOf<P>>(u"aa"), b = text<StringOf<P>>(u"b");
    StringOf<P> check(s);
    P::replaceAll(check, a, b);
    std::u16string want = letters(4096, 4);
    StdStr::replaceAll(want, u"aa", u"b");
    require(check == text<StringOf<P>>(want), "ReplaceAll");
    for (auto _ : st) {
        StringOf<P> c(s);
        P::replaceAll(c, a, b);
        DoNotOptimize(c);
    }
}

template <class P>
void CompareEqual(State& st)
{
    const auto a = text<StringOf<P>>(letters(st.range(0))), b = text<StringOf<P>>(letters(st.range(0)));
    require(a == b, "CompareEqual");
    for (auto _ : st) {
        benchmark::ClobberMemory();
        DoNotOptimize(a == b);
    }
}

template <class P>
void CompareNoCase(State& st)
{
    std::u16string u = letters(40);
    for (std::size_t i = 0; i < u.size(); i += 2)
        u[i] -= 32;
    const auto a = text<StringOf<P>>(letters(40)), b = text<StringOf<P>>(u);
    require(P::equalNoCase(a, b), "CompareNoCase");
    for (auto _ : st)
        DoNotOptimize(P::equalNoCase(a, b));
}

template <class P>
void Upper256(State& st)
{
    std::u16string u = letters(256);
    const auto s = text<StringOf<P>>(u);
    for (char16_t& c : u)
        c -= 32;
    require(P::upper(s) == text<StringOf<P>>(u), "Upper256");
    for (auto _ : st) {
        auto r = P::upper(s);
        DoNotOptimize(r);
    }
}

template <class P>
void TrimBoth(State& st)  // 4 blanks, 32 letters, 4 blanks
{
    const auto s = text<StringOf<P>>(u"    " + letters(32) + u"    ");
    require(P::trim(s) == text<StringOf<P>>(letters(32)), "TrimBoth");
    for (auto _ : st) {
        auto r = P::trim(s);
        DoNotOptimize(r);
    }
}

template <class P>
void Mid20of200(State& st)
{
    const auto s = text<StringOf<P>>(letters(200));
    int pos = 90;
    for (auto _ : st) {
        DoNotOptimize(pos);
        auto r = P::mid(s, pos, 20);
        DoNotOptimize(r);
    }
}

template <class P>
void ConcurrentCopy(State& st)  // two threads copy the same string: the reference count is contended
{
    static const auto s = text<StringOf<P>>(letters(40));
    for (auto _ : st) {
        StringOf<P> c(s);
        DoNotOptimize(c);
    }
}

template <class P>
void Split1000(State& st)
{
    const auto w = words(1000, 1, 10);
    const auto joined = text<StringOf<P>>(StdStr::join(w, ','));
    require(P::split(joined, ',') == list<P>(w), "Split1000");
    for (auto _ : st) {
        auto l = P::split(joined, ',');
        DoNotOptimize(l);
    }
}

template <class P>
void Join1000(State& st)
{
    const auto w = words(1000, 1, 10);
    const auto l = list<P>(w);
    require(P::join(l, ',') == text<StringOf<P>>(StdStr::join(w, ',')), "Join1000");
    for (auto _ : st) {
        auto s = P::join(l, ',');
        DoNotOptimize(s);
    }
}

template <class P>
void Sort10000(State& st)  // the copy is outside the time
{
    auto w = words(10000, 12, 12);
    const auto from = list<P>(w);
    StdStr::sort(w);
    const auto sorted = list<P>(w);
    typename P::List l;
    for (auto _ : st) {
        st.PauseTiming();
        l = from;
        if constexpr (requires { l.detach(); })
            l.detach();
        st.ResumeTiming();
        P::sort(l);
        DoNotOptimize(l);
    }
    require(l == sorted, "Sort10000");
}

template <class P>
void FindNoCase1000(State& st)  // absent, same length as the others
{
    const auto l = list<P>(words(1000, 12, 12));
    const auto s = text<StringOf<P>>(u"ABCDEFGHIJKL");
    require(!P::containsNoCase(l, s), "FindNoCase1000");
    for (auto _ : st)
        DoNotOptimize(P::containsNoCase(l, s));
}

/// The rows of every string: ROW(area, operation, name, settings) registers a program's own. The search for the last text and
/// the lists stand apart, for strings without them.
#define STRING_ROWS                                                                                                                        \
    ROW("String", Construct, "Construct", ->Arg(5)->Arg(40)->Arg(200)->Arg(2000))                                                          \
    ROW("String", ConstructN, "ConstructN", ->Arg(5)->Arg(40)->Arg(200)->Arg(2000))                                                        \
    ROW("String", CopyConstruct, "CopyConstruct", ->Arg(5)->Arg(40)->Arg(200)->Arg(2000))                                                  \
    ROW("String", CopyAssign, "CopyAssign", ->Arg(5)->Arg(40)->Arg(2000))                                                                  \
    ROW("String", CopyWrite, "CopyWrite", ->Arg(5)->Arg(40)->Arg(200)->Arg(2000))                                                          \
    ROW("String", AppendUnit64, "AppendUnit64")                                                                                            \
    ROW("String", AppendUnits, "AppendUnits", ->Arg(10000)->Arg(1000000))                                                                  \
    ROW("String", AppendText10, "AppendText10")                                                                                            \
    ROW("String", FindText, "FindText4096")                                                                                                \
    ROW("String", FindUnit, "FindUnit4096")                                                                                                \
    ROW("String", ReverseFindUnit, "ReverseFindUnit4096")                                                                                  \
    ROW("String", ReplaceAll, "ReplaceAll4096")                                                                                            \
    ROW("String", CompareEqual, "CompareEqual", ->Arg(40)->Arg(4096))                                                                      \
    ROW("String", CompareNoCase, "CompareNoCase40")                                                                                        \
    ROW("String", Upper256, "Upper256")                                                                                                    \
    ROW("String", TrimBoth, "TrimBoth")                                                                                                    \
    ROW("String", Mid20of200, "Mid20of200")                                                                                                \
    ROW("String", Construct, "ConcurrentConstruct", ->Arg(5)->Threads(2)->UseRealTime())                                                   \
    ROW("String", ConcurrentCopy, "ConcurrentCopyShared40", ->Threads(2)->UseRealTime())

#define STRING_REVERSE_TEXT_ROWS ROW("String", ReverseFindText, "ReverseFindText4096")

#define STRING_LIST_ROWS                                                                                                                   \
    ROW("StringList", Split1000, "Split1000")                                                                                              \
    ROW("StringList", Join1000, "Join1000")                                                                                                \
    ROW("StringList", Sort10000, "Sort10000")                                                                                              \
    ROW("StringList", FindNoCase1000, "FindNoCase1000")

}  // namespace bench
