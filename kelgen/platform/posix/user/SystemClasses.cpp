// SystemClasses.cpp: the list of the system's own classes.
#include <kelgen/platform/posix/user/ClassTable.h>
#include <kelgen/platform/posix/user/WindowCalls.h>

namespace kelgen::posix::user {

void RegisterSystemClasses()
{
    AddSystemClass({u"#32769", CS_DBLCLKS, DefWindowProcW, 0, 0, COLOR_BACKGROUND + 1});
    AddSystemClass({u"Message", 0, DefWindowProcW, 0, 0, 0});
}

}  // namespace kelgen::posix::user
