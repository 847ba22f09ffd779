// WindowExamples.cpp: the examples of the headers of window and app, and of the framework's windows, dialogs and frames.
#include <kelgen/kelgen.h>

#include "Headers.h"

namespace {

/// Handles the thread's messages until it is told to quit.
void Serve()
{
    for (MSG message; ::GetMessageA(&message, nullptr, 0, 0) > 0;)
        ::DispatchMessageA(&message);
}

/// The end of a main window asks the thread to quit: not the tests after this one.
void Stay()
{
    for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
        ::DispatchMessageA(&message);
}

// quote kelgen/framework/program/MessageMap.h
class CCounter : public CWnd
{
protected:
    void OnPaint();
    void OnReset();
    LRESULT OnCount(WPARAM step, LPARAM);
    DECLARE_MESSAGE_MAP()
    // end

public:
    int m_count = 0;
    // quote kelgen/framework/program/MessageMap.h
};

BEGIN_MESSAGE_MAP(CCounter, CWnd)
ON_WM_PAINT()
ON_COMMAND(ID_RESET, &CCounter::OnReset)
ON_MESSAGE(WM_APP, &CCounter::OnCount)
END_MESSAGE_MAP()
// end

void CCounter::OnPaint()
{
    ValidateRect(nullptr);
}

void CCounter::OnReset()
{
    m_count = 0;
}

LRESULT CCounter::OnCount(WPARAM step, LPARAM)
{
    return m_count += static_cast<int>(step);
}

template <class KIND>
class CRow : public CWnd
{
protected:
    LRESULT OnCount(WPARAM step, LPARAM) { return static_cast<KIND>(step); }
    DECLARE_MESSAGE_MAP()
};

// quote kelgen/framework/program/MessageMap.h#2
BEGIN_TEMPLATE_MESSAGE_MAP(CRow, KIND, CWnd)
ON_MESSAGE(WM_APP, &ThisClass::OnCount)
END_MESSAGE_MAP()
// end

class CHookedWindow : public CWnd, public C000WndInterface
{
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override { return _000WindowProc(message, wParam, lParam); }
    LRESULT _000DefaultWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override { return CWnd::WindowProc(message, wParam, lParam); }
};

bool CreateHidden(CWnd& window)
{
    return window.CreateEx(0, nullptr, "example", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0) != FALSE;
}

class CNote : public CDocument
{
    DECLARE_DYNCREATE(CNote)
};
IMPLEMENT_DYNCREATE(CNote, CDocument)

class CNoteView : public CView
{
    DECLARE_DYNCREATE(CNoteView)
    void OnDraw(CDC*) override {}
};
IMPLEMENT_DYNCREATE(CNoteView, CView)

class CMyFrame : public CKelGenFrameWnd
{
public:
    void PostNcDestroy() override {}
};

}  // namespace

TEST(HeaderExamples, OfMessageMaps)
{
    CCounter counter;
    ASSERT_TRUE(CreateHidden(counter));
    EXPECT_EQ(7, counter.SendMessage(WM_APP, 7));
    counter.SendMessage(WM_COMMAND, ID_RESET);
    EXPECT_EQ(0, counter.m_count);
    counter.DestroyWindow();
    CRow<short> row;
    ASSERT_TRUE(CreateHidden(row));
    EXPECT_EQ(1, row.SendMessage(WM_APP, 65537)) << "as a short";
    row.DestroyWindow();
}

namespace {

class CMyWnd : public CWnd
{
protected:
    void OnPaint();
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CMyWnd, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

// quote kelgen/framework/windows/DeviceContext.h
void CMyWnd::OnPaint()
{
    CPaintDC dc(this);
    dc.Rectangle(10, 10, 60, 40);
    dc.TextOut(15, 15, "Hello");
}
// end

}  // namespace

TEST(HeaderExamples, OfDrawing)
{
    CMyWnd window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "example", WS_POPUP, CRect(0, 0, 100, 100), nullptr, 0));
    window.ShowWindow(SW_SHOWNA);
    window.UpdateWindow();
    EXPECT_FALSE(::GetUpdateRect(window, nullptr, FALSE)) << "painted";
    CClientDC dc(&window);
    // quote kelgen/framework/windows/GdiObjects.h
    CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
    CPen* const before = dc.SelectObject(&pen);
    dc.LineTo(100, 100);
    dc.SelectObject(before);
    // end
    EXPECT_EQ(CPoint(100, 100), dc.GetCurrentPosition());
    window.DestroyWindow();
}

TEST(HeaderExamples, OfDialogs)
{
    int used = 0;
    const auto Use = [&used](int count) { used = count; };
    // quote kelgen/framework/dialogs/Dialog.h
    class CSettings : public CDialog
    {
    public:
        CSettings() : CDialog(IDD_SETTINGS) {}
        int m_count = 0;

    protected:
        void DoDataExchange(CDataExchange* pDX) override { DDX_Text(pDX, IDC_COUNT, m_count); }
        // end
        BOOL OnInitDialog() override
        {
            CDialog::OnInitDialog();
            SetDlgItemText(IDC_COUNT, "12");
            PostMessage(WM_COMMAND, IDOK);
            return TRUE;
        }
        // quote kelgen/framework/dialogs/Dialog.h
    };
    CSettings dialog;
    if (dialog.DoModal() == IDOK)
        Use(dialog.m_count);
    // end
    EXPECT_EQ(12, used);
}

