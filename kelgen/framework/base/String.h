// String.h: CString, the framework's narrow string: one pointer to a counted block that copies share until one is written.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>
#include <kelgen/platform/support/FormatCheck.h>
#include <kelgen/platform/support/SharedCount.h>

#include <atomic>
#include <concepts>
#include <cstdarg>
#include <iosfwd>
#include <string_view>
#include <type_traits>

class CArchive;
class CDumpContext;

namespace kelgen::detail {

/// Whether an argument of a format is an object, which no conversion prints.
template <class... ARGUMENTS>
concept AnyObject = (std::is_class_v<ARGUMENTS> || ...);

/// What stands before a string's characters in its block.
struct StringData
{
    std::atomic<int> m_references;  ///< Strings that share the block; negative: locked, never shared.
    int m_length;                   ///< Bytes before the terminator.
    int m_capacity;                 ///< Bytes that fit before the terminator.
};

/// The block of every string without text: never counted, written or freed.
struct EmptyString
{
    StringData m_data{2, 0, 0};
    char m_text[4] = {};
};

}  // namespace kelgen::detail

/// Narrow text of any length, zeros inside allowed. Copying shares, writing to a shared block copies it first. An object is
/// exactly one pointer and survives being moved bit by bit.
///
///     CString path = folder + "\\" + name;
///     path.MakeLower();
///     if (path.Right(4) == ".ini")
///         Open(path);
///
/// Positions and lengths count bytes. Comparison, case, search and white space follow the runtime's multibyte code page: a search
/// never finds the second half of a character. A null text is taken as the empty one.
///
/// Throws: CMemoryException when memory runs out; CInvalidArgException for a position outside the text and a negative length,
/// before anything changes.
/// Threads: copies may be used by different threads, one object may not.
/// Cost: a copy is one atomic addition; appending is amortised constant a byte; the empty string needs no memory.
class KELGEN_FRAMEWORK_API CString
{
    using StringData = kelgen::detail::StringData;

public:
    /// Survives being moved bit by bit: see kelgen::is_movable_bitwise.
    using MovableBitwise = CString;

    CString() noexcept : m_pszData(EmptyText()) {}
    CString(const CString& other) : m_pszData(Share(other)) {}
    CString(CString&& other) noexcept : m_pszData(other.m_pszData) { other.m_pszData = EmptyText(); }
    /// Copies terminated text. A pointer made by MAKEINTRESOURCE loads that string resource; the string is empty when there is
    /// none.
    CString(LPCSTR text);
    /// Copies terminated text; null gives an empty string.
    explicit CString(const unsigned char* text);
    /// Converts terminated 16-bit text to the ANSI code page.
    template <class Unit>
    requires std::same_as<Unit, WCHAR> || std::same_as<Unit, unsigned short> CString(const Unit* text) : CString()
    {
        SetWide(reinterpret_cast<const WCHAR*>(text), -1);
    }
    /// Converts @p length units.
    template <class Unit>
    requires std::same_as<Unit, WCHAR> || std::same_as<Unit, unsigned short> CString(const Unit* text, int length) : CString()
    {
        SetWide(reinterpret_cast<const WCHAR*>(text), length);
    }
    /// Converts a class with a conversion to terminated 16-bit text.
    template <class TEXT>
    requires(std::is_class_v<TEXT>&& std::is_convertible_v<const TEXT&, const unsigned short*> &&
             !std::is_convertible_v<const TEXT&, LPCSTR>) explicit CString(const TEXT& text)
        : CString(static_cast<const unsigned short*>(text))
    {}
    /// The bytes of a text of the standard library, which are taken to be in the ANSI code page, zeros included.
    /// Throws: the memory exception, also for more than 2^31 - 1 bytes.
    template <class TEXT>
    requires(std::is_class_v<TEXT>&& std::is_convertible_v<const TEXT&, std::string_view> &&
             !std::is_convertible_v<const TEXT&, LPCSTR>) explicit CString(const TEXT& text)
        : CString()
    {
        SetBytes(text);
    }
    /// Copies @p length bytes, zeros included.
    CString(LPCSTR text, int length);
    /// @p character @p count times; empty when @p count is not above 0.
    explicit CString(char character, int count = 1);
    ~CString() { Release(m_pszData); }

