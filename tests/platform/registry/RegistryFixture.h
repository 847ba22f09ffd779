// RegistryFixture.h: a key of the test's own, gone afterwards.
#pragma once

#include <optional>
#include <random>
#include <string>

namespace kelgen::test {

/// Makes a fresh key below HKEY_CURRENT_USER\Software and removes it with everything in it.
class ScratchKey
{
public:
    ScratchKey() : m_path("Software\\KelgenTest" + std::to_string(std::random_device{}()))
    {
        EXPECT_EQ(ERROR_SUCCESS, RegCreateKeyA(HKEY_CURRENT_USER, m_path.c_str(), &m_key));
    }
    ~ScratchKey()
    {
        RegCloseKey(m_key);
        RegDeleteTreeA(HKEY_CURRENT_USER, m_path.c_str());
    }
    ScratchKey(ScratchKey&&) = delete;

    operator HKEY() const { return m_key; }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
    HKEY m_key = nullptr;
};

/// The bytes of a string literal, its terminator not counted.
inline const BYTE* Bytes(const char* text)
{
    return reinterpret_cast<const BYTE*>(text);
}

inline LSTATUS SetText(HKEY key, const char* name, const std::string& text)
{
    return RegSetValueExA(key, name, 0, REG_SZ, Bytes(text.c_str()), static_cast<DWORD>(text.size() + 1));
}

/// Makes the subkey @p path and gives it the value "v" when @p text is not null.
inline void MakeKey(HKEY key, const std::string& path, const char* text = nullptr)
{
    HKEY made = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(key, path.c_str(), &made)) << path;
    EXPECT_TRUE(!text || SetText(made, "v", text) == ERROR_SUCCESS) << path;
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(made));
}

/// The text of a value without its terminator; nothing when there is none.
inline std::optional<std::string> GetText(HKEY key, const char* name)
{
    DWORD size = 0;
    if (RegQueryValueExA(key, name, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::string text(size, '\0');
    if (RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS)
        return std::nullopt;
    text.resize(size ? size - 1 : 0);
    return text;
}

inline std::vector<std::string> SubkeysOf(HKEY key)
{
    std::vector<std::string> names;
    char name[300];
    for (DWORD size = sizeof name;
         RegEnumKeyExA(key, static_cast<DWORD>(names.size()), name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         size = sizeof name)
        names.emplace_back(name, size);
    return names;
}

inline std::vector<std::string> ValuesOf(HKEY key)
{
    std::vector<std::string> names;
    std::string name(20000, '\0');
    for (DWORD size = 20000;
         RegEnumValueA(key, static_cast<DWORD>(names.size()), name.data(), &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         size = 20000)
        names.push_back(name.substr(0, size));
    return names;
}

}  // namespace kelgen::test
