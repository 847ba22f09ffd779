// Export.h: how a symbol leaves or enters a shared library on each target.
#pragma once

#ifdef _WIN32
#define KELGEN_EXPORT_SYMBOL __declspec(dllexport)
#define KELGEN_IMPORT_SYMBOL __declspec(dllimport)
#else
#define KELGEN_EXPORT_SYMBOL __attribute__((visibility("default")))
#define KELGEN_IMPORT_SYMBOL __attribute__((visibility("default")))
#endif

#ifdef KELGEN_PLATFORM_BUILDING
#define KELGEN_PLATFORM_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_PLATFORM_API KELGEN_IMPORT_SYMBOL
#endif
