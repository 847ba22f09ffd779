// FrameWnd.h: the frame windows from which hosts derive theirs.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/app/App.h>
#include <kelgen/framework/frames/FrameWnd.h>
#include <kelgen/framework/frames/MDIChildWnd.h>
#include <kelgen/framework/frames/MDIFrameWnd.h>
#include <kelgen/window/WndInterface.h>

/// What all frames of the library do: they join the application's list from WM_CREATE to WM_DESTROY, take icons from their resources,
/// and end the application with its last visible frame.
///
/// By contract: a frame object is not deleted with its window, since WM_NCDESTROY does not reach the framework. Who made it deletes it,
/// which destroys a window that is still there. When LoadFrame or Create fails before there is a window (no menu, no class,
/// PreCreateWindow refuses) the framework has deleted the object, which therefore must come from new; when the window refused itself
/// (OnCreate) the object is still there.
class KELGEN_API CKelGenFrameWndInterface
{
public:
    /// After LoadFrame: gives the window a small (16 by 16) and a large (32 by 32) icon out of the resources of that number, where it has
    /// none. Returns true.
    virtual bool KelGenPosLoadFrame(UINT nIDResource, DWORD style, CWnd* pParent, CCreateContext* pContext);
    /// Takes the window out of the application's list.
    virtual void KelGenOnDestroy();
    /// Puts the window into the application's list. Returns 0; -1 from an override refuses the window.
    virtual int KelGenOnCreate(LPCREATESTRUCTA pCreate);
    /// Before the close action: asks the active document whether the frame may close. By contract: the answer changes nothing here, since
    /// the close action asks again.
    virtual void KelGenOnClose();
    virtual ~CKelGenFrameWndInterface();

    /// This object as a frame.
    CFrameWnd* KelGenGetFrameWnd();
    /// What closing does, once WM_CLOSE has been processed. A document that refuses stops it. The application's main window ends the
    /// application when no other frame is visible: modified documents are saved (or it stops), the application is hidden, all documents
    /// are closed and the thread is told to quit, unless automation holds it. Any other frame closes alone, or with its document when
    /// it holds all of the document's views.
    void KelGenOnCloseAfter();

protected:
    /// Takes back what the application knows of an object that goes.
    void LeaveApplication();

private:
    bool EndsApplication(const CDocument* document);
    void CloseFrame(CFrameWnd* frame, CDocument* document);
};

/// What the frame of an application with several documents tells the application.
class KELGEN_API CKelGenMDIFrameWndInterface : public CKelGenFrameWndInterface
{};

/// What the frame of one of several documents tells the application.
class KELGEN_API CKelGenMDIChildWndInterface : public CKelGenFrameWndInterface
{};

namespace kelgen::detail {

/// One of the framework's frames with hook chains and the library's frame behaviour.
template <class FRAME, class INTERFACE>
class HookedFrame : public FRAME, public INTERFACE, public C000WndInterface
{
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override { return this->_000WindowProc(message, wParam, lParam); }
    LRESULT _000DefaultWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        return FRAME::WindowProc(message, wParam, lParam);
    }

protected:
    /// By contract: the framework's own is never called, since the close action follows once this has returned, whatever was said.
    void OnClose()
    {
        if (!this->m_lpfnCloseProc || this->m_lpfnCloseProc(this))
            this->KelGenOnClose();
    }
    /// For hosts to override. Returns 0.
    virtual LRESULT OnAppLanguage(UINT, LPARAM) { return 0; }

    int Created(int result, LPCREATESTRUCTA pCreate) { return result == -1 || this->KelGenOnCreate(pCreate) == -1 ? -1 : 0; }
    /// For the destructors of the classes that have message maps: while the object is still one of those, its window leaves the
    /// application's list as it goes. A window that is gone left its handle behind, which may be another object's by now.
    void LeaveWindow()
    {
        if (this->m_hWnd && CWnd::FromHandlePermanent(this->m_hWnd) == this)
            this->DestroyWindow();
        this->Detach();
        this->LeaveApplication();
    }
};

}  // namespace kelgen::detail

/// A frame of its own, with or without a document.
class KELGEN_API CKelGenFrameWnd : public kelgen::detail::HookedFrame<CFrameWnd, CKelGenFrameWndInterface>
{
    DECLARE_DYNCREATE(CKelGenFrameWnd)

public:
    CKelGenFrameWnd();
    ~CKelGenFrameWnd() override;

    BOOL LoadFrame(UINT nIDResource, DWORD style = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, CWnd* pParent = nullptr,
                   CCreateContext* pContext = nullptr) override;
    /// Ends with the close action when the message is WM_CLOSE.
    bool _000AfterWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

protected:
    /// WM_CREATE: the application learns of the frame. -1 refuses the window.
    int OnCreate(LPCREATESTRUCTA pCreate);
    /// WM_DESTROY: the application forgets the frame.
    void OnDestroy();

    DECLARE_MESSAGE_MAP()
};

/// The main frame of an MDI application. By contract: it has no close action of its own, so a host that wants one calls
/// KelGenOnCloseAfter.
class KELGEN_API CKelGenMDIFrameWnd : public kelgen::detail::HookedFrame<CMDIFrameWnd, CKelGenMDIFrameWndInterface>
{
    DECLARE_DYNCREATE(CKelGenMDIFrameWnd)

public:
    CKelGenMDIFrameWnd();
    ~CKelGenMDIFrameWnd() override;

    BOOL LoadFrame(UINT nIDResource, DWORD style = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, CWnd* pParent = nullptr,
                   CCreateContext* pContext = nullptr) override;

protected:
    /// WM_CREATE: the application learns of the frame. -1 refuses the window.
    int OnCreate(LPCREATESTRUCTA pCreate);
    /// WM_DESTROY: the application forgets the frame.
    void OnDestroy();

    DECLARE_MESSAGE_MAP()
};

/// A frame inside an MDI frame, or, without a parent, on its own.
class KELGEN_API CKelGenMDIChildWnd : public kelgen::detail::HookedFrame<CMDIChildWnd, CKelGenMDIChildWndInterface>
{
    DECLARE_DYNCREATE(CKelGenMDIChildWnd)

public:
    CKelGenMDIChildWnd();
    ~CKelGenMDIChildWnd() override;

    /// Creates the child with the icon and title of those resources, and with the menu and accelerators of the context's document
    /// template when that is a CMultiDocTemplate; a missing string gives an empty title. By contract: TRUE whatever KelGenPosLoadFrame
    /// returns, since the window is there by then.
    BOOL LoadFrame(UINT nIDResource, DWORD style, CWnd* pParent = nullptr, CCreateContext* pContext = nullptr) override;
    /// Ends with the close action when the message is WM_CLOSE.
    bool _000AfterWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

protected:
    /// WM_CREATE: the application learns of the frame. -1 refuses the window.
    int OnCreate(LPCREATESTRUCTA pCreate);
    /// WM_DESTROY: the application forgets the frame.
    void OnDestroy();

    DECLARE_MESSAGE_MAP()
};