namespace {

class CSettings : public CDialog
{
public:
    int m_count = 101;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
};

// quote kelgen/framework/dialogs/DataExchange.h
void CSettings::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_COUNT, m_count);
    DDV_MinMaxInt(pDX, m_count, 1, 100);
}
// end

}  // namespace

TEST(HeaderExamples, OfDataExchange)
{
    CSettings dialog;
    ASSERT_TRUE(dialog.Create(IDD_SETTINGS));
    EXPECT_EQ(101u, dialog.GetDlgItemInt(IDC_COUNT));
    dialog.SetDlgItemInt(IDC_COUNT, 100);
    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_EQ(100, dialog.m_count);
    dialog.DestroyWindow();
}

TEST(HeaderExamples, OfModelessDialogs)
{
    CWnd* const parent = nullptr;
    // quote kelgen/app/AppDialog.h
    class CSettingsDialog : public CAppDialog
    {
        // end
    public:
        using CAppDialog::CAppDialog;
        // quote kelgen/app/AppDialog.h
    };
    auto* dialog = new CSettingsDialog(IDD_SETTINGS, parent);
    dialog->Create(IDD_SETTINGS);
    // end
    EXPECT_TRUE(::IsWindow(dialog->m_hWnd));
    dialog->DestroyWindow();
}

namespace {

CMyFrame* frame = nullptr;

}  // namespace

TEST(HeaderExamples, OfApplications)
{
    // quote kelgen/app/App.h
    class CMyApp : public CKelGenApp
    {
    public:
        CMyApp() : CKelGenApp("My Program") {}
        BOOL InitInstance() override
        {
            if (!CKelGenApp::InitInstance())
                return FALSE;
            m_pMainWnd = frame = new CMyFrame;
            return frame->LoadFrame(IDR_MAIN) && frame->ShowWindow(m_nCmdShow) >= 0;
        }
    } theApp;
    // end
    theApp.m_nCmdShow = SW_HIDE;
    ASSERT_TRUE(theApp.InitInstance());
    EXPECT_TRUE(::IsWindow(frame->m_hWnd));
    frame->DestroyWindow();
    delete frame;
    theApp.m_pMainWnd = nullptr;
    Stay();
}

TEST(HeaderExamples, OfFrames)
{
    // quote kelgen/framework/frames/FrameWnd.h
    class CMainFrame : public CFrameWnd
    {};
    // end
    class Program : public CWinApp
    {
    public:
        BOOL InitInstance() override
        {
            // quote kelgen/framework/frames/FrameWnd.h
            CMainFrame* frame = new CMainFrame;
            if (!frame->LoadFrame(IDR_MAIN))
                return FALSE;
            m_pMainWnd = frame;
            frame->ShowWindow(m_nCmdShow);
            // end
            return TRUE;
        }
    } program;
    program.m_nCmdShow = SW_HIDE;
    ASSERT_TRUE(program.InitInstance());
    program.m_pMainWnd->DestroyWindow();
    EXPECT_EQ(nullptr, program.m_pMainWnd);
    Stay();
}

TEST(HeaderExamples, OfDocumentTemplates)
{
    class Program : public CWinApp
    {
    public:
        BOOL InitInstance() override
        {
            // quote kelgen/framework/frames/DocTemplate.h
            AddDocTemplate(new CMultiDocTemplate(IDR_NOTE, RUNTIME_CLASS(CNote), RUNTIME_CLASS(CMDIChildWnd), RUNTIME_CLASS(CNoteView)));
            // end
            return TRUE;
        }
    } program;
    ASSERT_TRUE(program.InitInstance());
    EXPECT_NE(nullptr, program.GetFirstDocTemplatePosition());
}

namespace {

// quote kelgen/window/WindowHook.h
class CWatch : public _kelgen::CWindowHook
{
    bool _WindowHookBeforeWindowProc(UINT message, WPARAM, LPARAM, LRESULT&) override;
    // end

public:
    int m_seen = 0;
    // quote kelgen/window/WindowHook.h
};
// end

bool CWatch::_WindowHookBeforeWindowProc(UINT message, WPARAM, LPARAM, LRESULT&)
{
    m_seen += message == WM_APP ? 1 : 0;
    return false;
}

}  // namespace

TEST(HeaderExamples, OfHooksOnWindows)
{
    CCounter window;
    ASSERT_TRUE(CreateHidden(window));
    const HWND hWnd = window;
    CWatch watch;
    // quote kelgen/window/WindowHook.h
    watch.HookWindow(hWnd);
    // end
    EXPECT_EQ(3, window.SendMessage(WM_APP, 3));
    EXPECT_EQ(1, watch.m_seen);
    window.DestroyWindow();
}

