// Threads.h: handles that close themselves, and threads from any callable.
#pragma once

#include <kelgen/platform/Win32.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace kelgen::test {

struct HandleCloser
{
    void operator()(void* handle) const { CloseHandle(handle); }
};

/// A handle that its owner closes.
using OwnedHandle = std::unique_ptr<void, HandleCloser>;

/// Long enough for anything that is going to happen, in milliseconds.
constexpr DWORD kDeadline = 20000;

/// A platform thread that runs @p body; its handle. @p id receives its id when not null.
inline OwnedHandle StartThread(std::function<DWORD()> body, DWORD flags = 0, DWORD* id = nullptr)
{
    struct Start
    {
        static DWORD WINAPI Run(LPVOID argument)
        {
            return (*std::unique_ptr<std::function<DWORD()>>(static_cast<std::function<DWORD()>*>(argument)))();
        }
    };
    return OwnedHandle(CreateThread(nullptr, 0, Start::Run, new std::function<DWORD()>(std::move(body)), flags, id));
}

/// The exit code of @p thread, waited for.
inline DWORD ExitCodeOf(const OwnedHandle& thread)
{
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(thread.get(), kDeadline));
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeThread(thread.get(), &code));
    return code;
}

}  // namespace kelgen::test
