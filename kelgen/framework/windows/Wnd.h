// Wnd.h: windows as objects.
#pragma once

#include <kelgen/framework/base/Geometry.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/framework/program/CmdTarget.h>
#include <kelgen/framework/windows/DeviceContext.h>
#include <kelgen/framework/windows/Menu.h>
#include <kelgen/framework/windows/MessageMapWindows.h>
#include <kelgen/framework/windows/PrivateMessages.h>

#include <cstdint>

class CDataExchange;
class CFrameWnd;
class CWnd;
struct CCreateContext;

namespace kelgen::detail {
struct WindowCall;
}

/// Flags of RunModalLoop.
constexpr DWORD MLF_NOIDLEMSG = 0x0001;   ///< The parent gets no WM_ENTERIDLE.
constexpr DWORD MLF_NOKICKIDLE = 0x0002;  ///< The window gets no WM_KICKIDLE.
constexpr DWORD MLF_SHOWONIDLE = 0x0004;  ///< A hidden window is shown when the thread idles first.

/// Bits of CWnd::m_nFlags.
constexpr UINT WF_TEMPHIDE = 0x0004;
constexpr UINT WF_STAYDISABLED = 0x0008;
constexpr UINT WF_MODALLOOP = 0x0010;
constexpr UINT WF_CONTINUEMODAL = 0x0020;

/// The window procedure of all windows that have an object.
KELGEN_FRAMEWORK_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
/// Hands a message to the object's WindowProc as the thread's current message. A CException that leaves it ends here: the thread's
/// ProcessWndProcException gives the result. Other exceptions pass.
KELGEN_FRAMEWORK_API LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam = 0, LPARAM lParam = 0);

/// Attaches @p pWnd to the next window that this thread creates, before its first message.
KELGEN_FRAMEWORK_API void AfxHookWindowCreate(CWnd* pWnd);
/// Ends that. FALSE when no window was created since.
KELGEN_FRAMEWORK_API BOOL AfxUnhookWindowCreate();

/// The name of a window class of that style, cursor, background and icon, registered at the first call for them. It stays valid
/// until the process ends. Throws: CResourceException when it cannot be registered.
KELGEN_FRAMEWORK_API LPCSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr, HBRUSH hbrBackground = nullptr,
                                                HICON hIcon = nullptr);
/// Registers a class unless one of that name exists in its module; FALSE when that fails.
KELGEN_FRAMEWORK_API BOOL AfxRegisterClass(WNDCLASSA* lpWndClass);

/// The main window of the calling thread's object, or null.
KELGEN_FRAMEWORK_API CWnd* AfxGetMainWnd();

/// Shows a message box over the application's main window and returns the button; 0 on failure. Without an icon in @p nType it
/// gets the one that goes with its buttons.
KELGEN_FRAMEWORK_API int AfxMessageBox(LPCSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
/// The text is a string resource. @p nIDHelp 0xFFFFFFFF means the same number.
KELGEN_FRAMEWORK_API int AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = 0xFFFFFFFF);

// Classes of windows have a Create with parameters of their own, which hides the base's.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

/// A window.
///
/// An object and its window find each other by the handle: m_hWnd, and the thread's map of permanent objects. Objects that are
/// made on the way, for windows that have none, are temporary: they live until the thread idles and must not be kept.
///
/// A message comes to AfxWndProc and runs through WindowProc, OnWndMsg (with OnCommand, OnNotify and the message map) and, when
/// nobody handled it, DefWindowProc. The default handlers (OnPaint and so on) pass the current message on unchanged, whatever
/// arguments they are given.
///
/// Threads: an object belongs to the thread whose map holds it; calls by handle (SendMessage, PostMessage) are for any.
class KELGEN_FRAMEWORK_API CWnd : public CCmdTarget
{
    DECLARE_DYNCREATE(CWnd)

public:
    CWnd() = default;
    /// Destroys the window, if it is this object's.
    ~CWnd() override;

    HWND m_hWnd = nullptr;

