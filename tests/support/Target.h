// Target.h: which platform a test runs on, for the few answers that differ (docs/differences.md).
#pragma once

namespace kelgen::test {

/// The platform is our own one.
extern const bool isOurPlatform;

}  // namespace kelgen::test
