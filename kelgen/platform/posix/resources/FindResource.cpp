// FindResource.cpp: FindResourceA, FindResourceExA, LoadResource, LockResource, SizeofResource, FreeResource, LoadStringA, and
// the enumerations of resources.
#include <kelgen/platform/posix/resources/api/Resources.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/modules/ModuleTable.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/resources/ResourceLanguage.h>
#include <kelgen/platform/posix/resources/ResourceTable.h>
#include <kelgen/platform/posix/resources/api/ResourceModules.h>

#include <algorithm>
#include <optional>
#include <set>

using namespace kelgen::posix;

namespace {

constexpr unsigned kStringsInBlock = 16;
const ResourceKey kStringType = {{}, 6};

using Tables = std::vector<std::shared_ptr<const ResourceTable>>;

Tables TablesOf(HMODULE module)
{
    return ResourcesOf(module ? module : ProgramModule());
}

/// The number in a text after its "#": leading digits with a sign. Nothing when it is none of a resource's.
std::optional<WORD> NumberOf(std::u16string_view digits)
{
    const bool negative = digits.starts_with(u'-');
    if (negative)
        digits.remove_prefix(1);
    long number = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9' || number > 0xFFFF)
            break;
        number = number * 10 + (digit - u'0');
    }
    if (number > 0xFFFF || (negative && number != 0))
        return std::nullopt;
    return static_cast<WORD>(number);
}

/// The key that a caller's text or number means; nothing for a "#number" that is no resource number.
template <class Char>
std::optional<ResourceKey> KeyOf(const Char* name)
{
    if (IS_INTRESOURCE(name))
        return ResourceKey{{}, LOWORD(reinterpret_cast<ULONG_PTR>(name))};
    std::u16string text(WideText(name));
    if (!text.starts_with(u'#'))
        return ResourceKey{ResourceText(std::move(text)), 0};
    const auto number = NumberOf(std::u16string_view(text).substr(1));
    if (!number)
        return std::nullopt;
    return ResourceKey{{}, *number};
}

WORD LanguageOf(const ResourceEntry& entry)
{
    return entry.language;
}

/// The resource, or null and in @p error why not.
const ResourceEntry* Find(const Tables& tables, const ResourceKey& type, const ResourceKey& name, WORD language, DWORD& error)
{
    error = ERROR_RESOURCE_DATA_NOT_FOUND;
    for (const auto& table : tables) {
        const auto entries = table->OfName(type, name);
        if (const ResourceEntry* entry = ChooseLanguage(entries, language, LanguageOf))
            return entry;
        const DWORD reason = !entries.empty()               ? ERROR_RESOURCE_LANG_NOT_FOUND
                             : !table->OfType(type).empty() ? ERROR_RESOURCE_NAME_NOT_FOUND
                                                            : ERROR_RESOURCE_TYPE_NOT_FOUND;
        error = std::max(error, reason);
    }
    return nullptr;
}

template <class Char>
HRSRC FindResourceOf(HMODULE module, const Char* type, const Char* name, WORD language)
{
    const auto typeKey = KeyOf(type);
    const auto nameKey = KeyOf(name);
    if (!typeKey || !nameKey)
        return Fail(ERROR_INVALID_PARAMETER, HRSRC());

    DWORD error;
    const ResourceEntry* entry = Find(TablesOf(module), *typeKey, *nameKey, language, error);
    if (!entry)
        return Fail(error, HRSRC());
    return reinterpret_cast<HRSRC>(const_cast<ResourceEntry*>(entry));
}

/// The text of string @p id; nothing, with the last error, when its block is missing.
std::optional<std::u16string_view> FindString(HMODULE module, UINT id)
{
    // Blocks have 16-bit numbers, so by contract only the low half of an id counts.
    const WORD block = static_cast<WORD>(LOWORD(id) / kStringsInBlock + 1);
    DWORD error;
    const ResourceEntry* entry = Find(TablesOf(module), kStringType, ResourceKey{{}, block}, 0, error);
    if (!entry)
        return Fail(error == ERROR_RESOURCE_DATA_NOT_FOUND ? error : ERROR_RESOURCE_NAME_NOT_FOUND, std::optional<std::u16string_view>());
    return StringInBlock(entry->data, id % kStringsInBlock);
}

/// A key as the enumeration callbacks get it: a text of their own or a number.
template <class Char>
class CallbackName
{
public:
    explicit CallbackName(const ResourceKey& key) : m_number(key.number)
    {
        if constexpr (sizeof(Char) == 1)
            Take(AnsiText(key.text));
        else
            Take(key.text);
    }

    Char* Get() { return m_text.empty() ? reinterpret_cast<Char*>(MAKEINTRESOURCEA(m_number)) : m_text.data(); }

private:
    template <class Text>
    void Take(const Text& text)
    {
        if (text.empty())
            return;
        m_text.assign(text.begin(), text.end());
        m_text.push_back(0);
    }

    std::vector<Char> m_text;
    WORD m_number;
};

/// The values of one member among entries, each once and in order. Copies: a callback may unload the module.
template <class Member>
void Collect(std::set<Member>& values, std::span<const ResourceEntry> entries, Member ResourceEntry::*member)
{
    for (const ResourceEntry& entry : entries)
        values.insert(entry.*member);
}

template <class Char, class Callback>
BOOL EnumerateTypes(HMODULE module, Callback callback, LONG_PTR parameter)
{
    std::set<ResourceKey> types;
    for (const auto& table : TablesOf(module))
        Collect(types, table->Entries(), &ResourceEntry::type);
    if (types.empty())
        return Fail(ERROR_RESOURCE_DATA_NOT_FOUND, FALSE);
    return std::ranges::all_of(
        types, [&](const ResourceKey& type) { return callback(module, CallbackName<Char>(type).Get(), parameter) != FALSE; });
}

