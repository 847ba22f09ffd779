// Registry.h: the registry: keys, their values, enumeration and deletion.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

using LSTATUS = LONG;

/// The predefined keys: constants that are always open; closing one succeeds and does nothing.
#define KELGEN_PREDEFINED_KEY(number) (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(number))))
/// The same key as HKEY_LOCAL_MACHINE\Software\Classes.
#define HKEY_CLASSES_ROOT KELGEN_PREDEFINED_KEY(0x80000000u)
#define HKEY_CURRENT_USER KELGEN_PREDEFINED_KEY(0x80000001u)
#define HKEY_LOCAL_MACHINE KELGEN_PREDEFINED_KEY(0x80000002u)
#define HKEY_USERS KELGEN_PREDEFINED_KEY(0x80000003u)
/// Holds nothing here: every call fails with ERROR_INVALID_HANDLE.
#define HKEY_PERFORMANCE_DATA KELGEN_PREDEFINED_KEY(0x80000004u)
#define HKEY_CURRENT_CONFIG KELGEN_PREDEFINED_KEY(0x80000005u)

// Kinds of value data.
#define REG_NONE 0u
#define REG_SZ 1u
#define REG_EXPAND_SZ 2u
#define REG_BINARY 3u
#define REG_DWORD 4u
#define REG_DWORD_LITTLE_ENDIAN 4u
#define REG_DWORD_BIG_ENDIAN 5u
#define REG_LINK 6u
#define REG_MULTI_SZ 7u
#define REG_RESOURCE_LIST 8u
#define REG_FULL_RESOURCE_DESCRIPTOR 9u
#define REG_RESOURCE_REQUIREMENTS_LIST 10u
#define REG_QWORD 11u
#define REG_QWORD_LITTLE_ENDIAN 11u

// Rights that an opened key grants.
#define KEY_QUERY_VALUE 0x0001u
#define KEY_SET_VALUE 0x0002u
#define KEY_CREATE_SUB_KEY 0x0004u
#define KEY_ENUMERATE_SUB_KEYS 0x0008u
#define KEY_NOTIFY 0x0010u
#define KEY_CREATE_LINK 0x0020u
#define KEY_WOW64_64KEY 0x0100u
#define KEY_WOW64_32KEY 0x0200u
#define KEY_READ 0x20019u
#define KEY_WRITE 0x20006u
#define KEY_EXECUTE 0x20019u
#define KEY_ALL_ACCESS 0xF003Fu
#ifndef MAXIMUM_ALLOWED
#define MAXIMUM_ALLOWED 0x02000000u
#endif

// Options and outcome of creating a key. Every key is kept on disk: volatile ones too.
#define REG_OPTION_NON_VOLATILE 0u
#define REG_OPTION_VOLATILE 1u
#define REG_OPTION_CREATE_LINK 2u
#define REG_OPTION_BACKUP_RESTORE 4u
#define REG_OPTION_OPEN_LINK 8u
#define REG_CREATED_NEW_KEY 1u
#define REG_OPENED_EXISTING_KEY 2u

// All calls return an error code (ERROR_SUCCESS when they succeed) and leave the last error alone. Common to all of them:
// ERROR_INVALID_HANDLE for a key that is closed, null or forged; ERROR_KEY_DELETED when somebody deleted it;
// ERROR_ACCESS_DENIED when it was opened without the right that the call needs. Names ignore case: ASCII, Latin-1, Greek and
// Cyrillic letters. A key's name has at most 255 units (ERROR_MORE_DATA), a value's 16383 (ERROR_INVALID_PARAMETER).
// Narrow names and texts are in the ANSI code page; text data (REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ) is kept as 16-bit text and
// converted by the narrow forms.
// Threads: any, also several processes at once: a value is the old or the new one, never a part.

