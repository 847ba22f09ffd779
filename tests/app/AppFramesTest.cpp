// AppFramesTest.cpp: what the application does with its list of frames, and which INI file it takes.
#include <kelgen/app/AppIniFile.h>

#include "app/TestApp.h"
#include "framework/Traffic.h"
#include "support/Scratch.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>

using namespace kelgen::test;

namespace {

constexpr UINT kNews = WM_APP + 0x200;

/// Adds a name when one of the messages comes that frames are sent.
void Note(const std::string& name, UINT message, WPARAM wParam)
{
    if (message == WM_IDLEUPDATECMDUI)
        Traffic::Add(name + (wParam ? ":idle" : ":idle without disabling"));
    else if (message == kNews || message == CKelGenApp::APPM_LANGUAGE)
        Traffic::Add(name);
}

class Child : public CWnd
{
public:
    explicit Child(std::string name) : m_name(std::move(name)) {}
    bool CreateIn(CWnd& parent) { return CreateEx(0, AfxRegisterWndClass(0), "", WS_CHILD, CRect(0, 0, 9, 9), &parent, 1) != FALSE; }
    std::function<void()> m_onNews;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Note(m_name, message, wParam);
        if (message == kNews && m_onNews)
            m_onNews();
        return CWnd::WindowProc(message, wParam, lParam);
    }

private:
    std::string m_name;
};

class Recorded : public TestFrame
{
public:
    explicit Recorded(std::string name) : m_name(std::move(name)) {}
    std::function<void()> m_onIdle, m_onNews;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Note(m_name, message, wParam);
        if (message == WM_IDLEUPDATECMDUI && m_onIdle)
            std::exchange(m_onIdle, nullptr)();
        if (message == kNews && m_onNews) {
            std::exchange(m_onNews, nullptr)();
            return 0;
        }
        return TestFrame::WindowProc(message, wParam, lParam);
    }

private:
    std::string m_name;
};

/// A window without an object.
HWND PlainChild(HWND parent)
{
    WNDCLASSA kind{};
    kind.lpszClassName = "kelgen test plain";
    kind.hInstance = AfxGetInstanceHandle();
    kind.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        Note("plain", message, wParam);
        return ::DefWindowProcA(window, message, wParam, lParam);
    };
    ::RegisterClassA(&kind);
    return ::CreateWindowExA(0, kind.lpszClassName, "", WS_CHILD, 0, 0, 9, 9, parent, nullptr, kind.hInstance, nullptr);
}

class AppFrames : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_main.CreateShown() && m_side.CreateShown() && m_hidden.CreateShown());
        m_hidden.ShowWindow(SW_HIDE);
        ASSERT_TRUE(m_child.CreateIn(m_side) && m_grandchild.CreateIn(m_child));
        ASSERT_NE(nullptr, PlainChild(m_child.m_hWnd));
        m_app.AddFrame(nullptr);
        m_app.AddFrame(&m_windowless);
        m_app.m_pMainWnd = &m_main;
        DrainForQuit();
        Traffic::Take();
    }
    void TearDown() override { m_app.m_pMainWnd = nullptr; }

    /// The application's own part of idle work; the base does it all once more.
    std::string Idle()
    {
        m_app.OnIdle(1);
        return Traffic::Take();
    }

    TestApp m_app;
    Recorded m_main{"main"}, m_side{"side"}, m_hidden{"hidden"}, m_windowless{"windowless"};
    Child m_child{"child"}, m_grandchild{"grandchild"};
};

/// An application with a folder and title of its own.
class Titled : public TestApp
{
public:
    void GetAppDir(CString& dir) override { dir = m_dir.c_str(); }
    void GetIniFileTitle(CString& title) override { title = "Titled"; }

    std::string m_dir = ScratchFolder().string();
};

