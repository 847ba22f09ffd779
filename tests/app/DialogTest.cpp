// DialogTest.cpp: exchange routines against a dialog's controls, and dialogs that delete themselves.
#include <kelgen/app/AppDialog.h>
#include <kelgen/app/DDX.h>
#include <kelgen/framework/ThreadState.h>

#include "app/TestApp.h"
#include "support/Rows.h"
#include "text/Units.h"

using namespace kelgen::test;

namespace {

class Fields : public CAppDialog
{
public:
    Fields() : CAppDialog(310) {}
    ~Fields() override { s_deleted = true; }

    HWND Item(int id) const { return ::GetDlgItem(m_hWnd, id); }

    static bool s_deleted;

protected:
    void OnCancel() override { DestroyWindow(); }
};
bool Fields::s_deleted = false;

class Exchange : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_dialog->Create(310)); }
    void TearDown() override { m_dialog->DestroyWindow(); }

    /// Whether the routine passes.
    template <class ROUTINE>
    bool Passes(BOOL save, ROUTINE routine)
    {
        CDataExchange exchange(m_dialog, save);
        try {
            routine(&exchange);
            return true;
        } catch (CUserException* e) {
            e->Delete();
            return false;
        }
    }

    TestApp m_app;
    Fields* m_dialog = new Fields;
};

}  // namespace

TEST_F(Exchange, NumbersInEditControls)
{
    int value = -17;
    Passes(FALSE, [&](CDataExchange* dx) { CDDX::DDXEdit(dx, 10, &value); });
    char text[16];
    ::GetWindowTextA(m_dialog->Item(10), text, sizeof text);
    EXPECT_STREQ("-17", text);

    struct Row
    {
        const char* text;
        int value;
        bool passes;
    };
    for (const Row& row : {Row{"12", 12, true}, {"  12\t", 12, true}, {"-3", -3, false}, {"1a", 1, false}, {"21", 21, false}, {"", 0, false}, {"20", 20, true}}) {
        ::SetWindowTextA(m_dialog->Item(10), row.text);
        Passes(TRUE, [&](CDataExchange* dx) { CDDX::DDXEdit(dx, 10, &value); });
        EXPECT_EQ(row.value, value) << row.text;
        EXPECT_EQ(row.passes, Passes(TRUE, [](CDataExchange* dx) { CDDX::DDVEditIntegerRange(dx, 10, 1, 20); })) << row.text;
    }
    ::SetWindowTextA(m_dialog->Item(10), "rubbish");
    EXPECT_TRUE(Passes(FALSE, [](CDataExchange* dx) { CDDX::DDVEditIntegerRange(dx, 10, 1, 20); })) << "nothing while loading";
}

TEST_F(Exchange, RadioButtonsStandForValues)
{
    LONG value = 2;
    const auto both = [&](CDataExchange* dx) {
        CDDX::DDXRadio(dx, 11, 1, &value);
        CDDX::DDXRadio(dx, 12, 2, &value);
    };
    Passes(FALSE, both);
    EXPECT_EQ(BST_UNCHECKED, ::SendMessageA(m_dialog->Item(11), BM_GETCHECK, 0, 0));
    EXPECT_EQ(BST_CHECKED, ::SendMessageA(m_dialog->Item(12), BM_GETCHECK, 0, 0));
    value = 77;
    Passes(TRUE, both);
    EXPECT_EQ(2, value);
    ::SendMessageA(m_dialog->Item(12), BM_SETCHECK, BST_UNCHECKED, 0);
    value = 77;
    Passes(TRUE, both);
    EXPECT_EQ(77, value) << "no button is checked";
}

TEST_F(Exchange, ListsComeAndGoInOrder)
{
    CStringArray items;
    items.Add("beta");
    items.Add("alpha");
    const auto list = [&](CDataExchange* dx) { CDDX::DDXListBox(dx, 13, &items); };
    Passes(FALSE, list);
    Passes(FALSE, list);
    items.RemoveAll();
    Passes(TRUE, list);
    ASSERT_EQ(2, items.GetSize());
    EXPECT_STREQ("beta", items[0]);
    EXPECT_STREQ("alpha", items[1]);
}

