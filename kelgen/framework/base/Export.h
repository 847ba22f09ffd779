// Export.h: KELGEN_FRAMEWORK_API marks what the framework exports.
#pragma once

#include <kelgen/platform/Export.h>

#ifdef KELGEN_FRAMEWORK_BUILDING
#define KELGEN_FRAMEWORK_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_FRAMEWORK_API KELGEN_IMPORT_SYMBOL
#endif
