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
constexpr UINT WF_TEMPHIDE = 0x0004;       ///< Hidden with its frame, which will show it again.
constexpr UINT WF_STAYDISABLED = 0x0008;   ///< Stays disabled when its frame is enabled.
constexpr UINT WF_MODALLOOP = 0x0010;      ///< RunModalLoop is under way.
constexpr UINT WF_CONTINUEMODAL = 0x0020;  ///< The loop has not been ended yet.

/// The window procedure of all windows that have an object.
KELGEN_FRAMEWORK_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
/// Hands a message to the object's WindowProc as the thread's current message. A CException that leaves it ends here: the thread's
/// ProcessWndProcException gives the result. Other exceptions pass.
KELGEN_FRAMEWORK_API LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam = 0, LPARAM lParam = 0);

/// Attaches @p pWnd to the next window that this thread creates, before its first message.
KELGEN_FRAMEWORK_API void AfxHookWindowCreate(CWnd* pWnd);
/// Cancels AfxHookWindowCreate. FALSE if no window was created in between: the object was never attached.
KELGEN_FRAMEWORK_API BOOL AfxUnhookWindowCreate();

/// The name of a window class of that style, cursor, background and icon, registered at the first call for them. It stays valid
/// until the process ends. Throws: CResourceException when it cannot be registered.
KELGEN_FRAMEWORK_API LPCSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr, HBRUSH hbrBackground = nullptr,
                                                HICON hIcon = nullptr);
/// Registers a class unless one of that name exists in its module. TRUE if the class exists afterwards; FALSE on failure.
KELGEN_FRAMEWORK_API BOOL AfxRegisterClass(WNDCLASSA* lpWndClass);

/// The main window of the calling thread's object, or null.
KELGEN_FRAMEWORK_API CWnd* AfxGetMainWnd();

