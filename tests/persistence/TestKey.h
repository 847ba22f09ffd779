// TestKey.h: a registry key for the time of a test.
#pragma once

#include <kelgen/platform/Win32.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace kelgen::test {

/// A new, empty key below HKEY_CURRENT_USER, removed with all it holds on destruction.
class TestKey
{
public:
    TestKey() : m_name("Software\\kelgen-test-" + std::to_string(::GetCurrentProcessId()))
    {
        ::RegDeleteTreeA(HKEY_CURRENT_USER, m_name.c_str());
        EXPECT_EQ(ERROR_SUCCESS, ::RegCreateKeyA(HKEY_CURRENT_USER, m_name.c_str(), &m_key));
    }
    ~TestKey()
    {
        ::RegCloseKey(m_key);
        ::RegDeleteTreeA(HKEY_CURRENT_USER, m_name.c_str());
    }
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;

    /// The name below HKEY_CURRENT_USER.
    const std::string& GetName() const { return m_name; }

    /// Stores @p bytes as they are.
    void Put(const char* name, DWORD type, const std::string& bytes) const
    {
        const void* data = bytes.data();
        EXPECT_EQ(ERROR_SUCCESS, ::RegSetValueExA(m_key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(bytes.size())));
    }

    /// The size of a value's data in bytes, its terminator included; UINT_MAX when there is no such value.
    DWORD SizeOf(const char* name) const
    {
        DWORD size = 0;
        return ::RegQueryValueExA(m_key, name, nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS ? size : UINT_MAX;
    }

    /// Makes a subkey.
    void Create(const char* name) const
    {
        HKEY made = nullptr;
        EXPECT_EQ(ERROR_SUCCESS, ::RegCreateKeyA(m_key, name, &made));
        ::RegCloseKey(made);
    }

private:
    std::string m_name;
    HKEY m_key = nullptr;
};

}  // namespace kelgen::test
