// Registry.cpp: registry keys over the platform's calls.
#include <kelgen/persistence/Registry.h>

#include <climits>
#include <cstring>

namespace {

// Most values fit: one call then gives type, size and data.
constexpr DWORD kUsualSize = 512;

BYTE* AsBytes(char* text)
{
    return static_cast<BYTE*>(static_cast<void*>(text));
}

const BYTE* AsBytes(const char* text)
{
    return static_cast<const BYTE*>(static_cast<const void*>(text));
}

}  // namespace

bool CRegistry::RegQueryValueA(HKEY key, const char* name, CString& out)
{
    char usual[kUsualSize + 1];
    DWORD type = REG_NONE;
    DWORD size = kUsualSize;
    const LONG result = ::RegQueryValueExA(key, name, nullptr, &type, AsBytes(usual), &size);
    if ((result != ERROR_SUCCESS && result != ERROR_MORE_DATA) || type != REG_SZ)
        return false;
    if (result == ERROR_SUCCESS) {
        usual[size] = '\0';
        out = usual;
        return true;
    }
    // The value may grow, and become another, until it is asked for again.
    CString text;
    for (;;) {
        if (size > INT_MAX - 1)
            return false;
        char* const buffer = text.GetBuffer(static_cast<int>(size));
        const LONG again = ::RegQueryValueExA(key, name, nullptr, &type, AsBytes(buffer), &size);
        const bool read = again == ERROR_SUCCESS && type == REG_SZ;
        buffer[read ? size : 0] = '\0';
        text.ReleaseBuffer();
        if (read)
            out = text;
        if (again != ERROR_MORE_DATA)
            return read;
    }
}

CRegistry::CKey::CKey(HKEY parent, const char* subkey)
{
    OpenKey(parent, subkey);
}

CRegistry::CKey::~CKey()
{
    CloseKey();
}

bool CRegistry::CKey::OpenKey(HKEY parent, const char* subkey)
{
    return ::RegOpenKeyA(parent, subkey, &m_key) == ERROR_SUCCESS;
}

bool CRegistry::CKey::CreateKey(HKEY parent, const char* subkey)
{
    HKEY made = nullptr;
    if (::RegCreateKeyA(parent, subkey, &made) != ERROR_SUCCESS)
        return false;
    CloseKey();
    m_key = made;
    return true;
}

void CRegistry::CKey::CloseKey()
{
    if (m_key != nullptr && ::RegCloseKey(m_key) == ERROR_SUCCESS)
        m_key = nullptr;
}

bool CRegistry::CKey::QueryValue(const char* name, CString& out) const
{
    return RegQueryValueA(m_key, name, out);
}

bool CRegistry::CKey::SetValue(const char* name, const char* text)
{
    if (text == nullptr)
        return false;
    const std::size_t size = std::strlen(text) + 1;
    return size <= UINT_MAX && ::RegSetValueExA(m_key, name, 0, REG_SZ, AsBytes(text), static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

bool CRegistry::CKey::DeleteValue(const char* name)
{
    return ::RegDeleteValueA(m_key, name) == ERROR_SUCCESS;
}

bool CRegistry::CKey::DeleteKey()
{
    // The empty name means the key itself; a null one is refused.
    return ::RegDeleteKeyA(m_key, "") == ERROR_SUCCESS;
}
