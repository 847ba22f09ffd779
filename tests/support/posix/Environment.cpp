// Environment.cpp: changes the environment of the test process.
#include <stdlib.h>

namespace kelgen::test {

namespace {

// The page of the other target. Before the programs' own objects, which may use it; tests of another one set it as early.
struct TestPage
{
    TestPage() { setenv("KELGEN_ACP", "1252", 0); }
};
[[gnu::init_priority(101)]] const TestPage page;

}  // namespace

void SetEnvironment(const std::string& name, const std::string& value)
{
    setenv(name.c_str(), value.c_str(), 1);
}

}  // namespace kelgen::test
