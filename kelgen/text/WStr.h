// WStr.h: CWStr, the library's 16-bit string: shared between copies, copied when one of them is written.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/collections/CollectionHelpers.h>  // CopyElements, which assigns strings one by one
#include <kelgen/platform/Win32.h>
#include <kelgen/platform/support/FormatCheck.h>
#include <kelgen/platform/support/SharedCount.h>
#include <kelgen/text/StandardText.h>

#include <atomic>
#include <climits>
#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <string_view>
#include <type_traits>

class CArchive;
class CMenu;
class CWnd;

/// The head of a string's block. nAllocLength + 1 units follow; unit nLength is 0.
struct CWStrData
{
    LONG nRefCount;    ///< Strings that share the block; -1: locked.
    int nLength;       ///< Units in use, without the terminator.
    int nAllocLength;  ///< Units that fit, without the terminator.

    /// The first unit.
    unsigned short* data() noexcept { return reinterpret_cast<unsigned short*>(this + 1); }
    const unsigned short* data() const noexcept { return reinterpret_cast<const unsigned short*>(this + 1); }
};
static_assert(sizeof(CWStrData) == 12);

namespace kelgen::detail {

/// The block of every empty string: never written, counted or freed.
struct EmptyWStrBlock
{
    CWStrData head;
    unsigned short unit;
};
extern KELGEN_API EmptyWStrBlock emptyWStrBlock;

}  // namespace kelgen::detail

/// A counted, terminated run of 16-bit units, which may hold zeros. The object is one pointer to the units of its block; it stays
/// valid when it is moved bit by bit.
///
///     CWStr name(u"report"_w);
///     CWStr copy(name);         // shares the block
///     copy += u".txt"_w;        // copies it first
///
/// Lengths and indices count units; texts are terminated, and null counts as the empty text. The capacity of a block is that of
/// its class (8, 64, 128, 256 or 512 units); longer ones are exactly as long as asked for. A locked string's copies are copies of
/// the text.
///
/// Throws: the framework's memory exception from every member that may need a block; the string is then as it was.
/// Threads: copies that share a block may be used in different threads; one object may not.
/// Cost: a copy is one atomic increment; appending within the capacity allocates nothing, beyond it allocates the exact length,
/// as its class rounds it. Blocks up to 512 units come from pools, without a lock most of the time.
class KELGEN_API CWStr
{
public:
    /// Survives being moved bit by bit: see kelgen::is_movable_bitwise.
    using MovableBitwise = CWStr;

    /// The code page of the narrow texts given to SetRes. 0: the ANSI page.
    static DWORD m_dwResourceCP;

    CWStr() noexcept : m_text(EmptyText()) {}

    CWStr(const CWStr& source) : m_text(source.m_text)
    {
        if (!AddReference(GetData()))
            CopyLocked(source);
    }

    /// Takes over the block of @p source, which is then empty; copies the text of a locked one.
    CWStr(CWStr&& source) : m_text(source.m_text)
    {
        if (LoadCount(GetData()) > 0)
            source.m_text = EmptyText();
        else
            CopyLocked(source);
    }

    /// By contract: a value below 0x10000 is the number of a string resource, loaded as by LoadStringA, so that hosts pass either.
    CWStr(const unsigned short* text);

    /// Exactly @p n units, zeros included.
    CWStr(const unsigned short* text, int n);

    /// The units of a u"" literal up to its first 0, or all those of a std::u16string or view.
    template <kelgen::detail::StandardWideText TEXT>
    explicit CWStr(const TEXT& text) : CWStr()
    {
        if constexpr (std::is_convertible_v<const TEXT&, std::u16string_view>)
            AssignView(std::u16string_view(text).data(), std::u16string_view(text).size());
        else
            AssignView(std::wstring_view(text).data(), std::wstring_view(text).size());
    }

    /// Text in other units does not compile: it has to be converted from the code page that it is in.
    template <kelgen::detail::OtherText TEXT>
    explicit CWStr(const TEXT&) : CWStr()
    {
        kelgen::detail::RefuseOtherText<TEXT>();
    }

    /// @p nRepeat units; empty when that is below 1. By contract: the fill counts bytes, so that the first @p nRepeat bytes, not units,
    /// get the low byte of @p ch: half of the units read as that byte twice, and the others hold whatever the block held.
    CWStr(unsigned short ch, int nRepeat);

