// Win32.h: the operating system under its own names. Everything above the platform includes this header for it and no other.
#pragma once

#ifdef _WIN32
#include <kelgen/platform/windows/Windows.h>
#else
#include <kelgen/platform/posix/Windows.h>
#endif

#include <kelgen/platform/support/Assert.h>
#include <kelgen/platform/support/WideText.h>
