// WStrEdit.cpp: changing a string in place.
#include <kelgen/text/WStr.h>

#include <kelgen/text/internal/ScanUnits.h>
#include <kelgen/text/internal/WStrBlocks.h>

#include <algorithm>

using namespace kelgen::detail;
using kelgen::AsWide;

namespace {

bool IsSpace(unsigned short unit)
{
    if (unit < 0x80)
        return unit == 0x20 || (unit >= 0x09 && unit <= 0x0D);
    return _ismbcspace(unit) != 0;
}

/// Membership in a set of units; 0 is in none.
struct UnitSet
{
    const unsigned short* units;
    int length;

    explicit UnitSet(const unsigned short* set) : units(set), length(CWStr::SafeStrlen(set)) {}
    bool operator()(unsigned short unit) const { return unit != 0 && FindUnit(units, length, unit) >= 0; }
};

/// The length of the leading run of units that @p belongs.
template <class Belongs>
int LeadingRun(const unsigned short* text, int length, const Belongs& belongs)
{
    int run = 0;
    while (run < length && belongs(text[run]))
        ++run;
    return run;
}

/// The length without what stands from the run of units on that @p belongs and that ends at the first 0 unit; @p length when there is no
/// such run.
template <class Belongs>
int LengthWithoutTail(const unsigned short* text, int length, const Belongs& belongs)
{
    const int end = LengthToZero(text, length);
    int start = end;
    while (start > 0 && belongs(text[start - 1]))
        --start;
    return start < end ? start : length;
}

/// The number of occurrences of @p sought that do not overlap, from the left.
int CountText(const unsigned short* text, int length, const unsigned short* sought, int soughtLength)
{
    int count = 0;
    for (int from = 0, at = 0; (at = FindUnits(text + from, length - from, sought, soughtLength)) >= 0; from += at + soughtLength)
        ++count;
    return count;
}

struct Replacement
{
    const unsigned short* oldText;
    int oldLength;
    const unsigned short* newText;
    int newLength;

    /// Writes the text at @p source with every occurrence replaced to @p dest. The two may share memory as long as what is still
    /// to be read never lies before what is still to be written.
    void Apply(unsigned short* dest, const unsigned short* source, int length) const
    {
        const unsigned short* const end = source + length;
        for (int at = 0; (at = FindUnits(source, static_cast<int>(end - source), oldText, oldLength)) >= 0;) {
            MoveUnits(dest, source, at);
            dest += at;
            source += at + oldLength;
            MoveUnits(dest, newText, newLength);
            dest += newLength;
        }
        MoveUnits(dest, source, static_cast<int>(end - source));
    }
};

}  // namespace

/// Whether @p text points into this string's block.
bool CWStr::Holds(const unsigned short* text) const noexcept
{
    const auto first = reinterpret_cast<std::uintptr_t>(m_text);
    const auto at = reinterpret_cast<std::uintptr_t>(text);
    return at >= first && at - first <= static_cast<std::size_t>(GetAllocLength()) * sizeof *m_text;
}

/// Makes the block this string's own and the text the @p count units of it from @p first on.
void CWStr::KeepPart(int first, int count)
{
    if (LoadCount(GetData()) > 1) {
        unsigned short* const old = m_text;
        AllocBuffer(GetLength());
        CopyUnits(m_text, old + first, count);
        SetLength(count);
        ReleaseText(old);
        return;
    }
    if (first > 0)
        MoveUnits(m_text, m_text + first, count);
    if (count != GetLength())
        SetLength(count);
}

void CWStr::SetAt(int index, unsigned short ch)
{
    KELGEN_CHECK(index >= 0 && index < GetLength(), "CWStr::SetAt: index %d of length %d", index, GetLength());
    CopyBeforeWrite();
    if (index >= 0 && index < GetLength())
        m_text[index] = ch;
}

/// Inserts units that lie outside this string's block; the new length.
int CWStr::InsertUnits(int nIndex, int n, const unsigned short* text)
{
    const int length = GetLength();
    const int index = std::clamp(nIndex, 0, length);
    const int newLength = AddLengths(length, n);
    if (LoadCount(GetData()) > 1 || newLength > GetAllocLength())
        Unshare(newLength);
    MoveUnits(m_text + index + n, m_text + index, length - index);
    MoveUnits(m_text + index, text, n);
    SetLength(newLength);
    return newLength;
}

int CWStr::Insert(int nIndex, unsigned short ch)
{
    return InsertUnits(nIndex, 1, &ch);
}

int CWStr::Insert(int nIndex, const unsigned short* text)
{
    const int added = SafeStrlen(text);
    if (added == 0)
        return GetLength();
    if (!Holds(text))
        return InsertUnits(nIndex, added, text);
    const CWStr copy(text, added);
    return InsertUnits(nIndex, added, copy);
}

