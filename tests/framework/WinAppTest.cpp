// WinAppTest.cpp: the application object's names and its profile in both places; threads.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Synchronization.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

#include "support/Scratch.h"

#include <cstring>

using namespace kelgen::test;

namespace {

/// An application whose profile lies in the registry or in a file, and is gone at the end.
class ProfileApp : public CWinApp
{
public:
    explicit ProfileApp(bool inRegistry) : CWinApp("Profile Test")
    {
        if (inRegistry)
            SetRegistryKey("Kelgen Framework Test");
        else
            m_pszProfileName = _strdup(ScratchFile("profile.ini").c_str());
    }

    ~ProfileApp() override { DelRegTree(HKEY_CURRENT_USER, "Software\\Kelgen Framework Test"); }
};

class Profile : public testing::TestWithParam<bool>
{
protected:
    ProfileApp m_app{GetParam()};
};

}  // namespace

TEST(WinApp, IsTheModulesApplicationWhileItLives)
{
    EXPECT_EQ(nullptr, AfxGetApp());
    {
        CWinApp app("Named");
        EXPECT_EQ(&app, AfxGetApp());
        EXPECT_EQ(&app, AfxGetThread());
        AFX_MODULE_STATE other(TRUE, nullptr);
        AFX_MANAGE_STATE(&other);
        EXPECT_EQ(nullptr, AfxGetApp());
    }
    EXPECT_EQ(nullptr, AfxGetApp());
    EXPECT_EQ(nullptr, AfxGetThread());
}

TEST(WinApp, StartNamesWhatHasNoName)
{
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    CString stem(path);
    if (stem.Right(4).CompareNoCase(".exe") == 0)
        stem = stem.Left(stem.GetLength() - 4);
    const CString name = stem.Mid(stem.ReverseFind('\\') + 1);

    CWinApp app;
    char commandLine[] = "arguments";
    EXPECT_TRUE(AfxWinInit(GetModuleHandleA(nullptr), nullptr, commandLine, 5));
    EXPECT_EQ(GetModuleHandleA(nullptr), app.m_hInstance);
    EXPECT_EQ(commandLine, app.m_lpCmdLine);
    EXPECT_EQ(5, app.m_nCmdShow);
    EXPECT_STREQ(name, app.m_pszExeName);
    EXPECT_STREQ("Title of the program", app.m_pszAppName);
    EXPECT_STREQ("Title of the program", AfxGetAppName());
    EXPECT_EQ(name + ".INI", app.m_pszProfileName);
    EXPECT_EQ(stem + ".HLP", app.m_pszHelpFilePath);

    app.SetRegistryKey(100u);
    EXPECT_STREQ("program", app.m_pszRegistryKey);
    EXPECT_STREQ("Title of the program", app.m_pszProfileName);
    EXPECT_THROW(app.SetRegistryKey(4711u), CInvalidArgException*);
    EXPECT_THROW(CWinApp().SetRegistryKey("no name yet"), CInvalidArgException*);
}

TEST_P(Profile, ValuesComeBackAndDefaultsStandIn)
{
    EXPECT_EQ(7u, m_app.GetProfileInt("Section", "Number", 7));
    EXPECT_TRUE(m_app.WriteProfileInt("Section", "Number", -12));
    EXPECT_EQ(-12, static_cast<int>(m_app.GetProfileInt("Section", "Number", 7)));

    EXPECT_EQ("default", m_app.GetProfileString("Section", "Text", "default"));
    EXPECT_EQ("", m_app.GetProfileString("Section", "Text"));
    for (const char* value : {"some text", "", "caf\xe9 = [x]; y"}) {
        EXPECT_TRUE(m_app.WriteProfileString("Section", "Text", value));
        EXPECT_EQ(value, m_app.GetProfileString("Section", "Text", "default"));
    }
    const CString longText('l', 20000);
    EXPECT_TRUE(m_app.WriteProfileString("Section", "Text", longText));
    EXPECT_EQ(longText, m_app.GetProfileString("section", "text"));
    EXPECT_EQ("", m_app.GetProfileString("Other", "Text"));
}

