// Templates.cpp: any bytes as the template of a menu, of accelerators and of a dialog.
#include "Input.h"
#include "ResourceFile.h"

using namespace fuzz;

namespace {

void ReadMenu(HMENU menu)
{
    const int count = GetMenuItemCount(menu);
    Require(count >= 0);
    for (int i = 0; i < count; ++i) {
        const auto item = static_cast<UINT>(i);
        const int length = GetMenuStringW(menu, item, nullptr, 0, MF_BYPOSITION);
        Exact<WCHAR> text(static_cast<std::size_t>(length) + 1);
        Require(GetMenuStringW(menu, item, text.Get(), length + 1, MF_BYPOSITION) == length);
        char few[3];
        Require(GetMenuStringA(menu, item, few, sizeof few, MF_BYPOSITION) < static_cast<int>(sizeof few));
        GetMenuState(menu, item, MF_BYPOSITION);
        if (const HMENU submenu = GetSubMenu(menu, i))
            ReadMenu(submenu);
    }
}

void ReadAccelerators(HACCEL table)
{
    const int count = CopyAcceleratorTableW(table, nullptr, 0);
    Exact<ACCEL> entries(static_cast<std::size_t>(count));
    Require(CopyAcceleratorTableW(table, entries.Get(), count) == count);
    Require(CopyAcceleratorTableW(table, entries.Get(), count / 2) == count / 2);
}

INT_PTR CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

void ReadDialog(HWND dialog)
{
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        const int length = GetWindowTextLengthW(control);
        Exact<WCHAR> text(static_cast<std::size_t>(length) + 1);
        Require(GetWindowTextW(control, text.Get(), length + 1) <= length);
        GetNextDlgTabItem(dialog, control, FALSE);
    }
    DestroyWindow(dialog);
    Require(!IsWindow(dialog));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    const unsigned kind = input.Below(3);
    ResourceFile file;
    file.Add(kind == 0 ? RT_MENU : kind == 1 ? RT_ACCELERATOR : RT_DIALOG, 1, input.Rest<char>());
    const LPCSTR name = MAKEINTRESOURCEA(1);
    if (kind == 0) {
        if (const HMENU menu = LoadMenuA(file.Module(), name)) {
            ReadMenu(menu);
            Require(DestroyMenu(menu));
        }
    } else if (kind == 1) {
        if (const HACCEL table = LoadAcceleratorsA(file.Module(), name)) {
            ReadAccelerators(table);
            Require(DestroyAcceleratorTable(table));
        }
    } else {
        if (const HWND dialog = CreateDialogParamA(file.Module(), name, nullptr, Procedure, 0))
            ReadDialog(dialog);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        }
    }
    return 0;
}