/// Shows a message box over the application's main window and returns the button; 0 on failure. Without an icon in @p nType it
/// gets the one that goes with its buttons.
KELGEN_FRAMEWORK_API int AfxMessageBox(LPCSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
/// Does the same with the text of string resource @p nIDPrompt. @p nIDHelp 0xFFFFFFFF stands for @p nIDPrompt.
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
/// A member with the name of a platform call makes that call with this window's handle; where it is another one, or a message, its
/// comment names it. A handler OnX answers WM_X.
///
/// Threads: an object belongs to the thread whose map holds it; calls by handle (SendMessage, PostMessage) are for any.
class KELGEN_FRAMEWORK_API CWnd : public CCmdTarget
{
    DECLARE_DYNCREATE(CWnd)

public:
    /// An object without a window: Create or Attach gives it one.
    CWnd() = default;
    /// Destroys the window if it belongs to this object (not to a temporary one).
    ~CWnd() override;

    /// The window's handle; null before it is created and after it is destroyed.
    HWND m_hWnd = nullptr;

    /// The handle, so that an object serves where a call takes a window.
    operator HWND() const { return m_hWnd; }
    /// Whether both stand for the same window (or both for none).
    bool operator==(const CWnd& other) const { return other.GetSafeHwnd() == m_hWnd; }
    /// Whether they stand for different windows.
    bool operator!=(const CWnd& other) const { return other.GetSafeHwnd() != m_hWnd; }
    /// The handle; null if there is no window, even when called through a null object (hosts do so).
    HWND GetSafeHwnd() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hWnd; }

    /// Places for SetWindowPos: above all windows that are not topmost,
    static const CWnd wndTop;
    /// below all others,
    static const CWnd wndBottom;
    /// above all others, and so from now on,
    static const CWnd wndTopMost;
    /// above all that are not topmost, and topmost no longer.
    static const CWnd wndNoTopMost;

    // Objects and handles.

    /// The thread's object of the window: the permanent one, or else a temporary one that lives until the thread idles. Null for null.
    static CWnd* FromHandle(HWND hWnd);
    /// The thread's permanent object of the window; null if there is none.
    static CWnd* FromHandlePermanent(HWND hWnd);
    /// Deletes the thread's temporary window objects. The thread does it itself when it idles.
    static void DeleteTempMap();
    /// Makes this the thread's permanent object of the window. FALSE for a null handle. The window's procedure stays as it is: only
    /// SubclassWindow brings its messages here.
    BOOL Attach(HWND hWndNew);
    /// Parts the object from its window, which lives on. Returns the window's handle; null if there was none.
    HWND Detach();
    /// Attaches a window that exists and puts AfxWndProc before its procedure (SetWindowLongPtrA), so that its messages come here first.
    /// FALSE for a null handle.
    BOOL SubclassWindow(HWND hWnd);
    /// Does what SubclassWindow does for the item @p nID of @p pParent (GetDlgItem). FALSE if there is no such item.
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    /// Undoes SubclassWindow: gives the window its own procedure back, parts from it, and returns its handle.
    HWND UnsubclassWindow();
    /// Called before the first message of a window that is being created, and before one is subclassed. The base does nothing.
    virtual void PreSubclassWindow();
    /// The desktop, as a temporary object. Calls GetDesktopWindow.
    static CWnd* GetDesktopWindow();

    // Creation and end.

    /// Creates a child window; @p lpszClassName null means a plain class of the framework's. FALSE when it failed; PostNcDestroy was
    /// then called and may have deleted the object.
    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                        CCreateContext* pContext = nullptr);
    /// Creates a window of any kind through PreCreateWindow and CreateWindowExA, in pixels of the parent's client area or of the screen.
    /// @p nIDorHMenu is a child's id or else the menu. FALSE on failure, as for Create.
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y, int nWidth, int nHeight,
                  HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam = nullptr);
    /// Does the same with a rectangle, a parent's object and a child's id.
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                  LPVOID lpParam = nullptr);
    /// May change what the window is created with; FALSE gives the creation up. The base fills in a plain class if none is named.
    virtual BOOL PreCreateWindow(CREATESTRUCTA& cs);
    /// Destroys the window. FALSE if there is none, or the system refuses. PostNcDestroy is called on the way, so the object may be gone
    /// afterwards.
    virtual BOOL DestroyWindow();

    // State.

    /// The window's style bits (WS_), of GetWindowLongPtrA.
    DWORD GetStyle() const;
    /// The window's extended style bits (WS_EX_), of GetWindowLongPtrA.
    DWORD GetExStyle() const;
    /// Clears the bits of @p dwRemove in the style, then sets those of @p dwAdd. TRUE if that changed anything. A nonzero @p nFlags draws
    /// the frame anew by SetWindowPos with these flags.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    /// Does what ModifyStyle does to the extended style.
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    /// Does the same to a window given by its handle.
    static BOOL ModifyStyle(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags);
    /// Does the same to the extended style of a window given by its handle.
    static BOOL ModifyStyleEx(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags);
    /// The window set by SetOwner, or else the parent; null if there is neither. Temporary unless attached.
    CWnd* GetOwner() const;
    /// Makes @p pOwnerWnd take this window's notifications instead of the parent; null gives them back to the parent.
    void SetOwner(CWnd* pOwnerWnd) { m_hWndOwner = pOwnerWnd ? pOwnerWnd->m_hWnd : nullptr; }
    /// Copies the whole text (a title, a control's contents) in the ANSI code page; empty on failure.
    void GetWindowText(CString& rString) const;
    /// Copies the text, at most @p nMaxCount bytes with the terminating 0. Returns the bytes before the 0; 0 on failure.
    int GetWindowText(LPSTR lpszStringBuf, int nMaxCount) const;
    /// The text's length in bytes, without the terminating 0; 0 on failure. Calls GetWindowTextLengthA.
    int GetWindowTextLength() const;
    /// Sets the text. Sends WM_SETTEXT.
    void SetWindowText(LPCSTR lpszString);
    /// The id of a child window; 0 on failure. Calls GetDlgCtrlID.
    int GetDlgCtrlID() const;
    /// Gives a child window another id, by SetWindowLongPtrA. Returns the one before; 0 on failure.
    int SetDlgCtrlID(int nID);
    /// The icon that was set, the large one (for Alt+Tab) or the small one (in the title); null if none was. Sends WM_GETICON.
    HICON GetIcon(BOOL bBigIcon) const;
    /// Sets one of the two icons; null removes it. Returns the one before, or null. The icon stays the caller's. Sends WM_SETICON.
    HICON SetIcon(HICON hIcon, BOOL bBigIcon);
    /// Whether the window takes mouse and keyboard input.
    BOOL IsWindowEnabled() const;
    /// Whether the window and all its parents have WS_VISIBLE. A window that others cover is visible all the same.
    BOOL IsWindowVisible() const;
    /// Whether the window is minimised.
    BOOL IsIconic() const;
    /// Whether the window is maximised.
    BOOL IsZoomed() const;
    /// Whether @p pWnd is a descendant of this window, at any depth. FALSE for null and for the window itself.
    BOOL IsChild(const CWnd* pWnd) const;
    /// Enables or disables mouse and keyboard input. Returns nonzero if the window was disabled before.
    BOOL EnableWindow(BOOL bEnable = TRUE);
    /// Shows, hides, minimises or restores it by an SW_ number. Returns nonzero if the window was visible before.
    BOOL ShowWindow(int nCmdShow);
    /// Makes this the thread's active window. Returns the one before, temporary unless attached; null if there was none.
    CWnd* SetActiveWindow();
    /// The thread's active window, temporary unless attached; null if there is none.
    static CWnd* GetActiveWindow();
    /// Brings the window's thread to the foreground and activates the window. Nonzero on success.
    BOOL SetForegroundWindow();
    /// The window that the user works with, of any thread, temporary unless attached; null if there is none.
    static CWnd* GetForegroundWindow();
    /// Lets all mouse input go to this window, until ReleaseCapture. Returns the window that had it before, or null.
    CWnd* SetCapture();
    /// The window of this thread that has the mouse input; null if there is none.
    static CWnd* GetCapture();
    /// Lets keyboard input go to this window. Returns the window that had it before; null if none had, or on failure.
    CWnd* SetFocus();
    /// The window of this thread that has the keyboard input; null if there is none.
    static CWnd* GetFocus();

    // Sizes and positions. The plain forms of messages and timers are below.

    /// Sets position and size in pixels: of the parent's client area for a child, of the screen otherwise.
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    /// Does the same with a rectangle.
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    /// Sets place in the z-order (behind @p pWndInsertAfter), position and size in pixels, as the SWP_ flags say. Nonzero on success.
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    /// Puts the window above its siblings; a top-level window is activated.
    void BringWindowToTop();
    /// The window with its frame, in pixels of the screen. @p lpRect stays as it is on failure.
    void GetWindowRect(LPRECT lpRect) const;
    /// The client area, in pixels from its own corner: left and top are 0. @p lpRect stays as it is on failure.
    void GetClientRect(LPRECT lpRect) const;
    /// Turns a point of the client area into one of the screen.
    void ClientToScreen(LPPOINT lpPoint) const;
    /// Does the same with both corners of a rectangle.
    void ClientToScreen(LPRECT lpRect) const;
    /// Turns a point of the screen into one of the client area.
    void ScreenToClient(LPPOINT lpPoint) const;
    /// Does the same with both corners of a rectangle.
    void ScreenToClient(LPRECT lpRect) const;
    /// Turns @p nCount points of this client area into points of @p pwndTo's; null stands for the screen.
    void MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const;
    /// Does the same with both corners of a rectangle.
    void MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const;
    /// Moves the window to the middle of @p pAlternateWnd, or else of its owner or (for a child) its parent, but never out of the screen.
    /// An owner that is hidden or minimised does not count: the screen takes its place.
    void CenterWindow(CWnd* pAlternateWnd = nullptr);
    /// Turns a client rectangle into that of the whole window, frame included and menu not. @p nAdjustType 0 leaves a client edge out.
    virtual void CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType = 1);

    // Painting.

    /// Begins to paint what is invalid, which is valid afterwards. Returns a temporary device context; null on failure. For WM_PAINT
    /// handlers only.
    CDC* BeginPaint(LPPAINTSTRUCT lpPaint);
    /// Ends what BeginPaint began.
    void EndPaint(LPPAINTSTRUCT lpPaint);
    /// A device context of the client area, temporary; null on failure. ReleaseDC gives it back.
    CDC* GetDC();
    /// The same of the whole window, from the corner of its frame.
    CDC* GetWindowDC();
    /// Gives a device context back. Returns 1; 0 if it was none of this window's.
    int ReleaseDC(CDC* pDC);
    /// Sends WM_PAINT at once if anything is invalid.
    void UpdateWindow();
    /// Marks the whole client area to be painted; @p bErase lets the background be erased first.
    void Invalidate(BOOL bErase = TRUE);
    /// Marks a part of the client area to be painted; null stands for all of it.
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE);
    /// Takes the mark off a part of the client area; null stands for all of it.
    void ValidateRect(LPCRECT lpRect);

    /// WM_SETFONT: the font that the window's texts are to be drawn in; it stays the caller's.
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE);
    /// WM_GETFONT: that font, temporary; null for the system's.
    CFont* GetFont() const;

    // Scroll bars. nBar is SB_HORZ or SB_VERT for a bar of the frame, SB_CTL for a scroll bar control itself.

    /// Sets the numbers that the mask of @p lpScrollInfo names; its size is filled in. TRUE, even where the numbers were limited; FALSE for
    /// null. Calls SetScrollInfo.
    BOOL SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE);
    /// Stores the numbers that @p nMask names. FALSE for null, and for a window that never had scroll bars. Calls GetScrollInfo.
    BOOL GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
    /// Sets the position. Returns the one before.
    int SetScrollPos(int nBar, int nPos, BOOL bRedraw = TRUE);
    /// The position; 0 for a window that never had scroll bars.
    int GetScrollPos(int nBar) const;
    /// Sets the range; a bar of the frame goes when that is empty.
    void SetScrollRange(int nBar, int nMinPos, int nMaxPos, BOOL bRedraw = TRUE);
    /// Stores the range.
    void GetScrollRange(int nBar, LPINT lpMinPos, LPINT lpMaxPos) const;
    /// The last position that can be scrolled to: a page before the end of the range.
    int GetScrollLimit(int nBar);
    /// Shows or hides a bar, or with SB_BOTH both of the frame.
    void ShowScrollBar(UINT nBar, BOOL bShow = TRUE);
    /// Disables the arrows that ESB_ flags name, and enables the others. FALSE if they were so already.
    BOOL EnableScrollBar(int nSBFlags, UINT nArrowFlags = ESB_ENABLE_BOTH);
    /// Moves what is drawn in @p lpRect (null: the client area and the children), within @p lpClipRect if given. What is uncovered will be
    /// painted.
    void ScrollWindow(int xAmount, int yAmount, LPCRECT lpRect = nullptr, LPCRECT lpClipRect = nullptr);
    /// Does the same as the SW_ flags say. Returns the kind of the region that was uncovered, and stores it in @p prgnUpdate and its bounds
    /// in @p lpRectUpdate if they are given. Calls ScrollWindowEx.
    int ScrollWindowEx(int dx, int dy, LPCRECT lpRectScroll, LPCRECT lpRectClip, CRgn* prgnUpdate, LPRECT lpRectUpdate, UINT flags);

    // Relatives. Objects that come back are temporary unless attached.

    /// The parent of a child, the owner of a popup; null if there is none.
    CWnd* GetParent() const;
    /// Gives a child another parent; null stands for the desktop. Returns the parent before; null on failure.
    CWnd* SetParent(CWnd* pWndNewParent);
    /// The topmost child; null if there is none.
    CWnd* GetTopWindow() const;
    /// The relative that a GW_ number names; null if there is none.
    CWnd* GetWindow(UINT nCmd) const;
    /// The next window below (GW_HWNDNEXT) or above (GW_HWNDPREV) among the siblings; null at the end.
    CWnd* GetNextWindow(UINT nFlag = GW_HWNDNEXT) const;
    /// The popup owned by this window that was active last; the window itself if none was.
    CWnd* GetLastActivePopup() const;
    /// The topmost top-level window of that class and title; null as an argument stands for any. Null if there is none.
    static CWnd* FindWindow(LPCSTR lpszClassName, LPCSTR lpszWindowName);
    /// The window under a point of the screen; null if there is none.
    static CWnd* WindowFromPoint(POINT point);
    /// The child of that id; null if there is none.
    CWnd* GetDlgItem(int nID) const;
    /// Stores the handle of the child of that id, without making an object; null if there is none.
    void GetDlgItem(int nID, HWND* phWnd) const;
    /// The descendant of that id at any depth, the deeper one first; null if there is none. With @p bOnlyPerm only one that has a
    /// permanent object counts.
    CWnd* GetDescendantWindow(int nID, BOOL bOnlyPerm = FALSE) const;
    /// Does the same from a window given by its handle.
    static CWnd* GetDescendantWindow(HWND hWnd, int nID, BOOL bOnlyPerm);
    /// The last window on the way up by GetParent, which may be this one itself; null without a window.
    CWnd* GetTopLevelParent() const;
    /// The last window on the way up by parents of children and owners of others; null without a window.
    CWnd* GetTopLevelOwner() const;
    /// The first window on the way up, this one included, that is no child: where a dialog belongs to. Null without a window.
    CWnd* GetParentOwner() const;
    /// The nearest frame window above this one; null if there is none.
    CFrameWnd* GetParentFrame() const;
    /// The outermost frame window above this one, which itself counts; null if there is none.
    CFrameWnd* GetTopLevelFrame() const;
    /// The window that a dialog or message box should belong to: the top-level window of @p pParent, or else the last active popup of the
    /// main window. Null if there is neither. With @p pWndTop it also disables the outermost window above that and stores its handle, for
    /// the caller to enable it again; null if there was nothing to disable.
    static CWnd* GetSafeOwner(CWnd* pParent = nullptr, HWND* pWndTop = nullptr);
    /// Does the same with handles.
    static HWND GetSafeOwner_(HWND hParent, HWND* pWndTop);
    /// Whether this is a frame window. FALSE here.
    virtual BOOL IsFrameWnd() const;

    // Items of dialogs.

    /// The number in the text of child @p nID. On failure 0, and *@p lpTrans is FALSE if given. @p bSigned lets a minus count.
    UINT GetDlgItemInt(int nID, BOOL* lpTrans = nullptr, BOOL bSigned = TRUE) const;
    /// Sets the text of child @p nID to a decimal number, with a minus if @p bSigned says so.
    void SetDlgItemInt(int nID, UINT nValue, BOOL bSigned = TRUE);
    /// Copies the text of child @p nID, at most @p nMaxCount bytes with the terminating 0. Returns the bytes before the 0; 0 on failure.
    int GetDlgItemText(int nID, LPSTR lpStr, int nMaxCount) const;
    /// Copies the whole text of child @p nID. Returns its length in bytes; 0, and an empty text, on failure.
    int GetDlgItemText(int nID, CString& rString) const;
    /// Sets the text of child @p nID.
    void SetDlgItemText(int nID, LPCSTR lpszString);
    /// Sets a button's check mark: a BST_ number. Sends BM_SETCHECK.
    void CheckDlgButton(int nIDButton, UINT nCheck);
    /// Checks one button of the ids from first to last, and unchecks the others.
    void CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton);
    /// A button's check mark: a BST_ number; 0 if there is no such button. Sends BM_GETCHECK.
    UINT IsDlgButtonChecked(int nIDButton) const;
    /// The id of the first checked button of the ids from first to last; 0 if none is.
    int GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const;
    /// Sends a message to child @p nID. Returns its result; 0 if there is no such child.
    LRESULT SendDlgItemMessage(int nID, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// The control that Tab (or Shift+Tab, with @p bPrevious) leads to from @p pWndCtl; null for the first. Null if there is none.
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const;
    /// Moves the focus to the next control in tab order. Sends WM_NEXTDLGCTL.
    void NextDlgCtrl() const;
    /// Moves the focus to the control before in tab order. Sends WM_NEXTDLGCTL.
    void PrevDlgCtrl() const;
    /// Moves the focus to that control, which must not be null. Sends WM_NEXTDLGCTL.
    void GotoDlgCtrl(CWnd* pWndCtrl);
    /// Handles a queued message as a dialog's (Tab, arrows, Enter, Escape). Nonzero if it was one and is done with.
    BOOL IsDialogMessage(LPMSG lpMsg);
    /// Lets update handlers enable and check each child control: the control itself is asked first, then this window, then @p pTarget.
    /// With @p bDisableIfNoHndler a push button whose command nobody handles is disabled.
    void UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
    /// Moves data between the object's members and the window's controls, see CDataExchange. The base moves nothing.
    virtual void DoDataExchange(CDataExchange* pDX);
    /// Runs DoDataExchange: from the controls to the members, or with FALSE the other way. TRUE on success. Meanwhile the window's
    /// controls send it no notifications.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    // Dialogs as windows.

    /// Creates a modeless dialog, from a dialog resource of the program, as this object's window. FALSE on failure, as for Create, even
    /// for a damaged resource and for a dialog that is ended while it is created.
    BOOL CreateDlg(LPCSTR lpszTemplateName, CWnd* pParentWnd);
    /// Does the same from a template in memory, which must be whole: its end is not known here.
    BOOL CreateDlgIndirect(LPCDLGTEMPLATEA lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst = nullptr);
    /// Sends the controls what the dialog's initialisation resource holds, mostly their first items. TRUE on success, even without such a
    /// resource; FALSE if a control refused or the resource is damaged.
    BOOL ExecuteDlgInit(LPCSTR lpszResourceName);
    /// Does the same from memory, which must be whole: its end is not known here.
    BOOL ExecuteDlgInit(const void* lpResource);

    // Menu, timers, message box.

    /// The window's menu, temporary unless attached; null if there is none.
    CMenu* GetMenu() const;
    /// Gives the window another menu; null takes it away. Nonzero on success. The menu before is the caller's to destroy.
    BOOL SetMenu(CMenu* pMenu);
    /// Draws the menu bar anew, after its items changed.
    void DrawMenuBar();
    /// The window's own copy of the system menu, temporary. With @p bRevert the copy is dropped and the result null.
    CMenu* GetSystemMenu(BOOL bRevert) const;
    /// Starts a timer of @p nElapse milliseconds, or sets one of that id anew. Without @p lpfnTimer each tick is a WM_TIMER. Returns the
    /// timer's id; 0 on failure.
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer);
    /// Stops a timer. Nonzero on success; 0 if there is none of that id. A WM_TIMER that is waiting may still come.
    BOOL KillTimer(UINT_PTR nIDEvent);
    /// Shows a message box that belongs to this window; without a caption it bears the application's name. Returns the button's id; 0 on
    /// failure.
    int MessageBox(LPCSTR lpszText, LPCSTR lpszCaption = nullptr, UINT nType = MB_OK);

    // Messages.

    /// Calls the window's procedure, in the window's own thread, and returns its result; 0 if there is no window.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    /// Puts a message into the queue of the window's thread. Nonzero on success; 0 for a bad window, a full queue, and system messages
    /// that carry pointers.
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// Sends as SendMessage does to a window of this thread, and without waiting to one of another. Nonzero on success.
    BOOL SendNotifyMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// The message that the thread handles now, sent or from the queue; never null.
    static const MSG* GetCurrentMessage();
    /// Sends a message to all child windows, topmost first, and with @p bDeep to their children too. With @p bOnlyPerm only permanent
    /// objects get it, by their WindowProc.
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL bDeep = TRUE, BOOL bOnlyPerm = FALSE);
    /// Does the same to the children of a window given by its handle.
    static void SendMessageToDescendants(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm);
    /// Offers a queued message to the PreTranslateMessage of the objects from its window up to @p hWndStop; TRUE when one took it.
    static BOOL WalkPreTranslateTree(HWND hWndStop, MSG* pMsg);
    /// Looks at a queued message before it is translated and dispatched; TRUE means it is done with. The base leaves it.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// The place where a subclassed window's own procedure is kept: m_pfnSuper.
    virtual WNDPROC* GetSuperWndProcAddr();
    /// Offers a command or notification to the message maps of this object; see CCmdTarget.
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

    /// Runs a message loop until EndModalLoop, whose result it returns; -1 if the thread is told to quit, which the loop outside then
    /// sees too. @p dwFlags are MLF_ flags.
    int RunModalLoop(DWORD dwFlags = 0);
    /// Whether the modal loop goes on. The base says so until EndModalLoop.
    virtual BOOL ContinueModal();
    /// Ends the innermost RunModalLoop of this window with that result. Outside of one it only stores the result.
    virtual void EndModalLoop(int nResult);

    /// Offers the current message, a notification from this control, to the control's own object. TRUE if it was handled there; *@p
    /// pResult is the result then.
    BOOL SendChildNotifyLastMsg(LRESULT* pResult = nullptr);
    /// Does the same for a control given by its handle; FALSE if it has no permanent object.
    static BOOL ReflectLastMsg(HWND hWndChild, LRESULT* pResult = nullptr);

    /// WF_ bits: the state of the modal loop, and what frames note about their windows.
    UINT m_nFlags = 0;

