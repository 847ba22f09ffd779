// FrameClose.cpp: what all frames of the library do: icons, the application's list, and closing.
#include <kelgen/app/FrameWnd.h>

#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/program/ModuleState.h>

namespace {

void SetMissingIcon(HWND window, WPARAM kind, UINT id, int size)
{
    if (::SendMessageA(window, WM_GETICON, kind, 0))
        return;
    constexpr WORD kIconGroups = 14;
    const LPCSTR name = MAKEINTRESOURCEA(id);
    const HINSTANCE module = AfxFindResourceHandle(name, MAKEINTRESOURCEA(kIconGroups));
    const HANDLE icon = ::LoadImageA(module, name, IMAGE_ICON, size, size, LR_SHARED);
    ::SendMessageA(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(icon));
}

/// False for a frame that is gone, which is not looked at then.
bool IsWindowOf(HWND window, const CFrameWnd* frame)
{
    return ::IsWindow(window) && CWnd::FromHandlePermanent(window) == frame;
}

}  // namespace

CKelGenFrameWndInterface::~CKelGenFrameWndInterface() = default;

bool CKelGenFrameWndInterface::KelGenPosLoadFrame(UINT nIDResource, DWORD, CWnd*, CCreateContext*)
{
    const HWND window = kelgen::detail::HandleOf(KelGenGetFrameWnd());
    SetMissingIcon(window, ICON_SMALL, nIDResource, 16);
    SetMissingIcon(window, ICON_BIG, nIDResource, 32);
    return true;
}

void CKelGenFrameWndInterface::KelGenOnDestroy()
{
    if (CKelGenApp* const app = gen::GetApp())
        app->RemoveFrame(KelGenGetFrameWnd());
}

int CKelGenFrameWndInterface::KelGenOnCreate(LPCREATESTRUCTA)
{
    if (CKelGenApp* const app = gen::GetApp())
        app->AddFrame(KelGenGetFrameWnd());
    return 0;
}

void CKelGenFrameWndInterface::KelGenOnClose()
{
    CFrameWnd* const frame = KelGenGetFrameWnd();
    CDocument* const document = frame->GetActiveDocument();
    if (document)
        document->CanCloseFrame(frame);
}

CFrameWnd* CKelGenFrameWndInterface::KelGenGetFrameWnd()
{
    return dynamic_cast<CFrameWnd*>(this);
}

void CKelGenFrameWndInterface::LeaveApplication()
{
    // A hook may have kept WM_DESTROY from the frame.
    CKelGenFrameWndInterface::KelGenOnDestroy();
    if (CKelGenApp* const kelgenApp = gen::GetApp())
        kelgenApp->ForgetFrame(KelGenGetFrameWnd());
    CWinApp* const app = AfxGetApp();
    if (app && app->m_pMainWnd == KelGenGetFrameWnd())
        app->m_pMainWnd = nullptr;
}

void CKelGenFrameWndInterface::KelGenOnCloseAfter()
{
    CFrameWnd* const frame = KelGenGetFrameWnd();
    const HWND window = frame->m_hWnd;
    CDocument* document = frame->GetActiveDocument();
    if (document && !document->CanCloseFrame(frame))
        return;
    // A host's answer may have closed document and frame itself.
    if (!IsWindowOf(window, frame))
        return;
    document = frame->GetActiveDocument();
    const CKelGenApp* const app = gen::GetApp();
    if (!app || app->m_pMainWnd != frame || app->GetVisibleFrameCountExcept(frame) >= 1) {
        CloseFrame(frame, document);
        return;
    }
    // Closing the documents may have closed the frame, and the document is then gone.
    if (!EndsApplication(document) && IsWindowOf(window, frame))
        CloseFrame(frame, frame->GetActiveDocument());
}

/// The end of the application, unless something is in its way; false when the frame is still to be closed like any other.
bool CKelGenFrameWndInterface::EndsApplication(const CDocument* document)
{
    CKelGenApp* const app = gen::GetApp();
    if (!document && !app->SaveAllModified())
        return true;
    app->HideApplication();
    app->CloseAllDocuments(FALSE);
    if (!AfxOleCanExitApp()) {
        AfxOleSetUserCtrl(FALSE);
        return true;
    }
    if (AfxGetModuleState()->m_bDLL || app->GetVisibleFrameCount() >= 1)
        return false;
    ::PostThreadMessageA(app->m_nThreadID, WM_QUIT, 0, 0);
    return true;
}

void CKelGenFrameWndInterface::CloseFrame(CFrameWnd* frame, CDocument* document)
{
    if (!document || !document->m_bAutoDelete) {
        frame->DestroyWindow();
        return;
    }
    for (POSITION position = document->GetFirstViewPosition(); position;) {
        const CView* const view = document->GetNextView(position);
        if (view->GetParentFrame() != frame) {
            document->PreCloseFrame(frame);
            frame->DestroyWindow();
            return;
        }
    }
    document->OnCloseDocument();
}
