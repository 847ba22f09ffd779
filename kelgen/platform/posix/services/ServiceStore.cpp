// ServiceStore.cpp: a key for each service with the values that the real system has there.
#include <kelgen/platform/posix/services/ServiceStore.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/registry/Folders.h>
#include <kelgen/platform/posix/registry/StoredNames.h>
#include <kelgen/platform/posix/registry/api/Registry.h>
#include <kelgen/platform/posix/services/ServiceRecords.h>

#include <algorithm>

namespace kelgen::posix {

namespace {

constexpr std::u16string_view kServicesKey = u"SYSTEM\\CurrentControlSet\\Services";

LPCWSTR Units(const std::u16string& text)
{
    return reinterpret_cast<LPCWSTR>(text.c_str());
}

std::u16string KeyPath(std::u16string_view name)
{
    std::u16string path(kServicesKey);
    path += u'\\';
    return path += name;
}

// An open key, closed at the end.
class OwnedKey
{
public:
    OwnedKey() = default;
    OwnedKey(const OwnedKey&) = delete;
    OwnedKey& operator=(const OwnedKey&) = delete;
    ~OwnedKey()
    {
        if (m_key)
            RegCloseKey(m_key);
    }

    LONG Open(const std::u16string& path) { return RegOpenKeyW(HKEY_LOCAL_MACHINE, Units(path), &m_key); }
    LONG Make(const std::u16string& path) { return RegCreateKeyW(HKEY_LOCAL_MACHINE, Units(path), &m_key); }
    HKEY Get() const { return m_key; }

    DWORD Number(const std::u16string& value)
    {
        DWORD number = 0;
        DWORD size = sizeof number;
        NoteRead(RegQueryValueExW(m_key, Units(value), nullptr, nullptr, reinterpret_cast<LPBYTE>(&number), &size));
        return number;
    }

    /// The text with its terminators, or empty.
    std::u16string Units16(const std::u16string& value)
    {
        DWORD size = 0;
        std::u16string text;
        LSTATUS status;
        do {
            text.resize(size / sizeof(char16_t));
            status = RegQueryValueExW(m_key, Units(value), nullptr, nullptr, reinterpret_cast<LPBYTE>(text.data()), &size);
        } while (status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && size / sizeof(char16_t) > text.size()));
        NoteRead(status);
        text.resize(status == ERROR_SUCCESS ? size / sizeof(char16_t) : 0);
        return text;
    }

    std::u16string Text(const std::u16string& value)
    {
        const std::u16string text = Units16(value);
        return text.substr(0, text.find(u'\0'));
    }

    void Store(const std::u16string& value, DWORD number)
    {
        Note(RegSetValueExW(m_key, Units(value), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number));
    }

    /// An empty text removes the value.
    void Store(const std::u16string& value, DWORD type, const std::u16string& text)
    {
        if (text.empty()) {
            NoteRead(RegDeleteValueW(m_key, Units(value)));
            return;
        }
        const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(char16_t));
        Note(RegSetValueExW(m_key, Units(value), 0, type, reinterpret_cast<const BYTE*>(text.c_str()), size));
    }

    /// The first failure of a store, or of a look at a value that is there.
    LONG Outcome() const { return m_outcome; }

private:
    void NoteRead(LSTATUS status) { Note(status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status); }
    void Note(LSTATUS status)
    {
        if (m_outcome == ERROR_SUCCESS)
            m_outcome = status;
    }

    HKEY m_key = nullptr;
    LONG m_outcome = ERROR_SUCCESS;
};

}  // namespace

