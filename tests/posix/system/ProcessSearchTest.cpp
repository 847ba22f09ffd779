// ProcessSearchTest.cpp: processes by name among children of the test, on both families of systems.
#include <kelgen/system/Shell.h>

#include "posix/registry/Processes.h"
#include "support/Scratch.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

using namespace kelgen::test;

namespace {

/// A running child, ended and reaped on destruction.
class Child
{
public:
    Child(const std::string& program, std::vector<std::string> arguments)
    {
        std::vector<char*> argv = {const_cast<char*>(program.c_str())};
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        EXPECT_EQ(0, posix_spawn(&m_id, program.c_str(), nullptr, nullptr, argv.data(), environ));
    }
    Child(Child&&) = delete;
    ~Child()
    {
        kill(m_id, SIGKILL);
        waitpid(m_id, nullptr, 0);
    }

    DWORD Id() const { return static_cast<DWORD>(m_id); }

private:
    pid_t m_id = 0;
};

std::string CopyOfSleep(const std::string& name)
{
    const std::string program = ScratchFile(name);
    std::filesystem::copy_file("/bin/sleep", program);
    return program;
}

/// Those of @p children whose process is among the first 250.
std::vector<DWORD> Listed(const std::vector<const Child*>& children)
{
    DWORD ids[250], used = 0;
    EnumProcesses(ids, sizeof ids, &used);
    std::vector<DWORD> listed;
    for (const DWORD* id = ids; id < ids + used / sizeof(DWORD); ++id)
        if (std::any_of(children.begin(), children.end(), [id](const Child* child) { return child->Id() == *id; }))
            listed.push_back(*id);
    return listed;
}

class ProcessSearch : public testing::Test
{
protected:
    ~ProcessSearch() override { unsetenv("KELGEN_OSVERSION"); }
};

}  // namespace

TEST_F(ProcessSearch, GivesTheLastOfThoseOfAName)
{
    const std::string program = CopyOfSleep("Kelgen \"quoted\" sleep $(x).exe");
    const Child first(program, {"100"}), second(program, {"100"});
    const auto listed = Listed({&first, &second});
    DWORD count = 99;
    const DWORD found = _kelgen::GetProcessIDbyName("kelgen \"QUOTED\" Sleep $(x).exe", count);
    EXPECT_EQ(listed.size(), count);
    EXPECT_EQ(listed.empty() ? 0 : listed.back(), found);
    EXPECT_EQ(0u, _kelgen::GetProcessIDbyName("quoted", count));

    for (const char* other : {"0,3,10", "3,7,0"}) {
        setenv("KELGEN_OSVERSION", other, 1);
        count = 99;
        EXPECT_EQ(0u, _kelgen::GetProcessIDbyName("Kelgen \"quoted\" sleep $(x).exe", count)) << other;
        EXPECT_EQ(0u, count) << other;
    }
}

TEST_F(ProcessSearch, CallsWhatItCannotLookIntoUnknown)
{
    // Process 1 is root's and comes first.
    ChildProcess child([] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0) {
            ASSERT_EQ(0, setresuid(kNobody, kNobody, kNobody));
        }
        DWORD count = 0;
        EXPECT_NE(0u, _kelgen::GetProcessIDbyName("unknown", count));
        EXPECT_LE(1u, count);
    });
    EXPECT_TRUE(child.Wait());
}

TEST_F(ProcessSearch, OnPlatformOneLooksForAModuleInUpperCase)
{
    const Child upper(CopyOfSleep("KELGENSLEEP"), {"100"}), lower(CopyOfSleep("kelgensleep2"), {"100"});
    setenv("KELGEN_OSVERSION", "1,4,10", 1);
    DWORD count = 0;
    EXPECT_EQ(upper.Id(), _kelgen::GetProcessIDbyName("KelgenSleep", count));
    EXPECT_EQ(1u, count);
    EXPECT_EQ(0u, _kelgen::GetProcessIDbyName("kelgensleep2", count)) << "names of modules are compared as they are";
    EXPECT_EQ(0u, count);
}
