// WStrFormat.cpp: the room that a format is given, and formatting into it.
#include <kelgen/text/WStr.h>

#include <kelgen/platform/support/WideFormat.h>
#include <kelgen/platform/support/printf/PrintfDirective.h>
#include <kelgen/text/CodePageText.h>
#include <kelgen/text/internal/ScanUnits.h>
#include <kelgen/text/internal/WStrBlocks.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>
#include <string>

using namespace kelgen::detail;

namespace {

// A block of more than 2 GB is not asked for.
constexpr long long kMostUnits = (INT_MAX - static_cast<long long>(sizeof(CWStrData))) / static_cast<long long>(sizeof(unsigned short)) - 1;

/// Measures as FormatWide, with the arguments listed.
int MeasureFormat(const unsigned short* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = kelgen::FormatWide(nullptr, 0, kelgen::AsWide(format), arguments);
    va_end(arguments);
    return length;
}

/// Digits before the point of @p magnitude printed with any number of digits behind it; 0 when rounding may add one, and above 1e15.
int IntegerDigits(double magnitude)
{
    double power = 10;
    for (int digits = 1; digits < 16; ++digits, power *= 10) {
        if (magnitude < power)
            return magnitude < power - 0.5 ? digits : 0;
    }
    return 0;
}

/// The length of @p value printed as "%*.*f".
long long FixedLength(double value, int width, int precision)
{
    const int digits = IntegerDigits(std::fabs(value));
    if (digits == 0)
        return MeasureFormat(u"%*.*f"_w, width, precision, value);
    const long long decimals = precision < 0 ? 6 : precision;
    const long long length = std::signbit(value) + digits + (decimals > 0 ? decimals + 1 : 0);
    return std::max(length, std::abs(static_cast<long long>(width)));
}

/// FormatWide on a copy of the arguments.
int FormatCopy(unsigned short* text, int capacity, const unsigned short* format, va_list arguments)
{
    va_list copy;
    va_copy(copy, arguments);
    const int length = kelgen::FormatWide(kelgen::AsWide(text), static_cast<std::size_t>(capacity), kelgen::AsWide(format), copy);
    va_end(copy);
    return length;
}

/// Units before the first 0, at most @p most.
template <class Unit>
long long BoundedLength(const Unit* text, long long most)
{
    long long length = 0;
    while (length < most && text[length] != 0)
        ++length;
    return length;
}

/// One pass over a format and its arguments. The sum follows the contract's reading of the format. The arguments are taken as the
/// runtime takes them, since the two differ on some formats: there a text of the sum's reading is no text in the list.
class FormatEstimate
{
public:
    FormatEstimate(const CWStr& target, const unsigned short* format, va_list arguments)
        : m_first(target), m_last(m_first + target.GetAllocLength()), m_arguments(arguments), m_reader(m_arguments),
          m_end(format + CWStr::SafeStrlen(format)), m_runtimeNext(format)
    {
        NoteText(format);
        while (format < m_end) {
            if (*format != '%') {
                format = AddLiterals(format);
            } else if (*++format == '%') {
                m_sum += m_end - format;
                ++format;
            } else if (format < m_end) {
                format = AddConversion(format);
            }
        }
    }

    long long Sum() const { return m_sum; }
    /// Whether the format or a text lies in the target's own block.
    bool ReadsTarget() const { return m_readsTarget; }

private:
    /// What one conversion takes from the list.
    struct Values
    {
        PrintfDirective directive;
        PrintfArgument kind = PrintfArgument::None;
        double number = 0;
        const void* text = nullptr;
    };

    void NoteText(const void* text)
    {
        const auto place = reinterpret_cast<std::uintptr_t>(text);
        m_readsTarget |= place >= reinterpret_cast<std::uintptr_t>(m_first) && place <= reinterpret_cast<std::uintptr_t>(m_last);
    }

    /// By contract, since the capacity shows the sum, each unit counts as all the units from it to the format's end. Returns the next
    /// '%'.
    const unsigned short* AddLiterals(const unsigned short* first)
    {
        // Most runs are short; a call finds the end of a long one by several units at once.
        constexpr std::ptrdiff_t kShortRun = 16;
        const unsigned short* last = first;
        const unsigned short* const shortEnd = first + std::min(kShortRun, m_end - first);
        while (last < shortEnd && *last != '%')
            ++last;
        if (last == shortEnd && last < m_end) {
            const int next = kelgen::detail::FindUnit(last, static_cast<int>(m_end - last), '%');
            last = next < 0 ? m_end : last + next;
        }
        const long long count = last - first;
        m_sum += count * (m_end - first) - count * (count - 1) / 2;
        if (m_runtimeNext >= first && m_runtimeNext < last)
            m_runtimeNext = last;
        return last;
    }

