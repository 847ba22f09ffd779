// ThreadMessageTest.cpp: threads with windows, their loops, idle work and filters; modal loops inside.
#include <kelgen/framework/base/Exceptions.h>

#include "Traffic.h"
#include "support/Threads.h"

using namespace kelgen::test;

namespace {

const UINT registeredMessage = RegisterWindowMessageA("kelgen thread message test");

/// A thread that records its course. Its steps are read after its end, or on the thread itself.
class RecordedThread : public CWinThread
{
    DECLARE_DYNCREATE(RecordedThread)

public:
    RecordedThread() { m_bAutoDelete = FALSE; }

    BOOL InitInstance() override
    {
        Traffic::Add(AfxGetThread() == this && GetCurrentThreadId() == m_nThreadID ? "init" : "init elsewhere");
        m_pMainWnd = &m_window;
        return m_fails ? FALSE : m_window.CreateHidden();
    }
    int ExitInstance() override
    {
        const int code = CWinThread::ExitInstance();
        Traffic::Add("exit(" + std::to_string(code) + ")");
        m_window.DestroyWindow();
        return code;
    }
    BOOL OnIdle(LONG count) override
    {
        if (count <= 1)
            Traffic::Add("idle" + std::to_string(count));
        const BOOL more = CWinThread::OnIdle(count);
        // All that was posted before has been handled: the thread may go.
        if (!more && m_quitWhenIdle)
            AfxPostQuitMessage(5);
        return more;
    }
    BOOL PreTranslateMessage(MSG* message) override
    {
        if (!message->hwnd && message->message == WM_APP + 9)
            Traffic::Add("taken");
        return message->message == WM_APP + 9 || CWinThread::PreTranslateMessage(message);
    }

    bool m_fails = false, m_quitWhenIdle = true;
    RecordedWnd m_window;

protected:
    void OnFirst(UINT wParam, LPARAM lParam) { Traffic::Add("first(" + std::to_string(wParam + static_cast<UINT>(lParam)) + ")"); }
    void OnRegistered(WPARAM, LPARAM) { Traffic::Add("registered"); }
    DECLARE_MESSAGE_MAP()
};

IMPLEMENT_DYNCREATE(RecordedThread, CWinThread)

BEGIN_MESSAGE_MAP(RecordedThread, CWinThread)
ON_THREAD_MESSAGE(WM_APP + 1, &RecordedThread::OnFirst)
ON_REGISTERED_THREAD_MESSAGE(registeredMessage, &RecordedThread::OnRegistered)
END_MESSAGE_MAP()

DWORD WaitForEnd(CWinThread& thread)
{
    thread.ResumeThread();
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(thread.m_hThread, kDeadline));
    DWORD exitCode = 0;
    GetExitCodeThread(thread.m_hThread, &exitCode);
    return exitCode;
}

/// Takes what its name is asked for; records in which order it was asked.
class TranslatingWnd : public RecordedWnd
{
public:
    using RecordedWnd::RecordedWnd;
    UINT m_taken = 0;

    BOOL PreTranslateMessage(MSG* message) override
    {
        Traffic::Add(m_name + "pre");
        return message->message == m_taken;
    }
};

/// A window with a modal loop that idles twice.
class ModalWnd : public RecordedWnd
{
public:
    using RecordedWnd::RecordedWnd;

protected:
    LRESULT OnKickIdle(WPARAM why, LPARAM count)
    {
        Traffic::Add(m_name + "kick" + std::to_string(why) + "." + std::to_string(count));
        if (count == 1)
            PostMessage(WM_APP + 5);
        return count < 1;
    }
    LRESULT OnEnd(WPARAM, LPARAM)
    {
        EndModalLoop(33);
        return 0;
    }
    void OnEnterIdle(UINT why, CWnd* who) { Traffic::Add(m_name + "idle" + std::to_string(why) + (who ? "+" : "-")); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ModalWnd, RecordedWnd)
ON_MESSAGE(WM_KICKIDLE, &ModalWnd::OnKickIdle)
ON_MESSAGE(WM_APP + 5, &ModalWnd::OnEnd)
ON_WM_ENTERIDLE()
END_MESSAGE_MAP()

/// The calling thread's object for a while, on whose queue the test works itself.
class FilteringApp : public QuietApp
{
public:
    BOOL ProcessMessageFilter(int code, MSG* message) override
    {
        Traffic::Add("filter" + std::to_string(code));
        return message->message == WM_APP + 2;
    }
};

void DrainQueue()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
    Traffic::Take();
}

}  // namespace

