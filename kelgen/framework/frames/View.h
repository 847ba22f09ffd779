// View.h: views, the windows that show a document.
#pragma once

#include <kelgen/framework/frames/FrameWnd.h>

class CDocument;

/// A view of a document: a child window of a frame. It joins its document when it is created, and deletes itself when its window is
/// gone.
class KELGEN_FRAMEWORK_API CView : public CWnd
{
    DECLARE_DYNAMIC(CView)

public:
    ~CView() override;

    /// The view's document; null for a view without one.
    CDocument* GetDocument() const { return m_pDocument; }

    /// Called before the view is shown first. The base asks for a whole update.
    virtual void OnInitialUpdate();
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    BOOL PreCreateWindow(CREATESTRUCTA& cs) override;

protected:
    CView();

    /// Called before the device context is used. The base does nothing.
    virtual void OnPrepareDC(CDC* pDC);
    /// Draws the document.
    virtual void OnDraw(CDC* pDC) = 0;
    /// The document changed: by @p pSender, null for all or anyone. The base paints the view anew.
    virtual void OnUpdate(CView* pSender, LPARAM lHint, CObject* pHint);
    /// The frame's active view changes. The base takes the focus when it becomes active in the active frame.
    virtual void OnActivateView(BOOL bActivate, CView* pActivateView, CView* pDeactiveView);
    /// The frame is activated or left while this is its active view.
    virtual void OnActivateFrame(UINT nState, CFrameWnd* pFrameWnd);
    void PostNcDestroy() override;

    /// WM_CREATE: joins the document of the creation's context. -1 refuses the window.
    int OnCreate(LPCREATESTRUCTA lpcs);
    /// WM_DESTROY: the frame has no active view any more if it was this one.
    void OnDestroy();
    /// WM_PAINT: prepares a device context and calls OnDraw.
    void OnPaint();
    /// WM_MOUSEACTIVATE: a click makes this the frame's active view, unless the result forbids it.
    int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    /// WM_INITIALUPDATE: calls OnInitialUpdate. Returns 0.
    LRESULT OnInitialUpdateMessage(WPARAM wParam, LPARAM lParam);

    CDocument* m_pDocument = nullptr;

    friend class CDocument;
    friend class CFrameWnd;
    friend class CMDIChildWnd;

    DECLARE_MESSAGE_MAP()
};
