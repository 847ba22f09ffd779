// ByteText.h: comparison and search of 8-bit text byte by byte, whatever the code page. Not for hosts.
#pragma once

#include <kelgen/framework/base/String.h>

#include <cstring>
#include <string_view>

namespace kelgen::detail {

/// -1, 0 or 1, by the values of the bytes. Null counts as the empty text.
inline int CompareBytes(const char* left, const char* right)
{
    const int order = std::strcmp(left != nullptr ? left : "", right != nullptr ? right : "");
    return (order > 0) - (order < 0);
}

/// The first index of @p sought at or after @p start, 0 or more; -1 when there is none before a 0 byte.
inline int FindBytes(const CString& text, const char* sought, int start)
{
    if (start > text.GetLength())
        return -1;
    const char* const found = std::strstr(text.GetString() + start, sought);
    return found != nullptr ? static_cast<int>(found - text.GetString()) : -1;
}

/// Puts @p value in the place of every @p sought; an empty one occurs nowhere.
inline void ReplaceBytes(CString& text, const CString& sought, const CString& value)
{
    const std::string_view whole(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    const std::string_view wanted(sought.GetString(), static_cast<std::size_t>(sought.GetLength()));
    std::size_t at = wanted.empty() ? std::string_view::npos : whole.find(wanted);
    if (at == std::string_view::npos)
        return;
    CString replaced;
    std::size_t from = 0;
    for (; at != std::string_view::npos; from = at + wanted.size(), at = whole.find(wanted, from)) {
        replaced.Append(whole.data() + from, static_cast<int>(at - from));
        replaced.Append(value);
    }
    replaced.Append(whole.data() + from, static_cast<int>(whole.size() - from));
    text = replaced;
}

}  // namespace kelgen::detail
