// MonitorTest.cpp: the monitor as a process that scans once: its report, where its settings come from, and bad input.
#include <kelgen/persistence/Registry.h>

#include "examples/Program.h"

#include "FolderMonitor.h"
#include "Settings.h"

using namespace kelgen::test;

namespace {

std::string Quoted(const std::filesystem::path& path)
{
    return "\"" + path.string() + "\"";
}

class Monitor : public testing::Test
{
protected:
    Monitor() { Forget(); }
    ~Monitor() override { Forget(); }

    static void Forget() { ::RegDeleteKeyA(HKEY_CURRENT_USER, CSettings::registryKey); }
    static void Remember(const std::string& name, DWORD type, const std::string& bytes)
    {
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, ::RegCreateKeyA(HKEY_CURRENT_USER, CSettings::registryKey, &key));
        ::RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.c_str()), static_cast<DWORD>(bytes.size() + 1));
        ::RegCloseKey(key);
    }
    /// The lines on files, of a scan of what the arguments name.
    static std::string FilesOf(const Ended& run)
    {
        const auto begin = run.account.find("found");
        return begin == std::string::npos ? "" : run.account.substr(begin);
    }
    static Ended RunOnce(const std::string& arguments) { return RunProgram(MONITOR, "--once " + arguments); }
};

}  // namespace

TEST_F(Monitor, ScansAFolderAndItsSubfoldersOnce)
{
    const auto folder = ScratchFolder();
    std::filesystem::create_directory(folder / "sub");
    WriteBytes((folder / "b").string(), "123456789");
    WriteBytes((folder / "a").string(), "");
    WriteBytes((folder / "sub" / "c").string(), std::string(3'000'000, 'x'));
    Ended run = RunOnce(Quoted(folder));
    EXPECT_EQ(0, run.exitStatus);
    EXPECT_EQ("", run.errors);
    EXPECT_EQ("found   a 0 00000000\nfound   b 9 89a1897f\n", FilesOf(run));
    EXPECT_NE(run.account.npos, run.account.find("scanned 100 % of 2 files, folders: 1\n")) << run.account;

    Remember("Subfolders", REG_SZ, "1");
    run = RunOnce(Quoted(folder));
    EXPECT_EQ("settings remembered in HKEY_CURRENT_USER\\Software\\kelgen\\monitor\n", run.account.substr(0, run.account.find('\n') + 1));
    EXPECT_NE(run.account.npos, run.account.find("found   sub\\c 3000000 ")) << run.account;

    // 62 more than the two that are there are one too many.
    for (int i = 0; i < 62; ++i)
        std::filesystem::create_directory(folder / ("t" + std::to_string(10 + i)));
    run = RunOnce(Quoted(folder));
    EXPECT_EQ(0, run.exitStatus);
    EXPECT_NE(run.errors.npos, run.errors.find("monitor: more than 63 folders: ")) << run.errors;
    EXPECT_EQ(1, std::count(run.errors.begin(), run.errors.end(), '\n'));

    Remember("MostFiles", REG_SZ, "1");
    run = RunOnce(Quoted(folder));
    EXPECT_EQ("found   a 0 00000000\n", FilesOf(run));
    EXPECT_NE(run.errors.npos, run.errors.find("monitor: more than 1 files: ")) << run.errors;
}

