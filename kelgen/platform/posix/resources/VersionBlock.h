// VersionBlock.h: the block that holds one version resource and its narrow texts.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <span>

namespace kelgen::posix {

// A block is the resource, cut to its own length word, and behind it, at a multiple of 4, three bytes for each of the resource's
// units: no code page needs more. A mark in the root's type says that the room is there. A block tells its size by itself, because
// queries are not told it.

/// The size of a block with room for the texts of @p resource.
KELGEN_PLATFORM_TESTED_API std::size_t VersionBlockSize(std::span<const BYTE> resource);

/// Fills @p block; one that is smaller than VersionBlockSize holds what fits and has no room for texts.
KELGEN_PLATFORM_TESTED_API void FillVersionBlock(std::span<const BYTE> resource, std::span<BYTE> block);

}  // namespace kelgen::posix
