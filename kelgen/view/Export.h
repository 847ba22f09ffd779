// Export.h: KELGEN_VIEW_API marks what the view exports to hosts, KELGEN_VIEW_TESTED_API what it exports to its tests alone.
#pragma once

#include <kelgen/platform/Export.h>

#ifdef KELGEN_VIEW_BUILDING
#define KELGEN_VIEW_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_VIEW_API KELGEN_IMPORT_SYMBOL
#endif

#ifdef KELGEN_TESTED
#define KELGEN_VIEW_TESTED_API KELGEN_VIEW_API
#else
#define KELGEN_VIEW_TESTED_API
#endif
