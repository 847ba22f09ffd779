// SystemInformationTest.cpp: what the system's information says about the machine below it.
#include <string>
#include <sys/utsname.h>

namespace {

TEST(SystemInformation, NamesTheMachinesProcessor)
{
    utsname machine{};
    ASSERT_EQ(uname(&machine), 0);
    SYSTEM_INFO information{};
    GetSystemInfo(&information);

    const std::string name = machine.machine;
    const int expected = name == "x86_64" ? PROCESSOR_ARCHITECTURE_AMD64 : name == "aarch64" ? 12 : 0xFFFF;
    EXPECT_EQ(information.wProcessorArchitecture, expected) << name;
    EXPECT_EQ(information.wProcessorLevel != 0, expected != 0xFFFF);
}

}  // namespace
