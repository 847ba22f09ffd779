// ScratchFile.h: files that are written beside the ones that they replace.
#pragma once

#include <kelgen/platform/Win32.h>

namespace kelgen {

/// Opens @p scratch, which is made if it is missing and emptied of what a killed writer has left in it, to write it and to move it over
/// @p model: by the caller alone until the handle is closed, also while it is moved. It is as @p model is, in its owner and rights.
/// INVALID_HANDLE_VALUE with the last error when it cannot be: ERROR_SHARING_VIOLATION when another writer has it, ERROR_ACCESS_DENIED
/// when the folder takes no new file or the caller may not make one that is like @p model.
KELGEN_PLATFORM_API HANDLE OpenScratchFile(LPCSTR scratch, LPCSTR model);

}  // namespace kelgen
