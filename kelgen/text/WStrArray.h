// WStrArray.h: CWStrArray, the list of 16-bit strings: splitting, joining, searching, sorting, and keeping it in the profile.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/FastArray.h>
#include <kelgen/containers/PivotSort.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStr.h>

#include <type_traits>
#include <utility>

/// A list of strings that keeps its string objects, and their blocks, for reuse.
///
///     CWStrArray names;
///     names.AddTokens(u"beta;alpha;;beta"_w, u";"_w, false);  // beta, alpha, beta
///     names.Sort(CWStr::CompareNoCase);                       // alpha, beta, beta
///     CWStr text;
///     names.GetFormatString(text, u", "_w);                   // "alpha, beta, beta"
///
/// By contract: the members here go by the used count, GetSize(), and element access is checked against the slots (see
/// CFastArray). A null text counts as the empty one.
/// Throws: the memory exception.
/// Threads: one at a time.
class KELGEN_API CWStrArray : public CFastArray<CWStr, const CWStr&>
{
public:
    /// Survives being moved bit by bit: see kelgen::is_movable_bitwise.
    using MovableBitwise = CWStrArray;

    CWStrArray();
    /// All slots are copied, used or not. Assigned to itself, an array stays as it is.
    CWStrArray(const CWStrArray& other);
    CWStrArray& operator=(const CWStrArray& other);
    ~CWStrArray() override;

    using CFastArray<CWStr, const CWStr&>::Add;
    using CFastArray<CWStr, const CWStr&>::AddUnique;

    /// Appends CWStr(text) and returns its index. By contract: a value below 0x10000 is the number of a string resource, as for CWStr,
    /// here and in the next two.
    int Add(const unsigned short* text);
    /// Appends @p text unless an entry has the very same units.
    void AddUnique(const unsigned short* text);
    /// Appends the pieces of @p text between separators, as CWStrTokenizer finds them; empty ones only when @p bAddEmpty.
    /// Cost: about 30 ns a short token.
    void AddTokens(const unsigned short* text, const unsigned short* separator, bool bAddEmpty);

    /// The first index whose entry equals @p text by the runtime's collation without case, or -1.
    [[nodiscard]] int FindFirstNoCase(const unsigned short* text) const;

    // Each with a literal or a text of the standard library; text in other units does not compile and names the way.
    template <kelgen::detail::ForeignText TEXT>
    int Add(const TEXT& text)
    {
        return Add(CWStr(text));
    }
    template <kelgen::detail::ForeignText TEXT>
    void AddUnique(const TEXT& text)
    {
        AddUnique(static_cast<const unsigned short*>(CWStr(text)));
    }
    template <class TEXT, class SEPARATOR>
    requires kelgen::detail::ForeignText<TEXT> || kelgen::detail::ForeignText<SEPARATOR>
    void AddTokens(const TEXT& text, const SEPARATOR& separator, bool bAddEmpty) { AddTokens(CWStr(text), CWStr(separator), bAddEmpty); }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] int FindFirstNoCase(const TEXT& text) const
    {
        return FindFirstNoCase(CWStr(text));
    }

    /// @p result becomes the entries with @p separator between them; empty when there is none.
    void GetFormatString(CWStr& result, const unsigned short* separator) const;

    /// Both trim the white space of every entry, as CWStr's members of these names.
    void TrimLeft();
    void TrimRight();

    /// Sorts ascending by @p pfnCompare, which returns negative, 0 or positive. Equal entries may change order.
    /// By contract: the pivot of a range is its first entry. It is compared, as the first argument, with the entries from the
    /// range's end downwards until one is less; they change places; then with those from the beginning upwards, as the second
    /// argument, until one is greater; and so on in turns until the two ends meet. The part behind the pivot is sorted before
    /// the part ahead of it.
    /// Cost: n log n comparisons on random input, quadratic on sorted input; no recursion; an exchange copies no text.
    void Sort(int (*pfnCompare)(const unsigned short*, const unsigned short*));
    /// The same by a function object, which the compiler can build into the sort.
    template <class COMPARE>
    requires std::is_invocable_r_v<int, COMPARE&, const unsigned short*, const unsigned short*>
    void Sort(COMPARE compare);

    /// Writes the entries to the application's profile as the values "entry.0", "entry.1" and so on, in the OEM code page.
    /// Without an application object nothing is written; a failed write is passed over.
    /// By contract: no count is kept, so values of a longer list written before stay and are read again.
    void WriteToRegistry(const char* section, const char* entry);
    /// Appends the values that WriteToRegistry wrote, up to the first that is missing or empty, and returns how many there were.
    int AddFromRegistry(CString section, CString entry);

private:
    void AddOwn(CWStr&& text);
};

/// String arrays as elements go one after the other, each with its count.
template <>
KELGEN_API void SerializeElements<CWStrArray>(CArchive& ar, CWStrArray* pElements, int nCount);

template <class COMPARE>
requires std::is_invocable_r_v<int, COMPARE&, const unsigned short*, const unsigned short*>
void CWStrArray::Sort(COMPARE compare)
{
    // Every access is checked: the comparison is a host's and may reach this array.
    const auto notAfter = [this, &compare](int i, int j) { return compare(GetAt(i), GetAt(j)) <= 0; };
    const auto exchange = [this](int i, int j) {
        CWStr& first = GetAt(i);
        CWStr& second = GetAt(j);
        if (first.GetData()->nRefCount > 0 && second.GetData()->nRefCount > 0)
            kelgen::detail::ExchangeBytes(first, second);
        else
            std::swap(first, second);  // a locked text keeps its buffer
    };
    const auto fetch = [this](int i) {
        if (static_cast<unsigned>(i) < static_cast<unsigned>(m_nSize))
            __builtin_prefetch(static_cast<const unsigned short*>(m_pData[i]));
    };
    kelgen::detail::PivotSort(m_nUsedCount, notAfter, exchange, fetch);
}