    /// Sets the values to those of the conversion whose '%' lies before @p format; to none when the runtime sees no conversion there.
    void TakeValues(const unsigned short* format)
    {
        while (m_runtimeNext < format) {
            if (*m_runtimeNext++ != '%')
                continue;
            if (*m_runtimeNext == '%') {
                ++m_runtimeNext;
                continue;
            }
            const bool isSought = m_runtimeNext == format;
            TakeNext();
            if (isSought)
                return;
        }
        m_values = {};
    }

    void TakeNext()
    {
        m_runtimeNext = m_reader.Read(m_runtimeNext, m_values.directive);
        m_values.text = nullptr;
        m_values.kind = ArgumentOf(m_values.directive);
        switch (m_values.kind) {
        case PrintfArgument::None:
            break;
        case PrintfArgument::Int:
            m_arguments.Int();
            break;
        case PrintfArgument::Int64:
            m_arguments.LongLong();
            break;
        case PrintfArgument::Double:
            m_values.number = m_arguments.Double();
            break;
        case PrintfArgument::Pointer:
            NoteText(m_values.text = m_arguments.Pointer());
            break;
        }
    }

    /// Decimal digits as _wtoi reads them; passes those that the multibyte page calls digits.
    static int ReadNumber(const unsigned short*& format)
    {
        int number = 0;
        const unsigned short* const first = format;
        while (*format >= '0' && *format <= '9' && format - first < 9)
            number = number * 10 + (*format++ - '0');
        if (*format < 0x80 && (*format < '0' || *format > '9'))
            return number;
        while (*format != 0 && _ismbcdigit(*format))
            ++format;
        return _wtoi(kelgen::AsWide(first));
    }

    /// Adds what stands behind a single '%'; where the sum's reading goes on.
    const unsigned short* AddConversion(const unsigned short* format)
    {
        TakeValues(format);
        int width = 0;
        for (;; ++format) {
            if (*format == '#')
                m_sum += 2;
            else if (*format == '*')
                width = m_values.directive.widthIsArgument ? m_values.directive.width : 0;
            else if (*format != '-' && *format != '+' && *format != '0' && *format != ' ')
                break;
        }
        const int digits = ReadNumber(format);
        if (width == 0)
            width = digits;

        int precision = 0;
        if (*format == '.') {
            ++format;
            if (*format == '*') {
                ++format;
                precision = m_values.directive.precisionIsArgument ? m_values.directive.precision : 0;
            } else {
                precision = ReadNumber(format);
            }
        }

        unsigned short mark = 0;
        if (format[0] == 'I' && format[1] == '6' && format[2] == '4')
            format += 3;
        else if (*format == 'h' || *format == 'l')
            mark = *format++;
        else if (*format == 'F' || *format == 'L' || *format == 'N')
            ++format;

        AddItem(*format, mark, width, precision);
        return *format == 0 ? format : format + 1;
    }

    void AddItem(unsigned short letter, unsigned short mark, int width, int precision)
    {
        const long long numberLength = static_cast<long long>(width) + precision;
        switch (letter) {
        case 'c':
        case 'C':
            return AddText(2, width, precision);
        case 's':
        case 'S':
            return AddText(TextLength(letter, mark, precision), width, precision);
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
        case 'p':
            m_sum += std::max(32LL, numberLength);
            return;
        case 'e':
        case 'g':
        case 'G':
            m_sum += std::max(128LL, numberLength);
            return;
        case 'f':
            m_sum += FixedLength(m_values.number, width, std::min(precision, INT_MAX - 6) + 6);
            return;
        default:
            return;
        }
    }

    void AddText(long long length, int width, int precision)
    {
        if (precision != 0)
            length = std::min<long long>(length, precision);
        m_sum += std::max<long long>(length, width);
    }

