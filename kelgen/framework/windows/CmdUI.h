// CmdUI.h: one menu item or control on its way through update handlers.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

class CCmdTarget;
class CMenu;
class CWnd;

/// What an update handler changes: a menu item (m_pMenu with m_nIndex) or a control (m_pOther).
class KELGEN_FRAMEWORK_API CCmdUI
{
public:
    CCmdUI() = default;
    CCmdUI(const CCmdUI&) = delete;
    CCmdUI& operator=(const CCmdUI&) = delete;
    virtual ~CCmdUI();

    /// Enables or greys the item, and sets m_bEnableChanged. By contract: an item that opens a popup menu is left alone, and
    /// m_bEnableChanged is not set, since such an item has no command of its own.
    virtual void Enable(BOOL bOn = TRUE);
    /// 0 clears the check mark, 1 sets it, 2 is undetermined (a menu item shows the mark). A control that is no button is left alone.
    virtual void SetCheck(int nCheck = 1);
    /// SetCheck(bOn), with a dot as the mark of a menu item.
    virtual void SetRadio(BOOL bOn = TRUE);
    /// Sets the item's or control's text. An item that opens a popup menu is left alone.
    virtual void SetText(LPCSTR lpszText);

    /// In a handler: the next target is asked too.
    void ContinueRouting() { m_bContinueRouting = TRUE; }

    /// Asks @p pTarget for an update; its answer. When no handler enabled or disabled the item and @p bDisableIfNoHndler is set,
    /// the item is enabled exactly if a command handler exists. TRUE at once for ids 0 and 0xFFFF. A handler may destroy the target,
    /// which is left alone then.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);

    /// The command.
    UINT m_nID = 0;
    UINT m_nIndex = 0;  ///< The item's position.
    /// The item's menu; null for a control.
    CMenu* m_pMenu = nullptr;
    CMenu* m_pSubMenu = nullptr;     ///< The popup menu that the item opens, if any.
    CMenu* m_pParentMenu = nullptr;  ///< The menu that m_pMenu belongs to, when that is a popup.
    /// The control; null for a menu item.
    CWnd* m_pOther = nullptr;
    /// Whether a handler enabled or greyed the item.
    BOOL m_bEnableChanged = FALSE;
    /// What ContinueRouting set.
    BOOL m_bContinueRouting = FALSE;
    UINT m_nIndexMax = 0;  ///< The menu's item count; handlers that insert or remove items set it anew.
};

namespace kelgen::detail {

/// Answers whether an item is enabled and changes nothing.
class KELGEN_FRAMEWORK_API TestCmdUI : public CCmdUI
{
public:
    void Enable(BOOL bOn = TRUE) override;
    void SetCheck(int nCheck = 1) override;
    void SetRadio(BOOL bOn = TRUE) override;
    void SetText(LPCSTR lpszText) override;

    BOOL m_bEnabled = TRUE;
};

}  // namespace kelgen::detail