    operator HWND() const { return m_hWnd; }
    bool operator==(const CWnd& other) const { return other.GetSafeHwnd() == m_hWnd; }
    bool operator!=(const CWnd& other) const { return other.GetSafeHwnd() != m_hWnd; }
    /// Null also for a null object.
    HWND GetSafeHwnd() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hWnd; }

    /// Places for SetWindowPos.
    static const CWnd wndTop;
    static const CWnd wndBottom;
    static const CWnd wndTopMost;
    static const CWnd wndNoTopMost;

    // Objects and handles.

    /// The thread's object of the handle: the permanent one, else a temporary one. Null for null.
    static CWnd* FromHandle(HWND hWnd);
    /// The permanent one, or null.
    static CWnd* FromHandlePermanent(HWND hWnd);
    static void DeleteTempMap();
    /// Makes this the thread's permanent object of the handle; FALSE for null. The window's procedure stays.
    BOOL Attach(HWND hWndNew);
    /// The handle, of which this was the object until now.
    HWND Detach();
    /// Attaches a window and puts AfxWndProc before its procedure. FALSE for null.
    BOOL SubclassWindow(HWND hWnd);
    /// SubclassWindow for a dialog's item; FALSE when there is none.
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    /// Puts the window's own procedure back and detaches it: the handle.
    HWND UnsubclassWindow();
    /// Before the first message of a window that is being created, and when one is subclassed.
    virtual void PreSubclassWindow();
    static CWnd* GetDesktopWindow();

    // Creation and end.

    /// Creates a child window; @p lpszClassName null means a plain class of the framework's. FALSE when it failed; PostNcDestroy was
    /// then called and may have deleted the object.
    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                        CCreateContext* pContext = nullptr);
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y, int nWidth, int nHeight,
                  HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam = nullptr);
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                  LPVOID lpParam = nullptr);
    /// Changes what the window is created with; FALSE gives the creation up. The base names a class when there is none yet.
    virtual BOOL PreCreateWindow(CREATESTRUCTA& cs);
    /// FALSE when there is no window or it cannot be destroyed. The object may be gone after it.
    virtual BOOL DestroyWindow();

    // State.

    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    /// FALSE when nothing changed. Nonzero @p nFlags are SetWindowPos flags with which the frame is drawn anew.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    static BOOL ModifyStyle(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags);
    static BOOL ModifyStyleEx(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags);
    CWnd* GetOwner() const;
    /// The window that takes this one's notifications instead of its parent.
    void SetOwner(CWnd* pOwnerWnd) { m_hWndOwner = pOwnerWnd ? pOwnerWnd->m_hWnd : nullptr; }
    void GetWindowText(CString& rString) const;
    int GetWindowText(LPSTR lpszStringBuf, int nMaxCount) const;
    int GetWindowTextLength() const;
    void SetWindowText(LPCSTR lpszString);
    int GetDlgCtrlID() const;
    int SetDlgCtrlID(int nID);
    HICON GetIcon(BOOL bBigIcon) const;
    HICON SetIcon(HICON hIcon, BOOL bBigIcon);
    BOOL IsWindowEnabled() const;
    BOOL IsWindowVisible() const;
    BOOL IsIconic() const;
    BOOL IsZoomed() const;
    BOOL IsChild(const CWnd* pWnd) const;
    BOOL EnableWindow(BOOL bEnable = TRUE);
    BOOL ShowWindow(int nCmdShow);
    CWnd* SetActiveWindow();
    static CWnd* GetActiveWindow();
    BOOL SetForegroundWindow();
    static CWnd* GetForegroundWindow();
    CWnd* SetCapture();
    static CWnd* GetCapture();
    CWnd* SetFocus();
    static CWnd* GetFocus();

    // Sizes and positions. The plain forms of messages and timers are below.

    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    void BringWindowToTop();
    void GetWindowRect(LPRECT lpRect) const;
    void GetClientRect(LPRECT lpRect) const;
    void ClientToScreen(LPPOINT lpPoint) const;
    void ClientToScreen(LPRECT lpRect) const;
    void ScreenToClient(LPPOINT lpPoint) const;
    void ScreenToClient(LPRECT lpRect) const;
    void MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const;
    void MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const;
    /// Moves it to the middle of its owner, a child's parent, or the window given, and into the screen.
    void CenterWindow(CWnd* pAlternateWnd = nullptr);
    virtual void CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType = 1);

    // Painting.

    CDC* BeginPaint(LPPAINTSTRUCT lpPaint);
    void EndPaint(LPPAINTSTRUCT lpPaint);
    CDC* GetDC();
    int ReleaseDC(CDC* pDC);
    void UpdateWindow();
    void Invalidate(BOOL bErase = TRUE);
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE);
    void ValidateRect(LPCRECT lpRect);

    // Relatives. Objects that come back are temporary unless attached.

    CWnd* GetParent() const;
    CWnd* SetParent(CWnd* pWndNewParent);
    CWnd* GetTopWindow() const;
    CWnd* GetWindow(UINT nCmd) const;
    CWnd* GetNextWindow(UINT nFlag = GW_HWNDNEXT) const;
    CWnd* GetLastActivePopup() const;
    static CWnd* FindWindow(LPCSTR lpszClassName, LPCSTR lpszWindowName);
    static CWnd* WindowFromPoint(POINT point);
    CWnd* GetDlgItem(int nID) const;
    void GetDlgItem(int nID, HWND* phWnd) const;
    /// The descendant of that id, at any depth; with @p bOnlyPerm only one that has a permanent object.
    CWnd* GetDescendantWindow(int nID, BOOL bOnlyPerm = FALSE) const;
    static CWnd* GetDescendantWindow(HWND hWnd, int nID, BOOL bOnlyPerm);
    /// The first window upward, itself included, that has no parent (for the owner form: no owner either).
    CWnd* GetTopLevelParent() const;
    CWnd* GetTopLevelOwner() const;
    /// The first window upward that is no child, as the parent of a dialog.
    CWnd* GetParentOwner() const;
    /// The next frame window above this one, and the outermost one; null when there is none.
    CFrameWnd* GetParentFrame() const;
    CFrameWnd* GetTopLevelFrame() const;
    /// Where a dialog or message box belongs to: the top-level window of @p pParent or of the main window, or its last active popup.
    /// With @p pWndTop the outermost window above that is disabled, for the caller to enable later; null when there is none.
    static CWnd* GetSafeOwner(CWnd* pParent = nullptr, HWND* pWndTop = nullptr);
    static HWND GetSafeOwner_(HWND hParent, HWND* pWndTop);
    virtual BOOL IsFrameWnd() const;

    // Items of dialogs.

    UINT GetDlgItemInt(int nID, BOOL* lpTrans = nullptr, BOOL bSigned = TRUE) const;
    void SetDlgItemInt(int nID, UINT nValue, BOOL bSigned = TRUE);
    int GetDlgItemText(int nID, LPSTR lpStr, int nMaxCount) const;
    int GetDlgItemText(int nID, CString& rString) const;
    void SetDlgItemText(int nID, LPCSTR lpszString);
    void CheckDlgButton(int nIDButton, UINT nCheck);
    void CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton);
    UINT IsDlgButtonChecked(int nIDButton) const;
    int GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const;
    LRESULT SendDlgItemMessage(int nID, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const;
    void NextDlgCtrl() const;
    void PrevDlgCtrl() const;
    void GotoDlgCtrl(CWnd* pWndCtrl);
    BOOL IsDialogMessage(LPMSG lpMsg);
    /// Asks for an update of each child control: the control itself, this window, then @p pTarget. With @p bDisableIfNoHndler push
    /// buttons without any handler are disabled.
    void UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
    /// Moves data between the object's members and the window's controls; see CDataExchange.
    virtual void DoDataExchange(CDataExchange* pDX);
    /// Runs DoDataExchange, from the controls to the members or the other way; FALSE when it failed. Notifications of the window's
    /// controls are held back meanwhile.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    // Dialogs as windows.

    /// Creates a modeless dialog as this object's window, from a dialog resource or a template in memory. FALSE when it failed, as for
    /// Create: also for a damaged resource, and for a dialog that is ended while it is created.
    BOOL CreateDlg(LPCSTR lpszTemplateName, CWnd* pParentWnd);
    BOOL CreateDlgIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst = nullptr);
    /// Sends the controls what the template's initialisation data hold (their first items, mostly); TRUE also without any. FALSE when a
    /// control refused, or the resource is damaged; in memory the data's end is the caller's matter.
    BOOL ExecuteDlgInit(LPCSTR lpszResourceName);
    BOOL ExecuteDlgInit(const void* lpResource);

    // Menu, timers, message box.

    CMenu* GetMenu() const;
    BOOL SetMenu(CMenu* pMenu);
    void DrawMenuBar();
    CMenu* GetSystemMenu(BOOL bRevert) const;
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer);
    BOOL KillTimer(UINT_PTR nIDEvent);
    int MessageBox(LPCSTR lpszText, LPCSTR lpszCaption = nullptr, UINT nType = MB_OK);

    // Messages.

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    BOOL SendNotifyMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// The message that the thread handles now.
    static const MSG* GetCurrentMessage();
    /// Sends a message to all child windows, with @p bDeep to their children too, topmost first; with @p bOnlyPerm only to those
    /// that have a permanent object, by its WindowProc.
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL bDeep = TRUE, BOOL bOnlyPerm = FALSE);
    static void SendMessageToDescendants(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm);
    /// Offers a queued message to the PreTranslateMessage of the objects from its window up to @p hWndStop; TRUE when one took it.
    static BOOL WalkPreTranslateTree(HWND hWndStop, MSG* pMsg);
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Where the procedure of a subclassed window is kept.
    virtual WNDPROC* GetSuperWndProcAddr();
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

    /// Runs a message loop until EndModalLoop: its result; -1 when the thread is told to quit.
    int RunModalLoop(DWORD dwFlags = 0);
    /// Whether the loop goes on.
    virtual BOOL ContinueModal();
    virtual void EndModalLoop(int nResult);

    /// Lets the last message, a notification, go to the control's own object first; TRUE when it was handled there.
    BOOL SendChildNotifyLastMsg(LRESULT* pResult = nullptr);
    static BOOL ReflectLastMsg(HWND hWndChild, LRESULT* pResult = nullptr);

    UINT m_nFlags = 0;