TEST_F(Exchange, ComboBoxesSkipTheirFirstItemAndTakeTypedText)
{
    CStrArray items;
    const auto combo = [&](CDataExchange* dx) { CDDX::DDXComboBoxV001(dx, 14, &items, 301); };
    const HWND box = m_dialog->Item(14);
    Passes(FALSE, combo);
    EXPECT_EQ(1, ::SendMessageA(box, CB_GETCOUNT, 0, 0));
    EXPECT_EQ(0, ::SendMessageA(box, CB_GETCURSEL, 0, 0));
    char text[16];
    ::GetWindowTextA(box, text, sizeof text);
    EXPECT_STREQ("(first)", text);

    items.Add("x");
    items.Add("y");
    Passes(FALSE, combo);
    EXPECT_EQ(3, ::SendMessageA(box, CB_GETCOUNT, 0, 0));
    EXPECT_EQ(1, ::SendMessageA(box, CB_GETCURSEL, 0, 0));
    ::SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("x"));
    ::SendMessageA(box, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    for (const char* typed : {"y", "new", ""}) {
        ::SetWindowTextA(box, typed);
        Passes(TRUE, combo);
        ASSERT_EQ(*typed == 'n' ? 3 : 2, items.GetSize()) << typed;
        EXPECT_STREQ("x", items[0]);
        EXPECT_STREQ("y", items[1]);
    }
}

TEST(AppDialog, IsDeletedWithItsWindowAndWhenItCannotBeCreated)
{
    TestApp app;
    auto* dialog = new Fields;
    ASSERT_TRUE(dialog->Create(310));
    Fields::s_deleted = false;
    ::SendMessageA(dialog->m_hWnd, WM_COMMAND, IDCANCEL, 0);
    EXPECT_TRUE(Fields::s_deleted);

    for (UINT missingOrDamaged : {4711, 320}) {
        dialog = new Fields;
        Fields::s_deleted = false;
        EXPECT_FALSE(dialog->Create(missingOrDamaged)) << missingOrDamaged;
        EXPECT_TRUE(Fields::s_deleted) << missingOrDamaged;
    }
}

TEST(WListCtrl, ItemsHaveWideTexts)
{
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr));
    CWListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | LVS_REPORT, CRect(0, 0, 100, 100), &parent, 7));
    list.InsertColumn(0, "name", LVCFMT_LEFT, 50);
    list.InsertColumn(1, "size", LVCFMT_LEFT, 50);
    EXPECT_EQ(0, list.InsertItem(0, u"\x3042"_w));
    EXPECT_EQ(1, list.InsertItem(LVIF_TEXT | LVIF_PARAM, 9, u"b"_w, 0, 0, 0, 55));
    EXPECT_EQ(-1, list.InsertItem(-1, u"c"_w));
    EXPECT_TRUE(list.SetItemText(1, 1, u"12"_w));
    EXPECT_FALSE(list.SetItemText(5, 0, u"12"_w));
    EXPECT_EQ(2, list.GetItemCount());
    EXPECT_STREQ("12", list.GetItemText(1, 1));
    EXPECT_EQ(55u, list.GetItemData(1));
    WCHAR text[8];
    LVITEMW item{};
    item.pszText = text;
    item.cchTextMax = 8;
    EXPECT_EQ(1, ::SendMessageA(list.m_hWnd, LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item)));
    EXPECT_EQ(0x3042, text[0]);
    parent.DestroyWindow();
}

TEST(PushRoutingFrame, GivesTheFrameBack)
{
    CFrameWnd* const before = AfxGetThreadState()->m_pRoutingFrame;
    CFrameWnd* const frame = reinterpret_cast<CFrameWnd*>(0x1234);
    {
        const CPushRoutingFrame pushed(frame);
        EXPECT_EQ(frame, AfxGetThreadState()->m_pRoutingFrame);
    }
    EXPECT_EQ(before, AfxGetThreadState()->m_pRoutingFrame);
}
