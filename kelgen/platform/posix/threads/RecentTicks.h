// RecentTicks.h: the time in milliseconds for those who ask for it all the time.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

namespace kelgen::posix {

/// What GetTickCount64 told last, or tells now where the kernel's coarse clock has moved since: never behind what any thread has been told,
/// and behind the moment by one step of that clock at most, some milliseconds. A quarter of the cost.
ULONGLONG RecentTickCount64();

}  // namespace kelgen::posix
