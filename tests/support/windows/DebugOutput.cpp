// DebugOutput.cpp: what is told to the debugger passes the process's own handlers on its way.
#include "support/DebugOutput.h"

#include <kelgen/platform/Win32.h>

namespace kelgen::test {

namespace {

constexpr DWORD kTold = 0x40010006;

std::string told;

LONG CALLBACK Hear(EXCEPTION_POINTERS* exception)
{
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == kTold && record.NumberParameters >= 2)
        told += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

DebugOutput::DebugOutput() : m_state(::AddVectoredExceptionHandler(1, Hear))
{
    told.clear();
}

DebugOutput::~DebugOutput()
{
    ::RemoveVectoredExceptionHandler(m_state);
}

std::string DebugOutput::Take()
{
    return told;
}

}  // namespace kelgen::test
