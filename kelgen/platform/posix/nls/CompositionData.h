// CompositionData.h: the units that stand for a letter and a combining mark.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

namespace kelgen::posix {

/// @p composed stands for @p base with @p mark. Source: the canonical decompositions of the Unicode Character Database.
struct Composition
{
    WCHAR composed;
    WCHAR base;
    WCHAR mark;
};

extern const Composition kCompositions[];  // by composed unit
extern const std::size_t kCompositionCount;

}  // namespace kelgen::posix
