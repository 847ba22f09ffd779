// WStrWindow.cpp: texts of windows and menus.
#include <kelgen/text/WStr.h>

#include <kelgen/framework/windows/Menu.h>
#include <kelgen/framework/windows/Wnd.h>

#include <algorithm>
#include <climits>

namespace {

// A window may say any length: no more room is made than its text turns out to need.
constexpr int kFirstRoom = 1 << 14;

/// Whether the system is of the family whose menus hold wide text.
bool MenusAreWide()
{
    static const bool answer = [] {
        OSVERSIONINFOA version{};
        version.dwOSVersionInfoSize = sizeof version;
        return GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
    }();
    return answer;
}

}  // namespace

int CWStr::_GetWindowTextLength(const CWnd* pWnd)
{
    return ::GetWindowTextLengthW(pWnd->m_hWnd);
}

int CWStr::_GetWindowText(const CWnd* pWnd)
{
    const int length = std::min(_GetWindowTextLength(pWnd), INT_MAX - 1);
    if (length <= 0) {
        Empty();
        return 0;
    }
    for (int room = std::min(length, kFirstRoom);; room = room > length / 2 ? length : 2 * room) {
        const int result = ::GetWindowTextW(pWnd->m_hWnd, kelgen::AsWide(GetBuffer(room)), room + 1);
        ReleaseBuffer();
        if (result < room || room == length)
            return result;
    }
}

BOOL CWStr::_SetWindowText(const CWnd* pWnd) const
{
    return ::SetWindowTextW(pWnd ? pWnd->m_hWnd : nullptr, kelgen::AsWide(m_text));
}

int CWStr::_GetMenuString(const CMenu* pMenu, UINT id, UINT flags)
{
    if (!MenusAreWide()) {
        CString narrow;
        pMenu->GetMenuString(id, narrow, flags);
        SetRes(narrow);
        return 1;
    }
    const int length = ::GetMenuStringW(pMenu->m_hMenu, id, nullptr, 0, flags);
    unsigned short* const buffer = GetBuffer(length + 1);
    // What a failed call leaves is the empty text.
    buffer[0] = 0;
    const int result = ::GetMenuStringW(pMenu->m_hMenu, id, kelgen::AsWide(buffer), length + 1, flags);
    ReleaseBuffer();
    return result;
}
