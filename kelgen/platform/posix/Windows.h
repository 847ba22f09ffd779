// Windows.h: the operating system's interface on Linux, one header for each family of calls.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/Kernel.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/api/Nls.h>
#include <kelgen/platform/posix/ole/api/Ole.h>
#include <kelgen/platform/posix/registry/api/PrivateProfile.h>
#include <kelgen/platform/posix/registry/api/Registry.h>
#include <kelgen/platform/posix/resources/api/Resources.h>
#include <kelgen/platform/posix/resources/api/VersionInformation.h>
#include <kelgen/platform/posix/services/api/Services.h>
#include <kelgen/platform/posix/user/api/User.h>