int CWStr::Delete(int nIndex, int nCount)
{
    const int length = GetLength();
    const int index = std::max(nIndex, 0);
    if (nCount < 1 || index >= length)
        return length;

    CopyBeforeWrite();
    const int count = std::min(nCount, length - index);
    MoveUnits(m_text + index, m_text + index + count, length - index - count);
    SetLength(length - count);
    return length;
}

int CWStr::Replace(unsigned short oldCh, unsigned short newCh)
{
    if (oldCh == newCh)
        return 0;
    CopyBeforeWrite();
    int count = 0;
    const int length = GetLength();
    for (int from = 0, at = 0; (at = FindUnit(m_text + from, length - from, oldCh)) >= 0; from += at + 1) {
        m_text[from + at] = newCh;
        ++count;
    }
    return count;
}

int CWStr::Replace(const unsigned short* oldText, const unsigned short* newText)
{
    const Replacement replacement{oldText, SafeStrlen(oldText), newText ? newText : u""_w, SafeStrlen(newText)};
    if (replacement.oldLength == 0)
        return 0;
    if (Holds(oldText) || Holds(newText)) {
        const CWStr oldCopy(oldText, replacement.oldLength);
        const CWStr newCopy(newText, replacement.newLength);
        return Replace(static_cast<const unsigned short*>(oldCopy), static_cast<const unsigned short*>(newCopy));
    }

    const int length = GetLength();
    const int count = CountText(m_text, length, oldText, replacement.oldLength);
    if (count == 0)
        return 0;

    const int grown = replacement.newLength - replacement.oldLength;
    const long long newLength = length + static_cast<long long>(count) * grown;
    const int checkedLength = AddLengths(0, newLength);
    if (LoadCount(GetData()) > 1 || checkedLength > GetAllocLength()) {
        unsigned short* const old = m_text;
        AllocBuffer(checkedLength);
        replacement.Apply(m_text, old, length);
        ReleaseText(old);
        return count;
    }

    // A growing text is first moved to the end of the block: reading then stays ahead of writing.
    unsigned short* source = m_text;
    if (grown > 0) {
        source = m_text + GetAllocLength() - length;
        MoveUnits(source, m_text, length);
    }
    replacement.Apply(m_text, source, length);
    SetLength(checkedLength);
    return count;
}

int CWStr::Remove(unsigned short ch)
{
    CopyBeforeWrite();
    if (IsEmpty())
        return 0;
    unsigned short* const end = m_text + GetLength();
    const int removed = static_cast<int>(end - std::remove(m_text, end, ch));
    SetLength(GetLength() - removed);
    return removed;
}

void CWStr::MakeUpper()
{
    CopyBeforeWrite();
    if (!IsEmpty())
        _wcsupr(AsWide(m_text));
}

void CWStr::MakeLower()
{
    CopyBeforeWrite();
    if (!IsEmpty())
        _wcslwr(AsWide(m_text));
}

void CWStr::MakeReverse()
{
    CopyBeforeWrite();
    std::reverse(m_text, m_text + kelgen::detail::LengthToZero(m_text, GetLength()));
}

void CWStr::TrimLeft()
{
    const int run = LeadingRun(m_text, GetLength(), IsSpace);
    KeepPart(run, GetLength() - run);
}

void CWStr::TrimLeft(unsigned short ch)
{
    const int run = LeadingRun(m_text, GetLength(), [ch](unsigned short unit) { return unit == ch; });
    KeepPart(run, GetLength() - run);
}

void CWStr::TrimLeft(const unsigned short* set)
{
    const UnitSet units(set);
    if (units.length == 0)
        return;
    const int run = LeadingRun(m_text, GetLength(), units);
    KeepPart(run, GetLength() - run);
}

void CWStr::TrimRight()
{
    KeepPart(0, LengthWithoutTail(m_text, GetLength(), IsSpace));
}

void CWStr::TrimRight(unsigned short ch)
{
    KeepPart(0, LengthWithoutTail(m_text, GetLength(), [ch](unsigned short unit) { return unit == ch; }));
}

void CWStr::TrimRight(const unsigned short* set)
{
    KeepPart(0, LengthWithoutTail(m_text, GetLength(), UnitSet(set)));
}

int CWStr::_EncodeV033(bool* pMarks)
{
    const CWStr text(*this);
    Empty();

    const int length = text.GetLength();
    std::fill_n(pMarks, length, false);
    int i = 0;
    while (i < length - 1) {
        if (text[i] == '&') {
            ++i;
            if (text[i] != '&')
                pMarks[GetLength()] = true;
        }
        *this += text[i++];
    }
    if (i < length)
        *this += text[i];
    return 1;
}
