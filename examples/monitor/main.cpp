// main.cpp: the monitor watches a folder and tells what happens to its files. Its settings come from an INI file and are kept in the
// registry.
//
//     monitor [--once] [FOLDER | FILE.ini]
//
// The main function is kelgen::main's; the program's course is in MonitorApp.cpp.
#include "MonitorApp.h"

namespace {

CMonitorApp theApp;

}  // namespace
