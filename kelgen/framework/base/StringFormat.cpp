// StringFormat.cpp: CString by the runtime's narrow printf, and conversion from 16-bit text.
#include <kelgen/framework/base/String.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/platform/support/WideFormat.h>

#include <utility>

void CString::FormatV(LPCSTR format, va_list arguments)
{
    // Arguments may be this string's own characters, so the text is replaced last.
    CString formatted;
    formatted.AppendFormatV(format, arguments);
    *this = std::move(formatted);
}

void CString::Format(LPCSTR format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormatV(LPCSTR format, va_list arguments)
{
    if (!format)
        AfxThrowInvalidArgException();
    va_list again;
    va_copy(again, arguments);
    const int added = kelgen::FormatNarrow(nullptr, 0, format, arguments);
    if (added < 0) {
        va_end(again);
        AfxThrowInvalidArgException();
    }
    CString text;
    kelgen::FormatNarrow(text.GetBuffer(added), static_cast<std::size_t>(added) + 1, format, again);
    va_end(again);
    text.ReleaseBufferSetLength(added);
    Append(text);
}

void CString::AppendFormat(LPCSTR format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    AppendFormatV(format, arguments);
    va_end(arguments);
}