void Write(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace

TEST_F(AppFrames, VisibleSideFramesAreUpdatedWhenIdle)
{
    EXPECT_EQ("side:idle child:idle grandchild:idle", Idle()) << "windows without an object are not";

    // The list is read anew at each step.
    Recorded added("added");
    m_side.m_onIdle = [&] {
        EXPECT_TRUE(added.CreateShown());
        m_child.DestroyWindow();
    };
    EXPECT_EQ("side:idle added:idle", Idle());
    m_side.m_onIdle = [&] { added.DestroyWindow(); };
    EXPECT_EQ("side:idle", Idle());
    ASSERT_TRUE(added.CreateShown());
    m_side.m_onIdle = [&] { m_side.DestroyWindow(); };
    EXPECT_EQ("side:idle added:idle", Idle());
    EXPECT_EQ("added:idle", Idle());
}

TEST_F(AppFrames, MessagesReachAllWindowsOfAllFrames)
{
    const char* const all = "main side child grandchild plain hidden";
    m_app.SendMessageToWindows(kNews, 1, 2);
    EXPECT_EQ(all, Traffic::Take());
    MSG queued{nullptr, CKelGenApp::APPM_LANGUAGE, CKelGenApp::WPARAM_LANGUAGE_UPDATE, 0, 0, {}};
    EXPECT_TRUE(m_app.PreTranslateMessage(&queued)) << "a message of the thread";
    EXPECT_EQ(all, Traffic::Take());
    EXPECT_EQ(1, m_side.m_languages);
    EXPECT_THROW(static_cast<void>(m_app.GetWndArray()[5]), CInvalidArgException*);
    EXPECT_THROW(static_cast<void>(m_app.GetWndArray()[-1]), CInvalidArgException*);
}

TEST(AppFrameWalk, FrameThatStaysIsToldOnceWhateverOthersDo)
{
    TestApp app;
    std::optional<Recorded> a, b, c;
    struct Row
    {
        const char* name;
        std::optional<Recorded>* actor;
        std::function<void()> act;
        const char* expected;
    };
    const Row rows[] = {
        {"the frame itself ends", &a, [&] { a->DestroyWindow(); }, "a b c"},
        {"itself, and it comes back", &a, [&] { EXPECT_TRUE(a->DestroyWindow() && a->CreateShown()); }, "a b c"},
        {"with its object", &a, [&] { a.reset(); }, "a b c"},
        {"an earlier one", &b, [&] { a->DestroyWindow(); }, "a b c"},
        {"a later one", &a, [&] { b->DestroyWindow(); }, "a c"},
        {"a new one at the place of an earlier one", &b, [&] { EXPECT_TRUE(a.emplace("new").CreateShown()); }, "a b c new"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(a.emplace("a").CreateShown() && b.emplace("b").CreateShown() && c.emplace("c").CreateShown());
        (*row.actor)->m_onNews = row.act;
        Traffic::Take();
        app.SendMessageToWindows(kNews, 1, 2);
        EXPECT_EQ(row.expected, Traffic::Take());
        a.reset();
        b.reset();
        c.reset();
    }

    Recorded parent("parent");
    Child first("first"), second("second"), third("third");
    ASSERT_TRUE(parent.CreateShown() && first.CreateIn(parent) && second.CreateIn(parent) && third.CreateIn(parent));
    second.m_onNews = [&] { second.DestroyWindow(); };
    Traffic::Take();
    app.SendMessageToWindows(kNews, 1, 2);
    EXPECT_EQ("parent first second third", Traffic::Take()) << "a child that ends itself";
}

TEST(AppInstance, NeedsItsMessageWindowAndIsTheLibrarysOwn)
{
    {
        class NoWindow : public TestApp
        {
            bool CreateMessageWindow() override { return false; }
        } app;
        EXPECT_FALSE(app.InitInstance());
        CString path;
        app.GetModuleFilePath(path);
        EXPECT_TRUE(path.IsEmpty());
    }
    const QuietApp other;
    EXPECT_EQ(nullptr, gen::GetApp());
    EXPECT_THROW(gen::GetAppIntegerMap(), CInvalidArgException*);
}

TEST(AppInstance, IniFileOfTheProgramsFolderComesFirst)
{
    Titled app;
    const std::filesystem::path before = std::filesystem::current_path();
    const std::string here = ScratchFolder().string();
    std::filesystem::create_directory(here + "/here");
    std::filesystem::current_path(here + "/here");
    Write("Titled.ini", "[Main]\nColor=current\n");
    CString path;
    app.CalcIniFilePathName(path);
    EXPECT_STREQ("Titled.ini", path);
    Write(app.m_dir + "/Titled.ini", "[Main]\nColor=program\n");
    app.GetIniFilePathName(path);
    EXPECT_STREQ((app.m_dir + "\\Titled.ini").c_str(), path);
    EXPECT_STREQ("program", _kelgen::CAppIniFile().GetPropertyValue("Main", "Color"));

    std::string rubbish(70000, '[');
    for (std::size_t i = 0; i < rubbish.size(); ++i)
        rubbish[i] = static_cast<char>(i * i % 251);
    for (const std::string& bytes : {rubbish, rubbish + "\n[Main]\nColor=last\n", std::string("[Main\nColor"), std::string()}) {
        Write(app.m_dir + "/Titled.ini", bytes);
        const CString found(_kelgen::CAppIniFile().GetPropertyValue("Main", "Color"));
        EXPECT_STREQ(bytes.size() > rubbish.size() ? "last" : "", found) << bytes.size() << " bytes";
    }
    std::filesystem::current_path(before);
    std::filesystem::remove(app.m_dir + "/Titled.ini");
}
