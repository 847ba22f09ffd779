// FailingThreads.h: whose allocations and system calls fail.
#pragma once

namespace kelgen::test {

enum class FailingThreads
{
    calling,  ///< Those of the thread that says so.
    others,   ///< Those of all others.
};

}  // namespace kelgen::test
