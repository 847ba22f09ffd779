// ShareModes.h: what openers of a file let each other do, between all processes of the machine.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <string>

namespace kelgen::posix {

/// Announces that the file open as @p file is used with @p access (specific rights) and shared by @p share, for as long as its
/// open description lives. False when that clashes with another opener. Where the file system has no locks nothing clashes.
bool ClaimShare(int file, DWORD access, DWORD share);

/// True when nobody has the file at @p native open without sharing deletion.
bool MayDelete(const std::string& native);

/// The first offset that locks of byte ranges cannot have: announcements lie there.
constexpr ULONGLONG kShareOffset = ULONGLONG{1} << 62;

}  // namespace kelgen::posix
