// VersionInformation.cpp: GetFileVersionInfoSizeA, GetFileVersionInfoA and their wide forms.
#include <kelgen/platform/posix/resources/api/VersionInformation.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/modules/ModuleTable.h>
#include <kelgen/platform/posix/modules/SystemModules.h>
#include <kelgen/platform/posix/modules/api/Modules.h>
#include <kelgen/platform/posix/resources/ExecutableFiles.h>
#include <kelgen/platform/posix/resources/VersionBlock.h>

#include <fcntl.h>
#include <sys/stat.h>

using namespace kelgen::posix;

namespace {

/// The file of the loaded module that is called @p name. The platform's own modules lie in this library.
std::optional<std::string> FileOfLoadedModule(const std::string& name)
{
    if (name.find_first_of("\\/:") != std::string::npos)
        return std::nullopt;
    HMODULE module = GetModuleHandleW(NameIn<WCHAR>(name).c_str());
    if (module && NameOfSystemModule(module))
        module = ModuleOfAddress(reinterpret_cast<const void*>(&GetFileVersionInfoSizeA));
    return module ? ModuleFile(module) : std::nullopt;
}

std::optional<std::string> FileOf(const std::string& name)
{
    auto file = ToNative(name);
    if (file)
        return file;
    const DWORD error = GetLastError();
    const bool hasExtension = name.find('.', name.find_last_of("\\/") + 1) != std::string::npos;
    if (!hasExtension)
        file = ToNative(name + ".dll");
    if (!file)
        file = FileOfLoadedModule(name);
    return file ? file : Fail(error, file);
}

/// The version resource of the file @p name, or nothing with the last error.
std::optional<std::vector<BYTE>> ResourceOf(const std::string& name)
{
    const auto path = FileOf(name);
    if (!path)
        return std::nullopt;
    // A pipe without a writer must not hold the caller up.
    Descriptor file(Retry([&] { return open(path->c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    struct stat status;
    if (!file || fstat(file.Get(), &status) != 0)
        return Fail(ErrorFromErrno(errno), std::nullopt);
    if (S_ISDIR(status.st_mode))
        return Fail(ERROR_ACCESS_DENIED, std::nullopt);
    const ULONGLONG size = S_ISREG(status.st_mode) ? static_cast<ULONGLONG>(status.st_size) : 0;
    const FileBytes bytes(std::move(file), size);
    auto resource = FindVersionResource(bytes);
    return resource ? resource : Fail(bytes.Error() ? ErrorFromErrno(bytes.Error()) : ERROR_RESOURCE_DATA_NOT_FOUND, resource);
}

DWORD BlockSize(const std::string& name, LPDWORD handle)
{
    if (handle)
        *handle = 0;
    if (name.empty())
        return Fail(ERROR_BAD_PATHNAME, 0u);
    const auto resource = ResourceOf(name);
    return resource ? Fail(ERROR_SUCCESS, static_cast<DWORD>(VersionBlockSize(*resource))) : 0;
}

BOOL Fill(const std::string& name, DWORD size, LPVOID data)
{
    if (!data)
        return Fail(ERROR_INVALID_DATA, FALSE);
    const auto resource = ResourceOf(name);
    if (!resource)
        return FALSE;
    FillVersionBlock(*resource, {static_cast<BYTE*>(data), size});
    return Fail(ERROR_SUCCESS, TRUE);
}

}  // namespace

DWORD GetFileVersionInfoSizeA(LPCSTR name, LPDWORD handle)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return name ? BlockSize(NarrowName(name), handle) : Fail(ERROR_INVALID_PARAMETER, 0u); });
}

DWORD GetFileVersionInfoSizeW(LPCWSTR name, LPDWORD handle)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return name ? BlockSize(NarrowName(name), handle) : Fail(ERROR_INVALID_PARAMETER, 0u); });
}

BOOL GetFileVersionInfoA(LPCSTR name, DWORD, DWORD size, LPVOID data)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Fill(NarrowName(name), size, data); });
}

BOOL GetFileVersionInfoW(LPCWSTR name, DWORD, DWORD size, LPVOID data)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Fill(NarrowName(name), size, data); });
}