    /// The text's length as far as it counts: a precision's units at most, which need no terminator behind them.
    long long TextLength(unsigned short letter, unsigned short mark, int precision) const
    {
        if (!m_values.text)
            return 6;
        const auto narrow = static_cast<const char*>(m_values.text);
        const auto wide = static_cast<const unsigned short*>(m_values.text);
        const long long most = precision > 0 ? precision : LLONG_MAX;
        if (mark == 'h')
            return std::max(1LL, BoundedLength(narrow, most));
        if (mark == 'l' || letter == 's')
            return std::max(1LL, precision > 0 ? BoundedLength(wide, most) : CWStr::SafeStrlen(wide));
        // By contract, since the capacity shows it, an unmarked 'S' is measured in units though it is printed in bytes. Those behind the
        // terminator count as 0.
        const long long bytes = BoundedLength(narrow, most);
        return bytes == most ? most : std::max(1LL, (bytes + 1) / 2);
    }

    const unsigned short* const m_first;
    const unsigned short* const m_last;
    VaListArguments m_arguments;
    PrintfDirectiveReader<unsigned short, VaListArguments> m_reader;
    const unsigned short* const m_end;
    const unsigned short* m_runtimeNext;
    Values m_values;
    long long m_sum = 0;
    bool m_readsTarget = false;
};

/// In checked builds: tells the debugger of a text that does not fit into its block, since directives such as "%E" and "%lld" are not
/// counted as what they print.
void TellWhatIsCut([[maybe_unused]] int room, [[maybe_unused]] const unsigned short* format, [[maybe_unused]] va_list args)
{
#ifdef KELGEN_CHECKED
    const int length = FormatCopy(nullptr, 0, format, args);
    if (length <= room)
        return;
    const std::string text = kelgen::ToUtf8(CWStr(format, CWStr::SafeStrlen(format)));
    OutputDebugStringA(("kelgen: CWStr: the format \"" + text + "\" makes " + std::to_string(length) + " units, of which the first " +
                        std::to_string(room) + " are kept\n")
                           .c_str());
#endif
}

struct LocalFreer
{
    void operator()(WCHAR* memory) const { LocalFree(memory); }
};

}  // namespace

/// Formats into room for @p reserve units; negative: for the text, whatever its length.
void CWStr::FormatInto(int reserve, const unsigned short* format, va_list args)
{
    if (reserve < 0) {
        SetLength(0);
        reserve = FormatCopy(nullptr, 0, format, args);
        if (reserve < 0 || reserve > kMostUnits)
            AfxThrowMemoryException();
    }
    GetBuffer(reserve);
    // The shared empty block is not written.
    if (m_text == EmptyText()) {
        TellWhatIsCut(0, format, args);
        return;
    }
    const int room = GetAllocLength();
    int length = FormatCopy(m_text, room + 1, format, args);
    if (length < 0 || length > room) {
        TellWhatIsCut(room, format, args);
        length = FormatCopy(nullptr, 0, format, args) < 0 ? 0 : room;
    }
    SetLength(kelgen::detail::LengthToZero(m_text, length));
}

void CWStr::FormatV(const unsigned short* format, va_list args)
{
    if (!format)
        format = EmptyText();
    const FormatEstimate estimate(*this, format, args);
    // What no block holds tells nothing about the text: that is measured instead.
    const int reserve = estimate.Sum() > kMostUnits ? -1 : static_cast<int>(estimate.Sum());
    if (!estimate.ReadsTarget()) {
        FormatInto(reserve, format, args);
        return;
    }
    CWStr formatted;
    formatted.FormatInto(std::max(reserve, LoadCount(GetData()) > 1 ? GetLength() : GetAllocLength()), format, args);
    *this = static_cast<CWStr&&>(formatted);
}

void CWStr::Format(const unsigned short* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}

void CWStr::Format(UINT id, ...)
{
    CWStr format;
    format.LoadStringA(id);
    va_list args;
    va_start(args, id);
    FormatV(format, args);
    va_end(args);
}

void CWStr::FormatMessageV(const unsigned short* format, va_list args)
{
    va_list list;
    va_copy(list, args);
    WCHAR* text = nullptr;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_STRING, format, 0, 0,
                                        reinterpret_cast<WCHAR*>(&text), 0, &list);
    va_end(list);
    const std::unique_ptr<WCHAR, LocalFreer> owner(text);
    if (length == 0 || !text)
        AfxThrowMemoryException();
    *this = reinterpret_cast<const unsigned short*>(text);
}

void CWStr::FormatMessageA(const unsigned short* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatMessageV(format, args);
    va_end(args);
}

void CWStr::FormatMessageA(UINT id, ...)
{
    CWStr format;
    format.LoadStringA(id);
    va_list args;
    va_start(args, id);
    FormatMessageV(format, args);
    va_end(args);
}
