// FrameWnd.h: frame windows, which hold a view and a menu and route commands.
#pragma once

#include <kelgen/framework/program/StandardIds.h>
#include <kelgen/framework/windows/Wnd.h>

#include <cstddef>
#include <new>
#include <vector>

class CDocTemplate;
class CDocument;
class CFrameWnd;
class CView;

/// Styles of frames, in the part of the style that belongs to the window class. They go with LoadFrame.
constexpr DWORD FWS_ADDTOTITLE = 0x8000;   ///< The title shows the document too.
constexpr DWORD FWS_PREFIXTITLE = 0x4000;  ///< The document stands before the frame's own title; FWS_ADDTOTITLE brings it along.

/// The style of views that frames create.
constexpr DWORD AFX_WS_DEFAULT_VIEW = WS_CHILD | WS_VISIBLE | WS_BORDER;

/// What WM_SIZEPARENT's lParam points to: bars take their part of the rectangle.
struct AFX_SIZEPARENTPARAMS
{
    HDWP hDWP;       ///< The list that a bar adds its position to.
    RECT rect;       ///< What is left of the frame's client area.
    SIZE sizeTotal;  ///< For bars; the framework leaves it alone.
    /// Whether a bar is to fill the side that it lies on.
    BOOL bStretch;
};

/// What a frame and its view are made for. Any part may be null.
struct CCreateContext
{
    CRuntimeClass* m_pNewViewClass = nullptr;  ///< The view to make.
    CDocument* m_pCurrentDoc = nullptr;        ///< The document that the view joins.
    /// The template that makes them.
    CDocTemplate* m_pNewDocTemplate = nullptr;
    /// A view that the new one is made after.
    CView* m_pLastView = nullptr;
    CFrameWnd* m_pCurrentFrame = nullptr;  ///< A frame that the new one is made after.
};

// MDI children have a Create without menu, which hides the base's.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

/// A frame window. Made with new: it deletes itself when its window is gone, or could not be created.
///
///     class CMainFrame : public CFrameWnd { ... };
///
///     CMainFrame* frame = new CMainFrame;
///     if (!frame->LoadFrame(IDR_MAIN))
///         return FALSE;
///     m_pMainWnd = frame;
///     frame->ShowWindow(m_nCmdShow);
///
/// Commands go to the active view (and by it to its document), the frame itself, and the application. Menu items of commands that
/// none of them handles are greyed while m_bAutoMenuEnable is set.
///
/// WM_CLOSE asks m_lpfnCloseProc, then the active document's CanCloseFrame. Closing the application's main window ends the
/// application: with no active document SaveAllModified is asked, then the application is hidden and all documents are closed. Another
/// frame closes its document when it holds all of the document's views, else itself alone.
///
/// Threads: as CWnd. The list of frames is the thread's.
class KELGEN_FRAMEWORK_API CFrameWnd : public CWnd
{
    DECLARE_DYNCREATE(CFrameWnd)

public:
    /// Where the platform puts windows by default.
    static const CRect rectDefault;

    CFrameWnd();
    ~CFrameWnd() override;
    /// Each takes or gives back a frame's memory. Checked builds keep that of the last frames and tell of one that is deleted again.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* block) noexcept;