namespace {

// quote kelgen/window/WndInterface.h
class CSizeWatch : public C000WndProcInterface
{
    bool _000BeforeWndProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    // end

public:
    int m_sizes = 0;
    // quote kelgen/window/WndInterface.h
};
// end

bool CSizeWatch::_000BeforeWndProc(UINT message, WPARAM, LPARAM, LRESULT&)
{
    m_sizes += message == WM_SIZE ? 1 : 0;
    return false;
}

}  // namespace

TEST(HeaderExamples, OfHooksOfTheLibrarysWindows)
{
    CHookedWindow frame;
    CSizeWatch watch;
    // quote kelgen/window/WndInterface.h
    C000WndProcInterface::CHook hook(&C000WndProcInterface::_000BeforeWndProc, &watch);
    frame._000HookBeforeWndProc(hook);
    // end
    ASSERT_TRUE(CreateHidden(frame));
    const int before = watch.m_sizes;
    frame.SendMessage(WM_SIZE);
    EXPECT_EQ(before + 1, watch.m_sizes);
    frame.DestroyWindow();
}

TEST(HeaderExamples, OfMessageFilters)
{
    struct Filtered : CMessageFilterWndHook
    {
        LRESULT OnMessageFilter(int, WPARAM, MSG*) override { return 0; }
        void Join()
        {
            // quote kelgen/window/MessageHook.h
            CMessageFilterMainHook::theMFMH.MessageFilterHook();      // this thread
            CMessageFilterMainHook::theMFMH.MessageFilterHook(this);  // this window
            // end
        }
    } window;
    window.Join();
    EXPECT_EQ(1, CMessageFilterMainHook::theMFMH.MessageFilterUnhook(&window));
    EXPECT_EQ(1, CMessageFilterMainHook::theMFMH.MessageFilterUnhook());
}

TEST(HeaderExamples, OfMessageWindows)
{
    // quote kelgen/window/MessageWindow.h
    class CJob : public virtual CMessageWindowListener
    {
        bool OnMessageWindowMessage(UINT message, WPARAM, LPARAM, LRESULT& result) override
        {
            if (message != WM_APP)
                return false;
            result = 1;
            return true;
        }
        // end

    public:
        CJob() { CreateMessageWindow(); }
        // quote kelgen/window/MessageWindow.h
    };
    // end
    CJob job;
    EXPECT_EQ(1, job.SendMessageA(WM_APP, 0, 0));
}

TEST(HeaderExamples, OfTimers)
{
    using namespace _kelgen;
    struct : CTimerCallback
    {
        void OnTimerEvent(UINT) override
        {
            ++ticks;
            ::PostQuitMessage(0);
        }
        int ticks = 0;
    } callback;
    // quote kelgen/window/Timer.h
    CTimerWnd* window = new CTimerWnd;
    window->Create(&callback);
    callback.SetTimerWindow(window);
    window->SetTimer(1, 500, nullptr);
    Serve();
    window->SendMessage(WM_CLOSE);  // deletes it
    // end
    EXPECT_EQ(1, callback.ticks);
}

TEST(HeaderExamples, OfReports)
{
    struct : CCompletionReportListener
    {
        void OnCompletionReport(UINT, double part) override { done = part; }
        double done = 0;
    } listener;
    struct : CCompletionReportSource
    {
        void Work(const std::vector<int>& files)
        {
            // quote kelgen/window/CompletionReport.h
            ReportCompletionSetStepCount(files.size());
            for (const int file : files) {
                static_cast<void>(file);
                ReportCompletionNextStep(1);
                ReportCompletion(0);
            }
            // end
        }
    } task;
    listener.ReportCompletionScriptStart();
    listener.ReportCompletionScriptAttachSource(&task);
    task.Work({1, 2});
    EXPECT_EQ(1, listener.done);
}

TEST(HeaderExamples, OfModules)
{
    int looked = 0;
    const auto Look = [&looked](HMODULE) { ++looked; };
    AFX_EXTENSION_MODULE extension = {};
    AfxInitExtensionModule(extension, ::GetModuleHandleA(nullptr));
    new CDynLinkLibrary(extension);
    // quote kelgen/framework/program/ModuleState.h
    AfxLockGlobals(CRIT_DYNLINKLIST);
    for (CDynLinkLibrary* library = AfxGetModuleState()->m_libraryList; library; library = library->m_pNextDLL)
        Look(library->m_hResource);
    AfxUnlockGlobals(CRIT_DYNLINKLIST);
    // end
    EXPECT_EQ(1, looked);
    AfxTermExtensionModule(extension);
    const auto stateOfALibrary = [] {
        // quote kelgen/framework/program/ModuleState.h#2
        AFX_MANAGE_STATE(AfxGetStaticModuleState());
        // end
        return AfxGetModuleState();
    };
    EXPECT_EQ(AfxGetAppModuleState(), stateOfALibrary()) << "this is the program";
}
