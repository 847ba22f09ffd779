// ServiceTest.cpp: the service of the examples by its own command line: its life, its answers, and wrong use.
#include "examples/Program.h"
#include "support/Threads.h"

#include <functional>
#include <thread>

using namespace kelgen::test;

namespace {

constexpr char kSumOfDigits[] = "89a1897f 9 ";  // of "123456789"
constexpr char kSumOfNothing[] = "00000000 0 ";

Ended RunCommand(const std::string& arguments)
{
    return RunProgram(SERVICE, arguments);
}

std::string InQuotes(const std::string& text)
{
    return '"' + text + '"';
}

/// Whether @p condition comes true within the deadline.
bool Eventually(const std::function<bool()>& condition)
{
    for (const DWORD start = GetTickCount(); !condition(); Sleep(5))
        if (GetTickCount() - start > kDeadline)
            return false;
    return true;
}

/// Services over scratch folders, under a name that no other test has.
class ServiceExample : public testing::Test
{
protected:
    ServiceExample()
    {
        static int number = 0;
        m_name = "kelgen-test-example-" + std::to_string(GetCurrentProcessId()) + '-' + std::to_string(++number);
    }
    ~ServiceExample() override { Run("remove"); }

    Ended Run(const std::string& command, const std::string& rest = "") const
    {
        return RunCommand(command + " --name " + m_name + ' ' + rest);
    }
    /// What a query prints below the line of the state.
    std::string Sums(const std::string& file = "") const
    {
        const std::string text = Run("query", file).account;
        return text.substr(std::min(text.find('\n'), text.size() - 1) + 1);
    }
    /// "status: account" of a step, without the folder; the service is called NAME.
    std::string Step(const std::string& command, const std::string& rest = "") const
    {
        const Ended run = Run(command, rest);
        std::string text = std::to_string(run.exitStatus) + ": " + run.account + run.errors;
        text.resize(std::min(text.find('\n'), text.size()));
        if (const auto name = text.find(m_name); name != text.npos)
            text.replace(name, m_name.size(), "NAME");
        return text.substr(0, text.find(" over "));
    }
    void InstallAndStart(const std::filesystem::path& folder) const
    {
        ASSERT_EQ("0: NAME is installed", Step("install", InQuotes(folder.string()) + " --recheck 1"));
        ASSERT_EQ("0: NAME is running", Step("start"));
    }

    std::string m_name;
};

}  // namespace

TEST_F(ServiceExample, LivesFromInstallToRemove)
{
    const auto folder = ScratchFolder() / "a b";
    std::filesystem::create_directory(folder);
    WriteBytes((folder / "check").string(), "123456789");
    EXPECT_EQ("0: NAME is installed", Step("install", InQuotes(folder.string()) + " --recheck 1"));
    EXPECT_EQ("1: service: cannot install NAME: error 1073", Step("install", InQuotes(folder.string())).substr(0, 43));
    EXPECT_EQ("0: NAME is stopped", Step("query"));
    EXPECT_EQ("0: NAME is running", Step("start"));
    EXPECT_EQ("1: service: cannot start NAME: error 1056", Step("start").substr(0, 41));
    EXPECT_TRUE(Eventually([&] { return Sums() == kSumOfDigits + std::string("check\n"); })) << Sums();

    WriteBytes((folder / "check").string(), "");
    EXPECT_TRUE(Eventually([&] { return Sums() == kSumOfNothing + std::string("check\n"); })) << Sums();
    WriteBytes((folder / "new").string(), "123456789");
    EXPECT_TRUE(Eventually([&] { return Sums("new") == kSumOfDigits + std::string("new\n"); })) << Sums();
    EXPECT_EQ("", Sums("other"));
    std::filesystem::remove(folder / "check");
    EXPECT_TRUE(Eventually([&] { return Sums() == kSumOfDigits + std::string("new\n"); })) << Sums();

    EXPECT_EQ("0: NAME is stopped", Step("stop"));
    EXPECT_EQ("1: service: cannot stop NAME: error 1062", Step("stop").substr(0, 40));
    EXPECT_EQ("0: NAME is stopped", Step("query"));
    EXPECT_EQ("0: NAME is removed", Step("remove"));
    for (const char* command : {"query", "start", "stop", "pause", "remove"})
        EXPECT_NE(std::string::npos, Step(command).find("error 1060 ")) << command;
}

