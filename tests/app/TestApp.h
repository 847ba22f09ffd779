// TestApp.h: an application object for one test, and a look at its queue.
#pragma once

#include <kelgen/app/App.h>
#include <kelgen/app/FrameWnd.h>

#include <memory>
#include <string>

namespace kelgen::test {

class TestApp : public CKelGenApp
{
public:
    TestApp() : CKelGenApp("Tests") { m_nCmdShow = SW_HIDE; }

    /// The base's, with a note for the test.
    BOOL SaveAllModified() override
    {
        m_events += "save ";
        return m_agreesToSave;
    }
    using CKelGenApp::GetWndArray;
    using CKelGenApp::m_cmdInfo;

    std::string TakeEvents() { return std::exchange(m_events, {}); }

    BOOL m_agreesToSave = TRUE;
    std::string m_events;
};

/// A frame whose window the test shows and hides; a popup, for which no desktop waits for a window manager. The objects are the test's to
/// delete.
class TestFrame : public CKelGenFrameWnd
{
public:
    bool CreateShown()
    {
        if (!Create(nullptr, "frame", WS_POPUP, CRect(0, 0, 200, 100)))
            return false;
        ShowWindow(SW_SHOWNA);
        return true;
    }
    LRESULT OnAppLanguage(UINT wParam, LPARAM lParam) override
    {
        m_languages += static_cast<int>(wParam);
        return CKelGenFrameWnd::OnAppLanguage(wParam, lParam);
    }

    int m_languages = 0;
};

/// Takes the thread's waiting messages; true when WM_QUIT was one of them.
inline bool DrainForQuit()
{
    bool quit = false;
    for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
        quit |= message.message == WM_QUIT;
        ::DispatchMessageA(&message);
    }
    return quit;
}

}  // namespace kelgen::test
