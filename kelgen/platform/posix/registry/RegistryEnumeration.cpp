// RegistryEnumeration.cpp: numbered subkeys and values, and a key's counts.
#include <kelgen/platform/posix/registry/api/Registry.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/registry/Folders.h>
#include <kelgen/platform/posix/registry/KeyStore.h>
#include <kelgen/platform/posix/registry/StoredNames.h>
#include <kelgen/platform/posix/registry/ValueData.h>

#include <fcntl.h>

#include <algorithm>
#include <utility>

using namespace kelgen::posix;

namespace {

FILETIME FileTimeOf(const timespec& time)
{
    constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
    const auto steps =
        static_cast<ULONGLONG>(time.tv_sec + kSecondsFrom1601To1970) * 10'000'000 + static_cast<ULONGLONG>(time.tv_nsec) / 100;
    return {static_cast<DWORD>(steps), static_cast<DWORD>(steps >> 32)};
}

/// When the key in the folder @p name in @p parent, or one of its values, changed last; 1601 when it is gone.
FILETIME LastWrite(int parent, const std::string& name)
{
    const Descriptor folder = OpenFolder(parent, name);
    struct stat state;
    if (!folder || fstat(folder.Get(), &state) != 0)
        return {};
    timespec last = state.st_mtim;
    ForEachEntry(folder.Get(), [&](const std::string& entry, bool isFolder) {
        if (isFolder || fstatat(folder.Get(), entry.c_str(), &state, AT_SYMLINK_NOFOLLOW) != 0)
            return;
        if (std::pair(state.st_mtim.tv_sec, state.st_mtim.tv_nsec) > std::pair(last.tv_sec, last.tv_nsec))
            last = state.st_mtim;
    });
    return FileTimeOf(last);
}

/// Copies @p text with its terminator when @p size units hold it.
template <class Char>
bool CopyIfFits(const std::basic_string<Char>& text, Char* buffer, DWORD size)
{
    if (size <= text.size())
        return false;
    *std::ranges::copy(text, buffer).out = 0;
    return true;
}

/// Classes are not kept.
template <class Char>
void GiveEmptyClass(Char* className, LPDWORD size)
{
    if (className && size && *size > 0)
        *className = 0;
    if (size)
        *size = 0;
}

template <class Char>
LSTATUS EnumerateKey(HKEY handle, DWORD index, Char* name, LPDWORD size, const DWORD* reserved, Char* className, LPDWORD classSize,
                     FILETIME* lastWrite)
{
    if (!name || !size || reserved || (className && !classSize))
        return ERROR_INVALID_PARAMETER;
    const auto key = FindKey(handle);
    if (!key)
        return ERROR_INVALID_HANDLE;
    if (!key->Grants(KEY_ENUMERATE_SUB_KEYS))
        return ERROR_ACCESS_DENIED;
    KeyListing listing;
    if (const LSTATUS status = key->List(listing); status != ERROR_SUCCESS)
        return status;
    if (index >= listing.subkeys.size())
        return ERROR_NO_MORE_ITEMS;

    const std::basic_string<Char> text = TextOf<Char>(listing.subkeys[index]);
    if (!CopyIfFits(text, name, *size))
        return ERROR_MORE_DATA;
    *size = static_cast<DWORD>(text.size());
    GiveEmptyClass(className, classSize);
    if (lastWrite)
        *lastWrite = LastWrite(key->Folder(), KeyFileName(listing.subkeys[index]));
    return ERROR_SUCCESS;
}

/// The value number @p index. One that vanishes between listing and reading is left out.
LSTATUS ReadValueAt(Key& key, DWORD index, StoredValue& value)
{
    constexpr int kAttempts = 10;
    LSTATUS status = ERROR_NO_MORE_ITEMS;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        KeyListing listing;
        status = key.List(listing);
        if (status != ERROR_SUCCESS)
            return status;
        if (index >= listing.values.size())
            return ERROR_NO_MORE_ITEMS;
        status = key.ReadValue(listing.values[index], value);
        if (status != ERROR_FILE_NOT_FOUND)
            return status;
        key.ForgetListing();
    }
    return status;
}

template <class Char>
LSTATUS EnumerateValue(HKEY handle, DWORD index, Char* name, LPDWORD nameSize, const DWORD* reserved, LPDWORD type, LPBYTE data,
                       LPDWORD dataSize)
{
    if (!name || !nameSize || reserved || (data && !dataSize))
        return ERROR_INVALID_PARAMETER;
    const auto key = FindKey(handle);
    if (!key)
        return ERROR_INVALID_HANDLE;
    if (!key->Grants(KEY_QUERY_VALUE))
        return ERROR_ACCESS_DENIED;
    StoredValue value;
    if (const LSTATUS status = ReadValueAt(*key, index, value); status != ERROR_SUCCESS)
        return status;

    const std::basic_string<Char> text = TextOf<Char>(value.name);
    if (*nameSize <= text.size()) {
        GiveData<Char>(value, type, nullptr, dataSize);
        return ERROR_MORE_DATA;
    }
    const LSTATUS status = GiveData<Char>(value, type, data, dataSize);
    if (status == ERROR_SUCCESS) {
        CopyIfFits(text, name, *nameSize);
        *nameSize = static_cast<DWORD>(text.size());
    }
    return status;
}

