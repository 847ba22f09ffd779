// MDIChildWnd.h: documents' frames inside an MDI frame.
#pragma once

#include <kelgen/framework/frames/MDIFrameWnd.h>

// Its Create hides that of other frames.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

/// A frame that is a child of an MDI frame's client window. Its menu and accelerators are shown by the MDI frame while it is active.
class KELGEN_FRAMEWORK_API CMDIChildWnd : public CFrameWnd
{
    DECLARE_DYNCREATE(CMDIChildWnd)

public:
    CMDIChildWnd();
    ~CMDIChildWnd() override;

    /// Creates the child in @p pParentWnd; null stands for the main window. FALSE if that is no MDI frame, and on failure: the object is
    /// then gone.
    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle = WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW,
                        const RECT& rect = rectDefault, CMDIFrameWnd* pParentWnd = nullptr, CCreateContext* pContext = nullptr);
    /// As CFrameWnd::LoadFrame; menu and accelerators are those of the context's template when that is a CMultiDocTemplate.
    BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd = nullptr, CCreateContext* pContext = nullptr) override;

    /// The MDI frame around the child; null if it is in none.
    CMDIFrameWnd* GetMDIFrame();
    /// Destroys the child. Sends WM_MDIDESTROY to the client window.
    void MDIDestroy();
    /// Activates the child. Sends WM_MDIACTIVATE to the client window.
    void MDIActivate();
    /// Maximises the child. Sends WM_MDIMAXIMIZE to the client window.
    void MDIMaximize();
    /// Restores the child. Sends WM_MDIRESTORE to the client window.
    void MDIRestore();
    /// Menu and accelerators while it is active, which stay the caller's.
    void SetHandles(HMENU hMenu, HACCEL hAccel);

    BOOL PreCreateWindow(CREATESTRUCTA& cs) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL DestroyWindow() override;
    void ActivateFrame(int nCmdShow = -1) override;
    void OnUpdateFrameTitle(BOOL bAddToTitle) override;
    /// Shows the child's menu in its MDI frame, or that frame's own when none becomes active.
    virtual void OnUpdateFrameMenu(BOOL bActive, CWnd* pActivateWnd, HMENU hMenuAlt);
    using CFrameWnd::OnUpdateFrameMenu;

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// WM_CREATE: creates the view. -1 refuses the window.
    int OnCreate(LPCREATESTRUCTA lpCreateStruct);
    /// WM_NCCREATE: sets the extended style that the client dropped. FALSE refuses the window.
    BOOL OnNcCreate(LPCREATESTRUCTA lpCreateStruct);
    /// WM_SIZE: lays out the view and the bars, unless the window is minimised.
    void OnSize(UINT nType, int cx, int cy);
    /// WM_MDIACTIVATE: tells the view, and shows this child's menu in the frame, or the frame's own.
    void OnMDIActivate(BOOL bActivate, CWnd* pActivateWnd, CWnd* pDeactivateWnd);
    /// WM_MOUSEACTIVATE: a click makes this the active child, unless the result forbids it.
    int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);

    HMENU m_hMenuShared = nullptr;  ///< The menu while active; not owned.
    DWORD m_dwExStyle = 0;          ///< The extended style that PreCreateWindow asks for, which clients do not take.

    DECLARE_MESSAGE_MAP()
};

#pragma GCC diagnostic pop
