// KeyFolder.h: where the registry keeps a key.
#pragma once

#include "platform/registry/RegistryFixture.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>

namespace kelgen::test {

/// The folder of @p key.
inline std::filesystem::path FolderOf(const ScratchKey& key)
{
    std::string path = key.Path();
    std::ranges::transform(path, path.begin(), [](char c) { return c == '\\' ? '/' : static_cast<char>(std::tolower(c)); });
    return std::filesystem::path(std::getenv("KELGEN_HOME")) / "registry/hkey_current_user" / path;
}

}  // namespace kelgen::test
