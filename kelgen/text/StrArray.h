// StrArray.h: CStrArray, the list of narrow texts: splitting, searching, sorting and joining.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/StdArrayInterface.h>
#include <kelgen/framework/collections/StringArray.h>
#include <kelgen/platform/support/Assert.h>
#include <kelgen/text/IntegerText.h>

#include <type_traits>

class COleVariant;

/// Where a host keeps the texts of its identifiers.
class CStringDataSource
{
public:
    /// Sets @p text, which is empty, to the text of @p id.
    virtual void GetStringData(CString& text, unsigned int id) = 0;

protected:
    ~CStringDataSource() = default;
};

/// A CStringArray with the operations on lists of texts, which text tables and controls can read.
///
///     CStrArray names;
///     names.AddTokens("beta;alpha;;beta", ";", 0);  // beta, alpha, beta
///     names.Sort(CStrArray::CompareNoCase);         // alpha, beta, beta
///     int place = names.FindNoCase("ALPHA");        // 0
///     CString text = names.FormatString("%1 and %2");  // "alpha and beta"
///
/// Comparisons "without case" follow the multibyte code page (_mbsicmp). A null text counts as the empty one.
/// Throws: the invalid-argument exception for an index outside [0, count), before anything changes; the memory exception.
/// Threads: one at a time.
class KELGEN_API CStrArray : public CStringArray, public CBaseTextArray
{
public:
    using MovableBitwise = CStrArray;

    CStrArray();
    /// One entry.
    CStrArray(const char* text);
    /// @p text, then the entries of @p rest.
    CStrArray(const char* text, const CStrArray& rest);
    CStrArray(const CStrArray& other);
    /// The first @p count of the texts that follow it; none when @p count is below 1. At least @p count texts must be given.
    template <class... TEXTS>
    requires(std::is_convertible_v<const TEXTS&, const char*>&&...) CStrArray(int count, const TEXTS&... texts)
    {
        const char* const list[] = {static_cast<const char*>(texts)..., nullptr};
        KELGEN_ASSERT(count <= static_cast<int>(sizeof...(TEXTS)));
        for (int i = 0; i < count && i < static_cast<int>(sizeof...(TEXTS)); ++i)
            Add(list[i]);
    }
    /// What @p source tells for the first @p count of the identifiers that follow; none when @p count is below 1. At least
    /// @p count identifiers must be given.
    template <class... IDS>
    requires(std::is_convertible_v<IDS, unsigned int>&&...) CStrArray(int count, CStringDataSource& source, IDS... ids)
    {
        const unsigned int list[] = {static_cast<unsigned int>(ids)..., 0};
        KELGEN_ASSERT(count <= static_cast<int>(sizeof...(IDS)));
        for (int i = 0; i < count && i < static_cast<int>(sizeof...(IDS)); ++i)
            AddFrom(source, list[i]);
    }
    /// What @p source tells for each of @p ids, whose size is asked for again after every entry.
    CStrArray(CStringDataSource& source, CStdArrayInterface<unsigned int, unsigned int>& ids);
    ~CStrArray() override;

    CStrArray& operator=(const CStrArray& other);
    /// The entries become those of @p other. Onto itself nothing happens.
    void Copy(const CStringArray& other);

    using CBaseTextArray::TextAt;
    void TextAt(int index, CString& text) const override;
    int GetTextCount() const override;

    // ---- Adding and cleaning ----

    /// Appends @p text, whether or not it is there already.
    void AddNormal(const char* text);
    /// Appends @p text unless an entry has the very same bytes.
    void AddUnique(const char* text);
    /// Appends the pieces of @p text between separators, as CStrTokenizer finds them; empty ones only when @p bKeepEmpty is
    /// nonzero.
    void AddTokens(const char* text, const char* separator, int bKeepEmpty);
    /// Splits at whichever of @p separators ends the shortest token; without separators the whole @p text is one entry.
    /// By contract: a separator that no longer occurs stands for the end of the text, and of separators that step to the same
    /// place the first of the list counts: "a/" at "\" and "/" gives "a/", at "/" and "\" gives "a".
    void AddTokens(const char* text, const CStringArray& separators, int bKeepEmpty);
    /// Both trim the white space of every entry.
    void TrimLeft();
    void TrimRight();
    /// Removes the empty entries; the others keep their order.
    void RemoveEmpty();
    /// Exchanges two entries.
    void Swap(int i, int j);
    /// Replaces the entries that hold several parts between "/" by those parts, each once, and sorts by Compare.
    void XFV001Expand();

