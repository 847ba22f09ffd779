// StrArraySearch.cpp: comparing, searching and sorting lists of narrow texts.
#include <kelgen/text/StrArray.h>

#include <kelgen/containers/PivotSort.h>
#include <kelgen/text/internal/AsciiLetters.h>
#include <kelgen/text/internal/ByteText.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace {

/// A text by its first eight bytes, the first one highest; those behind its end count as 0.
struct TextPlace
{
    std::uint64_t start;
    int index;
};

TextPlace PlaceOf(const char* text, int index)
{
    TextPlace place{0, index};
    for (int shift = 56; shift >= 0 && *text != 0; shift -= 8)
        place.start |= std::uint64_t{static_cast<unsigned char>(*text++)} << shift;
    return place;
}

const unsigned char* Bytes(const char* text)
{
    return reinterpret_cast<const unsigned char*>(text != nullptr ? text : "");
}

}  // namespace

int CStrArray::Compare(const char* a, const char* b)
{
    return kelgen::detail::CompareBytes(a, b);
}

int CStrArray::CompareNoCase(const char* a, const char* b)
{
    return _mbsicmp(Bytes(a), Bytes(b));
}

int CStrArray::Find(const char* text, int (*compare)(const char*, const char*)) const
{
    int low = 0;
    int high = GetUpperBound();
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        const int order = compare(text, GetAt(middle));
        if (order == 0)
            return middle;
        if (order < 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return -1;
}

int CStrArray::FindNoCase(const char* text) const
{
    return Find(text, CompareNoCase);
}

int CStrArray::FindFirstNoSortNoCase(const char* text) const
{
    // Most entries need no call.
    const unsigned char sought = *Bytes(text);
    for (int i = 0; i < GetSize(); ++i) {
        if (!kelgen::detail::AreDifferentLetters(sought, *Bytes(m_pData[i])) && CompareNoCase(text, m_pData[i]) == 0)
            return i;
    }
    return -1;
}

int CStrArray::CountPrefixNoCase(const char* prefix) const
{
    const int length = CString::StringLength(prefix);
    if (length == 0)
        return GetSize();

    int count = 0;
    for (int i = 0; i < GetSize(); ++i) {
        const CString start = GetAt(i).Left(length);
        count += start.GetLength() == length && CompareNoCase(start, prefix) == 0;
    }
    return count;
}

void CStrArray::ExtractPrefixNoSortNoCase(const CStrArray& source, const char* prefix, int nLeft, int nMinLen)
{
    // The prefix may be an entry's text.
    const CString ownPrefix(prefix);
    const int compared = ownPrefix.IsEmpty() ? 0 : std::max(ownPrefix.GetLength(), nMinLen);
    const int minimum = ownPrefix.IsEmpty() ? nMinLen : compared;
    RemoveAll();
    for (int i = 0; i < source.GetSize(); ++i) {
        const CString text = source[i].Left(nLeft);
        if (text.GetLength() < minimum || CompareNoCase(text.Left(compared), ownPrefix) != 0)
            continue;
        if (FindFirstNoSortNoCase(text) < 0)
            Add(text);
    }
}

// No host sees these comparisons: first bytes are compared in registers and indices exchanged, as the texts would be, and the texts put
// to their places at the end. False, and nothing done, when a text is locked, which keeps its buffer, or memory ends.
bool CStrArray::SortByBytes()
{
    const auto size = static_cast<std::size_t>(m_nSize);
    const std::unique_ptr<TextPlace[]> places(new (std::nothrow) TextPlace[size]);
    const std::unique_ptr<std::byte[]> texts(new (std::nothrow) std::byte[size * sizeof(CString)]);
    if (!places || !texts || std::any_of(m_pData, m_pData + m_nSize, [](const CString& text) { return text.IsLocked(); }))
        return false;

    for (int i = 0; i < m_nSize; ++i)
        places[static_cast<std::size_t>(i)] = PlaceOf(m_pData[i], i);
    const auto at = [&places](int i) -> TextPlace& { return places[static_cast<std::size_t>(i)]; };
    const auto notAfter = [this, &at](int i, int j) {
        const TextPlace& left = at(i);
        const TextPlace& right = at(j);
        if (left.start != right.start)
            return left.start < right.start;
        return (left.start & 0xFF) == 0 || std::strcmp(m_pData[left.index] + 8, m_pData[right.index] + 8) <= 0;
    };
    kelgen::detail::PivotSort(
        m_nSize, notAfter, [&at](int i, int j) { std::swap(at(i), at(j)); }, [](int) {});

    std::memcpy(texts.get(), static_cast<const void*>(m_pData), size * sizeof(CString));
    for (int i = 0; i < m_nSize; ++i)
        std::memcpy(static_cast<void*>(m_pData + i), &texts[static_cast<std::size_t>(at(i).index) * sizeof(CString)], sizeof(CString));
    return true;
}

void CStrArray::Sort(int (*compare)(const char*, const char*))
{
    if (m_nSize > 1 && compare == Compare && SortByBytes())
        return;

    // Every access is checked: the comparison is a host's and may reach this array.
    const auto notAfter = [this, compare](int i, int j) { return compare(GetAt(i), GetAt(j)) <= 0; };
    const auto exchange = [this](int i, int j) { Swap(i, j); };
    const auto fetch = [this](int i) {
        if (static_cast<unsigned>(i) < static_cast<unsigned>(GetSize()))
            __builtin_prefetch(GetData()[i].GetString());
    };
    kelgen::detail::PivotSort(GetSize(), notAfter, exchange, fetch);
}
