// ProgramFile.h: where the running program lies.
#pragma once

#include <string>

namespace kelgen::posix {

/// The Linux path of the running program's file; empty when the system does not tell it.
std::string ProgramFile();

}  // namespace kelgen::posix
