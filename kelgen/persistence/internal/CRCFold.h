// CRCFold.h: checksums of long runs by carry-less multiplication.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/platform/Win32.h>

namespace kelgen::detail {

/// Whether this processor multiplies without carries.
extern const bool canFold;

/// How many 16-byte blocks the processor folds at once: 4, 2, 1 or, without that multiplication, 0. Tests make it less.
KELGEN_TESTED_API extern int foldedAtOnce;

/// Runs below this many bytes are not worth the final reduction.
constexpr size_t kFoldMinimum = 32;

/// Makes @p polynomial that of FoldCrc, in all threads; at program start it is 0. Cost: 1000 steps.
void PrepareFold(DWORD polynomial);

/// Feeds the first whole 16-byte blocks of @p data into the register @p crc, as the byte table would.
/// @param size At least kFoldMinimum. @return The number of bytes fed.
/// Cost: three multiplications every 16 bytes.
size_t FoldCrc(DWORD& crc, const unsigned char* data, size_t size);

}  // namespace kelgen::detail
