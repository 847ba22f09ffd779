// Strings.cpp: CWStr and std::u16string.
#include "StringOperations.h"

#include <kelgen/text/WStr.h>

using namespace bench;

namespace {

struct Kelgen
{
    using S = CWStr;
    using Unit = unsigned short;

    static S fromZ(const Unit* p) { return S(p); }
    static S fromN(const Unit* p, int n) { return S(p, n); }
    static void put(S& s, int i, Unit c)
    {
        s.CopyBeforeWrite();
        s.SetAt(i, c);
    }
    static void append(S& s, Unit c) { s += c; }
    static void append(S& s, const S& t) { s += t; }
    static long find(const S& s, const S& t) { return s.Find(static_cast<const Unit*>(t)); }
    static long find(const S& s, Unit c) { return s.Find(c); }
    static long rfind(const S& s, Unit c) { return s.ReverseFind(c); }
    static void replaceAll(S& s, const S& a, const S& b) { s.Replace(static_cast<const Unit*>(a), static_cast<const Unit*>(b)); }
    static bool equalNoCase(const S& a, const S& b) { return a.CompareNoCase(b) == 0; }
    static S upper(const S& s)
    {
        S r(s);
        r.MakeUpper();
        return r;
    }
    static S trim(const S& s)
    {
        S r(s);
        r.TrimRight();
        r.TrimLeft();
        return r;
    }
    static S mid(const S& s, int pos, int n) { return s.Mid(pos, n); }
};

#define ROW(area, op, name, ...)                                                                                                 \
    BENCHMARK(op<StdStr>)->Name(area "/" name "/u16string") __VA_ARGS__;                                                         \
    BENCHMARK(op<Kelgen>)->Name(area "/" name "/kelgen") __VA_ARGS__;
STRING_ROWS
#undef ROW

#define ROW(area, op, name, ...) BENCHMARK(op<StdStr>)->Name(area "/" name "/u16string") __VA_ARGS__;
STRING_REVERSE_TEXT_ROWS
STRING_LIST_ROWS

}  // namespace
