// DesktopDump.h: what windows, menus, timers and queues a program has at the moment, in words.
#pragma once

#include <kelgen/Export.h>

#include <iosfwd>

namespace kelgen {

/// Writes the tree of the process's windows, from the top of the z-order down, to @p out: of each its text, class, place (on the screen,
/// a child's in its parent's client area), state, object and hooks, and its menu; then, on native, each thread's queue with timers and
/// hooks. Handles and threads stand in brackets at the ends of lines. Texts are UTF-8.
///
///     window "Account" of Frame at (20, 30) 300 x 200, visible, active, object CMainFrame [0x10002, thread 4711]
///       hook before: CSizeWatch
///       menu
///         "&Quit" 2, grayed
///       child "Name" of Static 100 at (0, 0) 80 x 20, visible [0x10004, thread 4711]
///     thread: 1 posted [4711]
///       message 0x8001 (1, 2) for [0x10002]
///       timer 5 every 500 ms for [0x10002]
///
/// The environment variable KELGEN_DUMP=FILE appends a dump to that file when AfxWinMain ends, however it does, and on native at
/// each SIGUSR1.
/// The windows of the input method, which the system makes for itself, are left out.
/// Threads: any. Another thread is asked for its objects, at most a fifth of a second a window; one that does not serve its sends shows
/// windows without objects.
KELGEN_API void DumpDesktop(std::ostream& out);

}  // namespace kelgen
