// RegistryValues.cpp: reads, writes and removes values.
#include <kelgen/platform/posix/registry/api/Registry.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/registry/KeyStore.h>
#include <kelgen/platform/posix/registry/StoredNames.h>
#include <kelgen/platform/posix/registry/ValueData.h>

#include <unistd.h>

using namespace kelgen::posix;

namespace {

/// The key of @p handle when it grants @p rights; else null and the error code in @p status.
std::shared_ptr<Key> FindKeyFor(HKEY handle, REGSAM rights, LSTATUS& status)
{
    auto key = FindKey(handle);
    status = !key ? ERROR_INVALID_HANDLE : key->Grants(rights) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    return status == ERROR_SUCCESS ? key : nullptr;
}

template <class Char>
LSTATUS QueryValue(HKEY handle, std::u16string_view name, const DWORD* reserved, LPDWORD type, LPBYTE data, LPDWORD size)
{
    if ((data && !size) || reserved)
        return ERROR_INVALID_PARAMETER;
    LSTATUS status;
    const auto key = FindKeyFor(handle, KEY_QUERY_VALUE, status);
    if (!key)
        return status;
    StoredValue value;
    status = key->ReadValue(name, value);
    if (status == ERROR_FILE_NOT_FOUND && size && !data)
        *size = 0;
    return status == ERROR_SUCCESS ? GiveData<Char>(value, type, data, size) : status;
}

LSTATUS WriteValue(HKEY handle, std::u16string_view name, DWORD type, std::vector<BYTE> data)
{
    LSTATUS status;
    const auto key = FindKeyFor(handle, KEY_SET_VALUE, status);
    if (!key)
        return status;
    const int error = WriteValueFile(key->Folder(), ValueFileName(name), {std::u16string(name), type, std::move(data)});
    // The file or its folder vanished: the key is being removed.
    if (error == ENOENT)
        return ERROR_KEY_DELETED;
    return error == 0 ? ERROR_SUCCESS : key->Status(error);
}

template <class Char>
LSTATUS SetValue(HKEY handle, std::u16string_view name, DWORD type, const BYTE* data, DWORD size)
{
    if (name.size() > kLongestValueName || (!data && size != 0))
        return ERROR_INVALID_PARAMETER;
    if (!IsTextType(type))
        return WriteValue(handle, name, type, std::vector<BYTE>(data, data + size));
    return WriteValue(handle, name, type, StoredText<Char>({data, size}));
}

LSTATUS DeleteValue(HKEY handle, std::u16string_view name)
{
    LSTATUS status;
    const auto key = FindKeyFor(handle, KEY_SET_VALUE, status);
    if (!key)
        return status;
    if (unlinkat(key->Folder(), ValueFileName(name).c_str(), 0) == 0)
        return ERROR_SUCCESS;
    return errno == EISDIR ? ERROR_FILE_NOT_FOUND : key->Status(errno);
}

/// The key that the older value calls mean: @p handle itself, or its @p subkey, which the object closes again.
class SubkeyForCall
{
public:
    SubkeyForCall(HKEY handle, std::u16string_view subkey, bool make) : m_key(handle)
    {
        if (subkey.empty())
            return;
        const auto key = FindKey(handle);
        bool made = false;
        std::shared_ptr<Key> opened;
        status = key ? OpenSubkey(*key, subkey, KEY_QUERY_VALUE | KEY_SET_VALUE, opened, make ? &made : nullptr) : ERROR_INVALID_HANDLE;
        if (status != ERROR_SUCCESS)
            return;
        m_key = m_opened = static_cast<HKEY>(Handles().Insert(std::move(opened)));
        if (!m_opened)
            status = ERROR_NO_SYSTEM_RESOURCES;
    }
    ~SubkeyForCall() { Handles().Remove(m_opened); }
    SubkeyForCall(const SubkeyForCall&) = delete;
    SubkeyForCall& operator=(const SubkeyForCall&) = delete;

    HKEY Handle() const { return m_key; }

    LSTATUS status = ERROR_SUCCESS;

private:
    HKEY m_key;
    HKEY m_opened = nullptr;
};

template <class Char>
LSTATUS QueryDefaultValue(HKEY handle, std::u16string_view subkey, Char* data, PLONG size)
{
    const SubkeyForCall key(handle, subkey, false);
    if (key.status != ERROR_SUCCESS)
        return key.status;
    DWORD bytes = size ? static_cast<DWORD>(*size) : 0;
    const LSTATUS status = QueryValue<Char>(key.Handle(), {}, nullptr, nullptr, reinterpret_cast<LPBYTE>(data), size ? &bytes : nullptr);
    if (status == ERROR_FILE_NOT_FOUND) {
        if (data && size && *size >= static_cast<LONG>(sizeof(Char)))
            *data = 0;
        bytes = sizeof(Char);
    }
    if (size)
        *size = static_cast<LONG>(bytes);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

template <class Char>
LSTATUS SetDefaultValue(HKEY handle, std::u16string_view subkey, DWORD type, const Char* data)
{
    if (type != REG_SZ || !data)
        return ERROR_INVALID_PARAMETER;
    const SubkeyForCall key(handle, subkey, true);
    if (key.status != ERROR_SUCCESS)
        return key.status;
    const std::size_t length = std::basic_string_view<Char>(data).size() + 1;
    return SetValue<Char>(key.Handle(), {}, REG_SZ, reinterpret_cast<const BYTE*>(data), static_cast<DWORD>(length * sizeof(Char)));
}

}  // namespace

LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return QueryValue<CHAR>(key, WideText(name), reserved, type, data, size); });
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return QueryValue<WCHAR>(key, WideText(name), reserved, type, data, size); });
}

LSTATUS RegQueryValueA(HKEY key, LPCSTR subkey, LPSTR data, PLONG size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return QueryDefaultValue(key, WideText(subkey), data, size); });
}

LSTATUS RegQueryValueW(HKEY key, LPCWSTR subkey, LPWSTR data, PLONG size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return QueryDefaultValue(key, WideText(subkey), data, size); });
}

LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD, DWORD type, const BYTE* data, DWORD size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return SetValue<CHAR>(key, WideText(name), type, data, size); });
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return SetValue<WCHAR>(key, WideText(name), type, data, size); });
}

LSTATUS RegSetValueA(HKEY key, LPCSTR subkey, DWORD type, LPCSTR data, DWORD)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return SetDefaultValue(key, WideText(subkey), type, data); });
}

LSTATUS RegSetValueW(HKEY key, LPCWSTR subkey, DWORD type, LPCWSTR data, DWORD)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return SetDefaultValue(key, WideText(subkey), type, data); });
}

LSTATUS RegDeleteValueA(HKEY key, LPCSTR name)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return DeleteValue(key, WideText(name)); });
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return DeleteValue(key, WideText(name)); });
}
