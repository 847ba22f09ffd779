// AcceleratorTables.h: what accelerator tables hold.
#pragma once

#include <kelgen/platform/posix/user/api/Accelerators.h>

#include <vector>

namespace kelgen::posix::user {

/// A copy of the entries of @p table; none when it is no table.
std::vector<ACCEL> AcceleratorsOf(HACCEL table);

}  // namespace kelgen::posix::user
