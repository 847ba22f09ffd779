// PrintfDirective.h: what stands between a '%' and its conversion letter, as the runtime's printf reads it.
#pragma once

#include <climits>
#include <cstdarg>
#include <type_traits>

namespace kelgen::detail {

enum class PrintfSize
{
    None,
    Narrow,
    Wide,
    Bits64,
};

enum class PrintfArgument
{
    None,
    Int,
    Int64,
    Double,
    Pointer,
};

/// One conversion. Numbers are as they were given: a negative width means left, a negative precision none.
struct PrintfDirective
{
    bool left = false;
    bool zero = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool widthIsArgument = false;
    bool precisionIsArgument = false;
    int width = 0;
    int precision = -1;
    PrintfSize size = PrintfSize::None;
    int sizeMarks = 0;    ///< How many there were; the last one counts.
    unsigned letter = 0;  ///< 0 at the end of the format, '%' where the next directive begins.
};

/// The kind of argument that the conversion takes behind its width and precision.
constexpr PrintfArgument ArgumentOf(const PrintfDirective& directive)
{
    switch (directive.letter) {
    case 'd':
    case 'i':
    case 'u':
    case 'o':
    case 'x':
    case 'X':
        return directive.size == PrintfSize::Bits64 ? PrintfArgument::Int64 : PrintfArgument::Int;
    case 'c':
    case 'C':
        return PrintfArgument::Int;
    case 's':
    case 'S':
    case 'p':
    case 'n':
        return PrintfArgument::Pointer;
    case 'e':
    case 'E':
    case 'f':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        return PrintfArgument::Double;
    default:
        return PrintfArgument::None;
    }
}

/// Arguments of a variable argument list.
class VaListArguments
{
public:
    explicit VaListArguments(va_list list) { va_copy(m_list, list); }
    ~VaListArguments() { va_end(m_list); }
    VaListArguments(const VaListArguments&) = delete;
    VaListArguments& operator=(const VaListArguments&) = delete;

    int Int() { return va_arg(m_list, int); }
    long long LongLong() { return va_arg(m_list, long long); }
    void* Pointer() { return va_arg(m_list, void*); }
    double Double() { return va_arg(m_list, double); }

private:
    va_list m_list;
};

/// Reads one directive, whose '%' lies before @p format, with the arguments of its stars.
template <class Unit, class Arguments>
class PrintfDirectiveReader
{
public:
    explicit PrintfDirectiveReader(Arguments& arguments) : m_arguments(arguments) {}

    /// Where the format goes on: behind the letter, at a further '%', which begins a directive of its own, or at the format's end.
    const Unit* Read(const Unit* format, PrintfDirective& directive)
    {
        directive = {};
        format = ReadFlags(format, directive);
        format = ReadNumber(format, directive.width, directive.widthIsArgument);
        if (*format == '.') {
            directive.precision = 0;
            format = ReadNumber(format + 1, directive.precision, directive.precisionIsArgument);
        }
        format = ReadSize(format, directive);
        directive.letter = static_cast<std::make_unsigned_t<Unit>>(*format);
        return *format == 0 || *format == '%' ? format : format + 1;
    }

private:
    static const Unit* ReadFlags(const Unit* format, PrintfDirective& directive)
    {
        for (;; ++format) {
            switch (*format) {
            case '-':
                directive.left = true;
                break;
            case '0':
                directive.zero = true;
                break;
            case '+':
                directive.plus = true;
                break;
            case ' ':
                directive.blank = true;
                break;
            case '#':
                directive.alternate = true;
                break;
            default:
                return format;
            }
        }
    }

    /// Digits, or '*' for an argument; @p number stays when there is neither. Numbers past every buffer stay there.
    const Unit* ReadNumber(const Unit* format, int& number, bool& isArgument)
    {
        if (*format == '*') {
            isArgument = true;
            number = m_arguments.Int();
            return format + 1;
        }
        constexpr int kLimit = INT_MAX / 10 - 1;
        for (; *format >= '0' && *format <= '9'; ++format)
            number = (number < kLimit ? number : kLimit) * 10 + (*format - '0');
        return format;
    }

    static const Unit* ReadSize(const Unit* format, PrintfDirective& directive)
    {
        PrintfSize& size = directive.size;
        for (;; ++format, ++directive.sizeMarks) {
            switch (*format) {
            case 'h':
                size = PrintfSize::Narrow;
                break;
            case 'w':
                size = PrintfSize::Wide;
                break;
            case 'l':
                size = format[1] == 'l' ? (++format, PrintfSize::Bits64) : PrintfSize::Wide;
                break;
            case 'j':
            case 'z':
            case 't':
                size = PrintfSize::Bits64;
                break;
            case 'F':
            case 'L':
            case 'N':
                break;
            case 'I':
                if (!IsIntegerSize(format + 1))
                    return format;
                format = ReadInteger(format, size);
                break;
            default:
                return format;
            }
        }
    }

    /// Whether an 'I' before @p format is a size: before "64", "32" or the letter of an integer. Elsewhere it is a letter itself.
    static bool IsIntegerSize(const Unit* format)
    {
        if ((format[0] == '6' && format[1] == '4') || (format[0] == '3' && format[1] == '2'))
            return true;
        const Unit letter = format[0];
        return letter == 'd' || letter == 'i' || letter == 'o' || letter == 'u' || letter == 'x' || letter == 'X';
    }

    /// "I64", "I32", or "I" for the size of a pointer; returns its last unit.
    static const Unit* ReadInteger(const Unit* format, PrintfSize& size)
    {
        const bool is32 = format[1] == '3' && format[2] == '2';
        const bool is64 = format[1] == '6' && format[2] == '4';
        size = is32 ? PrintfSize::None : PrintfSize::Bits64;
        return format + (is32 || is64 ? 2 : 0);
    }

    Arguments& m_arguments;
};

/// Goes along the directives of a format, of which "%%" is none.
template <class Unit, class Arguments>
class PrintfDirectiveWalk
{
public:
    /// Stars take their numbers from @p arguments.
    PrintfDirectiveWalk(const Unit* format, Arguments& arguments) : m_end(format), m_reader(arguments) {}

    /// Reads the next one; false when there is no more.
    bool Next(PrintfDirective& directive)
    {
        while (*m_end) {
            if (*m_end++ != '%')
                continue;
            m_begin = m_end;
            if (*m_end == '%') {
                ++m_end;
                continue;
            }
            directive = {};
            m_end = m_reader.Read(m_end, directive);
            return true;
        }
        return false;
    }

    /// Behind the percent sign of the one that is or was read, and, once it was, behind its letter.
    const Unit* Begin() const { return m_begin; }
    const Unit* End() const { return m_end; }

private:
    const Unit* m_begin = nullptr;
    const Unit* m_end;
    PrintfDirectiveReader<Unit, Arguments> m_reader;
};

}  // namespace kelgen::detail
