// CloseHandle.h: the end of a handle of any kind.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

/// Ends the handle; the object goes with its last handle and last user. TRUE for the pseudo handles, which stay; FALSE with last
/// error 6 for a handle that is closed already, null, or forged.
KELGEN_PLATFORM_API BOOL CloseHandle(HANDLE handle);
