// Modules.h: loaded programs and shared libraries, and the procedures in them.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define DONT_RESOLVE_DLL_REFERENCES 0x00000001
#define LOAD_LIBRARY_AS_DATAFILE 0x00000002
#define LOAD_WITH_ALTERED_SEARCH_PATH 0x00000008

#define GET_MODULE_HANDLE_EX_FLAG_PIN 0x00000001
#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 0x00000002
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 0x00000004

// A module is the address at which its ELF file is loaded. Its file name is what calls take: with a path, or without one the
// base name of a loaded file in any case, "libX.so.N" also as "X", "X.so" or "X.dll". The platform's own modules ("kernel32",
// "user32", "advapi32", "psapi" and so on, with or without ".dll") are there without a file; GetProcAddress finds in them what
// code looks up at run time. Threads: any.

/// The module of a loaded file without a new reference, null: the program. Null with ERROR_MOD_NOT_FOUND.
KELGEN_PLATFORM_API HMODULE GetModuleHandleA(LPCSTR name);
KELGEN_PLATFORM_API HMODULE GetModuleHandleW(LPCWSTR name);

/// As GetModuleHandleA with a new reference unless @p flags has UNCHANGED_REFCOUNT; with FROM_ADDRESS @p name is any address in
/// the module. PIN keeps it until the process ends. FALSE with null in @p module, and ERROR_MOD_NOT_FOUND.
KELGEN_PLATFORM_API BOOL GetModuleHandleExA(DWORD flags, LPCSTR name, HMODULE* module);
KELGEN_PLATFORM_API BOOL GetModuleHandleExW(DWORD flags, LPCWSTR name, HMODULE* module);

/// The drive form of the file of @p module, null: of the program; returns its length. 0 with ERROR_MOD_NOT_FOUND.
///
/// By contract: a short buffer is filled to its last byte without a terminator and the result is @p size, which callers tell from a whole
/// name by the last error: ERROR_INSUFFICIENT_BUFFER, otherwise 0.
KELGEN_PLATFORM_API DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);
KELGEN_PLATFORM_API DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size);

/// Loads a shared library, or takes one more reference to a loaded one. A name without a path is looked for beside the program,
/// then where the system's loader looks, and never in the current folder; one with a path is found from there. Null with
/// ERROR_MOD_NOT_FOUND, or ERROR_BAD_EXE_FORMAT for a file that is none.
KELGEN_PLATFORM_API HMODULE LoadLibraryA(LPCSTR name);
KELGEN_PLATFORM_API HMODULE LoadLibraryW(LPCWSTR name);
/// LoadLibraryA; @p flags and @p reserved change nothing: data files are loaded like any other.
KELGEN_PLATFORM_API HMODULE LoadLibraryExA(LPCSTR name, HANDLE reserved, DWORD flags);
KELGEN_PLATFORM_API HMODULE LoadLibraryExW(LPCWSTR name, HANDLE reserved, DWORD flags);

/// Gives a reference back; the last one unloads the library. TRUE even for modules that these calls did not load. FALSE with
/// ERROR_MOD_NOT_FOUND for what is no module, ERROR_INVALID_HANDLE for null.
KELGEN_PLATFORM_API BOOL FreeLibrary(HMODULE module);

/// The exported procedure @p name, as its C name; null @p module means the program. Null with ERROR_PROC_NOT_FOUND (even for a number),
/// ERROR_MOD_NOT_FOUND.
KELGEN_PLATFORM_API FARPROC GetProcAddress(HMODULE module, LPCSTR name);

/// Does nothing and returns TRUE for a module: threads are not announced to libraries.
KELGEN_PLATFORM_API BOOL DisableThreadLibraryCalls(HMODULE module);

#define GetModuleHandle GetModuleHandleA
#define GetModuleHandleEx GetModuleHandleExA
#define GetModuleFileName GetModuleFileNameA
#define LoadLibrary LoadLibraryA
#define LoadLibraryEx LoadLibraryExA