    /// Loads the frame's accelerators by the resource's name. FALSE if it has some already, or there are none of that name.
    BOOL LoadAccelTable(LPCSTR lpszResourceName);
    /// Creates the window, with a menu when a name is given. FALSE on failure: the object is then gone.
    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle = WS_OVERLAPPEDWINDOW, const RECT& rect = rectDefault,
                        CWnd* pParentWnd = nullptr, LPCSTR lpszMenuName = nullptr, DWORD dwExStyle = 0, CCreateContext* pContext = nullptr);
    /// Creates the window with the resources of that number: menu, icon, accelerators, and the string's first line as title.
    /// Only the menu must exist. @p nIDResource becomes the help identifier. Then WM_INITIALUPDATE goes to the descendants, unless there
    /// is a context: who gives one updates the views himself.
    virtual BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, CWnd* pParentWnd = nullptr,
                           CCreateContext* pContext = nullptr);
    /// A new view of the context's class as a child of the frame; null when it has none or fails.
    CWnd* CreateView(CCreateContext* pContext, UINT nID = AFX_IDW_PANE_FIRST);
    /// Fills the frame while it is being created: the base makes the context's view. FALSE refuses the frame.
    virtual BOOL OnCreateClient(LPCREATESTRUCTA lpcs, CCreateContext* pContext);

    /// The document of the active view, or null.
    virtual CDocument* GetActiveDocument();
    /// The active view of this frame itself; null when there is none.
    CView* GetActiveView() const { return m_pViewActive; }
    /// Makes the view, which may be null, active: the one before is told, then the new one. @p bNotify FALSE tells nobody.
    void SetActiveView(CView* pViewNew, BOOL bNotify = TRUE);
    /// The frame that commands go to: the active MDI child, else this.
    virtual CFrameWnd* GetActiveFrame() { return this; }

    /// Shows and raises the frame; -1 shows it as it is, restored when minimised.
    virtual void ActivateFrame(int nCmdShow = -1);
    /// Raises the frame, unless it is hidden or minimised, or about to be by @p nCmdShow.
    void BringToTop(int nCmdShow);
    /// Makes the first view active when none is. With @p bMakeVisible sends WM_INITIALUPDATE to the views, shows the frame, and tells the
    /// view. Then the document, which may be null, counts its frames, and the title is set. By contract: the main window is shown by the
    /// application's m_nCmdShow, once, so that it appears as whoever started the program asked.
    void InitialUpdateFrame(CDocument* pDoc, BOOL bMakeVisible);

    /// Sets the frame's own part of the title; OnUpdateFrameTitle shows it.
    void SetTitle(LPCSTR lpszTitle) { m_strTitle = lpszTitle; }
    /// The frame's own part of the title.
    CString GetTitle() const { return m_strTitle; }
    /// Sets the window's text: "title - document:2" or, by FWS_PREFIXTITLE, "document:2 - title"; the title alone when
    /// @p bAddToTitle is FALSE. Without FWS_ADDTOTITLE nothing changes.
    virtual void OnUpdateFrameTitle(BOOL bAddToTitle);
    /// Shows another menu; null: the one that the frame has by itself, or its document's.
    virtual void OnUpdateFrameMenu(HMENU hMenuAlt);
    /// The document's accelerators, else the frame's.
    virtual HACCEL GetDefaultAccelerator();
    /// Calls OnUpdateFrameTitle when the thread idles next.
    void DelayUpdateFrameTitle() { m_nIdleFlags |= idleTitle; }
    /// Calls OnUpdateFrameMenu when the thread idles next.
    virtual void DelayUpdateFrameMenu(HMENU hMenuAlt);
    /// Calls RecalcLayout when the thread idles next.
    void DelayRecalcLayout(BOOL bNotify = TRUE) { m_nIdleFlags |= bNotify ? idleLayout | idleNotify : idleLayout; }
    /// Gives the first pane what bars leave of the client area.
    virtual void RecalcLayout(BOOL bNotify = TRUE);
    /// The status line's text of a command: the first line of its string resource, else none.
    virtual void GetMessageString(UINT nID, CString& rMessage) const;
    /// Shows a text in the status bar, if there is one.
    void SetMessageText(LPCSTR lpszText);
    /// Does the same with a string resource.
    void SetMessageText(UINT nID);
    /// Whether the user is choosing from a menu.
    BOOL IsTracking() const { return m_nIDTracking != 0 && m_nIDTracking != AFX_IDS_IDLEMESSAGE; }

    /// Disables this frame's top-level window and all windows that it owns, as far as they are enabled, have an object, and do not
    /// answer WM_DISABLEMODAL with nonzero. They are enabled again by as many calls of EndModalState. A disabled top-level frame does
    /// so by itself.
    virtual void BeginModalState();
    /// Takes one BeginModalState back.
    virtual void EndModalState();
    /// Whether a BeginModalState has not been taken back yet.
    BOOL InModalState() const { return m_cModalStack != 0; }
    /// Hides the windows that this frame owns, and shows again those that it hid.
    void ShowOwnedWindows(BOOL bShow);

    BOOL IsFrameWnd() const override { return TRUE; }
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL PreCreateWindow(CREATESTRUCTA& cs) override;

    using CloseProc = BOOL(CALLBACK*)(CFrameWnd* pFrameWnd);

    /// Whether menu items of commands that nobody handles are greyed.
    BOOL m_bAutoMenuEnable = TRUE;
    CloseProc m_lpfnCloseProc = nullptr;  ///< Asked before all else when the frame is to close; FALSE keeps it.
    int m_nWindow = -1;                   ///< The number among the document's frames: -1 unknown, 0 the only one.
    HMENU m_hMenuDefault = nullptr;       ///< The menu that the frame was created with.
    /// The frame's own accelerators, or null.
    HACCEL m_hAccelTable = nullptr;
    CRect m_rectBorder;  ///< What RecalcLayout leaves free around the client area.
    /// The next of the thread's frames, see FirstFrame.
    CFrameWnd* m_pNextFrameWnd = nullptr;

    /// The first of the thread's frames, the latest; m_pNextFrameWnd leads on.
    static CFrameWnd* FirstFrame();
    /// WM_IDLEUPDATECMDUI to the thread's visible frames other than @p pMainWnd, and their descendants.
    static void UpdateIdleFrames(const CWnd* pMainWnd);

