// Export.h: how a symbol leaves or enters a shared library on each target. KELGEN_MODULE_LOCAL marks inline functions of which
// every program and library has its own. KELGEN_PLATFORM_API marks what the platform exports, KELGEN_PLATFORM_TESTED_API what it
// exports to its tests alone: KELGEN_TESTED is defined when the tests are built.
#pragma once

#if __cplusplus < 202002L
#error "kelgen is C++20: compile with -std=c++20 (CMake: target_link_libraries with kelgen::kelgen sets it)"
#endif
#ifdef __CHAR_UNSIGNED__
#error "kelgen needs -fsigned-char: by contract the bytes of text are signed numbers"
#endif

#ifdef _WIN32
#define KELGEN_EXPORT_SYMBOL __declspec(dllexport)
#define KELGEN_IMPORT_SYMBOL __declspec(dllimport)
#define KELGEN_MODULE_LOCAL
#else
#define KELGEN_EXPORT_SYMBOL __attribute__((visibility("default")))
#define KELGEN_IMPORT_SYMBOL __attribute__((visibility("default")))
#define KELGEN_MODULE_LOCAL __attribute__((visibility("hidden")))
#endif

#ifdef KELGEN_PLATFORM_BUILDING
#define KELGEN_PLATFORM_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_PLATFORM_API KELGEN_IMPORT_SYMBOL
#endif

#ifdef KELGEN_TESTED
#define KELGEN_PLATFORM_TESTED_API KELGEN_PLATFORM_API
#else
#define KELGEN_PLATFORM_TESTED_API
#endif
