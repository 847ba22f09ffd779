// DebugOutput.h: what the process tells the debugger while an object of this kind lives.
#pragma once

#include <string>

namespace kelgen::test {

class DebugOutput
{
public:
    DebugOutput();
    ~DebugOutput();
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    /// What was told so far; to be asked once.
    std::string Take();

private:
    void* m_state = nullptr;
};

}  // namespace kelgen::test