TEST(ThreadMessage, ThreadWithAWindowRunsFromInitToExit)
{
    const std::unique_ptr<RecordedThread> thread(
        static_cast<RecordedThread*>(AfxBeginThread(RUNTIME_CLASS(RecordedThread), THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED)));
    ASSERT_TRUE(thread);
    EXPECT_EQ(5u, WaitForEnd(*thread));
    EXPECT_EQ("init [pre-create] [subclass] nccreate create idle0 idle1 exit(5) destroy ncdestroy [gone]", Traffic::Take());
    EXPECT_FALSE(thread->PostThreadMessage(WM_APP, 0, 0)) << "its queue is gone";

    RecordedThread failing;
    failing.m_fails = true;
    failing.CreateThread(CREATE_SUSPENDED);
    EXPECT_EQ(0u, WaitForEnd(failing));
    EXPECT_EQ("init exit(0)", Traffic::Take());
    EXPECT_FALSE(failing.CreateThread()) << "once only";
}

TEST(ThreadMessage, MessagesWithoutAWindowGoThroughTheThreadsMap)
{
    RecordedThread thread;
    thread.m_quitWhenIdle = false;
    // The thread's own queue gets all of it before its loop begins.
    struct Poster : RecordedThread
    {
        BOOL InitInstance() override
        {
            RecordedThread::InitInstance();
            m_quitWhenIdle = false;
            PostThreadMessage(WM_APP + 1, 40, 2);
            PostThreadMessage(WM_APP + 9, 0, 0);
            PostThreadMessage(WM_APP + 2, 0, 0);
            PostThreadMessage(registeredMessage, 0, 0);
            m_window.PostMessage(WM_APP + 1, 3);
            PostThreadMessage(WM_QUIT, 9, 0);
            return TRUE;
        }
    } poster;
    poster.CreateThread(CREATE_SUSPENDED);
    EXPECT_EQ(9u, WaitForEnd(poster));
    EXPECT_EQ("init [pre-create] [subclass] nccreate create first(42) taken registered app+1 exit(9) destroy ncdestroy [gone]",
              Traffic::Take());
}

TEST(ThreadMessage, EndOfTheMainWindowEndsTheLoop)
{
    struct Closing : RecordedThread
    {
        BOOL InitInstance() override
        {
            m_quitWhenIdle = false;
            return RecordedThread::InitInstance() && m_window.PostMessage(WM_CLOSE);
        }
    } closing;
    closing.CreateThread(CREATE_SUSPENDED);
    EXPECT_EQ(0u, WaitForEnd(closing));
    EXPECT_EQ("init [pre-create] [subclass] nccreate create close destroy ncdestroy [gone] exit(0)", Traffic::Take());
    EXPECT_EQ(nullptr, closing.m_pMainWnd);
}

TEST(ThreadMessage, WindowsAreAskedFromTheMessagesUpToTheMainOne)
{
    QuietApp app;
    TranslatingWnd mainWindow("main:"), child("child:"), inner("inner:"), other("other:");
    mainWindow.CreateHidden();
    child.CreateHidden(&mainWindow);
    inner.CreateHidden(&child);
    other.CreateHidden();
    app.m_pMainWnd = &mainWindow;
    DrainQueue();

    struct Row
    {
        CWnd* to;
        UINT message;
        BOOL taken;
        const char* steps;
    };
    child.m_taken = WM_APP + 1;
    mainWindow.m_taken = WM_APP + 2;
    for (const Row& row :
         {Row{&inner, WM_APP + 1, TRUE, "inner:pre child:pre"}, Row{&inner, WM_APP + 2, TRUE, "inner:pre child:pre main:pre"},
          Row{&inner, WM_APP + 3, FALSE, "inner:pre child:pre main:pre"}, Row{&other, WM_APP + 2, TRUE, "other:pre main:pre"},
          Row{&other, WM_APP + 3, FALSE, "other:pre main:pre"}}) {
        MSG message{};
        message.hwnd = row.to->m_hWnd;
        message.message = row.message;
        EXPECT_EQ(row.taken, AfxPreTranslateMessage(&message));
        EXPECT_EQ(row.steps, Traffic::Take());
    }
    app.m_pMainWnd = nullptr;
    for (CWnd* window : {static_cast<CWnd*>(&mainWindow), static_cast<CWnd*>(&other)})
        window->DestroyWindow();
    DrainQueue();
}