/// Opens the key @p subkey (names between backslashes) below @p key; ERROR_FILE_NOT_FOUND when there is none. @p result becomes
/// the new handle, null on failure. A null or empty @p subkey gives @p key itself. ERROR_BAD_PATHNAME for a leading backslash.
KELGEN_PLATFORM_API LSTATUS RegOpenKeyA(HKEY key, LPCSTR subkey, PHKEY result);
KELGEN_PLATFORM_API LSTATUS RegOpenKeyW(HKEY key, LPCWSTR subkey, PHKEY result);

/// As RegOpenKeyA with the rights @p access. By contract: a null or empty @p subkey gives a new handle, which the caller closes, except
/// for a predefined key, which gives itself and may be closed too.
KELGEN_PLATFORM_API LSTATUS RegOpenKeyExA(HKEY key, LPCSTR subkey, DWORD options, REGSAM access, PHKEY result);
KELGEN_PLATFORM_API LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD options, REGSAM access, PHKEY result);

/// Opens the key @p subkey below @p key and makes it, with every key on the way to it, when it is missing.
KELGEN_PLATFORM_API LSTATUS RegCreateKeyA(HKEY key, LPCSTR subkey, PHKEY result);
KELGEN_PLATFORM_API LSTATUS RegCreateKeyW(HKEY key, LPCWSTR subkey, PHKEY result);

/// As RegCreateKeyA with the rights @p access; @p disposition (may be null) becomes REG_CREATED_NEW_KEY or
/// REG_OPENED_EXISTING_KEY. The class name is not kept; the security attributes are ignored.
KELGEN_PLATFORM_API LSTATUS RegCreateKeyExA(HKEY key, LPCSTR subkey, DWORD reserved, LPSTR className, DWORD options, REGSAM access,
                                            const SECURITY_ATTRIBUTES* security, PHKEY result, LPDWORD disposition);
KELGEN_PLATFORM_API LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR subkey, DWORD reserved, LPWSTR className, DWORD options, REGSAM access,
                                            const SECURITY_ATTRIBUTES* security, PHKEY result, LPDWORD disposition);

/// Closes @p key; ERROR_INVALID_HANDLE when it is not open.
KELGEN_PLATFORM_API LSTATUS RegCloseKey(HKEY key);

/// Reads the value @p name (null or "": the default value); ERROR_FILE_NOT_FOUND when there is none. @p type and @p size (in
/// bytes) become the data's. @p data may be null: only type and size are asked. A buffer that is too small gives ERROR_MORE_DATA
/// with the needed size and stays as it is. ERROR_INVALID_PARAMETER for @p data without @p size. By contract: the size of a value that
/// does not exist becomes 0 when only asked for, so that a caller reserves nothing for it.
KELGEN_PLATFORM_API LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size);
KELGEN_PLATFORM_API LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size);

/// Reads the text of the default value of @p subkey; @p size is in bytes, with the terminator. By contract: a default value that does not
/// exist reads as "", since for the older calls every key has one.
KELGEN_PLATFORM_API LSTATUS RegQueryValueA(HKEY key, LPCSTR subkey, LPSTR data, PLONG size);
KELGEN_PLATFORM_API LSTATUS RegQueryValueW(HKEY key, LPCWSTR subkey, LPWSTR data, PLONG size);

/// Writes @p size bytes as the value @p name (null or "": the default value). By contract: text that ends without a terminator gets one,
/// for those who read it; text of 0 bytes does not.
KELGEN_PLATFORM_API LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size);
KELGEN_PLATFORM_API LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size);

/// Writes the text @p data as the default value of @p subkey, which is made when missing. @p type must be REG_SZ, else
/// ERROR_INVALID_PARAMETER. By contract: @p size is ignored, since the text ends at its terminator.
KELGEN_PLATFORM_API LSTATUS RegSetValueA(HKEY key, LPCSTR subkey, DWORD type, LPCSTR data, DWORD size);
KELGEN_PLATFORM_API LSTATUS RegSetValueW(HKEY key, LPCWSTR subkey, DWORD type, LPCWSTR data, DWORD size);

