// Resources.h: resource modules and string tables.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/api/Locale.h>

// Numbers of the standard types.
#define RT_CURSOR MAKEINTRESOURCEA(1)
#define RT_BITMAP MAKEINTRESOURCEA(2)
#define RT_ICON MAKEINTRESOURCEA(3)
#define RT_MENU MAKEINTRESOURCEA(4)
#define RT_DIALOG MAKEINTRESOURCEA(5)
#define RT_STRING MAKEINTRESOURCEA(6)
#define RT_FONTDIR MAKEINTRESOURCEA(7)
#define RT_FONT MAKEINTRESOURCEA(8)
#define RT_ACCELERATOR MAKEINTRESOURCEA(9)
#define RT_RCDATA MAKEINTRESOURCEA(10)
#define RT_MESSAGETABLE MAKEINTRESOURCEA(11)
#define RT_GROUP_CURSOR MAKEINTRESOURCEA(12)
#define RT_GROUP_ICON MAKEINTRESOURCEA(14)
#define RT_VERSION MAKEINTRESOURCEA(16)
#define RT_DLGINCLUDE MAKEINTRESOURCEA(17)
#define RT_HTML MAKEINTRESOURCEA(23)
#define RT_MANIFEST MAKEINTRESOURCEA(24)

using ENUMRESTYPEPROCA = BOOL (*)(HMODULE module, LPSTR type, LONG_PTR parameter);
using ENUMRESNAMEPROCA = BOOL (*)(HMODULE module, LPCSTR type, LPSTR name, LONG_PTR parameter);
using ENUMRESLANGPROCA = BOOL (*)(HMODULE module, LPCSTR type, LPCSTR name, WORD language, LONG_PTR parameter);
using ENUMRESTYPEPROCW = BOOL (*)(HMODULE module, LPWSTR type, LONG_PTR parameter);
using ENUMRESNAMEPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR parameter);
using ENUMRESLANGPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language, LONG_PTR parameter);

// A module is the load address of a program or library that was built with kelgen_add_resources; null means the program. Names
// and types are texts (case does not count), numbers (MAKEINTRESOURCEA) or texts such as "#123" for the number.
// Threads: any. What a find returns stays valid while its module is loaded.

/// The resource of that type and name, in the first of these languages in which it exists: neutral; that of the thread's user
/// interface, where it is not the user's, and its primary language; that of the thread's locale; the user's language and its primary
/// one; the system's and its primary one; English (United States); the lowest language number. All loading by name looks in this
/// order: strings, menus, dialogs, accelerators, icons, versions. Null and the last error when it is missing:
/// ERROR_RESOURCE_DATA_NOT_FOUND (the module has no resources), ERROR_RESOURCE_TYPE_NOT_FOUND, ERROR_RESOURCE_NAME_NOT_FOUND;
/// ERROR_INVALID_PARAMETER for "#number" that is not 0 to 65535.
KELGEN_PLATFORM_API HRSRC FindResourceA(HMODULE module, LPCSTR name, LPCSTR type);
KELGEN_PLATFORM_API HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);

/// As FindResourceA in @p language, its primary language or neutral; a neutral @p language looks as FindResourceA does, except that the
/// system's (LANG_SYSTEM_DEFAULT) passes by the thread's. Null and ERROR_RESOURCE_LANG_NOT_FOUND when the resource exists in other
/// languages only. Note the order: type before name.
KELGEN_PLATFORM_API HRSRC FindResourceExA(HMODULE module, LPCSTR type, LPCSTR name, WORD language);
KELGEN_PLATFORM_API HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language);

/// A handle to the resource's data, or null for a null @p resource.
KELGEN_PLATFORM_API HGLOBAL LoadResource(HMODULE module, HRSRC resource);

/// The first byte of the data, read-only; null for null.
KELGEN_PLATFORM_API LPVOID LockResource(HGLOBAL data);

/// The data's size in bytes; 0 for a null @p resource.
KELGEN_PLATFORM_API DWORD SizeofResource(HMODULE module, HRSRC resource);

/// Does nothing and returns FALSE: data stays until its module is unloaded.
KELGEN_PLATFORM_API BOOL FreeResource(HGLOBAL data);

/// Copies the string number @p id to @p buffer in the ANSI code page, cut to @p size - 1 bytes (whole characters) and terminated,
/// and returns the copied length. 0, "" and ERROR_RESOURCE_NAME_NOT_FOUND when there is no block for it; an id without text in
/// its block reads as "". -1 for a size of 0 or less.
KELGEN_PLATFORM_API int LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int size);

/// As LoadStringA in 16-bit units; a missing block leaves the buffer as it is. By contract: with @p size 0 the buffer is taken as a
/// `const WCHAR**` that receives the address of the text in the module, which is not terminated, and the result is its whole length, so
/// that hosts read texts of any length without a copy.
KELGEN_PLATFORM_API int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int size);

/// Each calls @p callback for every type, name or language, numbers as MAKEINTRESOURCEA; TRUE when every call returned TRUE, else
/// FALSE. FALSE and the last error of FindResourceA when there is nothing to enumerate.
KELGEN_PLATFORM_API BOOL EnumResourceTypesA(HMODULE module, ENUMRESTYPEPROCA callback, LONG_PTR parameter);
KELGEN_PLATFORM_API BOOL EnumResourceNamesA(HMODULE module, LPCSTR type, ENUMRESNAMEPROCA callback, LONG_PTR parameter);
KELGEN_PLATFORM_API BOOL EnumResourceLanguagesA(HMODULE module, LPCSTR type, LPCSTR name, ENUMRESLANGPROCA callback, LONG_PTR parameter);
KELGEN_PLATFORM_API BOOL EnumResourceTypesW(HMODULE module, ENUMRESTYPEPROCW callback, LONG_PTR parameter);
KELGEN_PLATFORM_API BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW callback, LONG_PTR parameter);
KELGEN_PLATFORM_API BOOL EnumResourceLanguagesW(HMODULE module, LPCWSTR type, LPCWSTR name, ENUMRESLANGPROCW callback, LONG_PTR parameter);

#define FindResource FindResourceA
#define FindResourceEx FindResourceExA
#define LoadString LoadStringA
#define EnumResourceTypes EnumResourceTypesA
#define EnumResourceNames EnumResourceNamesA
#define EnumResourceLanguages EnumResourceLanguagesA
