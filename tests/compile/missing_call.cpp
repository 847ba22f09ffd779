// missing_call.cpp: a call of the platform that is not implemented natively.
// says natively: CreatePipe is not implemented natively: see docs/platform-calls.md
#include <kelgen/platform/Win32.h>

bool Connect(HANDLE& from, HANDLE& to)
{
    return ::CreatePipe(&from, &to, nullptr, 0) != FALSE;
}