    CString& operator=(const CString& other);
    CString& operator=(CString&& other);  // NOLINT(bugprone-exception-escape): a locked buffer is copied
    /// Each replaces the text: by terminated text (null: by nothing), by one character, by 16-bit text converted to the ANSI code page.
    CString& operator=(LPCSTR text);
    CString& operator=(const unsigned char* text);
    CString& operator=(char character);
    template <class Unit>
    requires std::same_as<Unit, WCHAR> || std::same_as<Unit, unsigned short> CString& operator=(const Unit* text)
    {
        SetWide(reinterpret_cast<const WCHAR*>(text), -1);
        return *this;
    }

    /// Bytes, without the terminating 0; zeros inside count.
    int GetLength() const noexcept { return Data()->m_length; }
    /// Whether the length is 0.
    BOOL IsEmpty() const noexcept { return GetLength() == 0; }
    /// The bytes that fit without new memory.
    int GetAllocLength() const noexcept { return Data()->m_capacity; }
    /// Both: the terminated text, never null. It is valid until the string is changed or destroyed.
    LPCSTR GetString() const noexcept { return m_pszData; }
    operator LPCSTR() const noexcept { return m_pszData; }

    /// Releases the block; a locked one stays and loses its text.
    void Empty() noexcept;
    /// Both: the byte at @p index; the terminator's position is allowed. Throws: CInvalidArgException for any other one.
    char GetAt(int index) const
    {
        if (static_cast<UINT>(index) > static_cast<UINT>(GetLength()))
            ThrowBadIndex(index);
        return m_pszData[index];
    }
    char operator[](int index) const { return GetAt(index); }
    /// Replaces the byte at @p index, which lies inside the text.
    void SetAt(int index, char character);

    /// Replaces the text by terminated text, which may lie in this string; null empties it.
    void SetString(LPCSTR text);
    /// Replaces the text by @p length bytes, which may lie in this string.
    void SetString(LPCSTR text, int length);
    /// Appends terminated text, which may lie in this string; null appends nothing.
    void Append(LPCSTR text);
    /// Appends @p length bytes, which may lie in this string.
    void Append(LPCSTR text, int length);
    /// Appends all bytes of @p text, which may be this string.
    void Append(const CString& text);
    /// Appends one byte. Cost: constant on average, since the block grows by more than one.
    void AppendChar(char character)
    {
        StringData* const data = Data();
        const int length = data->m_length;
        if (length >= data->m_capacity || data->m_references.load(std::memory_order_acquire) > 1) {
            Append(&character, 1);
            return;
        }
        data->m_length = length + 1;
        m_pszData[length] = character;
        m_pszData[length + 1] = 0;
    }
    /// Each appends, as Append and AppendChar do.
    CString& operator+=(const CString& text);
    CString& operator+=(LPCSTR text);
    CString& operator+=(char character)
    {
        AppendChar(character);
        return *this;
    }

    /// Negative, 0 or positive by character value.
    int Compare(LPCSTR text) const;
    /// Compare without case.
    int CompareNoCase(LPCSTR text) const;
    /// Negative, 0 or positive by the runtime locale's order.
    int Collate(LPCSTR text) const;
    /// Collate without case.
    int CollateNoCase(LPCSTR text) const;

    /// Each: the part from @p first to the end, @p count bytes of it, the first or the last @p count bytes. Counts and positions outside
    /// the text are cut to it. The whole text shares the block.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    /// The longest beginning of characters that are in @p set.
    CString SpanIncluding(LPCSTR set) const;
    /// The longest beginning of characters that are not in @p set.
    CString SpanExcluding(LPCSTR set) const;
    /// The next run at or after @p start of characters that are not in @p separators; @p start moves behind it and its separator.
    /// Empty, and @p start -1, when there is none. By contract: without separators the rest is returned and @p start stays, so a caller
    /// ends its loop itself.
    CString Tokenize(LPCSTR separators, int& start) const;

