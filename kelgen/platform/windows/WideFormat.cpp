// WideFormat.cpp: the system's runtime where it is sound, and our own formatter for numbers that overrun its buffers.
#include <kelgen/platform/support/WideFormat.h>

#include <kelgen/platform/support/printf/PrintfFormatter.h>

using namespace kelgen::detail;

namespace kelgen {

namespace {

// Integers of 20 to 24 digits in a wider field overrun a buffer of the runtime, and so do those of some hundred digits (300 were seen
// to); floating-point numbers lose their digits to a precision below -1, and padding costs 5 ns a unit even when it is only counted.
constexpr int kMostDigits = 15;
constexpr int kMostPadding = 100000;

/// Whether the runtime prints every conversion without harm.
bool IsSound(const WCHAR* format, va_list arguments)
{
    VaListArguments list(arguments);
    PrintfDirectiveReader<WCHAR, VaListArguments> reader(list);
    while (*format) {
        if (*format++ != '%')
            continue;
        if (*format == '%') {
            ++format;
            continue;
        }
        PrintfDirective directive;
        format = reader.Read(format, directive);
        if (directive.width > kMostPadding || directive.width < -kMostPadding)
            return false;
        switch (ArgumentOf(directive)) {
        case PrintfArgument::None:
            break;
        case PrintfArgument::Int:
            list.Int();
            break;
        case PrintfArgument::Int64:
            list.LongLong();
            break;
        case PrintfArgument::Double:
            list.Double();
            break;
        case PrintfArgument::Pointer:
            list.Pointer();
            break;
        }
        const bool isText = directive.letter == 's' || directive.letter == 'S';
        if (!isText && (directive.precision > kMostDigits || directive.precision < -1))
            return false;
    }
    return true;
}

int FormatByOwnRules(WCHAR* text, std::size_t capacity, const WCHAR* format, va_list arguments)
{
    VaListArguments list(arguments);
    BoundedOutput<WCHAR> output(text, capacity);
    PrintfFormatter(output, list).Format(format);
    if (text)
        return output.Finish();
    return output.Length() > INT_MAX ? -1 : static_cast<int>(output.Length());
}

}  // namespace

int FormatWide(WCHAR* text, std::size_t capacity, const WCHAR* format, va_list arguments)
{
    return IsSound(format, arguments) ? _vsnwprintf(text, capacity, format, arguments)
                                      : FormatByOwnRules(text, capacity, format, arguments);
}

}  // namespace kelgen