protected:
    /// Passes the current message on to DefWindowProc.
    LRESULT Default();
    /// Every message's way in: asks OnWndMsg, then DefWindowProc. Returns the message's result.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// TRUE when a handler took the message; *@p pResult is its result then.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// What happens to a message that no handler took: the subclassed window's own procedure, or else the system's default one.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// A menu's, accelerator's or control's WM_COMMAND: TRUE when handled. A command whose update handler disables it is not routed.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    /// A control's WM_NOTIFY: TRUE if handled; *@p pResult is its result then. The control itself is asked first.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// A notification of this control before its parent sees it; TRUE keeps it from the parent.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// OnChildNotify's way for those messages that control objects handle by entries of their own message map (ON_..._REFLECT).
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// The last call for an object whose window is gone, or could not be created: the place for `delete this`.
    virtual void PostNcDestroy();
    /// This as a frame window, or null.
    virtual CFrameWnd* ToFrameWnd();

    /// Ends the thread's loop when this was its main window, unsubclasses, detaches, and calls PostNcDestroy.
    void OnNcDestroy();

    // Default handlers, in alphabetical order. Each takes the message of its name (OnLButtonDown: WM_LBUTTONDOWN) in the message's own
    // parameters, does what the system does by default, and returns that result. A class that overrides one by an entry of its message
    // map calls the base's to get the default.
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
    /// Asks the control itself first. Returns the brush for its background.
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
    /// Tells the scroll bar (null stands for the window's own) first; OnVScroll does the same.
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
    /// Tells the child itself first.
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

    /// What SetOwner set; null stands for the parent.
    HWND m_hWndOwner = nullptr;
    WNDPROC m_pfnSuper = nullptr;  ///< A subclassed window's own procedure.
    /// What RunModalLoop will return.
    int m_nModalResult = 0;

    DECLARE_MESSAGE_MAP()

private:
    explicit CWnd(HWND hWnd) : m_hWnd(hWnd) {}
    /// Reads at most @p size bytes.
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
