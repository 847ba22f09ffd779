// RegistryKeys.cpp: opens, makes, closes, removes and flushes keys.
#include <kelgen/platform/posix/registry/api/Registry.h>

#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/registry/Folders.h>
#include <kelgen/platform/posix/registry/KeyStore.h>

#include <fcntl.h>

#include <algorithm>

using namespace kelgen::posix;

namespace {

LSTATUS OpenKey(HKEY handle, std::u16string_view subkey, REGSAM rights, PHKEY result)
{
    if (!result)
        return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    const auto key = FindKey(handle);
    if (!key)
        return ERROR_INVALID_HANDLE;
    if (subkey.empty() && IsPredefinedKey(handle)) {
        *result = handle;
        return ERROR_SUCCESS;
    }
    std::shared_ptr<Key> opened;
    const LSTATUS status = OpenSubkey(*key, subkey, rights, opened);
    if (status != ERROR_SUCCESS)
        return status;
    *result = static_cast<HKEY>(Handles().Insert(std::move(opened)));
    return *result ? ERROR_SUCCESS : ERROR_NO_SYSTEM_RESOURCES;
}

/// The older calls: no subkey gives the same handle.
LSTATUS OpenKeyOrSame(HKEY handle, std::u16string_view subkey, PHKEY result)
{
    if (!result)
        return ERROR_INVALID_PARAMETER;
    if (!subkey.empty())
        return OpenKey(handle, subkey, MAXIMUM_ALLOWED, result);
    *result = handle;
    return ERROR_SUCCESS;
}

LSTATUS CreateKey(HKEY handle, std::u16string_view subkey, DWORD reserved, REGSAM rights, PHKEY result, LPDWORD disposition)
{
    if (!result || reserved != 0)
        return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    const auto key = FindKey(handle);
    if (!key)
        return ERROR_INVALID_HANDLE;
    std::shared_ptr<Key> opened;
    bool made = false;
    const LSTATUS status = OpenSubkey(*key, subkey, rights, opened, &made);
    if (status != ERROR_SUCCESS)
        return status;
    *result = static_cast<HKEY>(Handles().Insert(std::move(opened)));
    if (!*result)
        return ERROR_NO_SYSTEM_RESOURCES;
    if (disposition)
        *disposition = made ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    return ERROR_SUCCESS;
}

LSTATUS DeleteKey(HKEY handle, std::u16string_view subkey)
{
    const auto key = FindKey(handle);
    return key ? RemoveKey(*key, subkey, Removal::LeafOnly) : ERROR_INVALID_HANDLE;
}

LSTATUS DeleteTree(HKEY handle, std::u16string_view subkey)
{
    const auto key = FindKey(handle);
    if (!key)
        return ERROR_INVALID_HANDLE;
    return subkey.empty() ? EmptyKey(*key) : RemoveKey(*key, subkey, Removal::WholeTree);
}

/// 0, or the errno value of a flush that failed. A file that is gone meanwhile needs none.
int FlushFile(int folder, const std::string& name)
{
    const Descriptor file(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return errno == ENOENT || errno == ELOOP || errno == ENXIO ? 0 : errno;
    // Pipes and the like, which somebody may have laid there, cannot be flushed.
    return Retry([&] { return fsync(file.Get()); }) == 0 || errno == EINVAL ? 0 : errno;
}

/// Flushes what lies in @p folder, and in the folders below it: values, names, and that they are there. 0, or an errno value.
int FlushTree(const Descriptor& folder)
{
    if (!folder)
        return errno == ENOENT ? 0 : errno;
    int error = 0;
    const bool walked = ForEachEntry(folder.Get(), [&](const std::string& name, bool isFolder) {
        const int failure = isFolder ? FlushTree(OpenFolder(folder.Get(), name)) : FlushFile(folder.Get(), name);
        error = error ? error : failure;
    });
    if (!walked && !error)
        error = errno;
    return error ? error : FlushFile(folder.Get(), ".");
}

/// Flushes the folders above the key's, the home folder and the one that it lies in included: that they are there. 0, or an errno value.
int FlushParents(std::string path)
{
    const std::string home = HomeFolder();
    while (path.size() > 1) {
        path.resize(std::max<std::size_t>(path.rfind('/'), 1));
        if (const int error = FlushFile(AT_FDCWD, path); error && error != EACCES)
            return error;
        if (path.size() < home.size())
            break;
    }
    return 0;
}

}  // namespace

LSTATUS RegOpenKeyA(HKEY key, LPCSTR subkey, PHKEY result)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return OpenKeyOrSame(key, WideText(subkey), result); });
}

LSTATUS RegOpenKeyW(HKEY key, LPCWSTR subkey, PHKEY result)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return OpenKeyOrSame(key, WideText(subkey), result); });
}

LSTATUS RegOpenKeyExA(HKEY key, LPCSTR subkey, DWORD, REGSAM access, PHKEY result)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return OpenKey(key, WideText(subkey), access, result); });
}

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD, REGSAM access, PHKEY result)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return OpenKey(key, WideText(subkey), access, result); });
}

LSTATUS RegCreateKeyA(HKEY key, LPCSTR subkey, PHKEY result)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return CreateKey(key, WideText(subkey), 0, MAXIMUM_ALLOWED, result, nullptr); });
}

LSTATUS RegCreateKeyW(HKEY key, LPCWSTR subkey, PHKEY result)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return CreateKey(key, WideText(subkey), 0, MAXIMUM_ALLOWED, result, nullptr); });
}

LSTATUS RegCreateKeyExA(HKEY key, LPCSTR subkey, DWORD reserved, LPSTR, DWORD, REGSAM access, const SECURITY_ATTRIBUTES*, PHKEY result,
                        LPDWORD disposition)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return CreateKey(key, WideText(subkey), reserved, access, result, disposition); });
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR subkey, DWORD reserved, LPWSTR, DWORD, REGSAM access, const SECURITY_ATTRIBUTES*, PHKEY result,
                        LPDWORD disposition)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return CreateKey(key, WideText(subkey), reserved, access, result, disposition); });
}

LSTATUS RegCloseKey(HKEY key)
{
    if (IsPredefinedKey(key))
        return ERROR_SUCCESS;
    if (!Handles().Find<Key>(key))
        return ERROR_INVALID_HANDLE;
    Handles().Remove(key);
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteKeyA(HKEY key, LPCSTR subkey)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return subkey ? DeleteKey(key, WideText(subkey)) : ERROR_INVALID_PARAMETER; });
}

LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR subkey)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return subkey ? DeleteKey(key, WideText(subkey)) : ERROR_INVALID_PARAMETER; });
}

LSTATUS RegDeleteTreeA(HKEY key, LPCSTR subkey)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return DeleteTree(key, WideText(subkey)); });
}

LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR subkey)
{
    return StatusOrNoMemory([&]() -> LSTATUS { return DeleteTree(key, WideText(subkey)); });
}

LSTATUS RegFlushKey(HKEY handle)
{
    return StatusOrNoMemory([&]() -> LSTATUS {
        const auto key = FindKey(handle);
        if (!key)
            return ERROR_INVALID_HANDLE;
        if (key->IsDeleted())
            return ERROR_KEY_DELETED;

        int error = FlushTree(OpenFolder(key->Folder(), "."));
        error = error ? error : FlushParents(key->Path());
        return error ? static_cast<LSTATUS>(ErrorFromErrno(error)) : ERROR_SUCCESS;
    });
}
