// own_calls_for_missing_ones.cpp: a host writes for itself what is missing natively, under the platform's name or in a class.
// compiles
#include <kelgen/platform/Win32.h>

#ifdef CreatePipe
#error "a call is taken for a macro"
#endif

#ifndef _WIN32
extern "C" BOOL CreatePipe(HANDLE* from, HANDLE* to, void* rights, DWORD size);
struct Clipboard
{
    bool OpenClipboard(HWND owner);
    bool Open() { return OpenClipboard(nullptr); }
};
#endif

BOOL Connect(HANDLE& from, HANDLE& to)
{
    return CreatePipe(&from, &to, nullptr, 0);
}
