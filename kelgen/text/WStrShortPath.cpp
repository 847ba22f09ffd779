// WStrShortPath.cpp: short path names.
#include <kelgen/text/WStr.h>

DWORD CWStr::_GetShortPathName(const char* path)
{
    constexpr DWORD kLocal = 10;
    CWStr longPath;
    longPath.SetOEM(path);

    unsigned short local[kLocal] = {};
    const DWORD needed = GetShortPathNameW(kelgen::AsWide(longPath.m_text), kelgen::AsWide(local), kLocal);
    if (needed == 0)
        return 0;
    if (needed <= kLocal) {
        *this = local;
        return needed;
    }
    unsigned short* const buffer = GetBuffer(static_cast<int>(needed));
    const DWORD result = GetShortPathNameW(kelgen::AsWide(longPath.m_text), kelgen::AsWide(buffer), needed);
    ReleaseBuffer();
    return result;
}
