// SystemClasses.cpp: the list of the system's own classes.
#include <kelgen/platform/posix/user/api/Dialogs.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/controls/ControlBase.h>
#include <kelgen/platform/posix/user/mdi/MdiClient.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>

namespace kelgen::posix::user {

void RegisterSystemClasses()
{
    constexpr UINT kArrow = 32512;
    constexpr UINT kBeam = 32513;
    constexpr UINT kControl = CS_DBLCLKS | CS_PARENTDC;
    constexpr UINT kResizing = kControl | CS_VREDRAW | CS_HREDRAW;
    AddSystemClass({u"#32769", CS_DBLCLKS, DefWindowProcW, 0, 0, COLOR_BACKGROUND + 1});
    AddSystemClass({u"Message", 0, DefWindowProcW, 0, 0, 0});
    AddSystemClass({u"#32770", CS_DBLCLKS | CS_SAVEBITS, DefDlgProcW, DLGWINDOWEXTRA, kArrow, 0});
    AddSystemClass({u"Button", kResizing, ButtonProcedure, 20, kArrow, 0});
    AddSystemClass({u"Static", kControl, StaticProcedure, 16, kArrow, 0});
    AddSystemClass({u"Edit", kControl, EditProcedure, 8, kBeam, 0});
    AddSystemClass({u"ListBox", CS_DBLCLKS, ListBoxProcedure, 8, kArrow, 0});
    AddSystemClass({u"ComboLBox", CS_DBLCLKS | CS_SAVEBITS, ComboListProcedure, 8, kArrow, 0});
    AddSystemClass({u"ComboBox", kResizing, ComboBoxProcedure, 8, kArrow, 0});
    AddSystemClass({u"MDIClient", 0, MdiClientProcedure, 8, kArrow, COLOR_APPWORKSPACE + 1});
    AddSystemClass({u"SysListView32", CS_DBLCLKS, ListViewProcedure, 8, kArrow, 0});
    AddSystemClass({u"ScrollBar", kResizing, DefWindowProcW, 28, kArrow, 0});
}

}  // namespace kelgen::posix::user
