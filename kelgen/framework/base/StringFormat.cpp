// StringFormat.cpp: CString by the runtime's narrow printf, and conversion from 16-bit text.
#include <kelgen/framework/base/String.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/platform/support/WideFormat.h>

#include <climits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

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

void CString::SetBytes(std::string_view text)
{
    if (text.size() > INT_MAX)
        AfxThrowMemoryException();
    *this = CString(text.data(), static_cast<int>(text.size()));
}

std::ostream& operator<<(std::ostream& stream, const CString& text)
{
    const std::string_view bytes(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    if (bytes.empty() || ::GetACP() == CP_UTF8)
        return stream << bytes;
    std::vector<WCHAR> units(bytes.size());
    const int count = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), text.GetLength(), units.data(), text.GetLength());
    std::string converted(static_cast<std::size_t>(count) * 3, '\0');
    const int size =
        ::WideCharToMultiByte(CP_UTF8, 0, units.data(), count, converted.data(), static_cast<int>(converted.size()), nullptr, nullptr);
    converted.resize(static_cast<std::size_t>(size));
    return stream << converted;
}
