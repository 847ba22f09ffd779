// DuplicateHandle.h: a second handle for an object of any kind.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define DUPLICATE_CLOSE_SOURCE 0x00000001
#define DUPLICATE_SAME_ACCESS 0x00000002

/// Stores in @p target a second handle for the object of @p source; both share everything, a file its position too. The pseudo handle
/// -2 gives one that means this thread everywhere. FALSE with
/// ERROR_INVALID_HANDLE for a bad @p source. Both processes must be the current one (ERROR_NOT_SUPPORTED). Access and
/// inheritance are those of the source. With DUPLICATE_CLOSE_SOURCE the source is closed, even on failure; @p target may then be
/// null.
KELGEN_PLATFORM_API BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target, DWORD access,
                                         BOOL inherit, DWORD options);
