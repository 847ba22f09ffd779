// Export.h: KELGEN_API marks what kelgen exports to hosts, KELGEN_TESTED_API what it exports to its tests alone.
#pragma once

#include <kelgen/platform/Export.h>

#ifdef KELGEN_BUILDING
#define KELGEN_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_API KELGEN_IMPORT_SYMBOL
#endif

#ifdef KELGEN_TESTED
#define KELGEN_TESTED_API KELGEN_API
#else
#define KELGEN_TESTED_API
#endif
