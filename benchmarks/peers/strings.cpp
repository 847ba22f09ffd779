// strings.cpp: the peers' strings and string lists.
#include "../StringOperations.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <wx/arrstr.h>
#include <wx/string.h>
#include <wx/tokenzr.h>

#include <QStringList>

using namespace bench;

namespace {

struct QStr
{
    using S = QString;
    using List = QStringList;
    using Unit = char16_t;
    static S fromZ(const Unit* p) { return S(reinterpret_cast<const QChar*>(p)); }
    static S fromN(const Unit* p, int n) { return S(reinterpret_cast<const QChar*>(p), n); }
    static void put(S& s, int i, Unit c) { s[i] = QChar(c); }
    static void append(S& s, Unit c) { s.append(QChar(c)); }
    static void append(S& s, const S& t) { s.append(t); }
    static long find(const S& s, const S& t) { return s.indexOf(t); }
    static long find(const S& s, Unit c) { return s.indexOf(QChar(c)); }
    static long rfind(const S& s, const S& t) { return s.lastIndexOf(t); }
    static long rfind(const S& s, Unit c) { return s.lastIndexOf(QChar(c)); }
    static void replaceAll(S& s, const S& a, const S& b) { s.replace(a, b); }
    static bool equalNoCase(const S& a, const S& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }
    static S upper(const S& s) { return s.toUpper(); }
    static S trim(const S& s) { return s.trimmed(); }
    static S mid(const S& s, int pos, int n) { return s.mid(pos, n); }
    static List split(const S& s, Unit c) { return s.split(QChar(c)); }
    static S join(const List& l, Unit c) { return l.join(QChar(c)); }
    static void sort(List& l) { l.sort(); }
    static bool containsNoCase(const List& l, const S& s) { return l.contains(s, Qt::CaseInsensitive); }
};

struct IcuStr
{
    using S = icu::UnicodeString;
    using List = std::vector<S>;
    using Unit = char16_t;
    static S fromZ(const Unit* p) { return S(p); }
    static S fromN(const Unit* p, int n) { return S(p, n); }
    static void put(S& s, int i, Unit c) { s.setCharAt(i, c); }
    static void append(S& s, Unit c) { s.append(c); }
    static void append(S& s, const S& t) { s.append(t); }
    static long find(const S& s, const S& t) { return s.indexOf(t); }
    static long find(const S& s, Unit c) { return s.indexOf(c); }
    static long rfind(const S& s, const S& t) { return s.lastIndexOf(t); }
    static long rfind(const S& s, Unit c) { return s.lastIndexOf(c); }
    static void replaceAll(S& s, const S& a, const S& b) { s.findAndReplace(a, b); }
    static bool equalNoCase(const S& a, const S& b) { return a.caseCompare(b, U_FOLD_CASE_DEFAULT) == 0; }
    static S upper(const S& s) { return S(s).toUpper(icu::Locale::getRoot()); }
    static S trim(const S& s) { return S(s).trim(); }
    static S mid(const S& s, int pos, int n) { return S(s, pos, n); }
    static List split(const S& s, Unit c)
    {
        List l;
        int from = 0;
        for (int at; (at = s.indexOf(c, from)) >= 0; from = at + 1)
            l.emplace_back(s, from, at - from);
        l.emplace_back(s, from);
        return l;
    }
    static S join(const List& l, Unit c)
    {
        S r;
        for (const S& s : l) {
            if (&s != l.data())
                r.append(c);
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

struct WxStr
{  // 32-bit units on Linux
    using S = wxString;
    using List = wxArrayString;
    using Unit = wchar_t;
    static S fromZ(const Unit* p) { return S(p); }
    static S fromN(const Unit* p, int n) { return S(p, n); }
    static void put(S& s, int i, Unit c) { s[i] = c; }
    static void append(S& s, Unit c) { s += c; }
    static void append(S& s, const S& t) { s += t; }
    static long find(const S& s, const S& t) { return long(s.find(t)); }
    static long find(const S& s, Unit c) { return long(s.find(c)); }
    static long rfind(const S& s, const S& t) { return long(s.rfind(t)); }
    static long rfind(const S& s, Unit c) { return long(s.rfind(c)); }
    static void replaceAll(S& s, const S& a, const S& b) { s.Replace(a, b); }
    static bool equalNoCase(const S& a, const S& b) { return a.CmpNoCase(b) == 0; }
    static S upper(const S& s) { return s.Upper(); }
    static S trim(const S& s) { return S(s).Trim().Trim(false); }
    static S mid(const S& s, int pos, int n) { return s.Mid(pos, n); }
    static List split(const S& s, Unit c)
    {
        List l;
        for (wxStringTokenizer t(s, S(c), wxTOKEN_RET_EMPTY_ALL); t.HasMoreTokens();)
            l.Add(t.GetNextToken());
        return l;
    }
    static S join(const List& l, Unit c) { return wxJoin(l, c, 0); }
    static void sort(List& l) { l.Sort(); }
    static bool containsNoCase(const List& l, const S& s) { return l.Index(s, false) != wxNOT_FOUND; }
};

#define ROW(area, op, name, ...)                                                                                                           \
    BENCHMARK(op<QStr>)->Name(area "/" name "/QString") __VA_ARGS__;                                                                       \
    BENCHMARK(op<IcuStr>)->Name(area "/" name "/UnicodeString") __VA_ARGS__;                                                               \
    BENCHMARK(op<WxStr>)->Name(area "/" name "/wxString") __VA_ARGS__;

STRING_ROWS
STRING_REVERSE_TEXT_ROWS
STRING_LIST_ROWS

void ConstructQStringLiteral(State& st)  // Qt's compile-time literal: nothing is copied
{
    for (auto _ : st) {
        QString s = QStringLiteral("abcdefghijklmnopqrstuvwxyzabcdefghijklmn");
        DoNotOptimize(s);
    }
}
BENCHMARK(ConstructQStringLiteral)->Name("String/Construct/QStringLiteral/40");

}  // namespace