TEST_P(Profile, NullRemovesEntryOrSection)
{
    m_app.WriteProfileString("Section", "First", "1");
    m_app.WriteProfileString("Section", "Second", "2");
    EXPECT_TRUE(m_app.WriteProfileString("Section", "First", nullptr));
    EXPECT_EQ("gone", m_app.GetProfileString("Section", "First", "gone"));
    EXPECT_EQ("2", m_app.GetProfileString("Section", "Second", "gone"));
    EXPECT_TRUE(m_app.WriteProfileString("Section", nullptr, nullptr));
    EXPECT_EQ("gone", m_app.GetProfileString("Section", "Second", "gone"));
}

TEST_P(Profile, BytesComeBack)
{
    BYTE* data = nullptr;
    UINT size = 5;
    EXPECT_FALSE(m_app.GetProfileBinary("Section", "Bytes", &data, &size));
    EXPECT_EQ(nullptr, data);
    EXPECT_EQ(0u, size);

    BYTE bytes[256];
    for (int i = 0; i < 256; ++i)
        bytes[i] = static_cast<BYTE>(i);
    EXPECT_TRUE(m_app.WriteProfileBinary("Section", "Bytes", bytes, sizeof bytes));
    ASSERT_TRUE(m_app.GetProfileBinary("Section", "Bytes", &data, &size));
    const std::unique_ptr<BYTE[]> owned(data);
    ASSERT_EQ(sizeof bytes, size);
    EXPECT_EQ(0, std::memcmp(bytes, data, size));
}

INSTANTIATE_TEST_SUITE_P(, Profile, testing::Bool(), [](const auto& row) { return row.param ? "Registry" : "File"; });

TEST(ProfileForms, FileHoldsLettersLowFourBitsFirst)
{
    ProfileApp app(false);
    BYTE bytes[] = {0x1F, 0xA0};
    app.WriteProfileBinary("Section", "Bytes", bytes, 2);
    EXPECT_EQ("PBAK", app.GetProfileString("Section", "Bytes"));
    EXPECT_NE(std::string::npos, ReadBytes(app.m_pszProfileName).find("Bytes=PBAK"));

    app.WriteProfileString("Section", "Bytes", "PBA");
    BYTE* data = nullptr;
    UINT size = 0;
    ASSERT_TRUE(app.GetProfileBinary("Section", "Bytes", &data, &size));
    const std::unique_ptr<BYTE[]> owned(data);
    ASSERT_EQ(1u, size) << "half a byte does not count";
    EXPECT_EQ(0x1F, data[0]);
}

TEST(ProfileForms, RegistryHoldsTypedValuesBelowCompanyAndName)
{
    ProfileApp app(true);
    app.WriteProfileInt("Section", "Number", 5);
    app.WriteProfileString("Section", "Text", "five");
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyA(HKEY_CURRENT_USER, "Software\\Kelgen Framework Test\\Profile Test\\Section", &key));
    DWORD type = 0;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "Number", nullptr, &type, nullptr, nullptr));
    EXPECT_EQ(REG_DWORD, type);
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "Text", nullptr, &type, nullptr, nullptr));
    EXPECT_EQ(REG_SZ, type);
    RegCloseKey(key);

    EXPECT_EQ("default", app.GetProfileString("Section", "Number", "default")) << "a value of another type";
    EXPECT_EQ(8u, app.GetProfileInt("Section", "Text", 8));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, app.DelRegTree(HKEY_CURRENT_USER, ""));
    EXPECT_EQ(ERROR_SUCCESS, app.DelRegTree(HKEY_CURRENT_USER, "Software\\Kelgen Framework Test"));
    EXPECT_NE(ERROR_SUCCESS, RegOpenKeyA(HKEY_CURRENT_USER, "Software\\Kelgen Framework Test", &key));
}

namespace {

struct Seen
{
    CEvent done;
    CWinThread* thread = nullptr;
    AFX_MODULE_STATE* state = nullptr;
    DWORD id = 0;
    bool endEarly = false;
};

UINT Look(LPVOID parameter)
{
    const auto seen = static_cast<Seen*>(parameter);
    seen->thread = AfxGetThread();
    seen->state = AfxGetModuleState();
    seen->id = GetCurrentThreadId();
    const bool endEarly = seen->endEarly;  // the waiter may end with what it lent us
    seen->done.SetEvent();
    if (endEarly)
        AfxEndThread(77);
    return 42;
}

}  // namespace

