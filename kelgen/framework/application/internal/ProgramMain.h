// ProgramMain.h: what the main function of kelgen::main runs.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

namespace kelgen::detail {

/// AfxWinMain, as a process should end: its exit code, but 1 and a line on standard error when an exception leaves the program, when
/// it cannot be prepared, and when its start fails: InitInstance returns FALSE, ExitInstance gives 0, and no message was handled and no
/// WM_QUIT posted meanwhile, by which a program whose work was done in InitInstance, such as a dialog, is known.
KELGEN_FRAMEWORK_API int RunProgram(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand);

/// From now on an exception that ends the program elsewhere, before its main function or on another thread, is told the same way, with
/// exit status 1.
KELGEN_FRAMEWORK_API void TellOfFatalExceptions();

/// Adds to what is called, in the order of the calls here, when the program's loop or start is over, however it ended, before its windows
/// go with their thread. There is room for four.
KELGEN_FRAMEWORK_API void CallAtProgramEnd(void (*call)());

}  // namespace kelgen::detail
