// testing.cpp: a test of a dialog without a display: it types, looks, and says what is there.
#include "application.h"

#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <functional>
#include <iostream>
#include <sstream>

namespace {

/// The dialog under test: OK takes over what is entered.
class OrderDialog : public CDialog
{
public:
    int amount = 0;
    int isExpress = BST_UNCHECKED;
    bool isTaken = false;

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        DDX_Text(exchange, IDC_AMOUNT, amount);
        DDX_Check(exchange, IDC_EXPRESS, isExpress);
    }
    void OnOK() override { isTaken = UpdateData(TRUE) != FALSE; }
};

/// Serves the messages until the condition holds. No test sleeps: it waits for what it wants, and not for ever.
bool Until(CDialog& dialog, const std::function<bool()>& holds)
{
    for (const DWORD start = ::GetTickCount(); !holds();) {
        MSG message;
        if (::GetTickCount() - start > 30000)
            return false;
        if (!::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        else if (!::IsDialogMessageA(dialog, &message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageA(&message);
        }
    }
    return true;
}

/// A key, pressed and released, as a keyboard does it: it goes to whatever has the focus.
void Press(int key)
{
    INPUT inputs[2] = {};
    inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
    inputs[0].ki.wVk = inputs[1].ki.wVk = static_cast<WORD>(key);
    inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
    ::SendInput(2, inputs, sizeof(INPUT));
}

bool Says(const char* what, bool holds)
{
    std::cout << what << (holds ? ": yes\n" : ": no\n");
    return holds;
}

}  // namespace

int main()
{
    OrderDialog dialog;
    if (!Says("opens", dialog.Create(IDD_ORDER) != FALSE))
        return 1;
    dialog.ShowWindow(SW_SHOW);
    dialog.SetForegroundWindow();
    CWnd* const amount = dialog.GetDlgItem(IDC_AMOUNT);
    dialog.GotoDlgCtrl(amount);

    // Input goes in where a person's does, and comes to the control by the thread's queue.
    for (const int key : {int{'1'}, int{'7'}, VK_TAB, VK_SPACE})
        Press(key);
    Says("is typed", Until(dialog, [&] { return dialog.IsDlgButtonChecked(IDC_EXPRESS) == BST_CHECKED; }));
    Press(VK_RETURN);
    Says("is taken", Until(dialog, [&] { return dialog.isTaken; }));
    std::cout << dialog.amount << (dialog.isExpress ? ", express\n" : "\n");

    // All windows in words: what a failing test prints, or a host at any time.
    std::ostringstream dump;
    kelgen::DumpDesktop(dump);
    std::istringstream lines(dump.str());
    for (std::string line; std::getline(lines, line);)
        if (line.find("window ") == 0 || line.find("  child ") == 0)
            std::cout << line.substr(0, line.find(" at (")) << '\n';
    dialog.DestroyWindow();
}
