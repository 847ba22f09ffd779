// DialogTemplate.h: dialog templates out of resources, looked over before the platform reads them.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

#include <cstddef>

namespace kelgen::detail {

/// Whether a template, of either form, ends within its @p size bytes; false for none, for which @p bytes may be null.
/// Nothing beyond them is read. Threads: any.
KELGEN_FRAMEWORK_TESTED_API bool IsWholeDialogTemplate(const void* bytes, std::size_t size);

/// The dialog resource of that name and, in @p module, the module that has it. Null when there is none, with the platform's last error, or
/// when it is damaged. The bytes are the module's: they stay while it is loaded, and nobody frees them. Threads: any; modules are looked
/// through in the order of AfxFindResourceHandle.
KELGEN_FRAMEWORK_API LPCDLGTEMPLATEA FindDialogTemplate(LPCSTR name, HINSTANCE& module);

}  // namespace kelgen::detail
