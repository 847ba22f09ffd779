// Kernel.h: files, paths, times, synchronisation, threads and modules.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>
#include <kelgen/platform/posix/kernel/CloseHandle.h>
#include <kelgen/platform/posix/kernel/CriticalSections.h>
#include <kelgen/platform/posix/kernel/Interlocked.h>
#include <kelgen/platform/posix/kernel/Synchronization.h>
#include <kelgen/platform/posix/kernel/Threads.h>
#include <kelgen/platform/posix/kernel/Ticks.h>
