// MonitorWindowTest.cpp: the monitor inside the test's process: its frame, list, dialog and language, and its end.
#include "MonitorApp.h"
#include "Resource.h"
#include "Texts.h"

#include "support/Scratch.h"
#include "support/Threads.h"

using namespace kelgen::test;

namespace {

class MonitorWindow : public testing::Test
{
protected:
    MonitorWindow()
    {
        Forget();
        WriteBytes((m_folder / "a").string(), "first");
        WriteBytes((m_folder / "b").string(), "second");
        m_arguments = "\"" + std::string(FullPath(m_folder.string().c_str())) + "\"";
        m_app.m_lpCmdLine = m_arguments.data();
        // Wine takes its time to show a window where no window manager is.
        m_app.m_nCmdShow = SW_HIDE;
    }
    ~MonitorWindow() override
    {
        m_app.ExitInstance();
        texts::SetLanguage(texts::languageEnglish);
        Forget();
    }

    static void Forget() { ::RegDeleteKeyA(HKEY_CURRENT_USER, CSettings::registryKey); }

    /// Handles messages and idle work until the condition holds; false at the deadline, and at the program's end unless that is it.
    bool RunUntil(const std::function<bool()>& condition)
    {
        for (const DWORD start = ::GetTickCount(); !condition();) {
            MSG message;
            if (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
                m_hasQuit |= m_app.PumpMessage() == FALSE;
            else
                Sleep(1);
            m_app.OnIdle(0);
            if (::GetTickCount() - start > kDeadline)
                return false;
        }
        return true;
    }
    bool Scanned()
    {
        return RunUntil([this] { return m_app.GetMonitor().GetScanner().IsDone(); });
    }
    /// The list's rows: "name event, ".
    std::string Rows()
    {
        std::string rows;
        CFileListCtrl& list = m_app.GetFrame()->GetList();
        for (int i = 0; i < list.GetItemCount(); ++i)
            rows += std::string(list.GetItemText(i, 0)) + ' ' + std::string(list.GetItemText(i, 4)) + ", ";
        return rows;
    }
    bool ShowsRows(const std::string& rows)
    {
        return RunUntil([&] { return Rows() == rows; });
    }
    std::string Status() { return std::string(Text(::GetDlgItem(m_app.GetFrame()->m_hWnd, 1))); }
    static CString Text(HWND window)
    {
        char text[300] = "";
        ::GetWindowTextA(window, text, sizeof text);
        return text;
    }
    void Command(UINT id) { m_app.GetFrame()->SendMessage(WM_COMMAND, id); }
    HWND OpenDialog(const char* title)
    {
        Command(ID_FILE_SETTINGS);
        return ::FindWindowA(nullptr, title);
    }

    const std::filesystem::path m_folder = ScratchFolder();
    std::string m_arguments;
    CMonitorApp m_app;
    bool m_hasQuit = false;
};

}  // namespace

TEST_F(MonitorWindow, ShowsFilesAndWhatHappensToThem)
{
    ASSERT_TRUE(m_app.InitInstance());
    ASSERT_TRUE(Scanned());
    EXPECT_EQ("a found, b found, ", Rows());
    EXPECT_EQ("Watching 2 files, folders: 1", Status());
    EXPECT_STREQ("Monitor - " + m_app.GetMonitor().GetRoot(), Text(m_app.GetFrame()->m_hWnd));

    WriteBytes((m_folder / "a").string(), "another");
    EXPECT_TRUE(ShowsRows("a changed, b found, ")) << Rows();
    std::filesystem::remove(m_folder / "b");
    EXPECT_TRUE(ShowsRows("a changed, b removed, ")) << Rows();
    WriteBytes((m_folder / "c").string(), "new");
    EXPECT_TRUE(ShowsRows("a changed, b removed, c added, ")) << Rows();
    // In the same second, which the watcher does not see.
    WriteBytes((m_folder / "c").string(), "newer");
    EXPECT_TRUE(ShowsRows("a changed, b removed, c changed, ")) << Rows();
    Sleep(20);
    WriteBytes((m_folder / "c").string(), "newer");
    EXPECT_TRUE(ShowsRows("a changed, b removed, c written, same content, ")) << Rows();
    EXPECT_EQ("Watching 2 files, folders: 1", Status());

    std::filesystem::remove_all(m_folder);
    EXPECT_TRUE(ShowsRows("a removed, b removed, c removed, ")) << Rows();
    std::filesystem::create_directory(m_folder);
    WriteBytes((m_folder / "a").string(), "again");
    EXPECT_TRUE(ShowsRows("a added, b removed, c removed, ")) << Rows();
    Command(ID_FILE_RESCAN);
    EXPECT_TRUE(ShowsRows("a found, ")) << Rows();
}

TEST_F(MonitorWindow, ChangesItsLanguageAndItsFolder)
{
    ASSERT_TRUE(m_app.InitInstance());
    ASSERT_TRUE(Scanned());
    const HWND english = OpenDialog("Settings");
    ASSERT_TRUE(::IsWindow(english));
    EXPECT_EQ(english, OpenDialog("Settings")) << "there is one";
    Command(ID_LANGUAGE_FIRST + texts::languageGerman);
    EXPECT_TRUE(ShowsRows("a gefunden, b gefunden, ")) << Rows();
    EXPECT_EQ("Beobachte 2 Dateien, Ordner: 1", Status());
    CString menu;
    m_app.GetFrame()->GetMenu()->GetMenuString(0, menu, MF_BYPOSITION);
    EXPECT_STREQ("&Datei", menu);
    EXPECT_FALSE(::IsWindow(english));

    const auto other = ScratchFolder();
    WriteBytes((other / "o").string(), "");
    const HWND dialog = ::FindWindowA(nullptr, "Einstellungen");
    ASSERT_TRUE(::IsWindow(dialog)) << "it is open in the new language";
    ::SetDlgItemTextA(dialog, IDC_FOLDER, FullPath(other.string().c_str()));
    ::SetDlgItemTextA(dialog, IDC_MOST_FILES, "5001");
    ::CheckRadioButton(dialog, IDC_ENGLISH, IDC_GERMAN, IDC_ENGLISH);
    ::SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    ASSERT_TRUE(::IsWindow(dialog)) << "too many files";
    ::SetDlgItemTextA(dialog, IDC_MOST_FILES, "7");
    ::SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_FALSE(::IsWindow(dialog));
    EXPECT_TRUE(ShowsRows("o found, ")) << Rows();

    const HWND again = OpenDialog("Settings");
    ::SetDlgItemTextA(again, IDC_FOLDER, "Z:\\missing\\folder");
    ::SendMessageA(again, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(RunUntil([this] { return Status().starts_with("cannot read the folder Z:\\missing\\folder"); })) << Status();
    EXPECT_EQ("o found, ", Rows()) << "the one before stays";
}

// In French its dialog is rubbish, and its menu English.
TEST_F(MonitorWindow, LivesWithoutItsDialog)
{
    constexpr LANGID kFrench = MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH);
    ASSERT_TRUE(m_app.InitInstance());
    ::SetThreadUILanguage(kFrench);
    ::SetThreadLocale(kFrench);
    testing::internal::CaptureStderr();
    Command(ID_FILE_SETTINGS);
    EXPECT_EQ("monitor: no dialog\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ("no dialog", Status());
    texts::SetLanguage(texts::languageEnglish);
    EXPECT_TRUE(::IsWindow(OpenDialog("Settings")));
}

TEST_F(MonitorWindow, KeepsItsPlaceAndSettingsWhenItIsClosed)
{
    ASSERT_TRUE(m_app.InitInstance());
    m_app.GetFrame()->SetWindowPos(nullptr, 40, 30, 500, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    m_app.GetFrame()->PostMessage(WM_CLOSE);
    EXPECT_TRUE(RunUntil([this] { return m_hasQuit; }));
    EXPECT_EQ(0, m_app.ExitInstance());
    CSettings remembered;
    CStrArray complaints;
    EXPECT_TRUE(remembered.Load(complaints));
    EXPECT_EQ(0, complaints.GetSize());
    EXPECT_STREQ(FullPath(m_folder.string().c_str()), remembered.GetText(CSettings::idFolder));
    EXPECT_EQ(40, remembered.GetInteger(CSettings::idLeft));
    EXPECT_EQ(300, remembered.GetInteger(CSettings::idHeight));
}
