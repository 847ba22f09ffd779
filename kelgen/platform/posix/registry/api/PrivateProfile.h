// PrivateProfile.h: initialization files: sections of "key=value" lines.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

// A file name without a folder means the Windows folder. Section and key names ignore case, the first one of a name counts.
// Blanks around names and values do not count, one pair of matching quotes around a value neither. Lines that begin with ';'
// are comments. Reading sets the last error to 0, or to ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND when there is no such file.
// Threads: any, also several processes at once: a file is replaced as a whole, and no completed write is lost.

/// Copies the value of @p key in @p section to @p buffer and returns its length; the default without trailing blanks when there
/// is none (null: ""). At most @p size - 1 units are copied, and a terminator. With a null @p key all keys of the section, with
/// a null @p section all sections are copied, each with a terminator, and one more ends the list; a list that is cut returns
/// @p size - 2. A missing section or key leaves the last error 0. By contract: a list that fits exactly counts as cut, since its result
/// is the same.
KELGEN_PLATFORM_API DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size, LPCSTR file);
KELGEN_PLATFORM_API DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR fallback, LPWSTR buffer, DWORD size, LPCWSTR file);

/// The value of @p key as a number: an optional sign and the leading decimal digits, or those after "0x", "0o" or "0b" in base
/// 16, 8 or 2. 0 when there are none; @p fallback for an empty or missing value. By contract: a negative number comes back as its two's
/// complement, since the result is unsigned; a larger one loses all but its low 32 bits.
KELGEN_PLATFORM_API UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT fallback, LPCSTR file);
KELGEN_PLATFORM_API UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT fallback, LPCWSTR file);

/// Writes "key=value" into @p section, both made when missing, and keeps all other lines as they are; nothing is written when
/// the value is that already. A null @p value removes the key, a
/// null @p key the section. FALSE and the last error when the file cannot be written (ERROR_PATH_NOT_FOUND without its folder).
KELGEN_PLATFORM_API BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file);
KELGEN_PLATFORM_API BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file);

/// Copies the lines of @p section that are not comments, as "key=value", each with a terminator, and one more at the end.
/// Returns the length without that last one; @p size - 2 and ERROR_INSUFFICIENT_BUFFER when the list is cut.
KELGEN_PLATFORM_API DWORD GetPrivateProfileSectionA(LPCSTR section, LPSTR buffer, DWORD size, LPCSTR file);

/// Replaces all lines of @p section, made when missing, by @p lines: "key=value" texts that end with a terminator, one more ends
/// the list. Null removes the section. By contract: lines without "=" are left out, since they name no value, and no lines make no new
/// section.
KELGEN_PLATFORM_API BOOL WritePrivateProfileSectionA(LPCSTR section, LPCSTR lines, LPCSTR file);

/// Copies the names of all sections, as GetPrivateProfileStringA without a section does.
KELGEN_PLATFORM_API DWORD GetPrivateProfileSectionNamesA(LPSTR buffer, DWORD size, LPCSTR file);

/// Each does what the call with "Private" in its name does, on "win.ini" in the Windows folder.
KELGEN_PLATFORM_API DWORD GetProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size);
KELGEN_PLATFORM_API UINT GetProfileIntA(LPCSTR section, LPCSTR key, INT fallback);
KELGEN_PLATFORM_API BOOL WriteProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value);

#define GetPrivateProfileString GetPrivateProfileStringA
#define GetPrivateProfileInt GetPrivateProfileIntA
#define WritePrivateProfileString WritePrivateProfileStringA
#define GetPrivateProfileSection GetPrivateProfileSectionA
#define WritePrivateProfileSection WritePrivateProfileSectionA
#define GetPrivateProfileSectionNames GetPrivateProfileSectionNamesA
#define GetProfileString GetProfileStringA
#define GetProfileInt GetProfileIntA
#define WriteProfileString WriteProfileStringA
