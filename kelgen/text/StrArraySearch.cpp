// StrArraySearch.cpp: comparing, searching and sorting lists of narrow texts.
#include <kelgen/text/StrArray.h>

#include <kelgen/containers/PivotSort.h>
#include <kelgen/text/internal/ByteText.h>

#include <algorithm>

namespace {

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
    for (int i = 0; i < GetSize(); ++i) {
        if (CompareNoCase(text, GetAt(i)) == 0)
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

void CStrArray::Sort(int (*compare)(const char*, const char*))
{
    // Every access is checked: the comparison is a host's and may reach this array.
    const auto notAfter = [this, compare](int i, int j) { return compare(GetAt(i), GetAt(j)) <= 0; };
    const auto exchange = [this](int i, int j) { Swap(i, j); };
    const auto fetch = [this](int i) {
        if (static_cast<unsigned>(i) < static_cast<unsigned>(GetSize()))
            __builtin_prefetch(GetData()[i].GetString());
    };
    kelgen::detail::PivotSort(GetSize(), notAfter, exchange, fetch);
}