TEST(ThreadMessage, MovesOfTheMouseThatMoveNothingAreNotIdleWork)
{
    CWinThread thread;
    const auto idle = [&](UINT message, int x) {
        MSG taken{};
        taken.message = message;
        taken.pt.x = x;
        return thread.IsIdleMessage(&taken) != FALSE;
    };
    std::string text;
    for (const auto& [message, x] : {std::pair{WM_MOUSEMOVE, 1},
                                     {WM_MOUSEMOVE, 1},
                                     {WM_MOUSEMOVE, 2},
                                     {WM_NCMOUSEMOVE, 2},
                                     {WM_NCMOUSEMOVE, 2},
                                     {WM_PAINT, 0},
                                     {0x0118, 0},
                                     {WM_APP, 0},
                                     {WM_TIMER, 0}})
        text += idle(static_cast<UINT>(message), x) ? '1' : '0';
    EXPECT_EQ("101100011", text);
}

TEST(ThreadMessage, IdleWorkUpdatesVisibleMainWindowsThenDropsTemporaries)
{
    QuietApp app;
    struct Updated : RecordedWnd
    {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            if (message == WM_IDLEUPDATECMDUI)
                Traffic::Add("update" + std::to_string(wParam));
            return CWnd::WindowProc(message, wParam, lParam);
        }
    } window, child;
    window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0);
    child.CreateHidden(&window);
    app.m_pMainWnd = &window;
    Traffic::Take();
    EXPECT_TRUE(app.OnIdle(0));
    EXPECT_EQ("", Traffic::Take()) << "hidden";
    window.ModifyStyle(0, WS_VISIBLE);
    EXPECT_TRUE(app.OnIdle(0));
    EXPECT_EQ("update1 update1", Traffic::Take());
    CMenu* const temporary = CMenu::FromHandle(reinterpret_cast<HMENU>(static_cast<UINT_PTR>(0x77)));
    EXPECT_EQ(temporary, CMenu::FromHandle(temporary->m_hMenu));
    EXPECT_FALSE(app.OnIdle(1));
    EXPECT_FALSE(app.OnIdle(2));
    app.m_pMainWnd = nullptr;
    window.DestroyWindow();
    DrainQueue();
}

TEST(ThreadMessage, ModalLoopIdlesAndEndsWithItsResult)
{
    QuietApp app;
    ModalWnd owner("owner:"), window("modal:");
    owner.CreateHidden();
    window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 9, 9), &owner, 0);
    DrainQueue();
    EXPECT_EQ(33, window.RunModalLoop());
    EXPECT_EQ("owner:idle0+ modal:kick0.0 modal:kick0.1 modal:app+5", Traffic::Take());
    EXPECT_FALSE(window.ContinueModal());
    DrainQueue();

    window.PostMessage(WM_APP + 5);
    EXPECT_EQ(33, window.RunModalLoop(MLF_NOIDLEMSG | MLF_NOKICKIDLE));
    EXPECT_EQ("modal:app+5", Traffic::Take());
    DrainQueue();

    AfxPostQuitMessage(6);
    EXPECT_EQ(-1, window.RunModalLoop());
    MSG message;
    EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0)) << "the loop outside ends too";
    EXPECT_EQ(6u, message.wParam);
    owner.DestroyWindow();
    DrainQueue();
}