    /// Each changes the whole text and returns this string; two-byte characters stay whole.
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();
    /// Each cuts off what stands at the left, at the right or at both ends: white space, one character, or characters of a set. Returns
    /// this string. An empty set cuts nothing.
    CString& TrimLeft();
    CString& TrimLeft(char character);
    CString& TrimLeft(LPCSTR set);
    CString& TrimRight();
    CString& TrimRight(char character);
    CString& TrimRight(LPCSTR set);
    CString& Trim();
    CString& Trim(char character);
    CString& Trim(LPCSTR set);

    /// The number of replaced characters; 0 when both are the same.
    int Replace(char oldCharacter, char newCharacter);
    /// The number of replaced occurrences, found from left to right without overlap. An empty @p oldText replaces nothing.
    int Replace(LPCSTR oldText, LPCSTR newText);
    /// The number of removed characters.
    int Remove(char character);
    /// The new length. The position is cut to the text.
    int Insert(int index, char character);
    /// Does the same with terminated text, which may lie in this string.
    int Insert(int index, LPCSTR text);
    /// The new length. Position and count are cut to the text.
    int Delete(int index, int count = 1);

    /// Both: the position of the first occurrence at or after @p start, or -1. By contract: a @p start at the length finds the empty text
    /// and no character; one beyond, or negative, finds nothing, so that loops need no test of their own.
    int Find(char character, int start = 0) const;
    int Find(LPCSTR text, int start = 0) const;
    /// The last position, or -1.
    int ReverseFind(char character) const;
    /// The position of the first character that is in @p set, or -1.
    int FindOneOf(LPCSTR set) const;

    /// Replaces the text by the formatted one, as the runtime's narrow printf; arguments may point into this string.
    KELGEN_NARROW_FORMAT(2, 3) void Format(LPCSTR format, ...);
    /// The format is a string resource. Throws: CInvalidArgException when there is none.
    void Format(UINT formatId, ...);
    /// Objects cannot be printed: give a string's GetString(), or a number.
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void Format(LPCSTR, const ARGUMENTS&...) = delete;
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void Format(UINT, const ARGUMENTS&...) = delete;
    /// Does the same with arguments that are a list.
    void FormatV(LPCSTR format, va_list arguments);
    /// Each appends what Format would make.
    KELGEN_NARROW_FORMAT(2, 3) void AppendFormat(LPCSTR format, ...);
    void AppendFormat(UINT formatId, ...);
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void AppendFormat(LPCSTR, const ARGUMENTS&...) = delete;
    template <class... ARGUMENTS>
    requires kelgen::detail::AnyObject<ARGUMENTS...>
    void AppendFormat(UINT, const ARGUMENTS&...) = delete;
    /// Does the same with arguments that are a list.
    void AppendFormatV(LPCSTR format, va_list arguments);
#ifdef KELGEN_CHECKS_NARROW_FORMATS
    /// Checked builds hold the formats against the arguments' types first, where no compiler does.
    template <class FIRST, class... MORE>
    requires(!kelgen::detail::AnyObject<FIRST, MORE...>) void Format(LPCSTR format, FIRST first, MORE... more)
    {
        kelgen::detail::CheckFormatOf<FIRST, MORE...>("CString::Format", format);
        void (CString::*const unchecked)(LPCSTR, ...) = &CString::Format;
        (this->*unchecked)(format, first, more...);
    }
    template <class FIRST, class... MORE>
    requires(!kelgen::detail::AnyObject<FIRST, MORE...>) void AppendFormat(LPCSTR format, FIRST first, MORE... more)
    {
        kelgen::detail::CheckFormatOf<FIRST, MORE...>("CString::AppendFormat", format);
        void (CString::*const unchecked)(LPCSTR, ...) = &CString::AppendFormat;
        (this->*unchecked)(format, first, more...);
    }
#endif

