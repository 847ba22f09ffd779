// MenuUpdateTest.cpp: what dialogs and frames do to a menu that is about to open, and handlers that change it under their hands.
#include <kelgen/app/AppDialog.h>
#include <kelgen/framework/windows/CmdUI.h>

#include "app/TestApp.h"
#include "support/Random.h"

#include <functional>
#include <set>
#include <sstream>

using namespace kelgen::test;

namespace {

constexpr UINT kSystem = 0xF010;

/// Records the items that are asked for, and acts on them; command 1 alone has a handler.
template <class WINDOW>
class Asked : public WINDOW
{
public:
    using WINDOW::m_bAutoMenuEnable;
    using WINDOW::WINDOW;

    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override
    {
        if (code == CN_COMMAND && info)
            return id == 1;
        if (code != CN_UPDATE_COMMAND_UI)
            return WINDOW::OnCmdMsg(id, code, extra, info);
        auto& item = *static_cast<CCmdUI*>(extra);
        m_visits += (m_visits.empty() ? "" : " ") + std::to_string(id) + (item.m_pSubMenu ? "s" : "") + (item.m_pParentMenu ? "p" : "");
        if (m_onItem)
            m_onItem(item);
        return FALSE;
    }
    std::string Open(HMENU popup, bool isSystem = false)
    {
        m_visits.clear();
        this->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), MAKELPARAM(0, isSystem));
        return m_visits;
    }

    std::string m_visits;
    std::function<void(CCmdUI&)> m_onItem;
};

using AskedDialog = Asked<CAppDialog>;
using AskedFrame = Asked<TestFrame>;

/// A popup from its ids; 0 is a separator, and what stands between brackets opens.
HMENU Popup(std::istream& ids)
{
    const HMENU menu = ::CreatePopupMenu();
    for (std::string id; ids >> id && id != "]";) {
        if (id == "[")
            ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(Popup(ids)), "opens");
        else
            ::AppendMenuA(menu, id == "0" ? MF_SEPARATOR : MF_STRING, static_cast<UINT_PTR>(std::stoi(id)), id.c_str());
    }
    return menu;
}

HMENU Popup(const std::string& ids)
{
    std::istringstream stream(ids);
    return Popup(stream);
}

/// The ids of the items that are greyed.
std::string Greyed(HMENU menu)
{
    std::string ids;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        const UINT state = ::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        if (!(state & MF_SEPARATOR) && (state & MF_GRAYED))
            ids += std::to_string(static_cast<int>(::GetMenuItemID(menu, i))) + " ";
    }
    return ids;
}

/// The same rules for both kinds of window.
void ForBoth(const std::function<void(CWnd& window, const std::function<std::string(HMENU, bool)>& open, BOOL& autoEnable,
                                      std::function<void(CCmdUI&)>& onItem)>& check)
{
    TestApp app;
    auto* const dialog = new AskedDialog(310, nullptr);
    ASSERT_TRUE(dialog->Create(310));
    AskedFrame frame;
    ASSERT_TRUE(frame.CreateShown());
    const auto run = [&](auto& window, const char* name) {
        SCOPED_TRACE(name);
        check(
            window, [&](HMENU popup, bool isSystem) { return window.Open(popup, isSystem); }, window.m_bAutoMenuEnable, window.m_onItem);
    };
    run(*dialog, "dialog");
    run(frame, "frame");
    dialog->DestroyWindow();
}

}  // namespace

TEST(MenuUpdate, ItemsAreAskedForAndGreyedByTheirKind)
{
    ForBoth([](CWnd& window, const auto& open, BOOL& autoEnable, auto&) {
        const HMENU popup = Popup("1 2 0 61456 [ 40 41 ] [ ] [ 0 42 ] [ [ 43 ] ] 3");
        EXPECT_EQ("", open(popup, true)) << "the system menu";
        EXPECT_EQ("1 2 61456 40s 3", open(popup, false));
        EXPECT_EQ("2 3 ", Greyed(popup)) << kSystem;

        const HMENU bar = ::CreateMenu();
        ::AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "Menu");
        ::SetMenu(window.m_hWnd, bar);
        for (UINT id : {2u, 3u})
            ::EnableMenuItem(popup, id, MF_ENABLED);
        autoEnable = FALSE;
        EXPECT_EQ("1p 2p 61456p 40sp 3p", open(popup, false)) << "in the window's own menu";
        EXPECT_EQ("", Greyed(popup));
        EXPECT_EQ("40 41", open(::GetSubMenu(popup, 4), false)) << "a popup in a popup";

        const HMENU gone = ::CreatePopupMenu();
        ::DestroyMenu(gone);
        EXPECT_EQ("", open(gone, false));
        EXPECT_EQ("", open(nullptr, false));
    });
}

