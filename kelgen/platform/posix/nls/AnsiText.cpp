// AnsiText.cpp: conversion by the platform's code pages, past them where the text is ASCII.
#include <kelgen/platform/posix/nls/AnsiText.h>

#include <kelgen/platform/posix/nls/AsciiRuns.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>

#include <algorithm>

namespace kelgen::posix {

std::u16string WideText(std::string_view text)
{
    std::u16string wide(text.size(), u'\0');
    auto* const target = reinterpret_cast<LPWSTR>(wide.data());
    std::size_t plain = WidenRun(text.data(), text.size(), target, false);
    for (; plain < text.size() && static_cast<unsigned char>(text[plain]) < 0x80; ++plain)
        wide[plain] = static_cast<char16_t>(text[plain]);
    if (plain == text.size())
        return wide;

    const int length = static_cast<int>(text.size());
    const int units = MultiByteToWideChar(CP_ACP, 0, text.data(), length, target, length);
    wide.resize(static_cast<std::size_t>(std::max(units, 0)));
    return wide;
}

std::string AnsiText(std::u16string_view text)
{
    if (std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; }))
        return {text.begin(), text.end()};

    const auto* units = reinterpret_cast<LPCWSTR>(text.data());
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, units, length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(std::max(size, 0)), '\0');
    WideCharToMultiByte(CP_ACP, 0, units, length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::size_t LengthThatFits(std::string_view text, std::size_t room)
{
    constexpr std::size_t kMostTrailBytes = 3;
    if (text.size() <= room)
        return text.size();
    if (GetACP() != CP_UTF8)
        return room;
    std::size_t end = room;
    while (end > 0 && room - end < kMostTrailBytes && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80 ? room : end;
}

}  // namespace kelgen::posix
