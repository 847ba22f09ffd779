// WideNames.cpp: file names of the calls as UTF-8 and back, without loss of bytes that are not UTF-8.
#include <kelgen/platform/posix/files/Paths.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>

#include <algorithm>

namespace kelgen::posix {

namespace {

constexpr unsigned kByteEscape = 0xDC00;

bool IsHighSurrogate(unsigned unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(unsigned unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(std::string& text, unsigned point)
{
    const auto append = [&text](unsigned byte) { text += static_cast<char>(byte); };
    if (point < 0x80) {
        append(point);
        return;
    }
    if (point < 0x800) {
        append(0xC0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            append(0xE0 | (point >> 12));
        } else {
            append(0xF0 | (point >> 18));
            append(0x80 | ((point >> 12) & 0x3F));
        }
        append(0x80 | ((point >> 6) & 0x3F));
    }
    append(0x80 | (point & 0x3F));
}

// The length of the UTF-8 character at the start of text, its code point in point; 0 when there is none.
std::size_t DecodeUtf8(std::string_view text, unsigned& point)
{
    const auto byte = [text](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(text[i])); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > text.size())
        return 0;

    point = length == 1 ? lead : lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
        point = (point << 6) | (byte(i) & 0x3F);
    }
    const bool overlong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    return overlong || surrogate || point > 0x10FFFF ? 0 : length;
}

// The bytes of the whole characters that text starts with.
std::size_t Utf8Length(std::string_view text)
{
    std::size_t done = 0;
    for (unsigned point = 0; done < text.size();) {
        const std::size_t length = DecodeUtf8(text.substr(done), point);
        if (length == 0)
            break;
        done += length;
    }
    return done;
}

}  // namespace

bool IsSameInAnsi(std::string_view narrow)
{
    return std::ranges::all_of(narrow, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }) || GetACP() == CP_UTF8;
}

std::string NarrowName(LPCWSTR wide)
{
    std::string text;
    for (; wide && *wide; ++wide) {
        if (IsHighSurrogate(wide[0]) && IsLowSurrogate(wide[1])) {
            AppendUtf8(text, 0x10000 + ((wide[0] - 0xD800u) << 10) + (wide[1] - 0xDC00u));
            ++wide;
        } else if (wide[0] >= kByteEscape + 0x80 && wide[0] <= kByteEscape + 0xFF) {
            text += static_cast<char>(wide[0] & 0xFF);
        } else {
            AppendUtf8(text, wide[0]);
        }
    }
    return text;
}

std::u16string WideName(std::string_view narrow)
{
    std::u16string wide;
    wide.reserve(narrow.size());
    while (!narrow.empty()) {
        unsigned point = 0;
        const std::size_t length = DecodeUtf8(narrow, point);
        if (length == 0) {
            wide += static_cast<char16_t>(kByteEscape | static_cast<unsigned char>(narrow[0]));
        } else if (point < 0x10000) {
            wide += static_cast<char16_t>(point);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
        }
        narrow.remove_prefix(length == 0 ? 1 : length);
    }
    return wide;
}

std::string NarrowName(LPCSTR ansi)
{
    const std::string_view name = ansi ? ansi : "";
    if (IsSameInAnsi(name))
        return std::string(name);
    return NarrowName(reinterpret_cast<LPCWSTR>(WideText(name).c_str()));
}

std::string AnsiName(std::string_view narrow)
{
    if (IsSameInAnsi(narrow))
        return std::string(narrow);

    std::string name;
    while (!narrow.empty()) {
        std::size_t valid = Utf8Length(narrow);
        name += AnsiText(WideName(narrow.substr(0, valid)));
        if (valid < narrow.size())
            name += narrow[valid++];
        narrow.remove_prefix(valid);
    }
    return name;
}

bool IsUtf8(std::string_view narrow)
{
    return Utf8Length(narrow) == narrow.size();
}

}  // namespace kelgen::posix
