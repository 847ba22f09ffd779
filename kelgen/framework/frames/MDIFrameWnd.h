// MDIFrameWnd.h: frames that hold documents' frames as children of an MDI client window.
#pragma once

#include <kelgen/framework/frames/FrameWnd.h>

class CMDIChildWnd;

/// A frame around an MDI client window, the parent of CMDIChildWnd frames.
///
/// Commands go to the active child first (and by it to its view and document), then the frame and the application. The frame's menu is
/// that of the active child, if it has one; the client lists the children in the popup that GetWindowMenuPopup names.
class KELGEN_FRAMEWORK_API CMDIFrameWnd : public CFrameWnd
{
    DECLARE_DYNCREATE(CMDIFrameWnd)

public:
    CMDIFrameWnd();
    ~CMDIFrameWnd() override;

    /// Activates a child. Sends WM_MDIACTIVATE; messages of this member and those below go to the client window.
    void MDIActivate(CWnd* pWndActivate);
    /// The active child (WM_MDIGETACTIVE), or null; *@p pbMaximized, if given, tells whether it is maximised. By contract: null even
    /// for an active child that is no CMDIChildWnd or is hidden, since commands cannot be routed to it.
    CMDIChildWnd* MDIGetActive(BOOL* pbMaximized = nullptr) const;
    /// Arranges the minimised children. Sends WM_MDIICONARRANGE.
    void MDIIconArrange();
    /// Maximises a child. Sends WM_MDIMAXIMIZE.
    void MDIMaximize(CWnd* pWnd);
    /// Restores a child. Sends WM_MDIRESTORE.
    void MDIRestore(CWnd* pWnd);
    /// Activates the child after the active one. Sends WM_MDINEXT, as MDIPrev does.
    void MDINext();
    /// Activates the child before the active one. Sends WM_MDINEXT with a nonzero lParam.
    void MDIPrev();
    /// Gives the frame another menu and the list of children another popup (WM_MDISETMENU). Returns the menu before. A null
    /// window menu leaves the popup where it is.
    CMenu* MDISetMenu(CMenu* pFrameMenu, CMenu* pWindowMenu);
    /// Lays the children side by side. Sends WM_MDITILE.
    void MDITile();
    /// Does the same with MDITILE_ flags.
    void MDITile(int nType);
    /// Lays the children one upon the other, each a little further. Sends WM_MDICASCADE.
    void MDICascade();
    /// Does the same with MDITILE_ flags.
    void MDICascade(int nType);

    /// Creates the client window; @p pWindowMenu, which may be null, is the popup that lists the children.
    virtual BOOL CreateClient(LPCREATESTRUCTA lpCreateStruct, CMenu* pWindowMenu);
    /// The popup of a menu bar that lists the children: the last one with a command from ID_WINDOW_NEW to 0xE13F; null when there is
    /// none.
    virtual HMENU GetWindowMenuPopup(HMENU hMenuBar);
    /// A new child of that class with those resources; the menu and accelerators are the caller's to keep. Null on failure.
    CMDIChildWnd* CreateNewChild(CRuntimeClass* pClass, UINT nResource, HMENU hMenu = nullptr, HACCEL hAccel = nullptr);

    BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, CWnd* pParentWnd = nullptr,
                   CCreateContext* pContext = nullptr) override;
    BOOL OnCreateClient(LPCREATESTRUCTA lpcs, CCreateContext* pContext) override;
    BOOL PreCreateWindow(CREATESTRUCTA& cs) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    void OnUpdateFrameTitle(BOOL bAddToTitle) override;
    void OnUpdateFrameMenu(HMENU hMenuAlt) override;
    void DelayUpdateFrameMenu(HMENU hMenuAlt) override;
    CFrameWnd* GetActiveFrame() override;

    /// The client window; null before it is created.
    HWND m_hWndMDIClient = nullptr;

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

    /// WM_SIZE: lays out the client and the bars, unless the window is minimised.
    void OnSize(UINT nType, int cx, int cy);
    /// Enables the commands of the window menu while there is an active child.
    void OnUpdateMDIWindowCmd(CCmdUI* pCmdUI);
    /// Arranges, cascades or tiles the children, as the command @p nID says. TRUE if it was one of these.
    BOOL OnMDIWindowCmd(UINT nID);
    /// The command ID_WINDOW_NEW: one more frame for the active child's document; a message box if it has none.
    void OnWindowNew();
    /// WM_IDLEUPDATECMDUI: draws the menu bar anew if it changed, then does what CFrameWnd does. Returns 0.
    LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()
};