TEST(ThreadMessage, FilterTakesMessagesOfInnerLoops)
{
    FilteringApp app;
    AfxInitThread();
    MSG message{};
    message.message = WM_APP + 2;
    EXPECT_TRUE(CallMsgFilterA(&message, MSGF_MENU));
    message.message = WM_APP + 3;
    EXPECT_FALSE(CallMsgFilterA(&message, MSGF_DIALOGBOX));
    AfxTermThread();
    EXPECT_FALSE(CallMsgFilterA(&message, MSGF_DIALOGBOX));
    EXPECT_EQ("filter2 filter0", Traffic::Take());
}

TEST(ThreadMessage, ProgramRunsItsApplication)
{
    class Program : public QuietApp
    {
    public:
        explicit Program(const char* failing) : m_failing(failing) {}
        BOOL InitApplication() override { return Step("application"); }
        BOOL InitInstance() override { return Step("instance"); }
        int Run() override
        {
            Step("run");
            return CWinApp::Run();
        }
        int ExitInstance() override
        {
            Step("exit");
            return CWinApp::ExitInstance() + 40;
        }

    private:
        bool Step(const std::string& step)
        {
            Traffic::Add(step);
            return step != m_failing;
        }
        std::string m_failing;
    };
    struct Row
    {
        const char* failing;
        int exitCode;
        const char* steps;
    };
    AfxGetThreadState()->m_msgCur = {};
    for (const Row& row : {Row{"", 40, "application instance run exit"}, Row{"application", -1, "application"},
                           Row{"instance", 40, "application instance exit"}}) {
        Program program(row.failing);
        EXPECT_EQ(row.exitCode, AfxWinMain(GetModuleHandleA(nullptr), nullptr, nullptr, SW_HIDE));
        EXPECT_EQ(row.steps, Traffic::Take());
    }
    EXPECT_EQ(-1, AfxWinMain(GetModuleHandleA(nullptr), nullptr, nullptr, SW_HIDE)) << "without an application";
}

TEST(ThreadMessage, ClientsKeepAnApplicationThatIsNotTheUsers)
{
    EXPECT_TRUE(AfxOleCanExitApp());
    AfxOleLockApp();
    EXPECT_FALSE(AfxOleCanExitApp());
    QuietApp app;
    AfxOleSetUserCtrl(FALSE);
    MSG message;
    PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
    AfxOleUnlockApp();
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "the last client ends it";
    AfxOleSetUserCtrl(TRUE);
    DrainQueue();
}

TEST(CommandLineInfo, ArgumentsSayWhatToDo)
{
    struct Row
    {
        const char* line;
        int command;
        const char* rest;
    };
    for (const Row& row :
         {Row{"", CCommandLineInfo::FileNew, "|||1"}, Row{"  a.txt ", CCommandLineInfo::FileOpen, "a.txt|||1"},
          Row{R"("two words.txt")", CCommandLineInfo::FileOpen, "two words.txt|||1"},
          Row{R"(C:\a\\"b c" d)", CCommandLineInfo::FileOpen, R"(C:\a\b c|||1)"},
          Row{R"(\"quoted\")", CCommandLineInfo::FileOpen, R"("quoted"|||1)"}, Row{"/p a.txt", CCommandLineInfo::FilePrint, "a.txt|||0"},
          Row{"-pt a printer driver port", CCommandLineInfo::FilePrintTo, "a|printer|driver|0"},
          Row{"/P a", CCommandLineInfo::FileOpen, "a|||1"}, Row{"/dde", CCommandLineInfo::FileDDE, "|||0"},
          Row{"/unregserver", CCommandLineInfo::AppUnregister, "|||0"}, Row{"/Embedding", CCommandLineInfo::FileNew, "|||0"}}) {
        QuietApp app;
        std::string line = row.line;
        app.m_lpCmdLine = line.data();
        CCommandLineInfo info;
        app.ParseCommandLine(info);
        EXPECT_EQ(row.command, info.m_nShellCommand) << row.line;
        EXPECT_EQ(std::string(row.rest), std::string(info.m_strFileName + "|" + info.m_strPrinterName + "|" + info.m_strDriverName + "|") +
                                             (info.m_bShowSplash ? "1" : "0"))
            << row.line;
    }
}
