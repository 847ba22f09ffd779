// SavingsTest.cpp: flags that write themselves out, settings in the profile, and the library's exception.
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/system/DBInterface.h>
#include <kelgen/system/KELException.h>
#include <kelgen/system/Savings.h>

#include "support/Scratch.h"

#include <atomic>
#include <thread>
#include <utility>

using namespace kelgen::test;

enum CSavings::ESaveWhat : int
{
    saveWindows = 3,
    saveHistory = 8,
};

namespace {

class RecordingStore : public CFlagsStore
{
public:
    void WriteEntry(const char* name, int value) override { written += std::string(name) + '=' + std::to_string(value) + ' '; }

    std::string written;
};

class HostApp : public CWinApp, public CSavings
{
public:
    HostApp() : CWinApp("kelgen-test") { SetRegistryKey("kelgen-tests"); }
};

HostApp& App()
{
    static HostApp& app = *new HostApp;
    return app;
}

}  // namespace

TEST(Savings, EachChangeWritesCountAndEntries)
{
    App();
    auto& flags = CSavings::AppGetSavings().SavingsSaveWhat();
    RecordingStore store;
    flags.Set(CSavings::saveHistory);
    flags.SetName("Save");
    flags.SetStore(&store);
    flags.Set(CSavings::saveWindows);
    EXPECT_EQ("Save.Count=2 Save[0]=8 Save[1]=3 ", store.written);
    store.written.clear();
    flags.Reset(CSavings::saveHistory);
    EXPECT_EQ("Save.Count=1 Save[0]=3 ", store.written);
    store.written.clear();
    flags.Reset(CSavings::saveHistory);
    EXPECT_EQ("", store.written);
    flags.SetStore(nullptr);
    flags.Reset(CSavings::saveWindows);
}

TEST(Savings, StoreMayLeaveWhileItIsWrittenTo)
{
    App();
    auto& flags = CSavings::AppGetSavings().SavingsSaveWhat();
    class Leaving : public RecordingStore
    {
    public:
        void WriteEntry(const char* name, int value) override
        {
            RecordingStore::WriteEntry(name, value);
            if (--m_stays == 0)
                CSavings::AppGetSavings().SavingsSaveWhat().SetStore(nullptr);
        }
        int m_stays = 0;
    } store;
    flags.SetName("Save");
    flags.Set(CSavings::saveHistory);
    flags.Set(CSavings::saveWindows);
    for (const auto& [stays, expected] : {std::pair(1, "Save.Count=2 "), std::pair(2, "Save.Count=2 Save[0]=8 ")}) {
        store.m_stays = stays;
        flags.SetStore(&store);
        flags.OnChangeSignalization(CSavings::saveHistory);
        EXPECT_EQ(expected, std::exchange(store.written, {}));
    }
    flags.Reset(CSavings::saveHistory);
    flags.Reset(CSavings::saveWindows);
}

TEST(DBInterface, ValueThatOthersWriteIsNeverMissing)
{
    HostApp& app = App();
    CDBInterface settings;
    settings.SetRegistrySection("Busy");
    ASSERT_TRUE(settings.DBSave("number", 1) && settings.DBSave("text", CString("x")));
    std::atomic<bool> stop = false;
    std::thread writer([&] {
        for (int i = 1; !stop; ++i) {
            app.WriteProfileInt("Busy", "number", i % 1000 + 1);
            app.WriteProfileString("Busy", "text", CString('x', i % 2000));
        }
    });
    int missing = 0;
    for (int i = 0; i < 300; ++i) {
        int number = 0;
        CString text;
        missing += !settings.DBLoad("number", number);
        missing += !settings.DBLoad("text", text);
    }
    stop = true;
    writer.join();
    EXPECT_EQ(0, missing);
}

TEST(DBInterface, TellsMissingFromStoredDefaults)
{
    App();
    CDBInterface settings;
    settings.SetRegistrySection("Section");
    int number = 77;
    EXPECT_FALSE(settings.DBLoad("missing", number));
    EXPECT_EQ(77, number);
    for (const int stored : {0, -1, 2147483647}) {
        EXPECT_TRUE(settings.DBSave("number", stored));
        EXPECT_TRUE(settings.DBLoad("number", number));
        EXPECT_EQ(stored, number);
    }
    CString text = "kept";
    EXPECT_FALSE(settings.DBLoad("missing", text));
    EXPECT_EQ("kept", std::string(text));
    for (const char* stored : {"", "1", "2", "longer text"}) {
        EXPECT_TRUE(settings.DBSave("text", CString(stored)));
        text = "other";
        EXPECT_TRUE(settings.DBLoad("text", text));
        EXPECT_EQ(std::string(stored), std::string(text));
    }
    EXPECT_TRUE(settings.DBGlobalSave("number", 5));
    CDBInterface elsewhere;
    EXPECT_TRUE(elsewhere.DBGlobalLoad("number", number));
    EXPECT_EQ(5, number);
}

TEST(DBInterface, WorksInTheNamelessSectionOfAFile)
{
    HostApp& app = App();
    const std::string file = ScratchFile("settings.ini");
    const LPCSTR key = std::exchange(app.m_pszRegistryKey, nullptr), name = std::exchange(app.m_pszProfileName, file.c_str());
    CDBInterface nameless, named;
    named.SetRegistrySection("Section");
    int number = 0;
    CString text;
    EXPECT_TRUE(named.DBSave("number", 1));
    EXPECT_TRUE(nameless.DBSave("number", 3));
    EXPECT_TRUE(nameless.DBSave("text", CString("t")));
    EXPECT_TRUE(nameless.DBLoad("number", number));
    EXPECT_EQ(3, number);
    EXPECT_TRUE(nameless.DBLoad("text", text));
    EXPECT_STREQ("t", text);
    EXPECT_TRUE(named.DBLoad("number", number));
    EXPECT_EQ(1, number);
    app.m_pszRegistryKey = key;
    app.m_pszProfileName = name;
}

TEST(KELException, CarriesItsCodeThroughTheFamily)
{
    try {
        AfxThrowKELException(-42);
    } catch (CException* exception) {
        ASSERT_TRUE(exception->IsKindOf(CKELException::GetThisClass()));
        EXPECT_STREQ("CKELException", exception->GetRuntimeClass()->m_lpszClassName);
        EXPECT_EQ(-42, static_cast<CKELException*>(exception)->m_code);
        char text[50];
        EXPECT_TRUE(exception->GetErrorMessage(text, sizeof text));
        EXPECT_STREQ("Error -42 was raised.", text);
        exception->Delete();
    }
}
