// MenuLoop.h: an open menu and the message loop that it runs.
#pragma once

#include <kelgen/platform/posix/user/menus/MenuDrawing.h>
#include <kelgen/platform/posix/user/menus/MenuObjects.h>
#include <kelgen/platform/support/DesktopPicture.h>

#include <vector>

namespace kelgen::posix::user {

/// The menus that are open on one thread, from the menu bar or the first popup to the innermost submenu, and the keys that move
/// in them.
class MenuLoop
{
public:
    /// For the menu bar of @p owner, or for its system menu.
    MenuLoop(HWND owner, HMENU bar, bool isSystem);
    /// For a menu that pops up.
    MenuLoop(HWND owner, HMENU popup, UINT flags, POINT corner);
    ~MenuLoop();
    MenuLoop(const MenuLoop&) = delete;
    MenuLoop& operator=(const MenuLoop&) = delete;

    /// Runs a bar that the key @p character (0 for none) opens.
    void RunBar(UINT character);
    /// Runs a bar that was pressed at @p point of the screen.
    void RunBarByMouse(POINT point);
    /// Runs a popup; the chosen command, or 0.
    UINT RunPopup();

    /// The calling thread's innermost loop, or null.
    static MenuLoop* Current();
    void End() { m_isDone = true; }
    /// Where the popups lie that are open, those of the loops around this one first.
    std::vector<MenuPicture> Places() const;

private:
    struct Level
    {
        HMENU menu;
        int selected;                            // -1 for none
        std::shared_ptr<MenuDrawing> drawing{};  // null when the owner draws nothing
    };

    void Begin();
    void Loop();
    void Finish();
    bool OpenBar(UINT character);

    void Handle(const MSG& message);
    void OnKey(const MSG& message);
    void OnCharacter(UINT character);
    bool OnMouse(const MSG& message);
    int LevelAt(POINT point, int& item) const;
    MenuPicture PlaceOfBar() const;
    std::vector<MenuPicture> PlacesOfLevels() const;
    void OnEscape();
    void OnSideways(UINT key);
    void MoveInBar(UINT key);
    void LeaveBar(UINT key);
    bool NextKeyMovesToo();

    void Select(int position);
    void SelectFrom(int start, int step);
    bool OpenSelected(bool selectsFirst = true);
    void CloseLevels(std::size_t left);
    void ShowLevel();
    void DrawItem(int position) const;
    void Execute();
    int FindMnemonic(UINT character) const;
    LRESULT Notify(UINT message, WPARAM wParam, LPARAM lParam) const;

    Level& Top() { return m_levels.back(); }
    bool SelectedItem(MenuItem& item) const;

    HWND m_owner;
    bool m_isBar;
    bool m_isSystem;
    UINT m_flags;
    std::vector<Level> m_levels;
    POINT m_corner{};
    bool m_isDone = false;
    bool m_isPressed = false;  // a button went down in a menu: its release chooses
    bool m_hopping = false;    // the user moves along the bar: popups of items on the way stay closed
    UINT m_command = 0;
    MenuLoop* m_outer;
};

}  // namespace kelgen::posix::user
