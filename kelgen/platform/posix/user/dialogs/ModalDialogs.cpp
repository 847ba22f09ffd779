// ModalDialogs.cpp: dialogs that run a message loop until they are ended.
#include <kelgen/platform/posix/user/dialogs/CreateDialog.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/resources/api/Resources.h>
#include <kelgen/platform/posix/user/api/User.h>
#include <kelgen/platform/posix/user/dialogs/DialogState.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

/// Keeps the owner disabled, also when a procedure throws.
class DisabledOwner
{
public:
    explicit DisabledOwner(HWND owner) : m_owner(owner && IsWindowEnabled(owner) ? owner : nullptr)
    {
        if (m_owner)
            EnableWindow(m_owner, FALSE);
    }
    ~DisabledOwner()
    {
        if (m_owner && !IsWindowEnabled(m_owner))
            EnableWindow(m_owner, TRUE);
    }
    DisabledOwner(const DisabledOwner&) = delete;
    DisabledOwner& operator=(const DisabledOwner&) = delete;

private:
    HWND m_owner;
};

void Dispatch(HWND dialog, MSG& message, bool wide)
{
    if (wide ? IsDialogMessageW(dialog, &message) : IsDialogMessageA(dialog, &message))
        return;
    TranslateMessage(&message);
    wide ? DispatchMessageW(&message) : DispatchMessageA(&message);
}

/// False when the loop is to end: a quit message has come, which is posted again.
bool NextMessage(HWND dialog, HWND owner, MSG& message, bool& isShown, bool wide)
{
    if (!(wide ? PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) : PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))) {
        if (!isShown) {
            isShown = true;
            ShowWindow(dialog, SW_SHOWNORMAL);
        }
        if (owner && !(GetWindowLongA(dialog, GWL_STYLE) & DS_NOIDLEMSG))
            SendMessageA(owner, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(dialog));
        wide ? GetMessageW(&message, nullptr, 0, 0) : GetMessageA(&message, nullptr, 0, 0);
    }
    if (message.message != WM_QUIT)
        return true;
    PostQuitMessage(static_cast<int>(message.wParam));
    return false;
}

INT_PTR RunLoop(HWND dialog, HWND owner, bool wide)
{
    const auto state = DialogStateOf(dialog);
    if (!state)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, INT_PTR{-1});
    bool isShown = (GetWindowLongA(dialog, GWL_STYLE) & WS_VISIBLE) != 0;
    while (!state->hasEnded) {
        MSG message;
        if (!NextMessage(dialog, owner, message, isShown, wide))
            break;
        Dispatch(dialog, message, wide);
        if (!IsWindow(dialog))
            return state->hasEnded ? state->result : INT_PTR{-1};
    }
    DestroyWindow(dialog);
    return state->result;
}

INT_PTR Run(std::optional<TemplateReader> reader, const DialogCreation& creation)
{
    if (creation.owner && !IsWindow(creation.owner))
        return Fail(ERROR_INVALID_WINDOW_HANDLE, INT_PTR{0});
    if (!reader)
        return -1;
    const HWND owner = creation.owner ? GetAncestor(creation.owner, GA_ROOT) : nullptr;
    const DisabledOwner disabled(owner);
    const HWND dialog = CreateDialogWindow(*reader, creation);
    return dialog ? RunLoop(dialog, owner, creation.wide) : INT_PTR{-1};
}

}  // namespace

namespace kelgen::posix::user {

std::optional<TemplateReader> DialogResource(HINSTANCE module, HRSRC resource)
{
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    if (!bytes)
        return std::nullopt;
    return TemplateReader(bytes, SizeofResource(module, resource));
}

std::optional<TemplateReader> DialogMemory(const DLGTEMPLATE* dialogTemplate)
{
    if (!dialogTemplate)
        return std::nullopt;
    return TemplateReader::At(dialogTemplate);
}

}  // namespace kelgen::posix::user

INT_PTR DialogBoxParamA(HINSTANCE module, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    return Run(DialogResource(module, FindResourceA(module, name, RT_DIALOG)), {module, owner, procedure, parameter, false});
}

INT_PTR DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    return Run(DialogResource(module, FindResourceW(module, name, MAKEINTRESOURCEW(5))), {module, owner, procedure, parameter, true});
}

INT_PTR DialogBoxIndirectParamA(HINSTANCE module, LPCDLGTEMPLATEA dialogTemplate, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    return Run(DialogMemory(dialogTemplate), {module, owner, procedure, parameter, false});
}

INT_PTR DialogBoxIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialogTemplate, HWND owner, DLGPROC procedure, LPARAM parameter)
{
    return Run(DialogMemory(dialogTemplate), {module, owner, procedure, parameter, true});
}

BOOL EndDialog(HWND dialog, INT_PTR result)
{
    const auto state = DialogStateOf(dialog);
    if (!state)
        return FALSE;
    state->result = result;
    state->hasEnded = true;
    const bool wasActive = dialog == GetActiveWindow();
    const HWND owner = GetWindow(dialog, GW_OWNER);
    if (owner && !IsWindowEnabled(owner))
        EnableWindow(owner, TRUE);
    // A hidden control must not keep the focus.
    if (const HWND focus = GetFocus(); focus && IsChild(dialog, focus))
        SetFocus(dialog);
    SetWindowPos(dialog, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    if (wasActive && owner && GetActiveWindow() == dialog)
        SetForegroundWindow(owner);
    // Wakes the dialog's loop.
    PostMessageA(dialog, WM_NULL, 0, 0);
    return TRUE;
}
