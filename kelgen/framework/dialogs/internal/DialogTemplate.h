// DialogTemplate.h: dialog templates out of resources, looked over before the platform reads them.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

#include <cstddef>

namespace kelgen::detail {

/// Whether a template, of either form, ends within its @p size bytes.
KELGEN_FRAMEWORK_TESTED_API bool IsWholeDialogTemplate(const void* bytes, std::size_t size);

/// The dialog resource of that name and, in @p module, the module that has it; null when there is none or it is damaged.
KELGEN_FRAMEWORK_API LPCDLGTEMPLATEA FindDialogTemplate(LPCSTR name, HINSTANCE& module);

}  // namespace kelgen::detail
