// Version.h: the version of kelgen that a host is compiled with, and that of the library that it runs with.
#pragma once

#include <kelgen/platform/Export.h>

// The build keeps these three equal to the version of the project in CMakeLists.txt.
#define KELGEN_VERSION_MAJOR 0
#define KELGEN_VERSION_MINOR 1
#define KELGEN_VERSION_PATCH 0

/// The version as one number that grows with it: 10000 times the major version, 100 times the minor one, and the patch.
#define KELGEN_VERSION (KELGEN_VERSION_MAJOR * 10000 + KELGEN_VERSION_MINOR * 100 + KELGEN_VERSION_PATCH)

#define KELGEN_VERSION_JOINED(major, minor, patch) #major "." #minor "." #patch
#define KELGEN_VERSION_JOIN(major, minor, patch) KELGEN_VERSION_JOINED(major, minor, patch)

/// The version as a literal: "0.1.0".
#define KELGEN_VERSION_TEXT KELGEN_VERSION_JOIN(KELGEN_VERSION_MAJOR, KELGEN_VERSION_MINOR, KELGEN_VERSION_PATCH)

namespace kelgen {

/// The KELGEN_VERSION of the library that is loaded. It differs from that of the headers where the library was exchanged after the host
/// was built; the system starts no host with a library that the host would have to be built for anew.
///
///     if (kelgen::Version() < 102)
///         Warn("kelgen 0.1.2 mends a fault that matters here");
///
/// Threads: any.
[[nodiscard]] KELGEN_PLATFORM_API int Version() noexcept;

}  // namespace kelgen