std::optional<ServiceConfiguration> LoadService(std::u16string_view name)
{
    OwnedKey key;
    if (const LONG status = key.Open(KeyPath(name)))
        return Fail(status == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SERVICE_DOES_NOT_EXIST} : static_cast<DWORD>(status), std::nullopt);
    ServiceConfiguration configuration;
    configuration.type = key.Number(u"Type");
    if (configuration.type == 0 && key.Outcome() == ERROR_SUCCESS)
        return Fail(ERROR_SERVICE_DOES_NOT_EXIST, std::nullopt);  // a key for something else
    configuration.start = key.Number(u"Start");
    configuration.errorControl = key.Number(u"ErrorControl");
    configuration.path = key.Text(u"ImagePath");
    configuration.group = key.Text(u"Group");
    configuration.account = key.Text(u"ObjectName");
    configuration.displayName = key.Text(u"DisplayName");
    configuration.isDeleted = key.Number(u"DeleteFlag") != 0;
    configuration.dependencies = key.Units16(u"DependOnService");
    if (!configuration.dependencies.empty())
        configuration.dependencies.pop_back();  // the end of the list
    if (const LONG status = key.Outcome())
        return Fail(static_cast<DWORD>(status), std::nullopt);
    return configuration;
}

NewServiceKey::NewServiceKey(std::u16string_view name) : m_folder(KeyFileName(name))
{
    bool made = false;
    const auto machine = FindKey(HKEY_LOCAL_MACHINE);
    std::shared_ptr<Key> existing;
    if (machine && OpenSubkey(*machine, KeyPath(name), 0, existing, nullptr) == ERROR_FILE_NOT_FOUND)
        OpenSubkey(*machine, kServicesKey, 0, m_services, &made);
    // Last, for it makes the folder.
    m_files.emplace(name);
}

NewServiceKey::~NewServiceKey()
{
    if (!m_services)
        return;
    RemoveTree(m_services->Folder(), m_folder);
    m_files->Remove();
}

LONG StoreService(std::u16string_view name, const ServiceConfiguration& configuration)
{
    OwnedKey key;
    if (const LONG status = key.Make(KeyPath(name)))
        return status;
    key.Store(u"Type", configuration.type);
    key.Store(u"Start", configuration.start);
    key.Store(u"ErrorControl", configuration.errorControl);
    key.Store(u"ImagePath", REG_EXPAND_SZ, configuration.path);
    key.Store(u"Group", REG_SZ, configuration.group);
    key.Store(u"DependOnService", REG_MULTI_SZ, configuration.dependencies);
    key.Store(u"ObjectName", REG_SZ, configuration.account);
    key.Store(u"DisplayName", REG_SZ, configuration.displayName);
    if (configuration.isDeleted)
        key.Store(u"DeleteFlag", 1);
    return key.Outcome();
}

std::optional<std::vector<std::u16string>> ServiceNames()
{
    std::vector<std::u16string> names;
    OwnedKey key;
    LSTATUS status = key.Open(std::u16string(kServicesKey));
    WCHAR name[MAX_PATH];
    for (DWORD i = 0; status == ERROR_SUCCESS; ++i) {
        status = RegEnumKeyW(key.Get(), i, name, MAX_PATH);
        if (status == ERROR_SUCCESS)
            names.emplace_back(reinterpret_cast<const char16_t*>(name));
    }
    if (status != ERROR_NO_MORE_ITEMS && status != ERROR_FILE_NOT_FOUND)
        return Fail(static_cast<DWORD>(status), std::nullopt);
    return names;
}

DWORD CheckDisplayName(std::u16string_view name, std::u16string_view displayName)
{
    if (displayName.empty())
        return ERROR_SUCCESS;
    const auto names = ServiceNames();
    if (!names)
        return GetLastError();
    for (const std::u16string& other : *names) {
        if (CompareNames(other, name) == 0)
            continue;
        const auto configuration = LoadService(other);
        if (!configuration && GetLastError() != ERROR_SERVICE_DOES_NOT_EXIST)
            return GetLastError();
        if (configuration && CompareNames(configuration->displayName, displayName) == 0)
            return ERROR_DUPLICATE_SERVICE_NAME;
    }
    return ERROR_SUCCESS;
}

void RemoveIfDue(std::u16string_view name)
{
    const auto configuration = LoadService(name);
    if (!configuration || !configuration->isDeleted)
        return;
    const ServiceFolder folder(name);
    const auto record = folder.Read(configuration->type);
    if (!record || !record->IsStopped() || !ServiceLock(folder.Open("open"), true, false))
        return;
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, Units(KeyPath(name)));
    folder.Remove();
}

}  // namespace kelgen::posix
