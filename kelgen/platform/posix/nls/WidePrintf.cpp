// WidePrintf.cpp: the printf formatter over 16-bit units.
#include <kelgen/platform/posix/nls/api/WidePrintf.h>

#include <kelgen/platform/support/printf/PrintfFormatter.h>

using namespace kelgen::detail;
using namespace kelgen::posix;

int _vscwprintf(const WCHAR* format, va_list arguments)
{
    BoundedOutput<WCHAR> output(nullptr, 0);
    VaListArguments list(arguments);
    PrintfFormatter(output, list).Format(format);
    return output.Length() > INT_MAX ? -1 : static_cast<int>(output.Length());
}

int _vsnwprintf(WCHAR* text, std::size_t capacity, const WCHAR* format, va_list arguments)
{
    if (!text && capacity == 0)
        return _vscwprintf(format, arguments);

    BoundedOutput output(text, capacity);
    VaListArguments list(arguments);
    PrintfFormatter(output, list).Format(format);
    return output.Finish();
}

int _snwprintf(WCHAR* text, std::size_t capacity, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf(text, capacity, format, arguments);
    va_end(arguments);
    return length;
}

int _scwprintf(const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = _vscwprintf(format, arguments);
    va_end(arguments);
    return length;
}
