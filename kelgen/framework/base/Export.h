// Export.h: KELGEN_FRAMEWORK_API marks what the framework exports, KELGEN_FRAMEWORK_TESTED_API what it exports to its tests alone.
#pragma once

#include <kelgen/platform/Export.h>

#ifdef KELGEN_FRAMEWORK_BUILDING
#define KELGEN_FRAMEWORK_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_FRAMEWORK_API KELGEN_IMPORT_SYMBOL
#endif

#ifdef KELGEN_TESTED
#define KELGEN_FRAMEWORK_TESTED_API KELGEN_FRAMEWORK_API
#else
#define KELGEN_FRAMEWORK_TESTED_API
#endif
