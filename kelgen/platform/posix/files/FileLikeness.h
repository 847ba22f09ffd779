// FileLikeness.h: making one file like the one whose place it takes.
#pragma once

#include <sys/stat.h>

namespace kelgen::posix {

/// Gives the open @p file the owner, the mode and the extended attributes, access lists among them, of the open @p model, whose state is
/// @p state. False, with errno, when it may not.
bool MakeAlike(int file, int model, const struct stat& state);

}  // namespace kelgen::posix