    ~CWStr() { ReleaseText(m_text); }

    /// Shares the block of @p source. A locked string keeps its own block and gets a copy of the text, as does one whose source
    /// is locked or empty.
    CWStr& operator=(const CWStr& source)
    {
        if (m_text == source.m_text)
            return *this;
        if (!IsLocked() && AddReference(source.GetData())) {
            unsigned short* const old = m_text;
            m_text = source.m_text;
            ReleaseText(old);
        } else {
            AssignCopy(source.GetLength(), source.m_text);
        }
        return *this;
    }

    /// Trades blocks with @p source where the copying form would share; else copies.
    CWStr& operator=(CWStr&& source)
    {
        if (!IsLocked() && LoadCount(source.GetData()) > 0) {
            unsigned short* const own = m_text;
            m_text = source.m_text;
            source.m_text = own;
            return *this;
        }
        return *this = static_cast<const CWStr&>(source);
    }

    /// Copies the text into the string's own block when it fits there. By contract: no pointer is taken as a resource number, unlike by
    /// the constructor, so a host loads by LoadStringA.
    CWStr& operator=(const unsigned short* text);
    /// The text becomes this one unit.
    CWStr& operator=(unsigned short ch);
    /// Both: the standard library's 16-bit text replaces this one, other text does not compile and says what to write.
    template <kelgen::detail::StandardWideText TEXT>
    CWStr& operator=(const TEXT& text)
    {
        return *this = CWStr(text);
    }
    template <kelgen::detail::OtherText TEXT>
    CWStr& operator=(const TEXT&)
    {
        kelgen::detail::RefuseOtherText<TEXT>();
        return *this;
    }

    /// Gives the block back; a locked string keeps it, with length 0.
    void Empty();
    /// Points at the shared empty block without giving back what was held.
    void Init() noexcept { m_text = EmptyText(); }
    /// Gives the block back, locked or not.
    void Release() noexcept;
    /// Gives back one reference to @p block; the shared empty block stays as it is.
    static void Release(CWStrData* block) noexcept { ReleaseText(block->data()); }
    /// Returns @p block to the pool that its capacity names or to the general heap, whatever its count.
    static void FreeData(CWStrData* block) noexcept;

    // ---- The block ----

    /// The block's head, before the text; that of the shared empty block for an empty string.
    [[nodiscard]] CWStrData* GetData() const noexcept { return reinterpret_cast<CWStrData*>(m_text) - 1; }

    /// Points at a new block of length @p n without giving back the old one; 0 points at the shared empty block.
    void AllocBuffer(int n);
    /// Makes the block writable with room for @p n units. A block that is shared or too small is given back and the new one has
    /// the length @p n and undefined units; else the text stays.
    void AllocBeforeWrite(int n);
    /// Makes the block this string's own. Sole owners and locked strings keep theirs.
    void CopyBeforeWrite()
    {
        if (LoadCount(GetData()) > 1)
            Unshare(GetLength());
    }
    /// Points @p dest at a new block of @p nCopyLen + @p nExtraLen units that begins with the @p nCopyLen units from
    /// @p nCopyIndex, without giving back its old one. Units asked for beyond the end are not copied.
    void AllocCopy(CWStr& dest, int nCopyLen, int nCopyIndex, int nExtraLen) const;
    /// Makes the text the @p n units at @p text, which may lie in this string.
    void AssignCopy(int n, const unsigned short* text);
    /// Points at a new block with both texts, without giving back the old one; does nothing when both lengths are 0.
    void ConcatCopy(int nSrc1Len, const unsigned short* pSrc1, int nSrc2Len, const unsigned short* pSrc2);
    /// Appends the @p n units at @p text, which may lie in this string.
    void ConcatInPlace(int n, const unsigned short* text);
    /// The units, writable, with room for @p nMinLen. Text and length stay.
    unsigned short* GetBuffer(int nMinLen);
    /// Ends writing through GetBuffer; -1: the length is that up to the first 0. A length beyond the capacity counts as the
    /// capacity.
    void ReleaseBuffer(int nNewLen = -1);
    /// GetBuffer, and the length becomes @p n.
    unsigned short* GetBufferSetLength(int n);
    /// Re-allocates unless length and capacity are equal. By contract: the new capacity is again that of the class, since blocks come in
    /// those sizes.
    void FreeExtra();
    /// GetBuffer that also locks: until UnlockBuffer, copies of this string copy the text.
    unsigned short* LockBuffer();
    void UnlockBuffer() noexcept;