TEST_F(Monitor, TellsOfBadInputAndGoesOnWithoutIt)
{
    const auto folder = ScratchFolder();
    WriteBytes((folder / "a").string(), "");
    const std::string ini = ScratchFile("my.ini");
    const std::string watched = "Folder=" + folder.string() + "\n";
    std::string anyByte = "[Monitor]\n" + watched;
    for (int i = 1; i < 0x1A; ++i)
        anyByte += static_cast<char>(i);
    struct Row
    {
        const char* name;
        std::string bytes;
        std::string errors;
    };
    for (const Row& row :
         {Row{"all right", "[Monitor]\n Folder = " + folder.string() + " \n;x=y\nLanguage=Deutsch\n", ""}, Row{"bytes", anyByte, ""},
          Row{"unknown", "[Monitor]\n" + watched + "Colour=red\n", "the INI file has an unknown setting Colour\n"},
          Row{"no number", "[Monitor]\n" + watched + "MostFiles=many\n", "the INI file's MostFiles cannot be \"many\"\n"},
          Row{"too many", "[Monitor]\n" + watched + "MostFiles=5001\n", "the INI file's MostFiles cannot be \"5001\"\n"},
          Row{"no bool", "[Monitor]\n" + watched + "Subfolders=2\n", "the INI file's Subfolders cannot be \"2\"\n"},
          Row{"no language", "[Monitor]\n" + watched + "Language=Latin\n", "the INI file's Language cannot be \"Latin\"\n"}}) {
        WriteBytes(ini, row.bytes);
        const Ended run = RunOnce(Quoted(ini));
        EXPECT_EQ(0, run.exitStatus) << row.name;
        EXPECT_EQ(row.errors.empty() ? "" : "monitor: " + row.errors, run.errors) << row.name;
        EXPECT_EQ("found   a 0 00000000\n", FilesOf(run)) << row.name;
    }
    Remember("Width", REG_DWORD, "abc");
    Remember("Language", REG_SZ, "77");
    const Ended run = RunOnce(Quoted(folder));
    EXPECT_EQ(0, run.exitStatus);
    EXPECT_EQ("monitor: the registry's Language cannot be \"77\"\nmonitor: the registry's Width is no text\n", run.errors);
}

TEST_F(Monitor, EndsWhenThereIsNothingToWatch)
{
    const auto folder = ScratchFolder();
    const std::string missingIni = (folder / "missing.ini").string();
    const std::string noFolder = ScratchFile("no.ini");
    WriteBytes(noFolder, "[Monitor]\nFolder=below\n");
    struct Row
    {
        std::string arguments;
        int status;
        std::string error;
    };
    WriteBytes((folder / "file").string(), "");
    for (const Row& row :
         {Row{Quoted(folder / "missing"), 1, "monitor: cannot read the folder "},
          Row{Quoted(folder / "file"), 1, "monitor: cannot read the folder "}, Row{Quoted(noFolder), 1, "monitor: cannot read the folder "},
          Row{Quoted(missingIni), 1, "monitor: cannot read the INI file " + missingIni},
          Row{"--twice", 2, "monitor: unknown switch or path: -twice\nmonitor: usage: "},
          Row{Quoted(folder) + " " + Quoted(folder), 2, "monitor: one folder or INI file is enough\n"}}) {
        const Ended run = RunOnce(row.arguments);
        EXPECT_EQ(row.status, run.exitStatus) << row.arguments;
        EXPECT_EQ("", run.account) << row.arguments;
        EXPECT_EQ(row.error, run.errors.substr(0, row.error.size())) << row.arguments;
    }
}

TEST(MonitorScan, ReportsItsProgressWithinLargeFilesToo)
{
    struct Recorder : CMonitorEvents, CCompletionReportListener
    {
        void OnFileEvent(CWatchedFile& file, EFileEvent) override { m_steps += std::string(file.GetName()) + " "; }
        void OnNote(const CString&) override {}
        void OnCompletionReport(UINT task, double progress) override
        {
            m_steps += std::to_string(task) + ":" + std::to_string(static_cast<int>(progress * 100 + 0.5)) + " ";
        }
        std::string m_steps;
    } recorder;
    const auto folder = ScratchFolder();
    WriteBytes((folder / "a").string(), "");
    WriteBytes((folder / "b").string(), std::string((5 << 20) / 2, 'x'));
    CFolderMonitor monitor(recorder);
    recorder.ReportCompletionScriptStart();
    recorder.ReportCompletionScriptAttachSource(&monitor.GetScanner());
    CString error;
    ASSERT_TRUE(monitor.Begin(folder.string().c_str(), false, 9, error));
    while (monitor.Step()) {
    }
    EXPECT_EQ("1:0 a 1:50 1:70 1:90 b 1:100 ", recorder.m_steps);
    std::filesystem::remove(folder / "b");
    std::filesystem::remove(folder / "a");
    EXPECT_TRUE(monitor.Begin(folder.string().c_str(), false, 9, error)) << "an empty folder";
    EXPECT_FALSE(monitor.Step());
    EXPECT_EQ("1:0 a 1:50 1:70 1:90 b 1:100 1:100 ", recorder.m_steps);
}
