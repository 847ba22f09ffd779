// Drives.cpp: what is known of drives and their volumes.
#include <kelgen/platform/posix/files/api/PathNames.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileEntries.h>
#include <kelgen/platform/posix/files/Paths.h>

#include <sys/statvfs.h>

#include <cerrno>

using namespace kelgen::posix;

namespace {

constexpr DWORD kLongestName = 255;
constexpr DWORD kCaseSensitiveSearch = 0x1;
constexpr DWORD kCasePreserved = 0x2;
constexpr DWORD kUnicodeOnDisk = 0x4;

std::string CurrentDrive()
{
    return CurrentFolder().substr(0, 3);
}

}  // namespace

UINT GetDriveTypeA(LPCSTR root)
{
    return OrNoMemory<UINT>(UINT{DRIVE_UNKNOWN}, [&]() -> UINT {
        const ResolvedPath path = Resolve(root ? NarrowName(root) : CurrentDrive());
        return path.exists && path.isFolder ? DRIVE_FIXED : DRIVE_NO_ROOT_DIR;
    });
}

DWORD GetLogicalDrives()
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return 1u << ('C' - 'A') | 1u << ('Z' - 'A'); });
}

BOOL GetVolumeInformationA(LPCSTR root, LPSTR name, DWORD nameSize, LPDWORD serialNumber, LPDWORD longestComponent, LPDWORD flags,
                           LPSTR fileSystem, DWORD fileSystemSize)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const std::string path = root ? NarrowName(root) : CurrentDrive();
        const std::string full = FullPath(path);
        if (full.size() != 3) {
            const bool asFolder = !path.empty() && (path.back() == '\\' || path.back() == '/');
            return Fail(asFolder ? ERROR_DIR_NOT_ROOT : ERROR_INVALID_NAME, FALSE);
        }
        const auto native = ToNativeFolder(full);
        const auto entry = native ? EntryAt(*native) : std::nullopt;
        if (!entry)
            return FALSE;

        if (name && StoreName("", name, nameSize) >= nameSize)
            return Fail(ERROR_BAD_LENGTH, FALSE);
        if (fileSystem && StoreName("NTFS", fileSystem, fileSystemSize) >= fileSystemSize)
            return Fail(ERROR_BAD_LENGTH, FALSE);
        if (serialNumber)
            *serialNumber = entry->volume;
        if (longestComponent)
            *longestComponent = kLongestName;
        if (flags)
            *flags = kCaseSensitiveSearch | kCasePreserved | kUnicodeOnDisk;
        return TRUE;
    });
}

BOOL GetDiskFreeSpaceExA(LPCSTR folder, ULARGE_INTEGER* available, ULARGE_INTEGER* total, ULARGE_INTEGER* free)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto native = ToNativeFolder(folder ? NarrowName(folder) : ".");
        if (!native)
            return FALSE;
        struct statvfs volume;
        if (Retry([&] { return statvfs(native->c_str(), &volume); }) != 0)
            return Fail(ErrorFromErrno(errno), FALSE);

        if (available)
            available->QuadPart = ULONGLONG{volume.f_bavail} * volume.f_frsize;
        if (total)
            total->QuadPart = ULONGLONG{volume.f_blocks} * volume.f_frsize;
        if (free)
            free->QuadPart = ULONGLONG{volume.f_bfree} * volume.f_frsize;
        return TRUE;
    });
}
