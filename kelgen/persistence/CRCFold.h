// CRCFold.h: checksums of long runs by carry-less multiplication.
#pragma once

#include <kelgen/platform/Win32.h>

namespace kelgen::detail {

/// Whether this processor multiplies without carries.
bool CanFold();

/// Runs below this many bytes are not worth the final reduction.
constexpr size_t kFoldMinimum = 32;

/// Feeds the first whole 16-byte blocks of @p data into the register @p crc, as the byte table of @p polynomial would.
/// @param size At least kFoldMinimum. @return The number of bytes fed.
/// Cost: three multiplications every 16 bytes; 1100 steps more when the thread's last polynomial was another.
size_t FoldCrc(DWORD& crc, DWORD polynomial, const unsigned char* data, size_t size);

}  // namespace kelgen::detail
