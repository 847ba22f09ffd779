// IconPicture.h: the pixels of icons. Native only, as the pictures of the desktop are.
#pragma once

#include <kelgen/platform/Win32.h>

#include <vector>

namespace kelgen {

/// The image of @p icon, an icon or cursor that came from a resource or a file, as a PNG file. Empty when it is none, when its image is
/// damaged, and for the system's own.
/// Threads: any.
KELGEN_PLATFORM_API std::vector<unsigned char> IconPng(HICON icon);

}  // namespace kelgen
