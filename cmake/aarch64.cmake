# aarch64.cmake: Linux programs for aarch64 by Debian's cross compiler, run here by qemu-user.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's C library comes without the converters that code pages are made of; need_aarch64_tests of ./test fetches them.
set(CMAKE_CROSSCOMPILING_EMULATOR env QEMU_LD_PREFIX=/usr/aarch64-linux-gnu
  "GCONV_PATH=${CMAKE_CURRENT_LIST_DIR}/../build/aarch64-system/usr/lib/aarch64-linux-gnu/gconv" qemu-aarch64)

# What qemu-user cannot run. A process sees a later start of itself than others do, so that a service counts as dead; of a program that
# could not be started its parent is not told; and a program's raised rights are not qemu's.
set(KELGEN_TESTS_LEFT_OUT
  "ServiceExample.*:Services.Another*:Services.GoWhen*:Services.Live*:Services.NeedThe*:Services.Silent*:Services.StartOnce*:Services.Take*:Services.That*"
  ServiceEnds.AreReported ServicePaths.AreFoundAsCommandLines ServiceController.StartsWaitsAndStops
  WithFailingCalls.WorksOfServices Processes.AreRefusedWithTheReason RaisedRights.TakeNothingFromTheEnvironment)
if(NOT EXISTS /proc/sys/fs/binfmt_misc/qemu-aarch64)
  # The system does not know how to start a program for aarch64; Debian's qemu-user-binfmt tells it.
  list(APPEND KELGEN_TESTS_LEFT_OUT "Monitor.*:SettingsHost.*:MonitorProcess.*:Processes.GetTheir*:Processes.EndWhen*"
    "AnsiPage.Is*:AnsiPage.CommandLines*:AnsiPage.Arguments*:AnsiPage.RegistryText*:AnsiPage.Profiles*"
    Waits.TakeEventsThreadsProcessesAndNotificationsTogether ProgramEnd.TellsOfExceptionsAndFailedStarts)
endif()
list(JOIN KELGEN_TESTS_LEFT_OUT ":" KELGEN_TESTS_LEFT_OUT)
