// WideFormat.cpp: our own runtime takes every format.
#include <kelgen/platform/support/WideFormat.h>

namespace kelgen {

int FormatWide(WCHAR* text, std::size_t capacity, const WCHAR* format, va_list arguments)
{
    return _vsnwprintf(text, capacity, format, arguments);
}

int FormatNarrow(char* text, std::size_t capacity, const char* format, va_list arguments)
{
    return _vsnprintf(text, capacity, format, arguments);
}

}  // namespace kelgen
