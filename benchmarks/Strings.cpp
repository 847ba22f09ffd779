// Strings.cpp: CWStr and std::u16string.
#include "StringOperations.h"

#include <kelgen/text/WStr.h>
#include <kelgen/text/WStrArray.h>

using namespace bench;

namespace {

constexpr auto kByUnits = [](const unsigned short* left, const unsigned short* right) {
    while (*left == *right && *left != 0) {
        ++left;
        ++right;
    }
    return *left - *right;
};

/// The library's list, dressed as a container of the standard library for what is not timed.
struct KelgenList : CWStrArray
{
    void push_back(const CWStr& text) { Add(text); }
    std::vector<std::u16string> texts() const
    {
        std::vector<std::u16string> all;
        for (int i = 0; i < GetSize(); ++i) {
            const unsigned short* const units = GetAt(i);
            all.emplace_back(units, units + GetAt(i).GetLength());
        }
        return all;
    }
    friend bool operator==(const KelgenList& left, const KelgenList& right) { return left.texts() == right.texts(); }
};

struct Kelgen
{
    using S = CWStr;
    using List = KelgenList;
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
    static List split(const S& s, Unit c)
    {
        const Unit separator[] = {c, 0};
        List l;
        l.AddTokens(s, separator, true);
        return l;
    }
    static S join(const List& l, Unit c)
    {
        const Unit separator[] = {c, 0};
        S s;
        l.GetFormatString(s, separator);
        return s;
    }
    static void sort(List& l) { l.Sort(kByUnits); }
    static bool containsNoCase(const List& l, const S& s) { return l.FindFirstNoCase(s) >= 0; }
};

#define ROW(area, op, name, ...)                                                                                                           \
    COUNTED(op<StdStr>)->Name(area "/" name "/u16string") __VA_ARGS__;                                                                     \
    COUNTED(op<Kelgen>)->Name(area "/" name "/kelgen") __VA_ARGS__;
STRING_ROWS
STRING_LIST_ROWS
#undef ROW

#define ROW(area, op, name, ...) COUNTED(op<StdStr>)->Name(area "/" name "/u16string") __VA_ARGS__;
STRING_REVERSE_TEXT_ROWS

}  // namespace
