// SystemMessages.h: what the system says about its error codes.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <string_view>

namespace kelgen::posix {

/// The text for error code @p id, or for an HRESULT that carries one, with a line end; empty when there is none.
std::string_view SystemMessage(DWORD id);

}  // namespace kelgen::posix
