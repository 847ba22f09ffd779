// Kernel.h: files, paths, times, synchronisation, threads and modules.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/kernel/Arithmetic.h>
#include <kelgen/platform/posix/kernel/ChangeNotification.h>
#include <kelgen/platform/posix/kernel/CloseHandle.h>
#include <kelgen/platform/posix/kernel/CriticalSections.h>
#include <kelgen/platform/posix/kernel/DuplicateHandle.h>
#include <kelgen/platform/posix/kernel/Environment.h>
#include <kelgen/platform/posix/kernel/FileSystem.h>
#include <kelgen/platform/posix/kernel/FileTimes.h>
#include <kelgen/platform/posix/kernel/Files.h>
#include <kelgen/platform/posix/kernel/FindFile.h>
#include <kelgen/platform/posix/kernel/Interlocked.h>
#include <kelgen/platform/posix/kernel/Memory.h>
#include <kelgen/platform/posix/kernel/Modules.h>
#include <kelgen/platform/posix/kernel/PathNames.h>
#include <kelgen/platform/posix/kernel/ProcessList.h>
#include <kelgen/platform/posix/kernel/Processes.h>
#include <kelgen/platform/posix/kernel/Synchronization.h>
#include <kelgen/platform/posix/kernel/Threads.h>
#include <kelgen/platform/posix/kernel/Ticks.h>