    // ---- Searching and counting: an index, or -1 ----

    /// The order by the values of the bytes, in every code page.
    [[nodiscard]] static int Compare(const char* a, const char* b);
    /// The order without case.
    [[nodiscard]] static int CompareNoCase(const char* a, const char* b);
    /// Binary search of an array sorted ascending by @p compare, which is asked compare(text, entry).
    /// By contract: which of several equal entries is found follows from the halving, low + high over two, alone, so that hosts find the
    /// same one each time.
    [[nodiscard]] int Find(const char* text, int (*compare)(const char*, const char*)) const;
    /// The same by CompareNoCase.
    [[nodiscard]] int FindNoCase(const char* text) const;
    /// The first entry that equals @p text without case, in whatever order. Cost: linear.
    [[nodiscard]] int FindFirstNoSortNoCase(const char* text) const;
    /// How many entries begin with @p prefix without case; all of them for an empty prefix.
    [[nodiscard]] int CountPrefixNoCase(const char* prefix) const;
    /// Becomes the first @p nLeft bytes of the entries of @p source that begin with @p prefix, each text once without case.
    /// Texts shorter than @p nMinLen are left out; those longer than @p nLeft are cut before they are looked at.
    /// By contract: as many bytes as the larger of the prefix's length and @p nMinLen are compared with the prefix, so that none is
    /// found when @p nMinLen is larger.
    void ExtractPrefixNoSortNoCase(const CStrArray& source, const char* prefix, int nLeft, int nMinLen);

    // ---- Sorting and output ----

    /// Sorts ascending by @p compare, which returns negative, 0 or positive. Equal entries may change order.
    /// By contract: the order of comparisons and exchanges is that of CWStrArray::Sort, so that equal entries end up alike in both.
    /// Cost: n log n comparisons on random input, quadratic on sorted input; no recursion; an exchange copies no text.
    void Sort(int (*compare)(const char*, const char*));
    /// @p out becomes the entries with @p separator between them; empty when there is none.
    void GetFormatString(CString* out, const char* separator) const;
    /// @p format with "%1" replaced by the first entry, "%2" by the second and so on, "%%" by "%". All digits behind a '%' count.
    /// By contract: a last '%' stays; before any other character '%' stays and the character is dropped, so a host writes "%%" for one
    /// that is meant.
    /// Throws: the invalid-argument exception for a number without an entry.
    [[nodiscard]] CString FormatString(const char* format) const;
    /// All entries, each with its terminator, and one more terminator (two when there is no entry), in a block that the caller
    /// frees with free(). Throws: the memory exception.
    [[nodiscard]] char* GetFormatV004() const;

    // ---- Automation's arrays of strings, in the ANSI code page ----

    /// Empties the array and appends the strings in the variant's array. False, with the array empty, unless the variant holds an
    /// array of strings with one dimension.
    bool Copy(VARIANT* variant);
    /// Frees what the initialised @p variant holds and gives it an array of the entries (VT_BSTR). False for null and without
    /// memory.
    bool CreateSafeArray(VARIANT* variant) const;
    /// A variant that holds such an array. Callers include kelgen/framework/ole/OleVariant.h.
    [[nodiscard]] COleVariant CreateSafeArray() const;

protected:
    /// A derived class's note of the order of the entries; additions clear it. Nothing here sets or reads it.
    bool m_bSorted = false;

private:
    void AddFrom(CStringDataSource& source, unsigned int id);
    bool SortByBytes();
};
