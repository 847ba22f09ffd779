// ScratchFile.cpp: scratch files inherit their rights from the folder.
#include <kelgen/platform/support/ScratchFile.h>

namespace kelgen {

HANDLE OpenScratchFile(LPCSTR scratch, LPCSTR)
{
    const HANDLE file =
        CreateFileA(scratch, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE || SetEndOfFile(file))
        return file;
    const DWORD error = GetLastError();
    CloseHandle(file);
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
}

}  // namespace kelgen
