// ProfileFile.h: initialization files on disk.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/registry/ProfileText.h>

#include <functional>
#include <optional>
#include <string>

namespace kelgen::posix {

/// The Linux path of the file that a profile call names: a name without a folder lies in the Windows folder, none is its
/// "win.ini". Empty, with the last error set, when it cannot be.
std::string ProfilePath(const std::optional<std::string>& file);

/// The file's text; an empty one, with the last error set, when it cannot be read. Sets the last error to 0 when it can.
ProfileText ReadProfile(const std::string& path);

/// Reads the file, lets @p change edit it, and replaces it when that tells so: the file is the old or the new one whenever the
/// process is killed, and no other process's or thread's change is lost. FALSE and the last error when it cannot be written.
BOOL ChangeProfile(const std::string& path, const std::function<bool(ProfileText&)>& change);

}  // namespace kelgen::posix