    // ---- Reading. Searches end at the first 0 unit at or after their start; -1: not found; a start below 0 counts as 0 ----

    /// The number of units before the terminator.
    [[nodiscard]] int GetLength() const noexcept { return GetData()->nLength; }
    /// The number of units that the block has room for before the terminator.
    [[nodiscard]] int GetAllocLength() const noexcept { return GetData()->nAllocLength; }
    /// Whether the length is 0.
    [[nodiscard]] bool IsEmpty() const noexcept { return GetLength() == 0; }
    /// The terminated text, never null. It is valid until the string is changed or destroyed.
    operator const unsigned short*() const noexcept { return m_text; }
    /// A text is neither true nor false: ask IsEmpty().
    template <std::same_as<bool> RESULT>
    operator RESULT() const = delete;
    /// The unit at @p index, which must be within the text or at its end.
    [[nodiscard]] unsigned short GetAt(int index) const
    {
        KELGEN_CHECK(index >= 0 && index <= GetAllocLength(), "CWStr::GetAt: index %d of length %d", index, GetLength());
        return m_text[index];
    }
    /// GetAt.
    unsigned short operator[](int index) const { return GetAt(index); }
    /// Units before the terminator; 0 for null.
    static int SafeStrlen(const unsigned short* text);

    /// By contract: 0 finds the first 0 unit, which may be the terminator, since the search ends behind it; an empty string finds
    /// nothing.
    [[nodiscard]] int Find(unsigned short ch) const;
    /// By contract: -1 when @p nStart is the length or more, so that the terminator is not found from there.
    [[nodiscard]] int Find(unsigned short ch, int nStart) const;
    /// The empty text is found at once.
    [[nodiscard]] int Find(const unsigned short* sub) const { return Find(sub, 0); }
    /// By contract: may start at the length itself, where the empty text is found, so that a loop goes on behind each find; -1 beyond it.
    [[nodiscard]] int Find(const unsigned short* sub, int nStart) const;
    /// The position of the last @p ch; -1 if there is none.
    [[nodiscard]] int ReverseFind(unsigned short ch) const;
    /// The position of the first unit that is in @p set; -1 if there is none.
    [[nodiscard]] int FindOneOf(const unsigned short* set) const;
    /// The leading run of units that are in @p set.
    [[nodiscard]] CWStr SpanIncluding(const unsigned short* set) const;
    /// The leading run of units that are not in @p set.
    [[nodiscard]] CWStr SpanExcluding(const unsigned short* set) const;
    /// Each: a part of the text; what lies outside it is left out. The whole text is a shared copy.
    [[nodiscard]] CWStr Mid(int nFirst, int nCount) const;
    [[nodiscard]] CWStr Mid(int nFirst) const;
    [[nodiscard]] CWStr Left(int n) const;
    [[nodiscard]] CWStr Right(int n) const;

    // ---- Comparing: negative, 0 or positive. By contract: text after the first 0 unit does not count ----

    /// By unit value.
    [[nodiscard]] int Compare(const unsigned short* text) const;
    /// By unit value after case folding in the runtime's locale; its default folds only A to Z.
    [[nodiscard]] int CompareNoCase(const unsigned short* text) const;
    /// The same of two terminated texts.
    [[nodiscard]] static int CompareNoCase(const unsigned short* left, const unsigned short* right);
    /// By the order of the runtime's locale; its default is by unit value.
    [[nodiscard]] int Collate(const unsigned short* text) const;
    /// By the same order, without case.
    [[nodiscard]] int CollateNoCase(const unsigned short* text) const;

