// OSVersionInfo.cpp: the generations of the operating system, told by platform and version.
#include <kelgen/system/VersionInfo.h>

COSVersionInfo& COSVersionInfo::Get()
{
    static COSVersionInfo version;
    return version;
}

COSVersionInfo::COSVersionInfo() : m_version{}
{
    m_version.dwOSVersionInfoSize = sizeof m_version;
    GetVersionExA(&m_version);
}

bool COSVersionInfo::gte_ver(DWORD major, DWORD minor) const
{
    return m_version.dwMajorVersion > major || (m_version.dwMajorVersion == major && m_version.dwMinorVersion >= minor);
}

bool COSVersionInfo::eq_ver(DWORD major, DWORD minor) const
{
    return m_version.dwMajorVersion == major && m_version.dwMinorVersion == minor;
}

bool COSVersionInfo::IsWin31() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32s;
}

bool COSVersionInfo::IsWin95() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS && m_version.dwMajorVersion == 4 && m_version.dwMinorVersion < 10;
}

bool COSVersionInfo::IsWin98() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS && eq_ver(4, 10);
}

bool COSVersionInfo::IsWinME() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS && eq_ver(4, 90);
}

bool COSVersionInfo::IsWinNT4() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_NT && eq_ver(4, 0);
}

bool COSVersionInfo::IsWin2K() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_NT && eq_ver(5, 0);
}

bool COSVersionInfo::IsWinXP() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_NT && eq_ver(5, 1);
}

bool COSVersionInfo::IsWin95OrGreater() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS && gte_ver(4, 0);
}

bool COSVersionInfo::IsWin98OrGreater() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS && gte_ver(4, 10);
}

bool COSVersionInfo::IsWinMEOrGreater() const
{
    return m_version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS && gte_ver(4, 90);
}

bool COSVersionInfo::IsWinNT4OrGreater() const
{
    return m_version.dwPlatformId >= VER_PLATFORM_WIN32_NT && gte_ver(4, 0);
}

bool COSVersionInfo::IsWin2KOrGreater() const
{
    return m_version.dwPlatformId >= VER_PLATFORM_WIN32_NT && gte_ver(5, 0);
}

bool COSVersionInfo::IsWinXPOrGreater() const
{
    return m_version.dwPlatformId >= VER_PLATFORM_WIN32_NT && gte_ver(5, 1);
}
