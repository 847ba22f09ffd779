// Windows.h: the operating system's interface on Linux, one header for each family of calls.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/ErrorCodes.h>
#include <kelgen/platform/posix/base/LastError.h>
#include <kelgen/platform/posix/base/Types.h>
#include <kelgen/platform/posix/kernel/Kernel.h>
#include <kelgen/platform/posix/nls/Nls.h>
#include <kelgen/platform/posix/ole/Ole.h>
#include <kelgen/platform/posix/registry/PrivateProfile.h>
#include <kelgen/platform/posix/registry/Registry.h>
#include <kelgen/platform/posix/resources/Resources.h>
#include <kelgen/platform/posix/resources/VersionInformation.h>
#include <kelgen/platform/posix/services/Services.h>
#include <kelgen/platform/posix/user/User.h>