    /// Loads a string resource by AfxFindResourceHandle's order. FALSE, and the string unchanged, when there is none.
    BOOL LoadString(UINT id);
    /// Does the same with the resources of @p module only.
    BOOL LoadString(HINSTANCE module, UINT id);
    /// The text of exactly that language.
    BOOL LoadString(HINSTANCE module, UINT id, WORD language);
    /// Takes the value of an environment variable. FALSE, and the string is empty, when there is none.
    BOOL GetEnvironmentVariable(LPCSTR name);
    /// Each converts from the first code page to the second, in place.
    void AnsiToOem();
    void OemToAnsi();

    /// The characters, writable, in a block of this string's own. ReleaseBuffer must follow when the length
    /// has changed.
    LPSTR GetBuffer();
    /// Does the same with room for at least @p minimumLength bytes.
    LPSTR GetBuffer(int minimumLength);
    /// GetBuffer, and the length is set; new bytes are not initialised.
    LPSTR GetBufferSetLength(int length);
    /// Sets the length after writing to the buffer; -1: up to the first zero.
    void ReleaseBuffer(int newLength = -1);
    /// Sets the length after writing to the buffer, which must have room for it.
    void ReleaseBufferSetLength(int newLength);
    /// Cuts the text to @p length bytes.
    void Truncate(int length);
    /// Makes room for @p length bytes, or gives room back down to that; the text stays.
    void Preallocate(int length);
    /// Gives back what the text does not need.
    void FreeExtra();
    /// Stops sharing: copies of a locked string are made at once, and its buffer stays in place as long as the text fits.
    LPSTR LockBuffer();
    /// Lets the block be shared again.
    void UnlockBuffer() noexcept;

    /// The bytes before the terminating 0; 0 for null.
    static int StringLength(LPCSTR text) noexcept;

    friend CString operator+(const CString& left, const CString& right)
    {
        return Join(left, left.GetLength(), right, right.GetLength());
    }
    friend CString operator+(const CString& left, LPCSTR right)
    {
        return Join(left, left.GetLength(), right, StringLength(right));
    }
    friend CString operator+(LPCSTR left, const CString& right)
    {
        return Join(left, StringLength(left), right, right.GetLength());
    }
    friend CString operator+(const CString& left, char right)
    {
        return Join(left, left.GetLength(), &right, 1);
    }
    friend CString operator+(char left, const CString& right)
    {
        return Join(&left, 1, right, right.GetLength());
    }

    /// By contract: comparison sees the text up to its first zero, since it is that of terminated texts.
    friend KELGEN_FRAMEWORK_API bool operator==(const CString& left, const CString& right) noexcept;
    friend bool operator==(const CString& left, LPCSTR right)
    {
        return left.Compare(right) == 0;
    }
    friend bool operator==(LPCSTR left, const CString& right)
    {
        return right.Compare(left) == 0;
    }
    friend bool operator!=(const CString& left, const CString& right) noexcept
    {
        return !(left == right);
    }
    friend bool operator!=(const CString& left, LPCSTR right)
    {
        return left.Compare(right) != 0;
    }
    friend bool operator!=(LPCSTR left, const CString& right)
    {
        return right.Compare(left) != 0;
    }
    friend bool operator<(const CString& left, const CString& right)
    {
        return left.Compare(right) < 0;
    }
    friend bool operator<(const CString& left, LPCSTR right)
    {
        return left.Compare(right) < 0;
    }
    friend bool operator<(LPCSTR left, const CString& right)
    {
        return right.Compare(left) > 0;
    }
    friend bool operator>(const CString& left, const CString& right)
    {
        return left.Compare(right) > 0;
    }
    friend bool operator>(const CString& left, LPCSTR right)
    {
        return left.Compare(right) > 0;
    }
    friend bool operator>(LPCSTR left, const CString& right)
    {
        return right.Compare(left) < 0;
    }
    friend bool operator<=(const CString& left, const CString& right)
    {
        return left.Compare(right) <= 0;
    }
    friend bool operator<=(const CString& left, LPCSTR right)
    {
        return left.Compare(right) <= 0;
    }
    friend bool operator<=(LPCSTR left, const CString& right)
    {
        return right.Compare(left) >= 0;
    }
    friend bool operator>=(const CString& left, const CString& right)
    {
        return left.Compare(right) >= 0;
    }
    friend bool operator>=(const CString& left, LPCSTR right)
    {
        return left.Compare(right) >= 0;
    }
    friend bool operator>=(LPCSTR left, const CString& right)
    {
        return right.Compare(left) <= 0;
    }

