// MonitorPictureTest.cpp: the monitor's window as another process sees it: it is there, its list is filled, and it is drawn.
#include "Settings.h"

#include "support/Scratch.h"
#include "support/Threads.h"

#include <set>

using namespace kelgen::test;

namespace {

/// The program, ended when the test is over.
class Started
{
public:
    explicit Started(std::string commandLine)
    {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        EXPECT_TRUE(::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &m_process));
    }
    ~Started()
    {
        ::TerminateProcess(m_process.hProcess, 99);
        ::CloseHandle(m_process.hThread);
        ::CloseHandle(m_process.hProcess);
    }
    Started(const Started&) = delete;
    Started& operator=(const Started&) = delete;

    /// Its visible window; null while there is none.
    HWND Window() const
    {
        struct Search
        {
            DWORD process;
            HWND window;
        } search{m_process.dwProcessId, nullptr};
        const auto visit = [](HWND window, LPARAM param) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(param);
            DWORD process = 0;
            ::GetWindowThreadProcessId(window, &process);
            if (process == wanted.process && ::IsWindowVisible(window))
                wanted.window = window;
            return wanted.window == nullptr;
        };
        ::EnumWindows(visit, reinterpret_cast<LPARAM>(&search));
        return search.window;
    }

    DWORD ExitCode() const
    {
        DWORD code = 98;
        if (::WaitForSingleObject(m_process.hProcess, kDeadline) == WAIT_OBJECT_0)
            ::GetExitCodeProcess(m_process.hProcess, &code);
        return code;
    }

private:
    PROCESS_INFORMATION m_process{};
};

bool Eventually(const std::function<bool()>& condition)
{
    for (const DWORD start = ::GetTickCount(); !condition(); Sleep(20)) {
        if (::GetTickCount() - start > kDeadline)
            return false;
    }
    return true;
}

/// The colours of every fourth pixel of the screen where the window is.
std::set<COLORREF> ColoursAt(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    // A device context of the window itself shows nothing of another process's drawing.
    const HDC screen = ::GetDC(nullptr);
    const HDC memory = ::CreateCompatibleDC(screen);
    const HBITMAP picture = ::CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = ::SelectObject(memory, picture);
    ::BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    std::set<COLORREF> colours;
    for (int y = 0; y < height; y += 2) {
        for (int x = 0; x < width; x += 2)
            colours.insert(::GetPixel(memory, x, y));
    }
    ::SelectObject(memory, before);
    ::DeleteObject(picture);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    return colours;
}

}  // namespace

TEST(MonitorPicture, WindowIsThereFilledAndDrawn)
{
    ::RegDeleteKeyA(HKEY_CURRENT_USER, CSettings::registryKey);
    const auto folder = ScratchFolder();
    for (const char* name : {"one", "two", "three"})
        WriteBytes((folder / name).string(), name);
    const Started monitor("\"" MONITOR "\" \"" + folder.string() + "\"");
    ASSERT_TRUE(Eventually([&] { return monitor.Window() != nullptr; }));
    const HWND frame = monitor.Window();
    const HWND list = ::FindWindowExA(frame, nullptr, "SysListView32", nullptr);
    ASSERT_NE(nullptr, list);
    EXPECT_TRUE(Eventually([&] { return ::SendMessageA(list, LVM_GETITEMCOUNT, 0, 0) == 3; }));
    WriteBytes((folder / "four").string(), "four");
    EXPECT_TRUE(Eventually([&] { return ::SendMessageA(list, LVM_GETITEMCOUNT, 0, 0) == 4; }));
    ::SetWindowPos(frame, HWND_TOPMOST, 10, 10, 0, 0, SWP_NOSIZE);
    const COLORREF paper = ::GetSysColor(COLOR_WINDOW);
    EXPECT_TRUE(Eventually([&] {
        const std::set<COLORREF> colours = ColoursAt(list);
        return colours.size() > 1 && colours.contains(paper);
    }));

    ::PostMessageA(frame, WM_CLOSE, 0, 0);
    EXPECT_EQ(0u, monitor.ExitCode());
    CSettings remembered;
    CStrArray complaints;
    EXPECT_TRUE(remembered.Load(complaints));
    ::RegDeleteKeyA(HKEY_CURRENT_USER, CSettings::registryKey);
}
