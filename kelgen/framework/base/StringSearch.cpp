// StringSearch.cpp: CString's comparison, search, parts and changes of its text.
#include <kelgen/framework/base/String.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/internal/NarrowText.h>

#include <algorithm>
#include <cstring>

using namespace kelgen::detail;

namespace {

int Distance(LPCSTR from, LPCSTR to)
{
    return static_cast<int>(to - from);
}

int PositionOrNone(LPCSTR text, LPCSTR found)
{
    return found ? Distance(text, found) : -1;
}

void MoveBytes(char* target, LPCSTR source, int length)
{
    std::memmove(target, source, static_cast<std::size_t>(length));
}

}  // namespace

int CString::Compare(LPCSTR text) const
{
    return CompareText(m_pszData, OrEmpty(text));
}

int CString::CompareNoCase(LPCSTR text) const
{
    return CompareTextNoCase(m_pszData, OrEmpty(text));
}

int CString::Collate(LPCSTR text) const
{
    return CollateText(m_pszData, OrEmpty(text));
}

int CString::CollateNoCase(LPCSTR text) const
{
    return CollateTextNoCase(m_pszData, OrEmpty(text));
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const
{
    first = std::clamp(first, 0, GetLength());
    count = std::clamp(count, 0, GetLength() - first);
    if (count == GetLength())
        return *this;
    return CString(m_pszData + first, count);
}

CString CString::Left(int count) const
{
    return Mid(0, count);
}

CString CString::Right(int count) const
{
    return Mid(GetLength() - std::clamp(count, 0, GetLength()));
}

CString CString::SpanIncluding(LPCSTR set) const
{
    return Left(SpanInSet(m_pszData, OrEmpty(set)));
}

CString CString::SpanExcluding(LPCSTR set) const
{
    return Left(SpanOutsideSet(m_pszData, OrEmpty(set)));
}

CString CString::Tokenize(LPCSTR separators, int& start) const
{
    if (start < 0)
        AfxThrowInvalidArgException();
    if (start < GetLength()) {
        if (!separators || !*separators)
            return Mid(start);
        const int first = start + SpanInSet(m_pszData + start, separators);
        if (first < GetLength()) {
            const int count = SpanOutsideSet(m_pszData + first, separators);
            start = first + count + 1;
            return Mid(first, count);
        }
    }
    start = -1;
    return CString();
}

CString& CString::MakeUpper()
{
    UpperText(PrepareWrite(GetLength()));
    return *this;
}

CString& CString::MakeLower()
{
    LowerText(PrepareWrite(GetLength()));
    return *this;
}

CString& CString::MakeReverse()
{
    ReverseText(PrepareWrite(GetLength()));
    return *this;
}

void CString::CutLeft(int count)
{
    if (count > 0)
        Delete(0, count);
}

CString& CString::TrimLeft()
{
    LPCSTR place = m_pszData;
    while (IsSpaceAt(place))
        place = NextCharacter(place);
    CutLeft(Distance(m_pszData, place));
    return *this;
}

CString& CString::TrimLeft(char character)
{
    LPCSTR place = m_pszData;
    while (character && *place == character)
        place = NextCharacter(place);
    CutLeft(Distance(m_pszData, place));
    return *this;
}

CString& CString::TrimLeft(LPCSTR set)
{
    if (set && *set)
        CutLeft(SpanInSet(m_pszData, set));
    return *this;
}

namespace {

/// Where the run of characters that match, and that ends the text, begins.
template <class Matches>
int TrailingRun(LPCSTR text, int length, Matches matches)
{
    if (!HasTwoByteCharacters()) {
        while (length > 0 && matches(text + length - 1))
            --length;
        return length;
    }
    // What a byte means is known from the start of the text only.
    int run = -1;
    for (LPCSTR place = text; *place; place = NextCharacter(place)) {
        if (!matches(place))
            run = -1;
        else if (run < 0)
            run = Distance(text, place);
    }
    return run < 0 ? length : run;
}

}  // namespace

CString& CString::TrimRight()
{
    Truncate(TrailingRun(m_pszData, GetLength(), IsSpaceAt));
    return *this;
}

CString& CString::TrimRight(char character)
{
    Truncate(TrailingRun(m_pszData, GetLength(), [character](LPCSTR place) { return *place == character; }));
    return *this;
}

CString& CString::TrimRight(LPCSTR set)
{
    if (set && *set)
        Truncate(TrailingRun(m_pszData, GetLength(), [set](LPCSTR place) { return SpanInSet(place, set) > 0; }));
    return *this;
}

// Both ends are sought first: a shared text is then copied once, without them.
CString& CString::Trim()
{
    const int end = TrailingRun(m_pszData, GetLength(), IsSpaceAt);
    int start = 0;
    while (start < end && IsSpaceAt(m_pszData + start))
        start = Distance(m_pszData, NextCharacter(m_pszData + start));
    if (start > 0 || end < GetLength())
        SetString(m_pszData + start, end - start);
    return *this;
}

CString& CString::Trim(char character)
{
    return TrimRight(character).TrimLeft(character);
}

CString& CString::Trim(LPCSTR set)
{
    return TrimRight(set).TrimLeft(set);
}

int CString::Replace(char oldCharacter, char newCharacter)
{
    if (oldCharacter == newCharacter)
        return 0;
    int replaced = 0;
    for (int at = Find(oldCharacter); at >= 0; at = Find(oldCharacter, at + 1)) {
        SetAt(at, newCharacter);
        ++replaced;
    }
    return replaced;
}

int CString::Replace(LPCSTR oldText, LPCSTR newText)
{
    const int oldLength = StringLength(oldText);
    const int newLength = StringLength(newText);
    if (oldLength == 0)
        return 0;

    CString result;
    int replaced = 0;
    int rest = 0;
    for (int at = Find(oldText); at >= 0; at = Find(oldText, rest)) {
        result.Append(m_pszData + rest, at - rest);
        result.Append(newText, newLength);
        rest = at + oldLength;
        ++replaced;
    }
    if (replaced == 0)
        return 0;
    result.Append(m_pszData + rest, GetLength() - rest);
    SetString(result, result.GetLength());
    return replaced;
}

int CString::Remove(char character)
{
    const int first = Find(character);
    if (first < 0)
        return 0;
    char* const text = PrepareWrite(GetLength());
    char* const end = text + GetLength();
    char* target = text + first;
    if (!HasTwoByteCharacters()) {
        target = std::remove(target, end, character);
    } else {
        for (LPCSTR source = target; source < end;) {
            LPCSTR const next = NextCharacter(source);
            if (*source != character) {
                MoveBytes(target, source, Distance(source, next));
                target += next - source;
            }
            source = next;
        }
    }
    const int removed = Distance(target, end);
    SetLength(Distance(text, target));
    return removed;
}

int CString::Insert(int index, char character)
{
    const CString text(character);
    return Insert(index, text);
}

int CString::Insert(int index, LPCSTR text)
{
    const int inserted = StringLength(text);
    const int length = GetLength();
    if (inserted == 0)
        return length;
    index = std::clamp(index, 0, length);
    // The inserted text may lie in this string, which is about to move.
    const CString source(text, inserted);
    Append(source, inserted);
    MoveBytes(m_pszData + index + inserted, m_pszData + index, length - index);
    MoveBytes(m_pszData + index, source, inserted);
    return GetLength();
}

int CString::Delete(int index, int count)
{
    const int length = GetLength();
    index = std::clamp(index, 0, length);
    count = std::clamp(count, 0, length - index);
    if (count == 0)
        return length;
    char* const text = PrepareWrite(length);
    MoveBytes(text + index, text + index + count, length - index - count);
    SetLength(length - count);
    return GetLength();
}

int CString::Find(char character, int start) const
{
    if (start < 0 || start >= GetLength())
        return -1;
    if (character == 0 || HasTwoByteCharacters())
        return PositionOrNone(m_pszData, FindCharacter(m_pszData + start, character));

    // With the length known a miss takes one look at each byte. A 0 byte before the place ends the text.
    const auto length = static_cast<std::size_t>(GetLength() - start);
    const auto found = static_cast<LPCSTR>(std::memchr(m_pszData + start, static_cast<unsigned char>(character), length));
    if (!found || std::memchr(m_pszData + start, 0, static_cast<std::size_t>(found - (m_pszData + start))))
        return -1;
    return Distance(m_pszData, found);
}

int CString::Find(LPCSTR text, int start) const
{
    if (!text || start < 0 || start > GetLength())
        return -1;
    return PositionOrNone(m_pszData, FindText(m_pszData + start, text));
}

int CString::ReverseFind(char character) const
{
    return PositionOrNone(m_pszData, FindLastCharacter(m_pszData, character));
}

int CString::FindOneOf(LPCSTR set) const
{
    return PositionOrNone(m_pszData, FindInSet(m_pszData, OrEmpty(set)));
}
