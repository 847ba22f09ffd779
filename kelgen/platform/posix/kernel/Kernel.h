// Kernel.h: files, paths, times, synchronisation, threads and modules.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>