TEST(WinThread, RunsInTheStartersStateWithItsOwnObject)
{
    AFX_MODULE_STATE state(TRUE, nullptr);
    AFX_MANAGE_STATE(&state);
    for (const bool endEarly : {false, true}) {
        Seen seen;
        seen.endEarly = endEarly;
        CWinThread* const thread = AfxBeginThread(&Look, &seen, THREAD_PRIORITY_BELOW_NORMAL, 0, CREATE_SUSPENDED);
        ASSERT_NE(nullptr, thread);
        thread->m_bAutoDelete = FALSE;
        EXPECT_EQ(THREAD_PRIORITY_BELOW_NORMAL, thread->GetThreadPriority());
        EXPECT_FALSE(seen.done.Lock(0)) << "suspended";
        EXPECT_FALSE(thread->CreateThread()) << "started already";
        thread->ResumeThread();
        ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(thread->m_hThread, 20000));
        EXPECT_EQ(thread, seen.thread);
        EXPECT_EQ(&state, seen.state);
        EXPECT_EQ(thread->m_nThreadID, seen.id);
        DWORD exitCode = 0;
        EXPECT_TRUE(GetExitCodeThread(thread->m_hThread, &exitCode));
        EXPECT_EQ(endEarly ? 77u : 42u, exitCode);
        delete thread;
    }
}

TEST(WinThread, DeletesItself)
{
    Seen seen;
    ASSERT_NE(nullptr, AfxBeginThread(&Look, &seen));
    EXPECT_TRUE(seen.done.Lock(20000));
    EXPECT_NE(GetCurrentThreadId(), seen.id);
}

TEST(ProfileRegistry, ValuesOfOtherKindsAndSizesAreNotRead)
{
    ProfileApp app(true);
    const HKEY key = app.GetSectionKey("Section");
    ASSERT_NE(nullptr, key);
    // binary: the size; -1 when it is not read.
    struct Row
    {
        const char* name;
        DWORD kind;
        std::string bytes;
        UINT number;
        const char* text;
        int binary;
    };
    const std::string dword("\x05\0\0\0", 4);
    for (const Row& row : {Row{"dword", REG_DWORD, dword, 5, "none", -1},
                           {"short dword", REG_DWORD, "\x05\x01", 7, "none", -1},
                           {"long dword", REG_DWORD, dword + dword, 7, "none", -1},
                           {"empty dword", REG_DWORD, "", 7, "none", -1},
                           {"binary", REG_BINARY, dword, 7, "none", 4},
                           {"empty binary", REG_BINARY, "", 7, "none", 0},
                           {"text", REG_SZ, std::string("five", 5), 7, "five", -1},
                           {"open text", REG_SZ, "five", 7, "five", -1},
                           {"text with more", REG_SZ, std::string("a\0b", 4), 7, "a", -1},
                           {"expandable text", REG_EXPAND_SZ, std::string("five", 5), 7, "none", -1}}) {
        const auto* const bytes = reinterpret_cast<const BYTE*>(row.bytes.data());
        ASSERT_EQ(ERROR_SUCCESS, RegSetValueExA(key, "Value", 0, row.kind, bytes, static_cast<DWORD>(row.bytes.size())));
        EXPECT_EQ(row.number, app.GetProfileInt("Section", "Value", 7)) << row.name;
        EXPECT_STREQ(row.text, app.GetProfileString("Section", "Value", "none")) << row.name;
        BYTE* data = nullptr;
        UINT size = 0;
        EXPECT_EQ(row.binary >= 0, app.GetProfileBinary("Section", "Value", &data, &size) != FALSE) << row.name;
        EXPECT_EQ(row.binary < 0 ? 0u : static_cast<UINT>(row.binary), size) << row.name;
        EXPECT_TRUE(size == 0 || row.bytes == std::string(reinterpret_cast<const char*>(data), size)) << row.name;
        delete[] data;
    }
    RegCloseKey(key);
}
