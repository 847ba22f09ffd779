// Export.h: KELGEN_API marks what kelgen exports to hosts.
#pragma once

#include <kelgen/platform/Export.h>

#ifdef KELGEN_BUILDING
#define KELGEN_API KELGEN_EXPORT_SYMBOL
#else
#define KELGEN_API KELGEN_IMPORT_SYMBOL
#endif
