// Menu.cpp: menus as objects.
#include <kelgen/framework/windows/Menu.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/internal/HandleMapTypes.h>

#include <utility>

using namespace kelgen::detail;

IMPLEMENT_DYNAMIC(CMenu, CObject)

namespace {

/// Tells the thread's state which menu is shown, so that updates know the popup's parent.
class TrackedMenu
{
public:
    TrackedMenu(HWND window, HMENU menu)
        : m_state(AfxGetThreadState()), m_windowBefore(std::exchange(m_state->m_hTrackingWindow, window)),
          m_menuBefore(std::exchange(m_state->m_hTrackingMenu, menu))
    {}
    ~TrackedMenu()
    {
        m_state->m_hTrackingWindow = m_windowBefore;
        m_state->m_hTrackingMenu = m_menuBefore;
    }
    TrackedMenu(const TrackedMenu&) = delete;
    TrackedMenu& operator=(const TrackedMenu&) = delete;

private:
    _AFX_THREAD_STATE* const m_state;
    const HWND m_windowBefore;
    const HMENU m_menuBefore;
};

}  // namespace

CMenu::~CMenu()
{
    DestroyMenu();
}

BOOL CMenu::CreateMenu()
{
    return !m_hMenu && Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu()
{
    return !m_hMenu && Attach(::CreatePopupMenu());
}

BOOL CMenu::LoadMenu(LPCSTR lpszResourceName)
{
    return !m_hMenu && Attach(::LoadMenuA(AfxFindResourceHandle(lpszResourceName, RT_MENU), lpszResourceName));
}

BOOL CMenu::LoadMenu(UINT nIDResource)
{
    return LoadMenu(MAKEINTRESOURCEA(nIDResource));
}

BOOL CMenu::LoadMenuIndirect(const void* lpMenuTemplate)
{
    return !m_hMenu && Attach(::LoadMenuIndirectA(lpMenuTemplate));
}

BOOL CMenu::DestroyMenu()
{
    return m_hMenu && ::DestroyMenu(Detach());
}

BOOL CMenu::Attach(HMENU hMenu)
{
    if (!hMenu)
        return FALSE;
    ThreadMaps().menus.SetPermanent(hMenu, this);
    m_hMenu = hMenu;
    return TRUE;
}

HMENU CMenu::Detach()
{
    const HMENU menu = m_hMenu;
    HandleMaps* const maps = ExistingThreadMaps();
    if (menu && maps)
        maps->menus.RemovePermanent(menu, this);
    m_hMenu = nullptr;
    return menu;
}

CMenu* CMenu::FromHandle(HMENU hMenu)
{
    return ThreadMaps().menus.Any(hMenu);
}

CMenu* CMenu::FromHandlePermanent(HMENU hMenu)
{
    const HandleMaps* const maps = ExistingThreadMaps();
    return maps ? maps->menus.Permanent(hMenu) : nullptr;
}

void CMenu::DeleteTempMap()
{
    if (HandleMaps* const maps = ExistingThreadMaps())
        maps->menus.DeleteTemporary();
}

BOOL CMenu::AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, LPCSTR lpszNewItem)
{
    return ::AppendMenuA(m_hMenu, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCSTR lpszNewItem)
{
    return ::InsertMenuA(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCSTR lpszNewItem)
{
    return ::ModifyMenuA(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::DeleteMenu(UINT nPosition, UINT nFlags)
{
    return ::DeleteMenu(m_hMenu, nPosition, nFlags);
}

BOOL CMenu::RemoveMenu(UINT nPosition, UINT nFlags)
{
    return ::RemoveMenu(m_hMenu, nPosition, nFlags);
}

BOOL CMenu::InsertMenuItem(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos)
{
    return ::InsertMenuItemA(m_hMenu, uItem, fByPos, lpMenuItemInfo);
}

BOOL CMenu::GetMenuItemInfo(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos)
{
    return ::GetMenuItemInfoA(m_hMenu, uItem, fByPos, lpMenuItemInfo);
}

BOOL CMenu::SetMenuItemInfo(UINT uItem, LPMENUITEMINFOA lpMenuItemInfo, BOOL fByPos)
{
    return ::SetMenuItemInfoA(m_hMenu, uItem, fByPos, lpMenuItemInfo);
}

UINT CMenu::CheckMenuItem(UINT nIDCheckItem, UINT nCheck)
{
    return static_cast<UINT>(::CheckMenuItem(m_hMenu, nIDCheckItem, nCheck));
}

UINT CMenu::EnableMenuItem(UINT nIDEnableItem, UINT nEnable)
{
    return static_cast<UINT>(::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable));
}

BOOL CMenu::CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags)
{
    return ::CheckMenuRadioItem(m_hMenu, nIDFirst, nIDLast, nIDItem, nFlags);
}

int CMenu::GetMenuItemCount() const
{
    return ::GetMenuItemCount(m_hMenu);
}

UINT CMenu::GetMenuItemID(int nPos) const
{
    return ::GetMenuItemID(m_hMenu, nPos);
}

UINT CMenu::GetMenuState(UINT nID, UINT nFlags) const
{
    return ::GetMenuState(m_hMenu, nID, nFlags);
}

int CMenu::GetMenuString(UINT nIDItem, LPSTR lpString, int nMaxCount, UINT nFlags) const
{
    return ::GetMenuStringA(m_hMenu, nIDItem, lpString, nMaxCount, nFlags);
}

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const
{
    const int length = ::GetMenuStringA(m_hMenu, nIDItem, nullptr, 0, nFlags);
    ::GetMenuStringA(m_hMenu, nIDItem, rString.GetBuffer(length + 1), length + 1, nFlags);
    rString.ReleaseBuffer();
    return rString.GetLength();
}

CMenu* CMenu::GetSubMenu(int nPos) const
{
    return FromHandle(::GetSubMenu(m_hMenu, nPos));
}

BOOL CMenu::SetDefaultItem(UINT uItem, BOOL fByPos)
{
    return ::SetMenuDefaultItem(m_hMenu, uItem, static_cast<UINT>(fByPos));
}

UINT CMenu::GetDefaultItem(UINT gmdiFlags, BOOL fByPos)
{
    return ::GetMenuDefaultItem(m_hMenu, static_cast<UINT>(fByPos), gmdiFlags);
}

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect)
{
    const TrackedMenu tracked(HandleOf(pWnd), m_hMenu);
    return ::TrackPopupMenu(m_hMenu, nFlags, x, y, 0, HandleOf(pWnd), lpRect);
}

BOOL CMenu::TrackPopupMenuEx(UINT fuFlags, int x, int y, CWnd* pWnd, LPTPMPARAMS lptpm)
{
    const TrackedMenu tracked(HandleOf(pWnd), m_hMenu);
    return ::TrackPopupMenuEx(m_hMenu, fuFlags, x, y, HandleOf(pWnd), lptpm);
}