template <class Char, class Callback>
BOOL EnumerateNames(HMODULE module, const Char* type, Callback callback, LONG_PTR parameter)
{
    const auto typeKey = KeyOf(type);
    if (!typeKey)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    std::set<ResourceKey> names;
    const Tables tables = TablesOf(module);
    for (const auto& table : tables)
        Collect(names, table->OfType(*typeKey), &ResourceEntry::name);
    if (names.empty())
        return Fail(tables.empty() ? ERROR_RESOURCE_DATA_NOT_FOUND : ERROR_RESOURCE_TYPE_NOT_FOUND, FALSE);
    return std::ranges::all_of(
        names, [&](const ResourceKey& name) { return callback(module, type, CallbackName<Char>(name).Get(), parameter) != FALSE; });
}

template <class Char, class Callback>
BOOL EnumerateLanguages(HMODULE module, const Char* type, const Char* name, Callback callback, LONG_PTR parameter)
{
    const auto typeKey = KeyOf(type);
    const auto nameKey = KeyOf(name);
    if (!typeKey || !nameKey)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    std::set<WORD> languages;
    const Tables tables = TablesOf(module);
    for (const auto& table : tables)
        Collect(languages, table->OfName(*typeKey, *nameKey), &ResourceEntry::language);
    if (languages.empty()) {
        DWORD error;
        Find(tables, *typeKey, *nameKey, 0, error);
        return Fail(error, FALSE);
    }
    return std::ranges::all_of(languages, [&](WORD language) { return callback(module, type, name, language, parameter) != FALSE; });
}

}  // namespace

HRSRC FindResourceA(HMODULE module, LPCSTR name, LPCSTR type)
{
    return OrNoMemory(HRSRC{}, [&]() -> HRSRC { return FindResourceOf(module, type, name, 0); });
}

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type)
{
    return OrNoMemory(HRSRC{}, [&]() -> HRSRC { return FindResourceOf(module, type, name, 0); });
}

HRSRC FindResourceExA(HMODULE module, LPCSTR type, LPCSTR name, WORD language)
{
    return OrNoMemory(HRSRC{}, [&]() -> HRSRC { return FindResourceOf(module, type, name, language); });
}

HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language)
{
    return OrNoMemory(HRSRC{}, [&]() -> HRSRC { return FindResourceOf(module, type, name, language); });
}

HGLOBAL LoadResource(HMODULE, HRSRC resource)
{
    const ResourceEntry* entry = RegisteredEntry(resource);
    return entry ? const_cast<BYTE*>(entry->data.data()) : nullptr;
}

LPVOID LockResource(HGLOBAL data)
{
    return data;
}

DWORD SizeofResource(HMODULE, HRSRC resource)
{
    const ResourceEntry* entry = RegisteredEntry(resource);
    return entry ? static_cast<DWORD>(entry->data.size()) : 0;
}

BOOL FreeResource(HGLOBAL)
{
    return FALSE;
}

int LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int size)
{
    return OrNoMemory(int{0}, [&]() -> int {
        if (size <= 0)
            return -1;
        buffer[0] = 0;
        auto text = FindString(module, id);
        if (!text)
            return 0;

        // No unit takes less than a byte.
        *text = text->substr(0, static_cast<std::size_t>(size - 1));
        std::string narrow = AnsiText(*text);
        while (narrow.size() >= static_cast<std::size_t>(size)) {
            // Whole characters only.
            text->remove_suffix(1);
            narrow = AnsiText(*text);
        }
        *std::ranges::copy(narrow, buffer).out = 0;
        return static_cast<int>(narrow.size());
    });
}

int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int size)
{
    return OrNoMemory(int{0}, [&]() -> int {
        const auto text = FindString(module, id);
        if (!text || size < 0)
            return 0;
        if (size == 0) {
            *reinterpret_cast<LPCWSTR*>(buffer) = reinterpret_cast<LPCWSTR>(text->data());
            return static_cast<int>(text->size());
        }
        const auto part = text->substr(0, static_cast<std::size_t>(size - 1));
        *std::ranges::copy(part, buffer).out = 0;
        return static_cast<int>(part.size());
    });
}

BOOL EnumResourceTypesA(HMODULE module, ENUMRESTYPEPROCA callback, LONG_PTR parameter)
{
    return EnumerateTypes<CHAR>(module, callback, parameter);
}

BOOL EnumResourceNamesA(HMODULE module, LPCSTR type, ENUMRESNAMEPROCA callback, LONG_PTR parameter)
{
    return EnumerateNames(module, type, callback, parameter);
}

BOOL EnumResourceLanguagesA(HMODULE module, LPCSTR type, LPCSTR name, ENUMRESLANGPROCA callback, LONG_PTR parameter)
{
    return EnumerateLanguages(module, type, name, callback, parameter);
}

BOOL EnumResourceTypesW(HMODULE module, ENUMRESTYPEPROCW callback, LONG_PTR parameter)
{
    return EnumerateTypes<WCHAR>(module, callback, parameter);
}

BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW callback, LONG_PTR parameter)
{
    return EnumerateNames(module, type, callback, parameter);
}

BOOL EnumResourceLanguagesW(HMODULE module, LPCWSTR type, LPCWSTR name, ENUMRESLANGPROCW callback, LONG_PTR parameter)
{
    return EnumerateLanguages(module, type, name, callback, parameter);
}