TEST(MenuUpdate, HandlersMayRemoveAndInsertItems)
{
    struct Row
    {
        const char* name;
        const char* items;
        UINT at;  ///< The item whose handler acts.
        std::vector<UINT> removes;
        const char* visits;
    };
    const Row rows[] = {
        {"ItselfFirst", "1 2 3", 1, {1}, "1 2 3"},
        {"ItselfAndTheNext", "1 2 3", 1, {1, 2}, "1 3"},
        {"AllBeforeTheLast", "1 2 3 4", 3, {1, 2, 3}, "1 2 3 4"},
        {"TheNext", "1 2 3 4", 2, {3}, "1 2 4"},
        {"OneOnEitherSide", "1 2 3 4 5", 3, {2, 4}, "1 2 3 5"},
        {"All", "1 2 3", 2, {1, 2, 3}, "1 2"},
        {"BesideSeparators", "1 0 2 0 3", 2, {2}, "1 2 3"},
        {"BesidePopups", "[ 7 ] 1 [ 8 ] 2", 1, {1}, "7s 1 8s 2"},
    };
    ForBoth([&](CWnd&, const auto& open, BOOL&, auto& onItem) {
        for (const Row& row : rows) {
            const HMENU popup = Popup(row.items);
            onItem = [&](const CCmdUI& item) {
                for (UINT id : row.removes) {
                    if (item.m_nID == row.at)
                        ::RemoveMenu(popup, id, MF_BYCOMMAND);
                }
            };
            EXPECT_EQ(row.visits, open(popup, false)) << row.name;
            ::DestroyMenu(popup);
        }

        // A list of recent files: the handler counts itself.
        HMENU popup = Popup("1 2 3");
        onItem = [&](CCmdUI& item) {
            if (item.m_nID != 1)
                return;
            item.m_pMenu->DeleteMenu(item.m_nIndex, MF_BYPOSITION);
            for (UINT id : {21u, 22u})
                item.m_pMenu->InsertMenu(item.m_nIndex++, MF_BYPOSITION | MF_STRING, id, "recent");
            --item.m_nIndex;
            item.m_nIndexMax = static_cast<UINT>(item.m_pMenu->GetMenuItemCount());
        };
        EXPECT_EQ("1 2 3", open(popup, false));
        onItem = [&](const CCmdUI& item) {
            if (item.m_nID == 3)
                ::AppendMenuA(popup, MF_STRING, 4, "new");
        };
        EXPECT_EQ("21 22 2 3 4", open(popup, false)) << "one more at the end";
        onItem = [&](const CCmdUI& item) { item.m_nID == 21 ? void(::DestroyMenu(popup)) : void(); };
        EXPECT_EQ("21", open(popup, false));
        onItem = nullptr;
    });
}

TEST(MenuUpdate, HandlerMayDestroyTheWindowWithItsObject)
{
    TestApp app;
    auto* const dialog = new AskedDialog(310, nullptr);
    ASSERT_TRUE(dialog->Create(310));
    const HWND window = dialog->m_hWnd;
    const HMENU popup = Popup("2 3");
    int asked = 0;
    dialog->m_onItem = [&](const CCmdUI&) {
        ++asked;
        ::DestroyWindow(window);
    };
    ::SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0);
    EXPECT_EQ(1, asked);
    EXPECT_FALSE(::IsWindow(window));
    ::DestroyMenu(popup);

    auto* const updated = new AskedDialog(310, nullptr);
    ASSERT_TRUE(updated->Create(310));
    ASSERT_NE(nullptr, ::GetTopWindow(updated->m_hWnd));
    asked = 0;
    updated->m_onItem = [&](const CCmdUI&) {
        ++asked;
        updated->DestroyWindow();
    };
    updated->UpdateDialogControls(updated, TRUE);
    EXPECT_EQ(1, asked);
}

TEST(MenuUpdate, WhateverIsRemovedTheRestIsVisitedOnce)
{
    Random random;
    ForBoth([&](CWnd&, const auto& open, BOOL&, auto& onItem) {
        for (int round = 0; round < 100; ++round) {
            const int count = random.Between(1, 9);
            std::string items;
            for (int id = 1; id <= count; ++id)
                items += std::to_string(id) + " ";
            const HMENU popup = Popup(items);
            std::set<int> left;
            std::string expected;
            // What is removed while item 1, 2, ... is asked for.
            std::vector<std::vector<int>> removed(static_cast<std::size_t>(count) + 1);
            for (int id = 1; id <= count; ++id)
                left.insert(id);
            for (int id = 1; id <= count; ++id) {
                if (!left.count(id))
                    continue;
                expected += (expected.empty() ? "" : " ") + std::to_string(id);
                for (int other = 1; other <= count; ++other) {
                    if (random.Between(0, 3) == 0 && left.erase(other))
                        removed[static_cast<std::size_t>(id)].push_back(other);
                }
            }
            onItem = [&](const CCmdUI& item) {
                for (int id : removed[item.m_nID])
                    ::RemoveMenu(popup, static_cast<UINT>(id), MF_BYCOMMAND);
            };
            ASSERT_EQ(expected, open(popup, false)) << count << " items";
            ::DestroyMenu(popup);
        }
        onItem = nullptr;
    });
}
