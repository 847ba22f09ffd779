// Environment.cpp: changes the environment of the test process.
#include <stdlib.h>

namespace kelgen::test {

void SetEnvironment(const std::string& name, const std::string& value)
{
    setenv(name.c_str(), value.c_str(), 1);
}

}  // namespace kelgen::test
