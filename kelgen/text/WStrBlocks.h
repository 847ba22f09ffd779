// WStrBlocks.h: memory for string blocks by size class. Not for hosts.
#pragma once

#include <kelgen/text/WStr.h>

namespace kelgen::detail {

/// A block for @p length units, which is at least 1: count 1, the length and its terminator set, the capacity that of the class.
/// Throws: the framework's memory exception.
CWStrData* NewWStrBlock(int length);

/// Takes back a block, into the pool that its capacity names or the general heap.
void FreeWStrBlock(CWStrData* block) noexcept;

/// The sum of two lengths. Throws: the framework's memory exception when it is beyond int.
int AddLengths(long long left, long long right);

}  // namespace kelgen::detail
