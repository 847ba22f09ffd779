// Registry.h: the registry and private-profile files.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>
