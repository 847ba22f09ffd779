// VersionInformation.h: version resources of program and library files.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define VS_VERSION_INFO 1
#define VS_FFI_SIGNATURE 0xFEEF04BDu
#define VS_FFI_FILEFLAGSMASK 0x0000003F
#define VS_FF_DEBUG 0x00000001
#define VS_FF_PRERELEASE 0x00000002
#define VS_FF_PATCHED 0x00000004
#define VS_FF_PRIVATEBUILD 0x00000008
#define VS_FF_SPECIALBUILD 0x00000020
#define VOS_NT_WINDOWS32 0x00040004
#define VFT_UNKNOWN 0
#define VFT_APP 1
#define VFT_DLL 2

/// The fixed part of a version resource.
struct VS_FIXEDFILEINFO
{
    DWORD dwSignature;
    DWORD dwStrucVersion;
    DWORD dwFileVersionMS;
    DWORD dwFileVersionLS;
    DWORD dwProductVersionMS;
    DWORD dwProductVersionLS;
    DWORD dwFileFlagsMask;
    DWORD dwFileFlags;
    DWORD dwFileOS;
    DWORD dwFileType;
    DWORD dwFileSubtype;
    DWORD dwFileDateMS;
    DWORD dwFileDateLS;
};

/// The bytes that GetFileVersionInfoA fills for the file @p name: a PE file of either size, or an ELF file with resources of
/// kelgen_add_resources. ".dll" is added to a name that names no file; a bare name may be a loaded module's. @p handle, which may
/// be null, receives 0. 0 with ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED (even for a folder),
/// ERROR_INVALID_PARAMETER (null), ERROR_BAD_PATHNAME (empty), or ERROR_RESOURCE_DATA_NOT_FOUND for any file without a version
/// resource. The last error becomes 0 on success.
KELGEN_PLATFORM_API DWORD GetFileVersionInfoSizeA(LPCSTR name, LPDWORD handle);
KELGEN_PLATFORM_API DWORD GetFileVersionInfoSizeW(LPCWSTR name, LPDWORD handle);

/// Fills @p data with the version resource for VerQueryValueA and VerQueryValueW. What @p size bytes do not hold is cut off, and
/// then the narrow form finds no texts. FALSE as GetFileVersionInfoSizeA, and with ERROR_INVALID_DATA for null @p data. The last
/// error becomes 0 on success.
KELGEN_PLATFORM_API BOOL GetFileVersionInfoA(LPCSTR name, DWORD handle, DWORD size, LPVOID data);
KELGEN_PLATFORM_API BOOL GetFileVersionInfoW(LPCWSTR name, DWORD handle, DWORD size, LPVOID data);

/// Stores the address and the length of the value at @p path (names between backslashes, case does not count; empty, null or "\":
/// the fixed part) in @p value and @p length (may be null); both lie in @p block. FALSE with @p length 0 and
/// ERROR_RESOURCE_TYPE_NOT_FOUND when there is none.
///
/// The narrow form converts texts to the ANSI code page into room of their own in @p block; the length is in bytes and counts the
/// terminator. By contract: a text without a value gives TRUE, "", length 0 and ERROR_INVALID_PARAMETER, so a caller looks at the length;
/// one whose length exceeds the resource the same with ERROR_INSUFFICIENT_BUFFER.
/// Threads: one at a time for each block.
KELGEN_PLATFORM_API BOOL VerQueryValueA(LPCVOID block, LPCSTR path, LPVOID* value, UINT* length);
/// The wide form gives texts as they stand, lengths of texts in units.
KELGEN_PLATFORM_API BOOL VerQueryValueW(LPCVOID block, LPCWSTR path, LPVOID* value, UINT* length);

#define GetFileVersionInfoSize GetFileVersionInfoSizeA
#define GetFileVersionInfo GetFileVersionInfoA
#define VerQueryValue VerQueryValueA