    // Each with a literal or a text of the standard library, which is copied; text in other units does not compile and names the way.
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] int Find(const TEXT& sub, int nStart = 0) const
    {
        return Find(CWStr(sub), nStart);
    }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] int FindOneOf(const TEXT& set) const
    {
        return FindOneOf(CWStr(set));
    }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] CWStr SpanIncluding(const TEXT& set) const
    {
        return SpanIncluding(CWStr(set));
    }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] CWStr SpanExcluding(const TEXT& set) const
    {
        return SpanExcluding(CWStr(set));
    }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] int Compare(const TEXT& text) const
    {
        return Compare(CWStr(text));
    }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] int CompareNoCase(const TEXT& text) const
    {
        return CompareNoCase(CWStr(text));
    }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] int Collate(const TEXT& text) const
    {
        return Collate(CWStr(text));
    }
    template <kelgen::detail::ForeignText TEXT>
    [[nodiscard]] int CollateNoCase(const TEXT& text) const
    {
        return CollateNoCase(CWStr(text));
    }

    // ---- Appending ----

    /// Each appends: terminated text (null: nothing), one unit, or all units of a string, which may be this one.
    CWStr& operator+=(const unsigned short* text)
    {
        ConcatInPlace(SafeStrlen(text), text);
        return *this;
    }
    CWStr& operator+=(unsigned short ch)
    {
        CWStrData* const block = GetData();
        if (block->nLength < block->nAllocLength && LoadCount(block) <= 1) {
            m_text[block->nLength] = ch;
            m_text[++block->nLength] = 0;
        } else {
            ConcatInPlace(1, &ch);
        }
        return *this;
    }
    template <kelgen::detail::StandardWideText TEXT>
    CWStr& operator+=(const TEXT& text)
    {
        return *this += CWStr(text);
    }
    template <kelgen::detail::OtherText TEXT>
    CWStr& operator+=(const TEXT&)
    {
        kelgen::detail::RefuseOtherText<TEXT>();
        return *this;
    }
    CWStr& operator+=(const CWStr& text)
    {
        ConcatInPlace(text.GetLength(), text.m_text);
        return *this;
    }

    // ---- Editing. Unless said otherwise the block is made this string's own even when nothing changes ----

    /// @p index must be within the text; outside it nothing is written.
    void SetAt(int index, unsigned short ch);
    /// The new length. An index outside the text counts as the end that it is beyond.
    int Insert(int nIndex, unsigned short ch);
    /// As above. The empty text changes nothing, nor the sharing.
    int Insert(int nIndex, const unsigned short* text);
    /// By contract: the length before the deletion, so a host takes the new one from GetLength. An index below 0 counts as 0; nothing
    /// happens for a count below 1 or an index at or beyond the end. The deleted units should lie within the text; those that do not are
    /// left out.
    int Delete(int nIndex, int nCount);
    /// The number of units replaced, beyond embedded zeros too. Equal units change nothing, nor the sharing.
    int Replace(unsigned short oldCh, unsigned short newCh);
    /// The number of occurrences replaced, from left to right, beyond embedded zeros too; null @p newText removes them. No
    /// occurrence changes nothing, nor the sharing.
    int Replace(const unsigned short* oldText, const unsigned short* newText);
    /// The number of units removed, beyond embedded zeros too.
    int Remove(unsigned short ch);
    /// Each works up to the first 0 unit; case is mapped as the runtime maps it in its locale.
    void MakeUpper();
    void MakeLower();
    void MakeReverse();
    /// Each cuts off what stands at one end: white space, one unit, or units of a set. White space is 0x09 to 0x0D, 0x20, and, by contract,
    /// every unit whose value is white space in the multibyte code page.
    void TrimLeft();
    void TrimLeft(unsigned short ch);
    /// The empty set changes nothing, nor the sharing.
    void TrimLeft(const unsigned short* set);
    /// By contract: the end is that at the first 0 unit, as of a terminated text; what follows it goes only when there is something to
    /// trim.
    void TrimRight();
    void TrimRight(unsigned short ch);
    void TrimRight(const unsigned short* set);
    // Each with a literal or a text of the standard library, as the members that search.
    template <kelgen::detail::ForeignText TEXT>
    int Insert(int nIndex, const TEXT& text)
    {
        return Insert(nIndex, CWStr(text));
    }
    template <class OLD, class NEW>
    requires kelgen::detail::ForeignText<OLD> || kelgen::detail::ForeignText<NEW>
    int Replace(const OLD& oldText, const NEW& newText) { return Replace(CWStr(oldText), CWStr(newText)); }
    template <kelgen::detail::ForeignText TEXT>
    void TrimLeft(const TEXT& set)
    {
        TrimLeft(CWStr(set));
    }
    template <kelgen::detail::ForeignText TEXT>
    void TrimRight(const TEXT& set)
    {
        TrimRight(CWStr(set));
    }
    /// 1. Removes the '&' marks of a menu text; pMarks[i] tells whether the unit that is then at i had one. Two in a row leave
    /// one; a last one stays. @p pMarks has room for as many flags as the text has units.
    int _EncodeV033(bool* pMarks);

    // ---- Formatting. The text is replaced last: arguments and format may lie in this string ----

    /// Replaces the text by @p format with @p args put in, by the rules of the runtime's wide printf: 's' and 'c' are wide, 'S' and
    /// 'C' narrow, 'h' makes narrow, 'l' wide, "I64" is 64 bits; 'd', 'i', 'u', 'x', 'X', 'o' take 32 bits otherwise. The text ends at
    /// the first 0 unit.
    ///
    /// By contract: room is reserved by GetBuffer before anything is written, for the sum of
    /// - each literal unit, and the second '%' of "%%": the length of the rest of the format from there, so that the sum grows with the
    ///   square of the literal text;
    /// - '#': 2;
    /// - 'c', 'C': 2; texts: their length, at least 1, or 6 for null; cut to a precision that is not 0, then raised to the width. An
    ///   unmarked 'S' counts pairs of bytes as units;
    /// - 'd', 'i', 'u', 'x', 'X', 'o', 'p': width and precision, at least 32; 'e', 'g', 'G': the same, at least 128;
    /// - 'f': the value's length with 6 more digits than the precision, which counts as 0 when none is given;
    /// - everything else: 0.
    /// By contract: text that is longer than the block keeps what the block holds ("%E" counts nothing, so that an empty string stays
    /// empty); checked builds tell the debugger's output of each such text. A sum beyond 2 GB is replaced by the text's own length.
    /// Throws: the memory exception, even for a text beyond 2 GB; the string is then as it was, or empty.
    /// Cost: one pass over the format and its texts before the formatting.
    void FormatV(const unsigned short* format, va_list args);
    void Format(const unsigned short* format, ...);
    /// The format is string resource @p id; one that is missing gives the empty text.
    void Format(UINT id, ...);
    /// Objects cannot be printed: give static_cast<const unsigned short*>(text) for a string, or a number.
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void Format(const unsigned short*, const ARGUMENTS&...) = delete;
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void Format(UINT, const ARGUMENTS&...) = delete;
    /// The format may be a literal or a text of the standard library.
    template <kelgen::detail::ForeignText FORMAT, class... ARGUMENTS>
    void Format(const FORMAT& format, ARGUMENTS... arguments)
    {
        Format(static_cast<const unsigned short*>(CWStr(format)), arguments...);
    }
