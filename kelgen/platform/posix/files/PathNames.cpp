// PathNames.cpp: full, short and long forms, the current folder, searching.
#include <kelgen/platform/posix/files/api/PathNames.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/ProgramFile.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/ShortNames.h>

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

using namespace kelgen::posix;

namespace {

constexpr const char* kWindowsFolder = "C:\\windows";
constexpr const char* kSystemFolder = "C:\\windows\\system32";

bool IsDeviceName(std::string_view full)
{
    return full.starts_with("\\\\.\\") && full.find('\\', 4) == std::string_view::npos;
}

template <class Unit>
DWORD FullName(const std::string& name, DWORD size, Unit* buffer, Unit** filePart)
{
    const std::string full = FullPath(name);
    if (full.empty())
        return 0;
    const DWORD length = StoreName(full, buffer, size);
    if (length >= size || !filePart)
        return length;

    // In some code pages a backslash may be the second half of a character.
    const std::size_t last = full.rfind('\\') + 1;
    *filePart = last < full.size() && !IsDeviceName(full) ? buffer + NameIn<Unit>(full.substr(0, last)).size() : nullptr;
    return length;
}

// The name of an existing entry as its folder has it, or its 8.3 form.
std::string SpeltBy(const std::string& native, bool wantShort)
{
    const std::size_t slash = native.rfind('/');
    std::string name = native.substr(slash + 1);
    if (!wantShort || IsShortName(name))
        return name;
    return ShortNames(FolderEntries(native.substr(0, slash + 1))).Of(name);
}

// The existing name with each part respelt; slashes, drive, "." and ".." stay as they are.
std::optional<std::string> Respelt(const std::string& name, bool wantShort)
{
    if (!Resolve(name).exists)
        return Fail(ERROR_FILE_NOT_FOUND, std::nullopt);

    std::size_t at = name.starts_with("\\\\?\\") ? 4 : 0;
    if (name.size() >= at + 2 && name[at + 1] == ':')
        at += 2;
    std::string result = name.substr(0, at);
    while (at < name.size()) {
        const std::size_t end = std::min(name.find_first_of("/\\", at), name.size());
        const std::string part = name.substr(at, end - at);
        const ResolvedPath path = Resolve(name.substr(0, end));
        const bool stays = part.empty() || part == "." || part == ".." || !path.exists || path.isDevice;
        result += stays ? part : SpeltBy(path.native, wantShort);
        if (end < name.size())
            result += name[end];
        at = end + 1;
    }
    return result;
}

template <class Unit>
DWORD RespeltName(const std::string& name, Unit* buffer, DWORD size, bool wantShort)
{
    if (name.empty())
        return Fail(wantShort ? ERROR_BAD_PATHNAME : ERROR_PATH_NOT_FOUND, DWORD{0});
    const auto result = Respelt(name, wantShort);
    return result ? StoreName(*result, buffer, size) : 0;
}

BOOL ChangeFolder(const std::string& name)
{
    if (name.empty())
        return Fail(ERROR_INVALID_NAME, FALSE);
    const auto native = ToNativeFolder(name);
    if (!native)
        return FALSE;
    return chdir(native->c_str()) == 0 ? TRUE : Fail(ErrorFromErrno(errno), FALSE);
}

std::vector<std::string> SplitList(std::string_view list, char separator)
{
    std::vector<std::string> items;
    while (!list.empty()) {
        const std::size_t end = list.find(separator);
        if (end != 0)
            items.emplace_back(list.substr(0, end));
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return items;
}

std::vector<std::string> StandardSearchFolders()
{
    const std::string program = DriveForm(ProgramFile());
    std::vector<std::string> folders{program.substr(0, program.rfind('\\') + 1), ".", kSystemFolder, kWindowsFolder};
    // The system's own list: Linux paths, separated by colons.
    const char* path = std::getenv("PATH");
    for (std::string& folder : SplitList(path ? path : "", ':'))
        folders.push_back(std::move(folder));
    return folders;
}

// The drive form of the existing entry called name in folder, which may be empty, or nothing.
std::optional<std::string> ExistingIn(const std::string& folder, const std::string& name)
{
    const bool separated = folder.empty() || folder.back() == '\\' || folder.back() == '/';
    const std::string whole = folder + (separated ? "" : "\\") + name;
    return Resolve(whole).exists ? std::optional(FullPath(whole)) : std::nullopt;
}

// The drive form of the first existing entry; empty when there is none.
std::string SearchIn(const std::vector<std::string>& folders, const std::string& name, const std::string& extension)
{
    const bool hasExtension = name.find('.', name.find_last_of("/\\") + 1) != std::string::npos;
    for (const std::string& folder : folders)
        if (const auto found = ExistingIn(folder, hasExtension ? name : name + extension))
            return *found;
    return {};
}

}  // namespace

std::string kelgen::posix::FileForCommand(const std::string& name, const std::string& extension)
{
    return SearchIn(StandardSearchFolders(), name, extension);
}

DWORD GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* filePart)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return FullName(NarrowName(name), size, buffer, filePart); });
}

DWORD GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* filePart)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return FullName(NarrowName(name), size, buffer, filePart); });
}

DWORD GetShortPathNameA(LPCSTR name, LPSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return RespeltName(NarrowName(name), buffer, size, true); });
}

DWORD GetShortPathNameW(LPCWSTR name, LPWSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return RespeltName(NarrowName(name), buffer, size, true); });
}

DWORD GetLongPathNameA(LPCSTR name, LPSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return RespeltName(NarrowName(name), buffer, size, false); });
}

DWORD GetLongPathNameW(LPCWSTR name, LPWSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return RespeltName(NarrowName(name), buffer, size, false); });
}

DWORD GetCurrentDirectoryA(DWORD size, LPSTR buffer)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreName(CurrentFolder(), buffer, size); });
}

DWORD GetCurrentDirectoryW(DWORD size, LPWSTR buffer)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreName(CurrentFolder(), buffer, size); });
}

BOOL SetCurrentDirectoryA(LPCSTR name)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return ChangeFolder(NarrowName(name)); });
}

BOOL SetCurrentDirectoryW(LPCWSTR name)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return ChangeFolder(NarrowName(name)); });
}

DWORD SearchPathA(LPCSTR path, LPCSTR name, LPCSTR extension, DWORD size, LPSTR buffer, LPSTR* filePart)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD {
        if (!name || !*name)
            return Fail(ERROR_INVALID_PARAMETER, DWORD{0});

        const std::string wanted = NarrowName(name);
        const bool hasFolder = wanted.find_first_of("/\\:") != std::string::npos;
        const std::string found = SearchIn(hasFolder ? std::vector<std::string>{""}
                                           : path    ? SplitList(NarrowName(path), ';')
                                                     : StandardSearchFolders(),
                                           wanted, NarrowName(extension));
        return found.empty() ? Fail(ERROR_FILE_NOT_FOUND, DWORD{0}) : FullName(found, size, buffer, filePart);
    });
}

UINT GetWindowsDirectoryA(LPSTR buffer, UINT size)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT { return StoreName(kWindowsFolder, buffer, size); });
}

UINT GetWindowsDirectoryW(LPWSTR buffer, UINT size)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT { return StoreName(kWindowsFolder, buffer, size); });
}

UINT GetSystemDirectoryA(LPSTR buffer, UINT size)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT { return StoreName(kSystemFolder, buffer, size); });
}

UINT GetSystemDirectoryW(LPWSTR buffer, UINT size)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT { return StoreName(kSystemFolder, buffer, size); });
}
