// ResourceLibrary.h: two libraries with string resources; each says which module it is.
#pragma once

#include <kelgen/platform/Win32.h>

#ifdef KELGEN_RESOURCE_LIBRARY
#define KELGEN_RESOURCE_LIBRARY_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_RESOURCE_LIBRARY_API KELGEN_IMPORT_SYMBOL
#endif

class AFX_MODULE_STATE;

/// The library's own module state.
KELGEN_RESOURCE_LIBRARY_API AFX_MODULE_STATE* ExtensionState();
KELGEN_RESOURCE_LIBRARY_API AFX_MODULE_STATE* LanguageState();
