// DesktopDumpTest.cpp: a whole dump of a small desktop.
#include <kelgen/window/DesktopDump.h>

#include "support/Target.h"
#include "window/HookWindow.h"

#include <regex>
#include <sstream>
#include <thread>

using namespace kelgen::test;

namespace {

class SizeWatch : public C000WndProcInterface
{};

class MainWindow : public HookWindow
{};

// The dump without handles and threads, which differ from run to run.
std::string Dumped()
{
    std::ostringstream out;
    kelgen::DumpDesktop(out);
    return std::regex_replace(out.str(), std::regex(" \\[[^\\]]*\\]"), "");
}

class DesktopDump : public testing::Test
{
protected:
    void SetUp() override
    {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = ::DefWindowProcA;
        windowClass.hInstance = ::GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "Dumped";
        ::RegisterClassA(&windowClass);
        ASSERT_TRUE(m_main.CreateEx(0, "Dumped", "caf\xE9 \"1\"\\\n", WS_POPUP | WS_DISABLED, 20, 30, 300, 200, nullptr, nullptr));
        m_main._000HookBeforeWndProc({&C000WndProcInterface::_000BeforeWndProc, &m_watch});
        m_main._000HookAfterWndProc({&C000WndProcInterface::_000AfterWndProc, &m_watch});
        m_child = ::CreateWindowExA(0, "Static", "Name", WS_CHILD | WS_VISIBLE, 5, 6, 80, 20, m_main.m_hWnd, reinterpret_cast<HMENU>(100),
                                    nullptr, nullptr);
        m_owned = ::CreateWindowExA(WS_EX_TOPMOST, "Dumped", "owned", WS_POPUP, 1, 2, 3, 4, m_main.m_hWnd, nullptr, nullptr, nullptr);
        m_hidden = ::CreateWindowExA(0, "Dumped", "messages", WS_POPUP, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
        m_menu = ::CreateMenu();
        const HMENU file = ::CreatePopupMenu();
        ::AppendMenuA(file, MF_STRING | MF_CHECKED, 1, "&Open\tCtrl+O");
        ::AppendMenuA(file, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuA(file, MF_STRING | MF_GRAYED, 2, "&Quit");
        ::AppendMenuA(m_menu, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
        ::AppendMenuA(m_menu, MF_STRING, 3, "&Help");
        ::SetMenu(m_main.m_hWnd, m_menu);
        Drain();
    }
    void TearDown() override
    {
        ::DestroyWindow(m_hidden);
        m_main.DestroyWindow();
        Drain();
    }

    static void Drain()
    {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        }
    }

    MainWindow m_main;
    SizeWatch m_watch;
    HWND m_child = nullptr;
    HWND m_owned = nullptr;
    HWND m_hidden = nullptr;
    HMENU m_menu = nullptr;
};

constexpr char kWindows[] =
    R"(window "owned" of Dumped at (1, 2) 3 x 4, topmost
window "café \"1\"\\\n" of Dumped at (20, 30) 300 x 200, disabled, object (anonymous namespace)::MainWindow
  hook before: (anonymous namespace)::SizeWatch
  hook after: (anonymous namespace)::SizeWatch
  menu
    "&File"
      "&Open\tCtrl+O" 1, checked
      separator
      "&Quit" 2, grayed
    "&Help" 3
  child "Name" of Static 100 at (5, 6) 80 x 20, visible
message-only window "messages" of Dumped at (0, 0) 0 x 0
)";

}  // namespace

TEST_F(DesktopDump, TellsOfWindowsObjectsHooksAndMenus)
{
    EXPECT_EQ(kWindows, Dumped());
}

TEST_F(DesktopDump, AnotherThreadGetsTheObjectsOfOneThatServesItsSends)
{
    std::string dumped;
    std::thread dumper([&] {
        dumped = Dumped();
        ::PostMessageA(m_hidden, WM_APP, 0, 0);
    });
    MSG message;
    ::GetMessageA(&message, m_hidden, WM_APP, WM_APP);
    dumper.join();
    EXPECT_EQ(kWindows, dumped);

    std::string busy;
    std::thread([&] { busy = Dumped(); }).join();
    EXPECT_EQ(std::string::npos, busy.find("object")) << busy;
    EXPECT_NE(std::string::npos, busy.find("  child \"Name\" of Static 100 at (5, 6)")) << busy;
}

TEST_F(DesktopDump, TellsOfQueuesTimersAndHooksWhereTheSystemDoes)
{
    ::PostMessageA(m_child, WM_APP, 1, -1);
    ::PostThreadMessageA(::GetCurrentThreadId(), WM_APP + 1, 0, 0x20);
    ::SetTimer(m_main.m_hWnd, 7, 60000, nullptr);
    ::SetTimer(m_child, 3, 50000, nullptr);
    ::PostQuitMessage(4);
    const HHOOK hook = ::SetWindowsHookExA(
        WH_MOUSE, [](int code, WPARAM wParam, LPARAM lParam) { return ::CallNextHookEx(nullptr, code, wParam, lParam); }, nullptr,
        ::GetCurrentThreadId());
    const std::string queue = R"(thread: 2 posted, quits with 4
  message 0x8000 (0x1, 0xFFFFFFFFFFFFFFFF) for
  message 0x8001 (0x0, 0x20)
  timer 7 every 60000 ms for
  timer 3 every 50000 ms for
  hook of type 7
)";
    EXPECT_EQ(kWindows + (isOurPlatform ? queue : ""), Dumped());
    ::UnhookWindowsHookEx(hook);
}
