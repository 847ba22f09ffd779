// KeyStore.cpp: predefined keys, opening, making and removing of folders.
#include <kelgen/platform/posix/registry/KeyStore.h>

#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/registry/Folders.h>
#include <kelgen/platform/posix/registry/StoredNames.h>

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <new>

namespace kelgen::posix {

namespace {

constexpr const char16_t* kClasses = u"Software\\Classes";

struct Root
{
    HKEY handle;
    const char* folder;
    std::vector<const char16_t*> keys;  // exist from the start
};

const std::vector<Root>& Roots()
{
    static const auto& roots =
        *new std::vector<Root>{{HKEY_CLASSES_ROOT, "hkey_local_machine/software/classes", {}},
                               {HKEY_CURRENT_USER, "hkey_current_user", {u"Software"}},
                               {HKEY_LOCAL_MACHINE, "hkey_local_machine", {kClasses, u"SYSTEM\\CurrentControlSet\\Services"}},
                               {HKEY_USERS, "hkey_users", {}},
                               {HKEY_CURRENT_CONFIG, "hkey_current_config", {}}};
    return roots;
}

std::string RegistryFolder()
{
    return HomeFolder() + "/registry";
}

/// Keeps keys from being made while one is removed: a key that is removed has no subkeys. Held by the process as a whole until
/// destruction, so a killed process holds nothing.
class StoreLock
{
public:
    explicit StoreLock(int operation) : m_folder(OpenFolder(AT_FDCWD, RegistryFolder()))
    {
        if (m_folder)
            Retry([&] { return flock(m_folder.Get(), operation); });
    }

private:
    Descriptor m_folder;
};

/// Opens the folder of a predefined key, made when it is missing.
std::shared_ptr<Key> OpenRoot(const Root& root, const std::string& registry)
{
    const std::string path = registry + '/' + root.folder;
    if (Descriptor folder = OpenFolder(AT_FDCWD, path))
        return std::make_shared<Key>(std::move(folder), path, KEY_ALL_ACCESS);

    std::shared_ptr<Key> key;
    bool made = false;
    if (root.handle == HKEY_CLASSES_ROOT) {
        if (const auto machine = FindKey(HKEY_LOCAL_MACHINE))
            OpenSubkey(*machine, kClasses, KEY_ALL_ACCESS, key, &made);
        return key;
    }
    mkdir(registry.c_str(), 0700);
    mkdir(path.c_str(), 0700);
    Descriptor folder = OpenFolder(AT_FDCWD, path);
    if (!folder)
        return nullptr;
    key = std::make_shared<Key>(std::move(folder), path, KEY_ALL_ACCESS);
    for (const char16_t* name : root.keys) {
        std::shared_ptr<Key> subkey;
        OpenSubkey(*key, name, 0, subkey, &made);
    }
    return key;
}

const Root* RootOf(HKEY handle)
{
    for (const Root& root : Roots())
        if (root.handle == handle)
            return &root;
    return nullptr;
}

/// The predefined key, opened once for each home folder.
std::shared_ptr<Key> FindRoot(const Root& root)
{
    struct Opened
    {
        std::mutex mutex;
        std::vector<std::shared_ptr<Key>> keys;
    };
    static auto& opened = *new Opened;

    const std::size_t index = static_cast<std::size_t>(&root - Roots().data());
    const std::string registry = RegistryFolder();
    {
        const std::lock_guard lock(opened.mutex);
        opened.keys.resize(Roots().size());
        const auto& key = opened.keys[index];
        if (key && key->Path().starts_with(registry + '/') && !key->IsDeleted())
            return key;
    }
    auto key = OpenRoot(root, registry);
    const std::lock_guard lock(opened.mutex);
    opened.keys[index] = key;
    return key;
}

/// Makes the folder of the key @p name in @p parent. 0 when this call made it, else an errno value (EEXIST: it was there).
int MakeKeyFolder(int parent, std::u16string_view name, const std::string& folder)
{
    if (const auto plain = KeyNameOfFile(folder); plain && *plain == name)
        return mkdirat(parent, folder.c_str(), 0700) == 0 ? 0 : errno;

    // The name's case lies in the folder: both appear at once.
    const std::string scratch = ScratchName();
    if (mkdirat(parent, scratch.c_str(), 0700) != 0)
        return errno;
    const Descriptor made = OpenFolder(parent, scratch);
    int error = 0;
    try {
        error = !made ? errno : WriteNameFile(made.Get(), name);
    } catch (const std::bad_alloc&) {
        RemoveTree(parent, scratch);
        throw;
    }
    if (error == 0 && renameat2(parent, scratch.c_str(), parent, folder.c_str(), RENAME_NOREPLACE) != 0)
        error = errno;
    if (error == EINVAL) {
        // A file system without that flag: a folder never replaces one that holds something.
        error = renameat(parent, scratch.c_str(), parent, folder.c_str()) == 0 ? 0 : errno;
        error = error == ENOTEMPTY ? EEXIST : error;
    }
    if (error != 0)
        RemoveTree(parent, scratch);
    return error;
}

/// Opens @p subkey below @p key step by step and makes what is missing.
LSTATUS MakeSubkey(const Key& key, std::u16string_view subkey, Descriptor& result, bool& made)
{
    const StoreLock lock(LOCK_SH);
    if (key.IsDeleted())
        return ERROR_KEY_DELETED;

    int parent = key.Folder();
    while (!subkey.empty()) {
        const std::u16string_view name = subkey.substr(0, subkey.find(u'\\'));
        subkey.remove_prefix(std::min(subkey.size(), name.size() + 1));
        if (name.empty())
            continue;
        const std::string folder = KeyFileName(name);
        Descriptor next = OpenFolder(parent, folder);
        made = false;
        if (!next && errno == ENOENT) {
            const int error = MakeKeyFolder(parent, name, folder);
            if (error != 0 && error != EEXIST)
                return static_cast<LSTATUS>(ErrorFromErrno(error));
            made = error == 0;
            next = OpenFolder(parent, folder);
        }
        if (!next)
            return errno == ENOTDIR ? ERROR_CANTOPEN : static_cast<LSTATUS>(ErrorFromErrno(errno));
        result = std::move(next);
        parent = result.Get();
    }
    return ERROR_SUCCESS;
}

/// Checks @p subkey (names between backslashes) and gives the path of its folder, relative to its key's; empty for the key
/// itself.
LSTATUS FolderOfSubkey(std::u16string_view subkey, std::string& folder)
{
    folder.clear();
    if (subkey.starts_with(u'\\'))
        return ERROR_BAD_PATHNAME;
    while (!subkey.empty()) {
        const std::u16string_view name = subkey.substr(0, subkey.find(u'\\'));
        subkey.remove_prefix(std::min(subkey.size(), name.size() + 1));
        if (name.size() > kLongestKeyName)
            return ERROR_MORE_DATA;
        if (name.empty())
            continue;
        if (!folder.empty())
            folder += '/';
        folder += KeyFileName(name);
    }
    return ERROR_SUCCESS;
}

/// The parent's folder and the own name of the folder @p path.
std::pair<Descriptor, std::string> OpenParent(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return {OpenFolder(AT_FDCWD, path.substr(0, slash)), path.substr(slash + 1)};
}

}  // namespace

bool IsPredefinedKey(HKEY handle)
{
    return RootOf(handle) != nullptr;
}

std::shared_ptr<Key> FindKey(HKEY handle)
{
    if (const Root* root = RootOf(handle))
        return FindRoot(*root);
    return Handles().Find<Key>(handle);
}

LSTATUS OpenSubkey(const Key& key, std::u16string_view subkey, REGSAM rights, std::shared_ptr<Key>& result, bool* made)
{
    std::string relative;
    if (const LSTATUS status = FolderOfSubkey(subkey, relative); status != ERROR_SUCCESS)
        return status;

    if (relative.empty() && key.IsDeleted())
        return ERROR_KEY_DELETED;
    Descriptor folder = OpenFolder(key.Folder(), relative.empty() ? "." : relative);
    if (!folder && errno == ENOENT && made) {
        if (const LSTATUS status = MakeSubkey(key, subkey, folder, *made); status != ERROR_SUCCESS)
            return status;
    }
    if (!folder)
        return errno == ENOTDIR || errno == ELOOP ? ERROR_FILE_NOT_FOUND : key.Status(errno);

    std::string path = relative.empty() ? key.Path() : key.Path() + '/' + relative;
    result = std::make_shared<Key>(std::move(folder), std::move(path), rights);
    return ERROR_SUCCESS;
}

LSTATUS RemoveKey(const Key& key, std::u16string_view subkey, Removal removal)
{
    std::string relative;
    if (const LSTATUS status = FolderOfSubkey(subkey, relative); status != ERROR_SUCCESS)
        return status;

    const StoreLock lock(LOCK_EX);
    if (key.IsDeleted())
        return ERROR_KEY_DELETED;
    const std::string path = relative.empty() ? key.Path() : key.Path() + '/' + relative;
    const auto [parent, name] = OpenParent(path);
    const Descriptor folder = parent ? OpenFolder(parent.Get(), name) : Descriptor();
    if (!folder)
        return static_cast<LSTATUS>(ErrorFromErrno(errno == ENOTDIR || errno == ELOOP ? ENOENT : errno));
    if (std::ranges::any_of(Roots(), [&](const Root& root) { return path == RegistryFolder() + '/' + root.folder; }))
        return ERROR_ACCESS_DENIED;
    if (removal == Removal::LeafOnly && HoldsSubkeys(folder.Get()))
        return ERROR_ACCESS_DENIED;

    // Out of sight at once: a killed process leaves the whole key or none of it.
    const std::string scratch = ScratchName();
    if (renameat(parent.Get(), name.c_str(), parent.Get(), scratch.c_str()) != 0)
        return static_cast<LSTATUS>(ErrorFromErrno(errno));
    RemoveTree(parent.Get(), scratch);
    return ERROR_SUCCESS;
}

LSTATUS EmptyKey(const Key& key)
{
    const StoreLock lock(LOCK_EX);
    if (key.IsDeleted())
        return ERROR_KEY_DELETED;
    EmptyFolder(key.Folder());
    return ERROR_SUCCESS;
}

}  // namespace kelgen::posix
