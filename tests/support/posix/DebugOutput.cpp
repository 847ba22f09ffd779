// DebugOutput.cpp: the debugger's output is standard error.
#include "support/DebugOutput.h"

#include <gtest/gtest.h>

namespace kelgen::test {

DebugOutput::DebugOutput()
{
    testing::internal::CaptureStderr();
    m_state = this;
}

DebugOutput::~DebugOutput()
{
    if (m_state)
        Take();
}

std::string DebugOutput::Take()
{
    m_state = nullptr;
    return testing::internal::GetCapturedStderr();
}

}  // namespace kelgen::test
