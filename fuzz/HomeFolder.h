// HomeFolder.h: where the platform keeps its files while fuzzing.
#pragma once

#include "Input.h"

#include <kelgen/platform/Win32.h>

#include <filesystem>

namespace fuzz {

/// The home folder that the environment names; it has to.
inline std::filesystem::path Home()
{
    const char* const home = std::getenv("KELGEN_HOME");
    Require(home != nullptr);
    return home;
}

/// The key HKEY_CURRENT_USER\NAME, made when it is missing, and its folder.
class Key
{
public:
    explicit Key(const std::string& name) : m_folder(Home() / "registry/hkey_current_user" / name)
    {
        Require(RegCreateKeyA(HKEY_CURRENT_USER, name.c_str(), &m_key) == ERROR_SUCCESS);
    }
    ~Key() { RegCloseKey(m_key); }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    operator HKEY() const { return m_key; }
    const std::filesystem::path& Folder() const { return m_folder; }

private:
    HKEY m_key = nullptr;
    std::filesystem::path m_folder;
};

}  // namespace fuzz
