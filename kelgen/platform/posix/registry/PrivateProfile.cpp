// PrivateProfile.cpp: the profile calls over files' texts.
#include <kelgen/platform/posix/registry/api/PrivateProfile.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/registry/ProfileFile.h>

#include <algorithm>

using namespace kelgen::posix;

namespace {

using Names = std::vector<std::u16string>;

/// Copies @p text, cut to @p size - 1 units, with a terminator.
template <class Char>
DWORD GiveText(std::u16string_view text, Char* buffer, DWORD size)
{
    const std::basic_string<Char> given = TextOf<Char>(text);
    const std::size_t length = LengthThatFits(given, size - 1);
    std::copy_n(given.data(), length, buffer);
    buffer[length] = 0;
    return static_cast<DWORD>(length);
}

/// Copies @p names, each with a terminator, and one more; a list that does not fit is cut to @p size - 2 units.
/// By contract a list that fits exactly counts as cut, since the result is the same.
template <class Char>
DWORD GiveNames(const Names& names, Char* buffer, DWORD size, DWORD errorWhenCut)
{
    if (size < 2) {
        buffer[0] = 0;
        return Fail(ERROR_INVALID_PARAMETER, DWORD{0});
    }
    std::basic_string<Char> list;
    for (const std::u16string& name : names) {
        list += TextOf<Char>(name);
        list.push_back(0);
    }
    const bool isCut = list.size() > size - 2;
    const DWORD length = isCut ? size - 2 : static_cast<DWORD>(list.size());
    std::copy_n(list.data(), length, buffer);
    buffer[length] = 0;
    buffer[length + 1] = 0;
    if (isCut && errorWhenCut != ERROR_SUCCESS)
        SetLastError(errorWhenCut);
    return length;
}

std::u16string_view WithoutTrailingBlanks(std::u16string_view text)
{
    return text.substr(0, text.find_last_not_of(u' ') + 1);
}

template <class Char>
DWORD GetString(const Char* section, const Char* key, std::u16string_view fallback, Char* buffer, DWORD size, const std::string& path)
{
    if (!buffer || size == 0)
        return 0;
    const ProfileText text = ReadProfile(path);
    if (!section)
        return GiveNames(text.Sections(), buffer, size, ERROR_SUCCESS);
    if (!key) {
        if (const auto keys = text.Keys(WideText(section)))
            return GiveNames(*keys, buffer, size, ERROR_SUCCESS);
    } else if (const auto value = text.Value(WideText(section), WideText(key))) {
        return GiveText(*value, buffer, size);
    }
    return GiveText(WithoutQuotes(WithoutTrailingBlanks(fallback)), buffer, size);
}

template <class Char>
BOOL WriteString(const Char* section, const Char* key, const Char* value, const std::string& path)
{
    if (!section)
        return Fail(key || value ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS, FALSE);
    return ChangeProfile(path, [&](ProfileText& text) {
        if (!key)
            return text.RemoveSection(WideText(section));
        if (!value)
            return text.RemoveKey(WideText(section), WideText(key));
        return text.SetValue(WideText(section), WideText(key), WideText(value));
    });
}

DWORD DigitOf(char16_t unit)
{
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10u;
    return unit >= u'A' && unit <= u'F' ? unit - u'A' + 10u : 99;
}

/// The number at the start of @p text: blanks, a sign, a prefix of the base (0x, 0o, 0b), digits. It wraps at 32 bits.
UINT NumberAt(std::u16string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(u" \t"), text.size()));
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+'))
        text.remove_prefix(1);
    const DWORD base = text.starts_with(u"0x") ? 16 : text.starts_with(u"0o") ? 8 : text.starts_with(u"0b") ? 2 : 10;
    if (base != 10)
        text.remove_prefix(2);
    UINT number = 0;
    for (; !text.empty() && DigitOf(text.front()) < base; text.remove_prefix(1))
        number = number * base + DigitOf(text.front());
    return negative ? 0 - number : number;
}

UINT GetInt(std::u16string_view section, std::u16string_view key, INT fallback, const std::string& path)
{
    const auto value = ReadProfile(path).Value(section, key);
    return !value || value->empty() ? static_cast<UINT>(fallback) : NumberAt(*value);
}

template <class Char>
std::string PathOf(const Char* file)
{
    return ProfilePath(file ? std::optional(NarrowName(file)) : std::nullopt);
}

}  // namespace

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size, LPCSTR file)
{
    return GetString(section, key, WideText(fallback), buffer, size, PathOf(file));
}

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR fallback, LPWSTR buffer, DWORD size, LPCWSTR file)
{
    return GetString(section, key, WideText(fallback), buffer, size, PathOf(file));
}

UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT fallback, LPCSTR file)
{
    return GetInt(WideText(section), WideText(key), fallback, PathOf(file));
}

UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT fallback, LPCWSTR file)
{
    return GetInt(WideText(section), WideText(key), fallback, PathOf(file));
}

BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return WriteString(section, key, value, PathOf(file)); });
}

BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return WriteString(section, key, value, PathOf(file)); });
}

DWORD GetPrivateProfileSectionA(LPCSTR section, LPSTR buffer, DWORD size, LPCSTR file)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD {
        if (!section || !buffer || size == 0)
            return 0;
        const ProfileText text = ReadProfile(PathOf(file));
        return GiveNames(text.Entries(WideText(section)), buffer, size, ERROR_INSUFFICIENT_BUFFER);
    });
}

BOOL WritePrivateProfileSectionA(LPCSTR section, LPCSTR lines, LPCSTR file)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (!section)
            return Fail(ERROR_FILE_NOT_FOUND, FALSE);
        Names entries;
        for (LPCSTR line = lines; line && *line; line += std::string_view(line).size() + 1)
            entries.push_back(WideText(line));
        return ChangeProfile(PathOf(file), [&](ProfileText& text) {
            return lines ? text.ReplaceSection(WideText(section), entries) : text.RemoveSection(WideText(section));
        });
    });
}

DWORD GetPrivateProfileSectionNamesA(LPSTR buffer, DWORD size, LPCSTR file)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return GetPrivateProfileStringA(nullptr, nullptr, nullptr, buffer, size, file); });
}

DWORD GetProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size)
{
    return GetPrivateProfileStringA(section, key, fallback, buffer, size, nullptr);
}

UINT GetProfileIntA(LPCSTR section, LPCSTR key, INT fallback)
{
    return GetPrivateProfileIntA(section, key, fallback, nullptr);
}

BOOL WriteProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return WritePrivateProfileStringA(section, key, value, nullptr); });
}