protected:
    /// Passes the current message on to DefWindowProc.
    LRESULT Default();
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// TRUE when a handler took the message; *@p pResult is its result then.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// A menu's, accelerator's or control's WM_COMMAND: TRUE when handled. A command whose update handler disables it is not routed.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// A notification of this control before its parent sees it; TRUE keeps it from the parent.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// The last call for an object whose window is gone, or could not be created: the place for `delete this`.
    virtual void PostNcDestroy();
    /// This as a frame window, or null.
    virtual CFrameWnd* ToFrameWnd();

    /// Ends the thread's loop when this was its main window, unsubclasses, detaches, and calls PostNcDestroy.
    void OnNcDestroy();

    // Default handlers, in alphabetical order.
    void OnActivate(UINT, CWnd*, BOOL) { Default(); }
    void OnActivateApp(BOOL, DWORD) { Default(); }
    void OnCancelMode() { Default(); }
    void OnCaptureChanged(CWnd*) { Default(); }
    void OnChar(UINT, UINT, UINT) { Default(); }
    int OnCharToItem(UINT, CWnd*, UINT) { return static_cast<int>(Default()); }
    void OnChildActivate() { Default(); }
    void OnClose() { Default(); }
    int OnCompareItem(int nIDCtl, LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    void OnContextMenu(CWnd*, CPoint) { Default(); }
    BOOL OnCopyData(CWnd*, COPYDATASTRUCT*) { return static_cast<BOOL>(Default()); }
    int OnCreate(LPCREATESTRUCTA) { return static_cast<int>(Default()); }
    /// Asks the control first.
    HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    void OnDeadChar(UINT, UINT, UINT) { Default(); }
    void OnDeleteItem(int nIDCtl, LPDELETEITEMSTRUCT lpDeleteItemStruct);
    void OnDestroy() { Default(); }
    BOOL OnDeviceChange(UINT, DWORD_PTR) { return static_cast<BOOL>(Default()); }
    void OnDevModeChange(LPSTR) { Default(); }
    void OnDrawItem(int nIDCtl, LPDRAWITEMSTRUCT lpDrawItemStruct);
    void OnDropFiles(HDROP) { Default(); }
    void OnEnable(BOOL) { Default(); }
    void OnEndSession(BOOL) { Default(); }
    void OnEnterIdle(UINT, CWnd*) { Default(); }
    void OnEnterMenuLoop(BOOL) { Default(); }
    BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    void OnExitMenuLoop(BOOL) { Default(); }
    void OnFontChange() { Default(); }
    UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    void OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
    BOOL OnHelpInfo(HELPINFO*) { return static_cast<BOOL>(Default()); }
    /// The scroll bar, null for the window's own, is told first; so by OnVScroll.
    void OnHScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar);
    void OnIconEraseBkgnd(CDC*) { Default(); }
    void OnInitMenu(CMenu*) { Default(); }
    void OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }
    void OnKeyDown(UINT, UINT, UINT) { Default(); }
    void OnKeyUp(UINT, UINT, UINT) { Default(); }
    void OnKillFocus(CWnd*) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnMButtonDblClk(UINT, CPoint) { Default(); }
    void OnMButtonDown(UINT, CPoint) { Default(); }
    void OnMButtonUp(UINT, CPoint) { Default(); }
    void OnMDIActivate(BOOL, CWnd*, CWnd*) { Default(); }
    void OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    LRESULT OnMenuChar(UINT, UINT, CMenu*) { return Default(); }
    void OnMenuSelect(UINT, UINT, HMENU) { Default(); }
    int OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
    void OnMouseLeave() { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    BOOL OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
    void OnMove(int, int) { Default(); }
    void OnMoving(UINT, LPRECT) { Default(); }
    BOOL OnNcActivate(BOOL) { return static_cast<BOOL>(Default()); }
    void OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) { Default(); }
    BOOL OnNcCreate(LPCREATESTRUCTA) { return static_cast<BOOL>(Default()); }
    LRESULT OnNcHitTest(CPoint) { return Default(); }
    void OnNcLButtonDblClk(UINT, CPoint) { Default(); }
    void OnNcLButtonDown(UINT, CPoint) { Default(); }
    void OnNcLButtonUp(UINT, CPoint) { Default(); }
    void OnNcMButtonDblClk(UINT, CPoint) { Default(); }
    void OnNcMButtonDown(UINT, CPoint) { Default(); }
    void OnNcMButtonUp(UINT, CPoint) { Default(); }
    void OnNcMouseMove(UINT, CPoint) { Default(); }
    void OnNcPaint() { Default(); }
    void OnNcRButtonDblClk(UINT, CPoint) { Default(); }
    void OnNcRButtonDown(UINT, CPoint) { Default(); }
    void OnNcRButtonUp(UINT, CPoint) { Default(); }
    void OnPaint() { Default(); }
    void OnPaletteChanged(CWnd*) { Default(); }
    void OnPaletteIsChanging(CWnd*) { Default(); }
    /// Tells the child itself.
    void OnParentNotify(UINT message, LPARAM lParam);
    UINT OnPowerBroadcast(UINT, LPARAM) { return static_cast<UINT>(Default()); }
    HCURSOR OnQueryDragIcon() { return reinterpret_cast<HCURSOR>(Default()); }
    BOOL OnQueryEndSession() { return static_cast<BOOL>(Default()); }
    BOOL OnQueryNewPalette() { return static_cast<BOOL>(Default()); }
    BOOL OnQueryOpen() { return static_cast<BOOL>(Default()); }
    void OnRButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }
    void OnRButtonUp(UINT, CPoint) { Default(); }
    BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    void OnSetFocus(CWnd*) { Default(); }
    void OnSettingChange(UINT, LPCSTR) { Default(); }
    void OnShowWindow(BOOL, UINT) { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnSizing(UINT, LPRECT) { Default(); }
    void OnStyleChanged(int, LPSTYLESTRUCT) { Default(); }
    void OnStyleChanging(int, LPSTYLESTRUCT) { Default(); }
    void OnSysChar(UINT, UINT, UINT) { Default(); }
    /// A top-level window of the framework tells its descendants.
    void OnSysColorChange();
    void OnSysCommand(UINT, LPARAM) { Default(); }
    void OnSysDeadChar(UINT, UINT, UINT) { Default(); }
    void OnSysKeyDown(UINT, UINT, UINT) { Default(); }
    void OnSysKeyUp(UINT, UINT, UINT) { Default(); }
    void OnTimeChange() { Default(); }
    void OnTimer(UINT_PTR) { Default(); }
    int OnVKeyToItem(UINT, CWnd*, UINT) { return static_cast<int>(Default()); }
    void OnVScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar);
    void OnWindowPosChanged(WINDOWPOS*) { Default(); }
    void OnWindowPosChanging(WINDOWPOS*) { Default(); }
    void OnWinIniChange(LPCSTR) { Default(); }

    HWND m_hWndOwner = nullptr;
    WNDPROC m_pfnSuper = nullptr;  ///< The procedure of a subclassed window.
    int m_nModalResult = 0;

    DECLARE_MESSAGE_MAP()

private:
    explicit CWnd(HWND hWnd) : m_hWnd(hWnd) {}
    BOOL ExecuteDlgInit(const void* lpResource, std::size_t size);

    friend struct kelgen::detail::WindowCall;
};
#pragma GCC diagnostic pop

namespace kelgen::detail {

/// The object's handle; null for a null object, without a call through it.
inline HWND HandleOf(const CWnd* object)
{
    return object ? object->m_hWnd : nullptr;
}

}  // namespace kelgen::detail