TEST_F(ServiceExample, IsPausedAndGoesOn)
{
    const auto folder = ScratchFolder();
    WriteBytes((folder / "check").string(), "");
    InstallAndStart(folder);
    EXPECT_TRUE(Eventually([&] { return Sums() == kSumOfNothing + std::string("check\n"); }));
    EXPECT_EQ("0: NAME is paused", Step("pause"));
    WriteBytes((folder / "check").string(), "123456789");
    EXPECT_EQ("0: NAME is paused", Step("query"));
    EXPECT_EQ(kSumOfNothing + std::string("check\n"), Sums());
    EXPECT_EQ("0: NAME is running", Step("continue"));
    EXPECT_TRUE(Eventually([&] { return Sums() == kSumOfDigits + std::string("check\n"); })) << Sums();
    EXPECT_EQ("0: NAME is removed", Step("remove")) << "a running service is stopped first";
}

TEST_F(ServiceExample, EveryClientGetsItsOwnAnswer)
{
    const auto folder = ScratchFolder();
    for (const char* name : {"a", "b", "c", "d"})
        WriteBytes((folder / name).string(), "123456789");
    InstallAndStart(folder);
    ASSERT_TRUE(Eventually([&] { return Sums("d") == kSumOfDigits + std::string("d\n"); }));
    std::vector<std::thread> clients;
    std::string answers[4];
    for (int i = 0; i < 4; ++i)
        clients.emplace_back([&, i] { answers[i] = Sums(std::string(1, static_cast<char>('a' + i))); });
    for (std::thread& client : clients)
        client.join();
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(kSumOfDigits + std::string(1, static_cast<char>('a' + i)) + '\n', answers[i]);
}

TEST_F(ServiceExample, StartsNoMoreWithoutItsSettings)
{
    ASSERT_EQ("0: NAME is installed", Step("install", InQuotes(ScratchFolder().string())));
    ASSERT_EQ(ERROR_SUCCESS,
              RegDeleteKeyA(HKEY_LOCAL_MACHINE, ("SYSTEM\\CurrentControlSet\\Services\\" + m_name + "\\Parameters").c_str()));
    EXPECT_EQ("1: service: cannot start NAME, which is stopped: error 2 ", Step("start").substr(0, 57));
    EXPECT_EQ("1: service: cannot read the settings of", Step("query").substr(0, 39));
    EXPECT_EQ("0: NAME is removed", Step("remove"));
}

TEST(ServiceExampleUse, PrintsSumsWithoutAService)
{
    const auto folder = ScratchFolder();
    WriteBytes((folder / "b").string(), "123456789");
    WriteBytes((folder / "a").string(), "");
    std::filesystem::create_directory(folder / "sub");
    const Ended run = RunCommand("run --once " + InQuotes(folder.string()));
    EXPECT_EQ(0, run.exitStatus);
    EXPECT_EQ("added   00000000 0 a\nadded   89a1897f 9 b\n", run.account);
}

struct WrongUse
{
    const char* name;
    const char* arguments;
    int status;
    const char* error;
};

TEST(ServiceExampleUse, IsExplainedWhenWrong)
{
    const WrongUse rows[] = {
        {"Nothing", "", 2, "usage: "},
        {"NoCommand", "begin", 2, "usage: "},
        {"NoFolder", "install", 2, "usage: "},
        {"TwoFolders", "install a b", 2, "usage: "},
        {"NeedlessOperand", "start a", 2, "usage: "},
        {"UnknownOption", "query --all", 2, "usage: "},
        {"NoName", "start --name", 2, "usage: "},
        {"NoSeconds", "install . --recheck", 2, "usage: "},
        {"SecondsAreNoNumber", "install . --recheck 5s", 2, "usage: "},
        {"SecondsAreTooMany", "install . --recheck 86401", 2, "usage: "},
        {"MissingFolder", "install /kelgen/nothing --name kelgen-test-x", 1, "service: cannot keep checksums of "},
        {"BadName", "install . --name a/b", 1, "service: cannot install a/b: error 123 "},
        {"ServedByHand", "serve", 1, "service: cannot serve: "},
    };
    for (const WrongUse& row : rows) {
        const Ended run = RunCommand(row.arguments);
        EXPECT_EQ(row.status, run.exitStatus) << row.name;
        EXPECT_EQ("", run.account) << row.name;
        EXPECT_EQ(row.error, run.errors.substr(0, std::string(row.error).size())) << row.name << ": " << run.errors;
    }
}