#ifdef KELGEN_CHECKED
    /// Checked builds hold the format against the arguments' types first, and name the conversion and the argument that do not fit.
    template <class FIRST, class... MORE>
    requires(!kelgen::detail::AnyObject<FIRST, MORE...>) void Format(const unsigned short* format, FIRST first, MORE... more)
    {
        kelgen::detail::CheckFormatOf<FIRST, MORE...>("CWStr::Format", format);
        void (CWStr::*const unchecked)(const unsigned short*, ...) = &CWStr::Format;
        (this->*unchecked)(format, first, more...);
    }
    template <class FIRST, class... MORE>
    requires(!kelgen::detail::AnyObject<FIRST, MORE...>) void Format(UINT id, FIRST first, MORE... more)
    {
        CWStr format;
        format.LoadStringA(id);
        Format(static_cast<const unsigned short*>(format), first, more...);
    }
#endif
    /// Replaces the text by @p format with the arguments put in by the platform's FormatMessageW ("%1", "%2!d!").
    /// Throws: the memory exception whenever the platform fails, which it does for an empty result and a bad format too.
    void FormatMessageA(const unsigned short* format, ...);
    /// The format is string resource @p id.
    void FormatMessageA(UINT id, ...);
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void FormatMessageA(const unsigned short*, const ARGUMENTS&...) = delete;
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void FormatMessageA(UINT, const ARGUMENTS&...) = delete;

    // ---- From the platform ----

    /// Loads string resource @p id; true when it has text. Looks in the current resource module, the extension libraries, the
    /// language module, then the system modules.
    bool LoadStringA(UINT id);
    /// Converts from code page m_dwResourceCP. By contract: reserves twice the length, which is always enough.
    void SetRes(const char* text);
    /// Converts from the OEM code page. By contract: reserves twice the length, which is always enough.
    void SetOEM(const char* text);
    /// Converts @p n bytes from code page 1252; -1: up to the terminator. The text ends at the first 0. False when memory ends.
    bool Copy(const char* text, int n);
    /// Becomes the short form of @p path, and returns what the platform's call does; 0: it failed and nothing changed.
    /// By contract: @p path is OEM text.
    DWORD _GetShortPathName(const char* path);

    /// Of the window's text, in units. @p pWnd must not be null; nor for the next one.
    [[nodiscard]] static int _GetWindowTextLength(const CWnd* pWnd);
    /// Becomes the window's text up to the first 0, and returns what the platform's call does; 0 for an empty one.
    int _GetWindowText(const CWnd* pWnd);
    /// Makes this the window's text, and returns what the platform's call does. By contract: null is the null handle, for which that call
    /// fails.
    BOOL _SetWindowText(const CWnd* pWnd) const;
    /// Becomes the text of the item @p id, which is a command or a position as @p flags (MF_BYCOMMAND, MF_BYPOSITION) says, and returns
    /// what the platform's call does; 0: there is none, and the string is empty.
    /// By contract: outside the NT family the text is read as 8-bit text, since menus there hold no other, and the result is 1.
    int _GetMenuString(const CMenu* pMenu, UINT id, UINT flags);

    /// A new system string with exactly the units of the text, for the caller to free.
    [[nodiscard]] BSTR AllocSysString() const;
    /// Replaces the system string at @p p by the text and returns it. Throws: the memory exception; it stays then.
    BSTR SetSysString(BSTR* p) const;

