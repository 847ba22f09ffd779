// Resources.h: resource modules and string tables.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>
