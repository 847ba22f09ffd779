// RegistryTree.cpp: any folders and files where the registry keeps its keys: what is listed can be read and removed.
#include "HomeFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace fuzz;

namespace {

/// Makes what the input says: folders, files and links in them.
void MakeEntries(Input& input, std::filesystem::path folder)
{
    int depth = 0;
    for (int i = 0; i < 16 && input.Left() > 0; ++i) {
        const unsigned kind = input.Below(8);
        if (kind == 0 && depth > 0) {
            folder = folder.parent_path();
            --depth;
            continue;
        }
        const std::string name = input.Line();
        if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos || name.find('\0') != std::string::npos)
            continue;
        const std::string path = (folder / name).string();
        if (kind < 3) {
            if (mkdir(path.c_str(), 0700) == 0) {
                folder = path;
                ++depth;
            }
        } else if (kind == 3) {
            const std::string target = input.Line();
            (void)!symlink(target.c_str(), path.c_str());
        } else {
            const std::string bytes = input.Counted<char>();
            const int file = open(path.c_str(), O_CREAT | O_WRONLY | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
            if (file < 0)
                continue;
            (void)!write(file, bytes.data(), bytes.size());
            close(file);
        }
    }
}

void ReadValues(HKEY key, DWORD count, DWORD longestName, DWORD longestData)
{
    for (DWORD i = 0; i < count; ++i) {
        Exact<WCHAR> name(longestName + 1);
        DWORD nameSize = longestName + 1, dataSize = longestData, type = 0;
        Exact<BYTE> data(longestData);
        const LSTATUS status = RegEnumValueW(key, i, name.Get(), &nameSize, nullptr, &type, data.Get(), &dataSize);
        Require(status == ERROR_SUCCESS && nameSize <= longestName && dataSize <= longestData);
        DWORD same = 0;
        Require(RegQueryValueExW(key, name.Get(), nullptr, nullptr, nullptr, &same) == ERROR_SUCCESS && same == dataSize);
        DWORD narrowSize = 0;
        if (RegQueryValueExA(key, "", nullptr, nullptr, nullptr, &narrowSize) == ERROR_SUCCESS && narrowSize > 0) {
            Exact<BYTE> narrow(narrowSize);
            Require(RegQueryValueExA(key, "", nullptr, nullptr, narrow.Get(), &narrowSize) == ERROR_SUCCESS);
        }
    }
    DWORD none = longestName + 1;
    Exact<WCHAR> name(none);
    Require(RegEnumValueW(key, count, name.Get(), &none, nullptr, nullptr, nullptr, nullptr) == ERROR_NO_MORE_ITEMS);
}

void ReadKey(HKEY key)
{
    DWORD subkeys = 0, longestSubkey = 0, values = 0, longestName = 0, longestData = 0;
    Require(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkeys, &longestSubkey, nullptr, &values, &longestName, &longestData,
                             nullptr, nullptr) == ERROR_SUCCESS);
    ReadValues(key, values, longestName, longestData);
    for (DWORD i = 0; i < subkeys; ++i) {
        Exact<WCHAR> name(longestSubkey + 1);
        DWORD size = longestSubkey + 1;
        Require(RegEnumKeyExW(key, i, name.Get(), &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS && size <= longestSubkey);
        HKEY subkey = nullptr;
        Require(RegOpenKeyW(key, name.Get(), &subkey) == ERROR_SUCCESS);
        ReadKey(subkey);
        RegCloseKey(subkey);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const Key key("fuzztree");
    Input input(data, size);
    MakeEntries(input, key.Folder());
    ReadKey(key);
    Require(RegDeleteTreeA(key, nullptr) == ERROR_SUCCESS);
    DWORD subkeys = 1, values = 1;
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr, nullptr, nullptr, nullptr);
    Require(subkeys == 0 && values == 0);
    // Files that others are writing, and a key's own name, stay.
    std::error_code error;
    for (const auto& left : std::filesystem::directory_iterator(key.Folder(), error))
        std::filesystem::remove_all(left.path(), error);
    return 0;
}
