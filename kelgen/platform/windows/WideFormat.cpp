// WideFormat.cpp: the system's runtime for what it is known to print well, and our own formatter for everything else.
#include <kelgen/platform/support/WideFormat.h>

#include <kelgen/platform/support/printf/PrintfFormatter.h>

using namespace kelgen::detail;

namespace kelgen {

namespace {

// Numbers that are wider, have a prefix or more digits overrun buffers of the runtime, and padding costs it 5 ns a unit even when it is
// only counted. Single characters are not here: some that do not fit are counted as if they did.
constexpr int kMostWidth = 16;
constexpr int kMostDigits = 15;
constexpr double kMostMagnitude = 1e15;
constexpr int kMostPadding = 100000;

bool IsWithin(int number, int most)
{
    return number >= -most && number <= most;
}

/// Whether the runtime is known to print @p directive well, whose floating-point argument is @p value.
bool IsKnown(const PrintfDirective& directive, double value)
{
    if (directive.alternate || directive.sizeMarks > 1)
        return false;
    const bool hasSign = directive.plus || directive.blank;
    const bool isNumber = IsWithin(directive.width, kMostWidth) && directive.precision >= -1 && directive.precision <= kMostDigits;
    switch (directive.letter) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
        return isNumber;
    case 'e':
    case 'E':
    case 'f':
    case 'g':
    case 'G':
        return isNumber && directive.sizeMarks == 0 && std::fabs(value) < kMostMagnitude;
    case 's':
    case 'S':
        return !hasSign && directive.size != PrintfSize::Bits64 && IsWithin(directive.width, kMostPadding);
    default:
        return false;
    }
}

/// Whether the runtime prints every conversion well.
template <class Unit>
bool IsKnown(const Unit* format, va_list arguments)
{
    VaListArguments list(arguments);
    PrintfDirectiveWalk<Unit, VaListArguments> walk(format, list);
    for (PrintfDirective directive; walk.Next(directive);) {
        double value = 0;
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
            value = list.Double();
            break;
        case PrintfArgument::Pointer:
            list.Pointer();
            break;
        }
        if (!IsKnown(directive, value))
            return false;
    }
    return true;
}

template <class Unit>
int FormatByOwnRules(Unit* text, std::size_t capacity, const Unit* format, va_list arguments)
{
    VaListArguments list(arguments);
    BoundedOutput<Unit> output(text, capacity);
    const bool formatted = PrintfFormatter(output, list).Format(format);
    const int length = text ? output.Finish() : output.Length() > INT_MAX ? -1 : static_cast<int>(output.Length());
    return formatted ? length : -1;
}

}  // namespace

int FormatWide(WCHAR* text, std::size_t capacity, const WCHAR* format, va_list arguments)
{
    return IsKnown(format, arguments) ? _vsnwprintf(text, capacity, format, arguments)
                                      : FormatByOwnRules(text, capacity, format, arguments);
}

int FormatNarrow(char* text, std::size_t capacity, const char* format, va_list arguments)
{
    return IsKnown(format, arguments) ? _vsnprintf(text, capacity, format, arguments) : FormatByOwnRules(text, capacity, format, arguments);
}

}  // namespace kelgen
