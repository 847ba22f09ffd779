// SettingsHostTest.cpp: the settings host as a process: its account, what a second run finds, and files that it cannot take.
#include <kelgen/persistence/Registry.h>

#include "examples/Program.h"

using namespace kelgen::test;

namespace {

constexpr char kKey[] = "Software\\kelgen\\settings_host";

Ended RunWith(const std::string& iniPath)
{
    return RunProgram(SETTINGS_HOST, "\"" + iniPath + "\"");
}

Ended RunWithBytes(const std::string& bytes)
{
    const std::string path = ScratchFile("test.ini");
    WriteBytes(path, bytes);
    return RunWith(path);
}

// The lines of the step whose title begins with `title`.
std::string StepOf(const std::string& account, const std::string& title)
{
    const auto begin = account.find(". " + title);
    if (begin == account.npos)
        return "";
    const auto lines = account.find('\n', begin) + 1;
    const auto end = account.find("\n\n", lines);
    return account.substr(lines, end == account.npos ? end : end + 1 - lines);
}

class SettingsHost : public testing::Test
{
protected:
    SettingsHost() { Forget(); }
    ~SettingsHost() override { Forget(); }

    static void Forget() { ::RegDeleteKeyA(HKEY_CURRENT_USER, kKey); }
};

constexpr char kSmallFile[] = "lost=1\n[None]\nplain\n[Window]\n Title = Small \nWidth=800\nOpen=no\n; note=x\nwidth=9\n[Next]\na=b\n";

}  // namespace

TEST_F(SettingsHost, TellsOfEveryStep)
{
    const Ended run = RunWithBytes(kSmallFile);
    EXPECT_EQ(0, run.exitStatus);
    EXPECT_EQ("", run.errors);
    EXPECT_EQ(R"--(1. Read test.ini: 3 sections

2. Build the property set from section "Window"
   Runs = 0
   Title = "Small"
   Width = 800
   Open = no
   (2 left out: comments, repeated names, texts too long, or more than 100)

3. Load what HKEY_CURRENT_USER\Software\kelgen\settings_host keeps
   Runs = 0 (not kept yet)
   Title = "Small" (not kept yet)
   Width = 800 (not kept yet)
   Open = no (not kept yet)

4. Watch the set: a listener, and a trigger for Title = "Small (run 1)"
      1. trigger: the condition does not hold

5. Change values
   Runs = 0, assigned: an assignment operator tells twice
      2. listener: Runs = 1
      3. listener: Runs = 1
   Title = "Small", set by name: told once
      4. listener: Title = "Small (run 1)"
      5. trigger: the condition holds
   Width = 800, assigned: an assignment operator tells twice
      6. listener: Width = 801
      7. listener: Width = 801
   Open = no, stored by a setter: told once
      8. listener: Open = yes

6. Write the set back and read it again
   The registry holds every value of the set

7. Pack the set into an archive and read it back
   4 settings in 104 bytes, checksum abe1f688
   The archive holds every value of the set
)--",
              run.account);
}

TEST_F(SettingsHost, TheSecondRunFindsWhatTheFirstOneKept)
{
    RunWithBytes(kSmallFile);
    const Ended second = RunWithBytes(kSmallFile);
    EXPECT_EQ("   Runs = 1 (kept from the last run)\n"
              "   Title = \"Small (run 1)\" (kept from the last run)\n"
              "   Width = 801 (kept from the last run)\n"
              "   Open = yes (kept from the last run)\n",
              StepOf(second.account, "Load"));
    EXPECT_NE(second.account.npos, second.account.find("listener: Title = \"Small (run 2)\"\n")) << second.account;
    EXPECT_NE(second.account.npos, second.account.find("listener: Open = no\n")) << second.account;

    CRegistry::CKey key(HKEY_CURRENT_USER, kKey);
    CString width;
    EXPECT_TRUE(key.QueryValue("Width", width));
    EXPECT_STREQ("802", width);
}

TEST_F(SettingsHost, TheShippedFileWorks)
{
    const Ended run = RunWith(SETTINGS_INI);
    EXPECT_EQ(0, run.exitStatus);
    EXPECT_EQ("   The registry holds every value of the set\n", StepOf(run.account, "Write"));
}

TEST_F(SettingsHost, WhatItCannotReadIsOneLineAndStatusOne)
{
    for (const std::string& path : {ScratchFile("missing.ini"), ScratchFolder().string(), std::string()}) {
        SCOPED_TRACE(path);
        const Ended run = RunWith(path);
        EXPECT_EQ(1, run.exitStatus);
        EXPECT_EQ("", run.account);
        EXPECT_EQ("settings_host: cannot read " + path + "\n", run.errors);
    }
}

TEST_F(SettingsHost, AnyFileKeepsItsValues)
{
    std::string manyProperties = "[S]\n";
    for (int i = 0; i < 300; ++i)
        manyProperties += "name" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    const std::string anyByte = [] {
        std::string bytes = "[S]\nall=";
        for (int i = 0; i < 256; ++i)
            bytes += static_cast<char>(i);
        return bytes + "=x\nlast";
    }();
    const std::string files[] = {"",
                                 "no section\na=b\n",
                                 "[S]\nplain\n",
                                 "[]\n=\n=x\n",
                                 anyByte,
                                 manyProperties,
                                 "[S]\nlong=" + std::string(100'000, 'x') + "\n" + std::string(300, 'n') + "=1\nb\\c=d\\e\n",
                                 "[S]\nlargest=2147483647\nlarger=4294967295\n-=-0\nfloat=1.5\nOn=ON\n"};
    for (const std::string& bytes : files) {
        SCOPED_TRACE(bytes.substr(0, 40));
        Forget();
        for (int times = 0; times < 2; ++times) {
            const Ended run = RunWithBytes(bytes);
            EXPECT_EQ(0, run.exitStatus);
            EXPECT_EQ("", run.errors);
            EXPECT_EQ("   The registry holds every value of the set\n", StepOf(run.account, "Write")) << run.account;
            EXPECT_NE(run.account.npos, run.account.find("   The archive holds every value of the set\n")) << run.account;
        }
    }
}
