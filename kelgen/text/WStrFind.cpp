// WStrFind.cpp: searching, parts and comparison.
#include <kelgen/text/WStr.h>

#include <kelgen/text/internal/ScanUnits.h>

#include <algorithm>

using kelgen::AsWide;
using kelgen::detail::FindLastUnit;
using kelgen::detail::FindUnit;
using kelgen::detail::FindUnits;

namespace {

/// The text itself, or the empty one for null.
const WCHAR* OrEmpty(const unsigned short* text)
{
    return AsWide(text ? text : u""_w);
}

/// @p found, which counts from @p from, as an index of @p text; -1 when a 0 unit comes before it.
int UnlessCutOff(const unsigned short* text, int from, int found)
{
    return found >= 0 && FindUnit(text + from, found, 0) < 0 ? from + found : -1;
}

}  // namespace

int CWStr::Find(unsigned short ch) const
{
    return Find(ch, 0);
}

int CWStr::Find(unsigned short ch, int nStart) const
{
    const int length = GetLength();
    const int from = std::max(nStart, 0);
    if (from >= length)
        return -1;
    if (ch == 0)
        return from + kelgen::detail::LengthToZero(m_text + from, length - from);
    return UnlessCutOff(m_text, from, FindUnit(m_text + from, length - from, ch));
}

int CWStr::Find(const unsigned short* sub, int nStart) const
{
    const int length = GetLength();
    const int from = std::max(nStart, 0);
    if (from > length)
        return -1;
    const int subLength = SafeStrlen(sub);
    if (subLength == 0)
        return from;
    return UnlessCutOff(m_text, from, FindUnits(m_text + from, length - from, sub, subLength));
}

int CWStr::ReverseFind(unsigned short ch) const
{
    const int end = kelgen::detail::LengthToZero(m_text, GetLength());
    return ch == 0 ? end : FindLastUnit(m_text, end, ch);
}

int CWStr::FindOneOf(const unsigned short* set) const
{
    const WCHAR* const found = wcspbrk(AsWide(m_text), OrEmpty(set));
    return found ? static_cast<int>(found - AsWide(m_text)) : -1;
}

CWStr CWStr::SpanIncluding(const unsigned short* set) const
{
    return Left(static_cast<int>(wcsspn(AsWide(m_text), OrEmpty(set))));
}

CWStr CWStr::SpanExcluding(const unsigned short* set) const
{
    return Left(static_cast<int>(wcscspn(AsWide(m_text), OrEmpty(set))));
}

/// A copy of units that lie within the text; shared when it is the whole text.
CWStr CWStr::Part(int nFirst, int nCount) const
{
    if (nFirst == 0 && nCount == GetLength())
        return *this;
    return CWStr(m_text + nFirst, nCount);
}

CWStr CWStr::Mid(int nFirst, int nCount) const
{
    const int first = std::clamp(nFirst, 0, GetLength());
    return Part(first, std::clamp(nCount, 0, GetLength() - first));
}

CWStr CWStr::Mid(int nFirst) const
{
    return Mid(nFirst, GetLength());
}

CWStr CWStr::Left(int n) const
{
    return Part(0, std::clamp(n, 0, GetLength()));
}

CWStr CWStr::Right(int n) const
{
    const int count = std::clamp(n, 0, GetLength());
    return Part(GetLength() - count, count);
}

int CWStr::Compare(const unsigned short* text) const
{
    return wcscmp(AsWide(m_text), OrEmpty(text));
}

int CWStr::CompareNoCase(const unsigned short* text) const
{
    return _wcsicmp(AsWide(m_text), OrEmpty(text));
}

int CWStr::CompareNoCase(const unsigned short* left, const unsigned short* right)
{
    return _wcsicmp(OrEmpty(left), OrEmpty(right));
}

int CWStr::Collate(const unsigned short* text) const
{
    return wcscoll(AsWide(m_text), OrEmpty(text));
}

int CWStr::CollateNoCase(const unsigned short* text) const
{
    return _wcsicoll(AsWide(m_text), OrEmpty(text));
}
