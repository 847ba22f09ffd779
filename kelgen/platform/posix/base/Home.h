// Home.h: the folder in which everything persistent lies.
#pragma once

#include <kelgen/platform/Export.h>

#include <string>

namespace kelgen::posix {

/// The home folder without a trailing slash: $KELGEN_HOME, else "kelgen" in the user's XDG data folder. Made with mode 0700,
/// with its parents, when it is missing. Where it is not the user's own or others may write there, a path below which nothing can be, so
/// that calls fail, and the reason on standard error. Read from the environment at each call: tests change it.
std::string HomeFolder();

/// The folder that drive C stands for: drive_c in the home folder, made when it is missing.
KELGEN_PLATFORM_TESTED_API std::string DriveCFolder();

}  // namespace kelgen::posix
