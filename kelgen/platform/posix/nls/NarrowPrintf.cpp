// NarrowPrintf.cpp: the printf formatter over narrow text.
#include <kelgen/platform/posix/nls/api/NarrowRuntime.h>

#include <kelgen/platform/support/printf/PrintfFormatter.h>

using namespace kelgen::detail;
using namespace kelgen::posix;

int _vscprintf(const char* format, va_list arguments)
{
    if (!format)
        return -1;
    BoundedOutput<char> output(nullptr, 0);
    VaListArguments list(arguments);
    if (!PrintfFormatter(output, list).Format(format) || output.Length() > INT_MAX)
        return -1;
    return static_cast<int>(output.Length());
}

int _vsnprintf(char* text, std::size_t capacity, const char* format, va_list arguments)
{
    if (!text && capacity == 0)
        return _vscprintf(format, arguments);

    BoundedOutput output(text, capacity);
    VaListArguments list(arguments);
    const bool formatted = PrintfFormatter(output, list).Format(format);
    const int length = output.Finish();
    return formatted ? length : -1;
}

int _snprintf(char* text, std::size_t capacity, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnprintf(text, capacity, format, arguments);
    va_end(arguments);
    return length;
}

int _scprintf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = _vscprintf(format, arguments);
    va_end(arguments);
    return length;
}
