// AppTest.cpp: the application object: its paths and INI file, its frames, and messages to threads.
#include "app/TestApp.h"

#include <kelgen/app/AppIniFile.h>

#include "support/Scratch.h"

#include <filesystem>
#include <fstream>
#include <thread>

using namespace kelgen::test;

namespace {

class App : public testing::Test
{
protected:
    TestApp m_app;
};

/// A thread's message as the application's loop sees it.
BOOL Route(CKelGenApp& app, UINT message, WPARAM wParam, LPARAM lParam, HWND window = nullptr)
{
    MSG queued{window, message, wParam, lParam, 0, {}};
    return app.PreTranslateMessage(&queued);
}

class Tracked : public CTrackable
{
public:
    void OnMessage(UINT wParam, LPARAM lParam) { m_sum += wParam + static_cast<UINT>(lParam); }

    UINT m_sum = 0;
};

CKelGenApp::Function Handler()
{
    return static_cast<CKelGenApp::Function>(&Tracked::OnMessage);
}

}  // namespace

TEST_F(App, KnowsItsPathsAndName)
{
    EXPECT_EQ(&m_app, gen::GetApp());
    CString text;
    m_app.GetAppDir(text);
    EXPECT_TRUE(text.IsEmpty()) << "before it is initialised";
    ASSERT_TRUE(m_app.InitInstance());
    EXPECT_NE(nullptr, m_app.GetMessageWindow());

    char module[MAX_PATH];
    ::GetModuleFileNameA(nullptr, module, MAX_PATH);
    CString path(module);
    CString folder = path.Left(path.ReverseFind('\\') + 1);
    CString name = path.Mid(folder.GetLength());
    if (name.Right(4).CompareNoCase(".exe") == 0)
        name = name.Left(name.GetLength() - 4);
    m_app.GetModuleFilePath(text);
    EXPECT_STREQ(path, text);
    m_app.GetModuleFolder(text);
    EXPECT_STREQ(folder, text);
    m_app.GetAppDir(text);
    EXPECT_STREQ(folder.Left(folder.GetLength() - 1), text);
    m_app.GetAppName(text);
    EXPECT_STREQ(name, text);
    m_app.GetTempFilePath(text, "kel");
    EXPECT_TRUE(::DeleteFileA(text)) << "the file is made";
}

TEST_F(App, IniFileIsLookedForInTheCurrentFolderToo)
{
    ASSERT_TRUE(m_app.InitInstance());
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(ScratchFolder());
    CString path;
    m_app.GetIniFilePathName(path);
    EXPECT_TRUE(path.IsEmpty());
    CString name;
    m_app.GetAppName(name);
    {
        std::ofstream file(std::string(name) + ".ini");
        file << "[Main]\nColor=green\n";
    }
    m_app.GetIniFilePathName(path);
    EXPECT_STREQ(name + ".ini", path);
    EXPECT_STREQ("green", _kelgen::CAppIniFile().GetPropertyValue("Main", "Color"));
    ::DeleteFileA(path);
    m_app.GetIniFilePathName(path);
    EXPECT_STREQ(name + ".ini", path) << "found once";
    std::filesystem::current_path(before);
}

TEST_F(App, FramesAreListedOnceAndHandTheMainWindowOn)
{
    TestFrame first;
    TestFrame second;
    ASSERT_TRUE(first.CreateShown() && second.CreateShown());
    m_app.AddFrame(&first);
    m_app.m_pMainWnd = &first;
    EXPECT_EQ(2, m_app.GetVisibleFrameCount());
    EXPECT_EQ(1, m_app.GetVisibleFrameCountExcept(&first));
    second.ShowWindow(SW_HIDE);
    EXPECT_EQ(1, m_app.GetVisibleFrameCount());
    EXPECT_EQ(nullptr, m_app.GetMDIFrame());

    CBaseArray<CWnd*, CWnd*> frames;
    static_cast<const CKelGenWndArray&>(m_app).CKelGenWndArray::GetWndArray(frames);
    EXPECT_EQ(2, frames.GetSize());

    m_app.OnAppLanguage(CKelGenApp::WPARAM_LANGUAGE_UPDATE, 0);
    EXPECT_EQ(1, first.m_languages);
    EXPECT_EQ(1, second.m_languages);

    first.DestroyWindow();
    EXPECT_EQ(&second, m_app.m_pMainWnd);
    second.DestroyWindow();
    EXPECT_EQ(&second, m_app.m_pMainWnd) << "the last one stays";
    EXPECT_EQ(0, m_app.GetVisibleFrameCount());
    m_app.m_pMainWnd = nullptr;
}

TEST_F(App, ThreadMessagesAreForwardedBeforeFunctionsSeeThem)
{
    Tracked tracked;
    m_app.AddFunction(WM_APP + 1, &tracked, Handler());
    EXPECT_TRUE(Route(m_app, WM_APP + 1, 3, 4));
    EXPECT_EQ(7u, tracked.m_sum);
    EXPECT_FALSE(Route(m_app, WM_APP + 2, 1, 1));
    EXPECT_FALSE(Route(m_app, WM_APP + 1, 1, 1, ::GetDesktopWindow())) << "messages of windows are not routed";

    const DWORD here = ::GetCurrentThreadId();
    std::thread([&] { m_app.ForwardMessageToThread(here, WM_APP + 1); }).join();
    DrainForQuit();
    EXPECT_TRUE(Route(m_app, WM_APP + 1, 8, 9));
    EXPECT_EQ(7u, tracked.m_sum);
    MSG message;
    ASSERT_TRUE(::PeekMessageA(&message, nullptr, WM_APP + 1, WM_APP + 1, PM_REMOVE));
    EXPECT_EQ(8u, message.wParam);
    EXPECT_EQ(9, message.lParam);
}

TEST_F(App, ObjectsThatEndLeaveTheFunctionTable)
{
    Tracked stays;
    m_app.AddFunction(WM_APP + 1, &stays, Handler());
    auto ends = std::make_unique<Tracked>();
    for (UINT message = WM_APP + 2; message < WM_APP + 40; ++message)
        m_app.AddFunction(message, ends.get(), Handler());
    m_app.AddFunction(WM_APP + 9, &stays, Handler());
    ends.reset();
    for (UINT message = WM_APP + 1; message < WM_APP + 40; ++message)
        EXPECT_EQ(message == WM_APP + 1 || message == WM_APP + 9, Route(m_app, message, 1, 2) != FALSE) << message;
    EXPECT_EQ(6u, stays.m_sum);
}

TEST_F(App, RawResourcesBecomeFiles)
{
    const std::string path = ScratchFile("raw");
    EXPECT_FALSE(m_app.CreateFileFromRawResource(299, "BLOB", path.c_str()));
    EXPECT_TRUE(m_app.CreateFileFromRawResource(300, "BLOB", path.c_str()));
    EXPECT_EQ("raw resource", ReadBytes(path));
    EXPECT_TRUE(m_app.CreateFileFromRawResource(300, "BLOB", (path + "/none/file").c_str())) << "a file that fails is no failure";
}

TEST_F(App, OwnersKeepIntegersInTheApplication)
{
    class Owner : public CBaseComparable
    {
        int Compare(const CBaseComparable&) const override { return 0; }
    } owner;
    gen::GetAppIntegerMap().Set(&owner, 1, 42);
    int value = 0;
    EXPECT_TRUE(gen::GetAppIntegerMap().Get(&owner, 1, value));
    EXPECT_EQ(42, value);
}