protected:
    enum IdleFlags
    {
        idleMenu = 1,
        idleTitle = 2,
        idleNotify = 4,
        idleLayout = 8,
    };

    /// A window class like the one that PreCreateWindow gives for this style, with the icon of that number; null, for that very class,
    /// when there is no icon or PreCreateWindow refuses.
    LPCSTR GetIconWndClass(DWORD dwDefaultStyle, UINT nIDResource);
    /// What WM_CREATE does with what it was told to create: 0; -1, which ends the window, when the base or OnCreateClient fails.
    int OnCreateHelper(LPCREATESTRUCTA lpcs, CCreateContext* pContext);
    /// Sets the window's text by the rules of OnUpdateFrameTitle; null means no document.
    void UpdateFrameTitleForDocument(LPCSTR lpszDocName);
    /// Adds this to the thread's list of frames.
    void AddFrameWnd();
    /// Takes this off the thread's list of frames.
    void RemoveFrameWnd();
    CFrameWnd* ToFrameWnd() override { return this; }
    void PostNcDestroy() override;

    /// Each handles the message of its name for the message map.
    int OnCreate(LPCREATESTRUCTA lpcs);
    void OnClose();
    void OnDestroy();
    void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    void OnEnable(BOOL bEnable);
    void OnSetFocus(CWnd* pOldWnd);
    void OnSize(UINT nType, int cx, int cy);
    void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);
    void OnMenuSelect(UINT nItemID, UINT nFlags, HMENU hSysMenu);
    void OnEnterIdle(UINT nWhy, CWnd* pWho);
    BOOL OnQueryEndSession();
    void OnEndSession(BOOL bEnding);
    LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetMessageString(WPARAM wParam, LPARAM lParam);

    UINT m_nIDHelp = 0;         ///< The help identifier: the number of the frame's resources.
    UINT m_nIDTracking = 0;     ///< The command or text that the status line is to show.
    UINT m_nIDLastMessage = 0;  ///< The one that it shows.
    CView* m_pViewActive = nullptr;
    UINT m_cModalStack = 0;
    std::vector<HWND> m_disabledForModal;  ///< What BeginModalState disabled.
    BOOL m_bModalDisable = FALSE;          ///< Whether that was because the frame itself was disabled.
    HMENU m_hMenuAlt = nullptr;
    CString m_strTitle;
    BOOL m_bInRecalcLayout = FALSE;
    UINT m_nIdleFlags = 0;

    DECLARE_MESSAGE_MAP()
};
#pragma GCC diagnostic pop
