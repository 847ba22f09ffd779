// DiskCalls.h: what reaches the disk, and when. The program's own fsync, fdatasync and rename stand before the system's.
#pragma once

#include <sys/types.h>

#include <functional>
#include <set>
#include <string>

namespace kelgen::test {

struct DiskCalls
{
    std::set<ino_t> flushed;                  ///< What was flushed.
    int renamed = 0;                          ///< Files that took others' places.
    int renamedTooEarly = 0;                  ///< Those of them that were not flushed before.
    int failure = 0;                          ///< The errno value with which flushing fails; 0: it does not.
    std::function<void(ino_t file)> onFlush;  ///< Called before each.
};

/// This program's; assign a new one to begin.
DiskCalls& Disk();

}  // namespace kelgen::test