template <class Number>
void Give(LPDWORD result, Number number)
{
    if (result)
        *result = static_cast<DWORD>(number);
}

// A narrow name may be longer than the 16-bit one.
template <class Char>
std::size_t LongestName(const std::vector<std::u16string>& names)
{
    std::size_t longest = 0;
    for (const std::u16string& name : names)
        longest = std::max(longest, TextOf<Char>(name).size());
    return longest;
}

// Narrow text counts as it is kept, in 16-bit units, unless it is longer than that.
template <class Char>
std::size_t LongestData(const Key& key, const std::vector<std::u16string>& names)
{
    std::size_t longest = 0;
    for (const std::u16string& name : names)
        if (StoredValue value; key.ReadValue(name, value) == ERROR_SUCCESS)
            longest = std::max({longest, value.data.size(), GivenData<Char>(value).size()});
    return longest;
}

template <class Char>
LSTATUS QueryInfo(HKEY handle, Char* className, LPDWORD classSize, LPDWORD subkeys, LPDWORD longestSubkey, LPDWORD longestClass,
                  LPDWORD values, LPDWORD longestValueName, LPDWORD longestValue, LPDWORD securityDescriptor, FILETIME* lastWrite)
{
    if (className && !classSize)
        return ERROR_INVALID_PARAMETER;
    const auto key = FindKey(handle);
    if (!key)
        return ERROR_INVALID_HANDLE;
    KeyListing listing;
    if (const LSTATUS status = key->List(listing); status != ERROR_SUCCESS)
        return status;

    GiveEmptyClass(className, classSize);
    Give(subkeys, listing.subkeys.size());
    Give(longestSubkey, LongestName<Char>(listing.subkeys));
    Give(longestClass, 0);
    Give(values, listing.values.size());
    Give(longestValueName, LongestName<Char>(listing.values));
    if (longestValue)
        *longestValue = static_cast<DWORD>(LongestData<Char>(*key, listing.values));
    Give(securityDescriptor, 0);
    if (lastWrite)
        *lastWrite = LastWrite(key->Folder(), ".");
    return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return EnumerateKey<CHAR>(key, index, name, &size, nullptr, nullptr, nullptr, nullptr); });
}

LSTATUS RegEnumKeyW(HKEY key, DWORD index, LPWSTR name, DWORD size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return EnumerateKey<WCHAR>(key, index, name, &size, nullptr, nullptr, nullptr, nullptr); });
}

LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD size, LPDWORD reserved, LPSTR className, LPDWORD classSize,
                      FILETIME* lastWrite)
{
    return StatusOrNoMemory(
        [&]() -> LSTATUS { return EnumerateKey<CHAR>(key, index, name, size, reserved, className, classSize, lastWrite); });
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD reserved, LPWSTR className, LPDWORD classSize,
                      FILETIME* lastWrite)
{
    return StatusOrNoMemory(
        [&]() -> LSTATUS { return EnumerateKey<WCHAR>(key, index, name, size, reserved, className, classSize, lastWrite); });
}

LSTATUS RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD dataSize)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return EnumerateValue<CHAR>(key, index, name, nameSize, reserved, type, data, dataSize); });
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD dataSize)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return EnumerateValue<WCHAR>(key, index, name, nameSize, reserved, type, data, dataSize); });
}

LSTATUS RegQueryInfoKeyA(HKEY key, LPSTR className, LPDWORD classSize, LPDWORD, LPDWORD subkeys, LPDWORD longestSubkey,
                         LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName, LPDWORD longestValue, LPDWORD securityDescriptor,
                         FILETIME* lastWrite)
{
    return StatusOrNoMemory([&]() -> LSTATUS {
        return QueryInfo(key, className, classSize, subkeys, longestSubkey, longestClass, values, longestValueName, longestValue,
                         securityDescriptor, lastWrite);
    });
}

LSTATUS RegQueryInfoKeyW(HKEY key, LPWSTR className, LPDWORD classSize, LPDWORD, LPDWORD subkeys, LPDWORD longestSubkey,
                         LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName, LPDWORD longestValue, LPDWORD securityDescriptor,
                         FILETIME* lastWrite)
{
    return StatusOrNoMemory([&]() -> LSTATUS {
        return QueryInfo(key, className, classSize, subkeys, longestSubkey, longestClass, values, longestValueName, longestValue,
                         securityDescriptor, lastWrite);
    });
}
