// AppProfile.cpp: the application's profile values, in the registry or in an initialization file.
#include <kelgen/framework/program/WinApp.h>

#include <cstring>

namespace {

/// A registry key that is closed at the end.
class OwnedKey
{
public:
    explicit OwnedKey(HKEY key = nullptr) : m_key(key) {}
    ~OwnedKey()
    {
        if (m_key)
            RegCloseKey(m_key);
    }
    OwnedKey(const OwnedKey&) = delete;
    OwnedKey& operator=(const OwnedKey&) = delete;

    operator HKEY() const { return m_key; }
    HKEY* operator&() { return &m_key; }

private:
    HKEY m_key;
};

HKEY CreatedKey(HKEY parent, LPCSTR name)
{
    HKEY key = nullptr;
    if (!parent || !name)
        return nullptr;
    if (RegCreateKeyExA(parent, name, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return nullptr;
    return key;
}

BOOL WriteValue(HKEY key, LPCSTR entry, DWORD type, const void* data, std::size_t size)
{
    return key && RegSetValueExA(key, entry, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

/// The bytes of a value of that type. False when there is none. Another process may change the value between two looks.
bool ReadValue(HKEY key, LPCSTR entry, DWORD wantedType, CString& bytes)
{
    if (!key)
        return false;
    DWORD size = 0;
    for (;;) {
        DWORD type = 0;
        DWORD needed = size;
        const auto buffer = reinterpret_cast<BYTE*>(bytes.GetBuffer(static_cast<int>(size)));
        const LONG result = RegQueryValueExA(key, entry, nullptr, &type, size ? buffer : nullptr, &needed);
        if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA)
            return false;
        if (result == ERROR_SUCCESS && type != wantedType)
            return false;
        if (result == ERROR_SUCCESS && needed <= size) {
            bytes.ReleaseBufferSetLength(static_cast<int>(needed));
            return true;
        }
        size = needed;
    }
}

char Letter(int fourBits)
{
    return static_cast<char>('A' + fourBits);
}

int FourBits(char letter)
{
    return letter - 'A';
}

}  // namespace

HKEY CWinApp::GetAppRegistryKey()
{
    const OwnedKey software(CreatedKey(HKEY_CURRENT_USER, "Software"));
    const OwnedKey company(CreatedKey(software, m_pszRegistryKey));
    return CreatedKey(company, m_pszProfileName);
}

HKEY CWinApp::GetSectionKey(LPCSTR section)
{
    const OwnedKey app(GetAppRegistryKey());
    return CreatedKey(app, section);
}

LONG CWinApp::DelRegTree(HKEY parent, const CString& keyName)
{
    if (keyName.IsEmpty())
        return ERROR_INVALID_PARAMETER;
    {
        OwnedKey key;
        LONG result = RegOpenKeyExA(parent, keyName, 0, KEY_READ | KEY_WRITE, &key);
        char name[256];
        while (result == ERROR_SUCCESS) {
            result = RegEnumKeyA(key, 0, name, sizeof name);
            if (result == ERROR_SUCCESS)
                result = DelRegTree(key, name);
        }
        if (result != ERROR_NO_MORE_ITEMS)
            return result;
    }
    return RegDeleteKeyA(parent, keyName);
}

UINT CWinApp::GetProfileInt(LPCSTR section, LPCSTR entry, int fallback)
{
    if (!m_pszRegistryKey)
        return ::GetPrivateProfileIntA(section, entry, fallback, m_pszProfileName);
    const OwnedKey key(GetSectionKey(section));
    CString bytes;
    DWORD value = static_cast<DWORD>(fallback);
    if (ReadValue(key, entry, REG_DWORD, bytes) && bytes.GetLength() == sizeof value)
        std::memcpy(&value, bytes.GetString(), sizeof value);
    return value;
}

BOOL CWinApp::WriteProfileInt(LPCSTR section, LPCSTR entry, int value)
{
    if (!m_pszRegistryKey) {
        CString text;
        text.Format("%d", value);
        return ::WritePrivateProfileStringA(section, entry, text, m_pszProfileName);
    }
    const OwnedKey key(GetSectionKey(section));
    return WriteValue(key, entry, REG_DWORD, &value, sizeof value);
}

CString CWinApp::GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR fallback)
{
    CString text;
    if (m_pszRegistryKey) {
        const OwnedKey key(GetSectionKey(section));
        if (!ReadValue(key, entry, REG_SZ, text))
            return CString(fallback);
        // The value's terminator is part of its data.
        text.ReleaseBuffer(static_cast<int>(std::strlen(text)));
        return text;
    }
    for (DWORD capacity = 4096;; capacity *= 2) {
        const DWORD length = ::GetPrivateProfileStringA(section, entry, fallback ? fallback : "",
                                                        text.GetBuffer(static_cast<int>(capacity)), capacity, m_pszProfileName);
        if (length < capacity - 2) {
            text.ReleaseBufferSetLength(static_cast<int>(length));
            return text;
        }
    }
}

BOOL CWinApp::WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value)
{
    if (!m_pszRegistryKey)
        return ::WritePrivateProfileStringA(section, entry, value, m_pszProfileName);
    if (!entry) {
        const OwnedKey app(GetAppRegistryKey());
        return app && section && RegDeleteKeyA(app, section) == ERROR_SUCCESS;
    }
    const OwnedKey key(GetSectionKey(section));
    if (!value)
        return key && RegDeleteValueA(key, entry) == ERROR_SUCCESS;
    return WriteValue(key, entry, REG_SZ, value, std::strlen(value) + 1);
}

BOOL CWinApp::GetProfileBinary(LPCSTR section, LPCSTR entry, BYTE** data, UINT* size)
{
    *data = nullptr;
    *size = 0;
    CString bytes;
    if (m_pszRegistryKey) {
        const OwnedKey key(GetSectionKey(section));
        if (!ReadValue(key, entry, REG_BINARY, bytes))
            return FALSE;
        *size = static_cast<UINT>(bytes.GetLength());
        *data = new BYTE[*size];
        std::memcpy(*data, bytes.GetString(), *size);
        return TRUE;
    }
    const CString letters = GetProfileString(section, entry);
    if (letters.IsEmpty())
        return FALSE;
    *size = static_cast<UINT>(letters.GetLength()) / 2;
    *data = new BYTE[*size];
    for (UINT i = 0; i < *size; ++i) {
        const int at = static_cast<int>(i * 2);
        (*data)[i] = static_cast<BYTE>(FourBits(letters[at]) + FourBits(letters[at + 1]) * 16);
    }
    return TRUE;
}

BOOL CWinApp::WriteProfileBinary(LPCSTR section, LPCSTR entry, BYTE* data, UINT size)
{
    if (m_pszRegistryKey) {
        const OwnedKey key(GetSectionKey(section));
        return WriteValue(key, entry, REG_BINARY, data, size);
    }
    CString letters;
    for (UINT i = 0; i < size; ++i) {
        letters += Letter(data[i] & 15);
        letters += Letter(data[i] >> 4);
    }
    return WriteProfileString(section, entry, letters);
}