    /// The archive's text form: a length and the bytes.
    friend KELGEN_FRAMEWORK_API CArchive& operator<<(CArchive& archive, const CString& text);
    friend KELGEN_FRAMEWORK_API CArchive& operator>>(CArchive& archive, CString& text);
    friend KELGEN_FRAMEWORK_API CDumpContext& operator<<(CDumpContext& context, const CString& text);
    /// Writes the text in UTF-8, zeros inside included.
    friend KELGEN_FRAMEWORK_API std::ostream& operator<<(std::ostream& stream, const CString& text);

    /// Exchanges two strings; a locked one keeps its buffer as long as the text fits.
    friend void swap(CString& left, CString& right)
    {
        if (!left.IsLocked() && !right.IsLocked()) {
            char* const text = left.m_pszData;
            left.m_pszData = right.m_pszData;
            right.m_pszData = text;
            return;
        }
        const CString held(left);
        left = right;
        right = held;
    }
    /// Whether LockBuffer holds the block.
    bool IsLocked() const noexcept
    {
        return Data()->m_references.load(std::memory_order_relaxed) < 0;
    }

private:
    static const kelgen::detail::EmptyString s_empty;

    static char* EmptyText() noexcept
    {
        return const_cast<char*>(s_empty.m_text);
    }
    static StringData* DataOf(char* text) noexcept
    {
        return reinterpret_cast<StringData*>(text - sizeof(StringData));
    }
    StringData* Data() const noexcept
    {
        return DataOf(m_pszData);
    }

    static char* Share(const CString& other)
    {
        if (other.m_pszData == EmptyText())
            return EmptyText();
        if (other.Data()->m_references.load(std::memory_order_relaxed) < 0)
            return NewBlock(other.m_pszData, other.GetLength(), other.GetLength());
        kelgen::detail::ChangeCount(other.Data()->m_references, 1, std::memory_order_relaxed);
        return other.m_pszData;
    }

    static void Release(char* text) noexcept
    {
        if (text == EmptyText())
            return;
        // The only owner needs no atomic subtraction.
        if (DataOf(text)->m_references.load(std::memory_order_acquire) <= 1 ||
            kelgen::detail::ChangeCount(DataOf(text)->m_references, -1) <= 0)
            FreeBlock(text);
    }

    [[noreturn]] void ThrowBadIndex(int index) const;
    static char* NewBlock(const char* text, int length, int capacity);
    static void FreeBlock(char* text) noexcept;
    static CString Join(LPCSTR left, int leftLength, LPCSTR right, int rightLength);

    bool IsShared() const noexcept
    {
        return Data()->m_references.load(std::memory_order_acquire) > 1;
    }
    void Resize(int capacity);
    void MoveBlock(std::size_t before, std::size_t size, int kept);
    char* PrepareWrite(int length);
    char* PrepareAppend(int length);
    void SetLength(int length) noexcept;
    void SetWide(const WCHAR* text, int length);
    void SetBytes(std::string_view text);
    void CutLeft(int count);

    char* m_pszData;
};

static_assert(sizeof(CString) == sizeof(void*));

/// Takes part number @p index, from 0, of a text whose parts are divided by @p separator, as resource strings are by line ends. FALSE,
/// and an empty @p part, when there are fewer or @p full is null.
KELGEN_FRAMEWORK_API BOOL AfxExtractSubString(CString& part, LPCSTR full, int index, char separator = '\n');
