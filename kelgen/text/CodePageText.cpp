// CodePageText.cpp: one pass of the converter into a guess, and a second one into the exact size where the guess was short.
#include <kelgen/text/CodePageText.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/platform/support/WideText.h>

#include <climits>
#include <ostream>

namespace {

int CheckedLength(std::size_t length)
{
    if (length > INT_MAX)
        AfxThrowMemoryException();
    return static_cast<int>(length);
}

std::string Encode(const unsigned short* units, int length, DWORD page)
{
    if (length == 0)
        return {};
    const WCHAR* const text = kelgen::AsWide(units);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    int written = WideCharToMultiByte(page, 0, text, length, bytes.data(), length, nullptr, nullptr);
    if (written == 0) {
        const int needed = WideCharToMultiByte(page, 0, text, length, nullptr, 0, nullptr, nullptr);
        bytes.resize(static_cast<std::size_t>(needed));
        if (needed != 0)
            written = WideCharToMultiByte(page, 0, text, length, bytes.data(), needed, nullptr, nullptr);
    }
    bytes.resize(static_cast<std::size_t>(written));
    return bytes;
}

CWStr Decode(std::string_view bytes, DWORD page)
{
    CWStr text;
    const int length = CheckedLength(bytes.size());
    if (length == 0)
        return text;
    // No page has more units than bytes for well-formed text; what is not may take more.
    int written = MultiByteToWideChar(page, 0, bytes.data(), length, kelgen::AsWide(text.GetBuffer(length)), length);
    if (written == 0) {
        const int needed = MultiByteToWideChar(page, 0, bytes.data(), length, nullptr, 0);
        if (needed != 0)
            written = MultiByteToWideChar(page, 0, bytes.data(), length, kelgen::AsWide(text.GetBuffer(needed)), needed);
    }
    text.ReleaseBuffer(written);
    return text;
}

}  // namespace

std::string kelgen::ToCodePage(const CWStr& text, DWORD page)
{
    return Encode(text, text.GetLength(), page);
}

CWStr kelgen::FromCodePage(std::string_view bytes, DWORD page)
{
    return Decode(bytes, page);
}

std::string kelgen::ToCodePage(const CString& text, DWORD page)
{
    const std::string_view bytes(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    if (page == GetACP())
        return std::string(bytes);
    return ToCodePage(Decode(bytes, CP_ACP), page);
}

CString kelgen::NarrowFromCodePage(std::string_view bytes, DWORD page)
{
    if (page == GetACP())
        return CString(bytes.data(), CheckedLength(bytes.size()));
    const std::string narrow = ToCodePage(Decode(bytes, page), CP_ACP);
    return CString(narrow.data(), CheckedLength(narrow.size()));
}

std::ostream& operator<<(std::ostream& stream, const CWStr& text)
{
    return stream << kelgen::ToUtf8(text);
}
