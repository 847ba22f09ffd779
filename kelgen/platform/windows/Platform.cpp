// Platform.cpp: gives the Windows build of the platform library a translation unit; the calls are the system's own.
#include <kelgen/platform/Win32.h>

/// The platform that this library was built over, for diagnostics.
extern "C" KELGEN_PLATFORM_API const char* KelgenPlatformName()
{
    return "windows";
}
