// Kernel.h: files, paths, times, synchronisation, threads and modules.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/files/api/ChangeNotification.h>
#include <kelgen/platform/posix/files/api/DuplicateHandle.h>
#include <kelgen/platform/posix/files/api/FileSystem.h>
#include <kelgen/platform/posix/files/api/FileTimes.h>
#include <kelgen/platform/posix/files/api/Files.h>
#include <kelgen/platform/posix/files/api/FindFile.h>
#include <kelgen/platform/posix/files/api/PathNames.h>
#include <kelgen/platform/posix/modules/api/Modules.h>
#include <kelgen/platform/posix/processes/api/Environment.h>
#include <kelgen/platform/posix/processes/api/ProcessList.h>
#include <kelgen/platform/posix/processes/api/Processes.h>
#include <kelgen/platform/posix/threads/api/Arithmetic.h>
#include <kelgen/platform/posix/threads/api/CloseHandle.h>
#include <kelgen/platform/posix/threads/api/CriticalSections.h>
#include <kelgen/platform/posix/threads/api/Interlocked.h>
#include <kelgen/platform/posix/threads/api/Memory.h>
#include <kelgen/platform/posix/threads/api/Synchronization.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>
