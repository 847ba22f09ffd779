// ValueData.h: a value's data as callers pass it: text in the calls' own kind of characters.
#pragma once

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/registry/ValueFile.h>
#include <kelgen/platform/posix/registry/api/Registry.h>

#include <cstring>
#include <span>
#include <vector>

namespace kelgen::posix {

inline bool IsTextType(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

/// Text data as it is kept, from what a caller passed: 16-bit, with a terminator unless it is empty or half a unit is left over.
template <class Char>
std::vector<BYTE> StoredText(std::span<const BYTE> data)
{
    std::vector<BYTE> bytes(data.begin(), data.end());
    if constexpr (sizeof(Char) == 1) {
        const std::u16string wide = WideText(std::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
        bytes.resize(wide.size() * sizeof(WCHAR));
        if (!wide.empty())
            std::memcpy(bytes.data(), wide.data(), bytes.size());
    }
    const bool whole = !bytes.empty() && bytes.size() % sizeof(WCHAR) == 0;
    if (whole && (bytes[bytes.size() - 1] != 0 || bytes[bytes.size() - 2] != 0))
        bytes.insert(bytes.end(), sizeof(WCHAR), 0);
    return bytes;
}

/// The data of @p value as a caller with that kind of characters gets it.
template <class Char>
std::vector<BYTE> GivenData(const StoredValue& value)
{
    if (sizeof(Char) != 1 || !IsTextType(value.type))
        return value.data;
    std::u16string wide(value.data.size() / sizeof(WCHAR), u'\0');
    if (!wide.empty())
        std::memcpy(wide.data(), value.data.data(), wide.size() * sizeof(WCHAR));
    const std::string narrow = AnsiText(wide);
    return {narrow.begin(), narrow.end()};
}

/// Answers a query: type and size where wanted, and the data where it fits; ERROR_MORE_DATA where it does not.
template <class Char>
LSTATUS GiveData(const StoredValue& value, LPDWORD type, LPBYTE data, LPDWORD size)
{
    if (type)
        *type = value.type;
    if (!size)
        return ERROR_SUCCESS;
    const std::vector<BYTE> given = GivenData<Char>(value);
    const bool fits = *size >= given.size();
    *size = static_cast<DWORD>(given.size());
    if (!data)
        return ERROR_SUCCESS;
    if (!fits)
        return ERROR_MORE_DATA;
    if (!given.empty())
        std::memcpy(data, given.data(), given.size());
    return ERROR_SUCCESS;
}

}  // namespace kelgen::posix