/// Removes the value @p name (null or "": the default value); ERROR_FILE_NOT_FOUND when there is none.
KELGEN_PLATFORM_API LSTATUS RegDeleteValueA(HKEY key, LPCSTR name);
KELGEN_PLATFORM_API LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name);

/// Removes the key @p subkey with its values; ERROR_ACCESS_DENIED when it has subkeys. "" removes @p key itself. By contract: a null
/// @p subkey fails with ERROR_INVALID_PARAMETER, so that a name that is missing by mistake removes nothing.
KELGEN_PLATFORM_API LSTATUS RegDeleteKeyA(HKEY key, LPCSTR subkey);
KELGEN_PLATFORM_API LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR subkey);

/// Removes the key @p subkey with everything below it. A null or empty @p subkey empties @p key and keeps it.
KELGEN_PLATFORM_API LSTATUS RegDeleteTreeA(HKEY key, LPCSTR subkey);
KELGEN_PLATFORM_API LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR subkey);

/// The name of the subkey number @p index in alphabetical order; ERROR_NO_MORE_ITEMS past the end, ERROR_MORE_DATA when @p size
/// units (terminator included) are too few.
KELGEN_PLATFORM_API LSTATUS RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD size);
KELGEN_PLATFORM_API LSTATUS RegEnumKeyW(HKEY key, DWORD index, LPWSTR name, DWORD size);

/// As RegEnumKeyA; @p size goes in with the buffer's units and comes back with the name's length. A class reads as "".
KELGEN_PLATFORM_API LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD size, LPDWORD reserved, LPSTR className,
                                          LPDWORD classSize, FILETIME* lastWrite);
KELGEN_PLATFORM_API LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD reserved, LPWSTR className,
                                          LPDWORD classSize, FILETIME* lastWrite);

/// Name, type and data of the value number @p index in alphabetical order, the default value first; ERROR_NO_MORE_ITEMS past
/// the end, ERROR_MORE_DATA when a buffer is too small. The parts that are not wanted may be null.
KELGEN_PLATFORM_API LSTATUS RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                          LPDWORD dataSize);
KELGEN_PLATFORM_API LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                          LPDWORD dataSize);

/// Counts and longest lengths of what @p key holds; each may be null. Name lengths are in units without the terminator, the
/// longest data in bytes as kept (text: two for each unit), even for the narrow form.
KELGEN_PLATFORM_API LSTATUS RegQueryInfoKeyA(HKEY key, LPSTR className, LPDWORD classSize, LPDWORD reserved, LPDWORD subkeys,
                                             LPDWORD longestSubkey, LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName,
                                             LPDWORD longestValue, LPDWORD securityDescriptor, FILETIME* lastWrite);
KELGEN_PLATFORM_API LSTATUS RegQueryInfoKeyW(HKEY key, LPWSTR className, LPDWORD classSize, LPDWORD reserved, LPDWORD subkeys,
                                             LPDWORD longestSubkey, LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName,
                                             LPDWORD longestValue, LPDWORD securityDescriptor, FILETIME* lastWrite);

/// Forces what is in @p key and below it, and the way to it, to the disk. ERROR_SUCCESS, or why a part of it could not be.
KELGEN_PLATFORM_API LSTATUS RegFlushKey(HKEY key);

#define RegOpenKey RegOpenKeyA
#define RegOpenKeyEx RegOpenKeyExA
#define RegCreateKey RegCreateKeyA
#define RegCreateKeyEx RegCreateKeyExA
#define RegQueryValueEx RegQueryValueExA
#define RegQueryValue RegQueryValueA
#define RegSetValueEx RegSetValueExA
#define RegSetValue RegSetValueA
#define RegDeleteValue RegDeleteValueA
#define RegDeleteKey RegDeleteKeyA
#define RegDeleteTree RegDeleteTreeA
#define RegEnumKey RegEnumKeyA
#define RegEnumKeyEx RegEnumKeyExA
#define RegEnumValue RegEnumValueA
#define RegQueryInfoKey RegQueryInfoKeyA
