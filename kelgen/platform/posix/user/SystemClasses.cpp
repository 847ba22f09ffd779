// SystemClasses.cpp: the list of the system's own classes.
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/user/api/Dialogs.h>
#include <kelgen/platform/posix/user/api/ListView.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/controls/ControlBase.h>
#include <kelgen/platform/posix/user/mdi/MdiClient.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>

namespace kelgen::posix::user {

namespace {

/// What a control's message answers when there is no memory for it.
LRESULT FailureOf(UINT message)
{
    switch (message) {
    case WM_CREATE:
    case LVM_INSERTITEMA:
    case LVM_INSERTITEMW:
    case LVM_INSERTCOLUMNA:
    case LVM_INSERTCOLUMNW:
        return -1;
    case LB_ADDSTRING:
    case LB_INSERTSTRING:
    case LB_DIR:
    case LB_ADDFILE:
    case LB_INITSTORAGE:
    case CB_ADDSTRING:
    case CB_INSERTSTRING:
    case CB_DIR:
    case CB_INITSTORAGE:
        static_assert(LB_ERRSPACE == CB_ERRSPACE);
        return LB_ERRSPACE;
    default:
        return 0;
    }
}

/// A control's procedure that fails without memory.
template <WNDPROC PROCEDURE>
LRESULT CALLBACK Control(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    try {
        const MemoryMode own(true);
        return PROCEDURE(window, message, wParam, lParam);
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_NOT_ENOUGH_MEMORY, FailureOf(message));
    }
}

}  // namespace

void RegisterSystemClasses()
{
    constexpr UINT kArrow = 32512;
    constexpr UINT kBeam = 32513;
    constexpr UINT kControl = CS_DBLCLKS | CS_PARENTDC;
    constexpr UINT kResizing = kControl | CS_VREDRAW | CS_HREDRAW;
    AddSystemClass({u"#32769", CS_DBLCLKS, DefWindowProcW, 0, 0, COLOR_BACKGROUND + 1});
    AddSystemClass({u"Message", 0, DefWindowProcW, 0, 0, 0});
    AddSystemClass({u"#32770", CS_DBLCLKS | CS_SAVEBITS, DefDlgProcW, DLGWINDOWEXTRA, kArrow, 0});
    AddSystemClass({u"Button", kResizing, Control<ButtonProcedure>, 20, kArrow, 0});
    AddSystemClass({u"Static", kControl, Control<StaticProcedure>, 16, kArrow, 0});
    AddSystemClass({u"Edit", kControl, Control<EditProcedure>, 8, kBeam, 0});
    AddSystemClass({u"ListBox", CS_DBLCLKS, Control<ListBoxProcedure>, 8, kArrow, 0});
    AddSystemClass({u"ComboLBox", CS_DBLCLKS | CS_SAVEBITS, Control<ComboListProcedure>, 8, kArrow, 0});
    AddSystemClass({u"ComboBox", kResizing, Control<ComboBoxProcedure>, 8, kArrow, 0});
    AddSystemClass({u"MDIClient", 0, Control<MdiClientProcedure>, 8, kArrow, COLOR_APPWORKSPACE + 1});
    AddSystemClass({u"SysListView32", CS_DBLCLKS, Control<ListViewProcedure>, 8, kArrow, 0});
    AddSystemClass({u"ScrollBar", kResizing, Control<ScrollBarProcedure>, 28, kArrow, 0});
}

}  // namespace kelgen::posix::user
