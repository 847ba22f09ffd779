// TemporaryFiles.cpp: the folder for temporary files, and names in it.
#include <kelgen/platform/posix/files/api/FileSystem.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/AccessRights.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileObjects.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/api/Files.h>

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <random>

using namespace kelgen::posix;

namespace {

constexpr std::size_t kPrefixLength = 3;

std::string TemporaryFolder()
{
    for (const char* variable : {"TMP", "TEMP", "TMPDIR"}) {
        const char* value = secure_getenv(variable);
        std::string folder = FullPath(value ? value : "");
        if (folder.empty())
            continue;
        return folder.back() == '\\' ? folder : folder + '\\';
    }
    return "Z:\\tmp\\";
}

std::string TemporaryName(const std::string& folder, const std::string& prefix, UINT number)
{
    char hex[8];
    std::snprintf(hex, sizeof hex, "%x", number);
    const bool separated = folder.back() == '\\' || folder.back() == '/';
    const std::u16string start = WideName(prefix).substr(0, kPrefixLength);
    return folder + (separated ? "" : "\\") + NarrowName(reinterpret_cast<LPCWSTR>(start.c_str())) + hex + ".tmp";
}

// Makes the file for its owner alone; false with the last error.
bool MakeTemporary(const std::string& name)
{
    const auto file = OpenFileObject(name, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
    if (!file)
        return false;
    fchmod(file->Number(), S_IRUSR | S_IWUSR);
    return true;
}

template <class Unit>
UINT StoreTemporaryName(const std::string& folder, const std::string& prefix, UINT unique, Unit* buffer)
{
    if (folder.empty() || !ToNativeFolder(folder))
        return Fail(ERROR_DIRECTORY, 0u);

    UINT number = unique & 0xFFFF;
    if (NameIn<Unit>(TemporaryName(folder, prefix, number ? number : 0xFFFF)).size() >= MAX_PATH)
        return Fail(ERROR_BUFFER_OVERFLOW, 0u);
    if (number == 0) {
        const UINT first = std::random_device{}() % 0xFFFF + 1;
        number = first;
        for (;;) {
            // Stored first: once it is made nothing may fail.
            const std::string name = TemporaryName(folder, prefix, number);
            StoreName(name, buffer, MAX_PATH);
            if (MakeTemporary(name))
                return number;
            number = number % 0xFFFF + 1;
            if (GetLastError() != ERROR_FILE_EXISTS || number == first)
                return 0;
        }
    }
    StoreName(TemporaryName(folder, prefix, number), buffer, MAX_PATH);
    return number;
}

}  // namespace

DWORD GetTempPathA(DWORD size, LPSTR buffer)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreName(TemporaryFolder(), buffer, size); });
}

DWORD GetTempPathW(DWORD size, LPWSTR buffer)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreName(TemporaryFolder(), buffer, size); });
}

UINT GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR buffer)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT { return StoreTemporaryName(NarrowName(folder), NarrowName(prefix), unique, buffer); });
}

UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR buffer)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT { return StoreTemporaryName(NarrowName(folder), NarrowName(prefix), unique, buffer); });
}
