// NarrowStrings.cpp: CString and std::string.
#include "StringOperations.h"

#include <kelgen/framework/base/String.h>
#include <kelgen/text/StrArray.h>

namespace bench {

template <>
std::string text<std::string>(std::u16string_view v)
{
    return std::string(v.begin(), v.end());
}

template <>
CString text<CString>(std::u16string_view v)
{
    return CString(text<std::string>(v).c_str());
}

}  // namespace bench

using namespace bench;

namespace {

struct StdNarrow
{
    using S = std::string;
    using List = std::vector<S>;
    using Unit = char;
    static S fromZ(const Unit* p) { return S(p); }
    static S fromN(const Unit* p, int n) { return S(p, static_cast<std::size_t>(n)); }
    static void put(S& s, int i, Unit c) { s[static_cast<std::size_t>(i)] = c; }
    static void append(S& s, Unit c) { s.push_back(c); }
    static void append(S& s, const S& t) { s.append(t); }
    static long find(const S& s, const S& t) { return static_cast<long>(s.find(t)); }
    static long find(const S& s, Unit c) { return static_cast<long>(s.find(c)); }
    static long rfind(const S& s, Unit c) { return static_cast<long>(s.rfind(c)); }
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
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](Unit x, Unit y) { return std::tolower(x) == std::tolower(y); });
    }
    static S upper(const S& s)
    {
        S r(s);
        for (Unit& c : r)
            c = static_cast<Unit>(std::toupper(c));
        return r;
    }
    static S trim(const S& s)
    {
        const auto from = s.find_first_not_of(" \t\r\n");
        return from == S::npos ? S() : s.substr(from, s.find_last_not_of(" \t\r\n") - from + 1);
    }
    static S mid(const S& s, int pos, int n) { return s.substr(static_cast<std::size_t>(pos), static_cast<std::size_t>(n)); }
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

/// The library's list, dressed as a container of the standard library for what is not timed.
struct KelgenNarrowList : CStrArray
{
    void push_back(const CString& text) { Add(text); }
    friend bool operator==(const KelgenNarrowList& left, const KelgenNarrowList& right)
    {
        return std::equal(left.GetData(), left.GetData() + left.GetSize(), right.GetData(), right.GetData() + right.GetSize());
    }
};

struct KelgenNarrow
{
    using S = CString;
    using List = KelgenNarrowList;
    using Unit = char;
    static S fromZ(const Unit* p) { return S(p); }
    static S fromN(const Unit* p, int n) { return S(p, n); }
    static void put(S& s, int i, Unit c) { s.SetAt(i, c); }
    static void append(S& s, Unit c) { s += c; }
    static void append(S& s, const S& t) { s += t; }
    static long find(const S& s, const S& t) { return s.Find(t.GetString()); }
    static long find(const S& s, Unit c) { return s.Find(c); }
    static long rfind(const S& s, Unit c) { return s.ReverseFind(c); }
    static void replaceAll(S& s, const S& a, const S& b) { s.Replace(a.GetString(), b.GetString()); }
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
        r.Trim();
        return r;
    }
    static S mid(const S& s, int pos, int n) { return s.Mid(pos, n); }
    static List split(const S& s, Unit c)
    {
        const Unit separator[] = {c, 0};
        List l;
        l.AddTokens(s, separator, 1);
        return l;
    }
    static S join(const List& l, Unit c)
    {
        const Unit separator[] = {c, 0};
        S s;
        l.GetFormatString(&s, separator);
        return s;
    }
    static void sort(List& l) { l.Sort(CStrArray::Compare); }
    static bool containsNoCase(const List& l, const S& s) { return l.FindFirstNoSortNoCase(s) >= 0; }
};

#define ROW(area, op, name, ...)                                                                                                           \
    COUNTED(op<StdNarrow>)->Name("Narrow" area "/" name "/string") __VA_ARGS__;                                                            \
    COUNTED(op<KelgenNarrow>)->Name("Narrow" area "/" name "/kelgen") __VA_ARGS__;
STRING_ROWS
STRING_LIST_ROWS
#undef ROW

}  // namespace
