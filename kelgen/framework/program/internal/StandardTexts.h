// StandardTexts.h: the framework's own texts. Internal to the framework.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/program/StandardIds.h>

namespace kelgen::detail {

/// String resource @p id, else the built-in text of that number, else "".
CString StandardText(UINT id);
/// The same with @p value in place of each %1.
CString StandardText(UINT id, LPCSTR value);

}  // namespace kelgen::detail