private:
    static unsigned short* EmptyText() noexcept
    {
        return &kelgen::detail::emptyWStrBlock.unit;
    }
    static LONG LoadCount(CWStrData* block) noexcept
    {
        return std::atomic_ref<LONG>(block->nRefCount).load(std::memory_order_acquire);
    }
    /// False for a locked block, which is not shared.
    static bool AddReference(CWStrData* block) noexcept
    {
        if (LoadCount(block) < 0)
            return false;
        kelgen::detail::ChangeCount(std::atomic_ref<LONG>(block->nRefCount), 1, std::memory_order_relaxed);
        return true;
    }
    [[gnu::always_inline]] static void ReleaseText(unsigned short* text) noexcept
    {
        CWStrData* const block = reinterpret_cast<CWStrData*>(text) - 1;
        // No look at the count first: even a sole owner's decrement costs no more than that load after a copy's increment. A
        // locked string's count falls below 0.
        if (text != EmptyText() && kelgen::detail::ChangeCount(std::atomic_ref<LONG>(block->nRefCount), -1) <= 0)
            FreeData(block);
    }
    static unsigned short* NewText(int n, const unsigned short* text);

    /// Throws: the memory exception for more than 2^31 - 1 units too.
    template <class UNIT>
    void AssignView(const UNIT* units, std::size_t count)
    {
        static_assert(sizeof(UNIT) == sizeof(unsigned short));
        if (count > INT_MAX)
            AfxThrowMemoryException();
        if (count != 0)
            AssignCopy(static_cast<int>(count), reinterpret_cast<const unsigned short*>(units));
    }

    bool IsLocked() const noexcept
    {
        return m_text != EmptyText() && LoadCount(GetData()) < 0;
    }
    void CopyLocked(const CWStr& source);
    void Unshare(int n);
    void SetLength(int n) noexcept;
    void KeepPart(int first, int count);
    int InsertUnits(int nIndex, int n, const unsigned short* text);
    int LengthToZero() const;
    bool Holds(const unsigned short* text) const noexcept;
    void FormatInto(int reserve, const unsigned short* format, va_list args);
    void FormatMessageV(const unsigned short* format, va_list args);
    CWStr Part(int nFirst, int nCount) const;

    unsigned short* m_text;
};
static_assert(sizeof(CWStr) == sizeof(void*));

/// The shared empty string.
KELGEN_API const CWStr& AfxGetEmptyWStr();

/// Each: a new string with both texts; null counts as empty.
KELGEN_API CWStr operator+(const CWStr& left, const CWStr& right);
KELGEN_API CWStr operator+(const CWStr& left, const unsigned short* right);
KELGEN_API CWStr operator+(const unsigned short* left, const CWStr& right);
KELGEN_API CWStr operator+(const CWStr& left, unsigned short right);
KELGEN_API CWStr operator+(unsigned short left, const CWStr& right);
template <kelgen::detail::StandardWideText TEXT>
CWStr operator+(const CWStr& left, const TEXT& right)
{
    return left + CWStr(right);
}
template <kelgen::detail::StandardWideText TEXT>
CWStr operator+(const TEXT& left, const CWStr& right)
{
    return CWStr(left) + right;
}
template <kelgen::detail::OtherText TEXT>
CWStr operator+(const CWStr& left, const TEXT&)
{
    kelgen::detail::RefuseOtherText<TEXT>();
    return left;
}

/// Stores the byte 0xFF, the word 0xFFFE, the length and the units, low byte first. The length is one byte below 0xFF; else 0xFF and a
/// word below 0xFFFE; else 0xFF, 0xFFFF and 32 bits.
/// Throws: as CArchive.
KELGEN_API CArchive& operator<<(CArchive& archive, const CWStr& text);
/// Loads what << stores. By contract: a record without 0xFF, 0xFFFE in front is 8-bit text with the same forms of length, which is not
/// converted, since nothing tells its code page: its bytes are taken in pairs, low byte first, up to the first 0 unit, and a lock ends.
/// Throws: as CArchive; endOfFile for a text that is cut, @p text is then empty. Cost: a wrong length allocates at most twice what is
/// there.
KELGEN_API CArchive& operator>>(CArchive& archive, CWStr& text);
/// Strings as elements go in these records.
template <>
KELGEN_API void SerializeElements<CWStr>(CArchive& ar, CWStr* pElements, int nCount);

/// Whether Compare gives 0. Cost: nothing for copies; the speed of memory for equal texts.
inline bool operator==(const CWStr& left, const CWStr& right)
{
    const unsigned short* const text = left;
    const unsigned short* const other = right;
    if (text == other)
        return true;
    const int length = left.GetLength();
    if (length == right.GetLength() && std::memcmp(text, other, static_cast<std::size_t>(length) * sizeof *text) == 0)
        return true;
    // Texts that differ only behind a 0 unit are equal.
    return left.Compare(other) == 0;
}
inline bool operator==(const CWStr& left, const unsigned short* right)
{
    return left.Compare(right) == 0;
}

/// The order of Compare: by unit value, up to the first 0 unit.
inline std::weak_ordering operator<=>(const CWStr& left, const CWStr& right)
{
    return left.Compare(right) <=> 0;
}
inline std::weak_ordering operator<=>(const CWStr& left, const unsigned short* right)
{
    return left.Compare(right) <=> 0;
}

/// The same with a u"" literal or other terminated char16_t text.
template <std::same_as<char16_t> UNIT>
bool operator==(const CWStr& left, const UNIT* right)
{
    return left.Compare(reinterpret_cast<const unsigned short*>(right)) == 0;
}
template <std::same_as<char16_t> UNIT>
std::weak_ordering operator<=>(const CWStr& left, const UNIT* right)
{
    return left.Compare(reinterpret_cast<const unsigned short*>(right)) <=> 0;
}

/// The same with other text of the standard library; text in other units does not compile and names the way.
template <kelgen::detail::ForeignText TEXT>
requires(!std::is_convertible_v<const TEXT&, const char16_t*>) bool operator==(const CWStr& left, const TEXT& right)
{
    return left == CWStr(right);
}
template <kelgen::detail::ForeignText TEXT>
requires(!std::is_convertible_v<const TEXT&, const char16_t*>) std::weak_ordering operator<=>(const CWStr& left, const TEXT& right)
{
    return left <=> CWStr(right);
}

/// Writes the text in UTF-8, up to its end and with zeros inside; a lone surrogate becomes U+FFFD.
KELGEN_API std::ostream& operator<<(std::ostream& stream, const CWStr& text);
/// Does not compile: the standard library would write the address. Write CWStr(text).
std::ostream& operator<<(std::ostream& stream, const unsigned short* text) = delete;
