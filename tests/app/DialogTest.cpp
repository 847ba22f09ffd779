// DialogTest.cpp: exchange routines against a dialog's controls, and dialogs that delete themselves.
#include <kelgen/app/AppDialog.h>
#include <kelgen/app/DDX.h>
#include <kelgen/framework/dialogs/internal/DialogTemplate.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/ThreadState.h>

#include "app/TestApp.h"
#include "support/Random.h"
#include "support/Rows.h"
#include "text/Units.h"

#include <climits>

using namespace kelgen::test;

namespace {

class Fields : public CAppDialog
{
public:
    explicit Fields(UINT id = 310) : CAppDialog(id) {}
    BOOL OnInitDialog() override
    {
        const BOOL focus = CAppDialog::OnInitDialog();
        if (s_onInit)
            s_onInit(*this);
        return focus;
    }
    ~Fields() override { s_deleted = true; }

    HWND Item(int id) const { return ::GetDlgItem(m_hWnd, id); }
    using CAppDialog::CreateIndirect;
    using CAppDialog::m_nIDHelp;

    static bool s_deleted;
    static inline void (*s_onInit)(Fields&) = nullptr;

protected:
    void OnCancel() override { DestroyWindow(); }
};
bool Fields::s_deleted = false;

class Refusing : public Fields
{
public:
    BOOL PreCreateWindow(CREATESTRUCTA& create) override
    {
        CAppDialog::PreCreateWindow(create);
        create.style |= WS_MINIMIZEBOX;
        return create.dwExStyle & WS_EX_APPWINDOW ? s_agrees : FALSE;
    }

    static inline BOOL s_agrees = TRUE;
};

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
    for (const Row& row : {Row{"12", 12, true},
                           {"  12\t", 12, true},
                           {"-3", -3, false},
                           {"1a", 1, false},
                           {"21", 21, false},
                           {"", 0, false},
                           {"20", 20, true},
                           {"4294967301", INT_MAX, false},
                           {"-4294967301", INT_MIN, false},
                           {"99999999999999999999", INT_MAX, false}}) {
        ::SetWindowTextA(m_dialog->Item(10), row.text);
        Passes(TRUE, [&](CDataExchange* dx) { CDDX::DDXEdit(dx, 10, &value); });
        EXPECT_EQ(row.value, value) << row.text;
        EXPECT_EQ(row.passes, Passes(TRUE, [](CDataExchange* dx) { CDDX::DDVEditIntegerRange(dx, 10, 1, 20); })) << row.text;
    }
    ::SetWindowTextA(m_dialog->Item(10), " ");
    EXPECT_TRUE(Passes(TRUE, [](CDataExchange* dx) { CDDX::DDVEditIntegerRange(dx, 10, 0, 20); })) << "nothing is 0";
    ::SetWindowTextA(m_dialog->Item(10), "2147483647");
    EXPECT_TRUE(Passes(TRUE, [](CDataExchange* dx) { CDDX::DDVEditIntegerRange(dx, 10, 0, INT_MAX); }));
    ::SetWindowTextA(m_dialog->Item(10), "rubbish");
    EXPECT_TRUE(Passes(FALSE, [](CDataExchange* dx) { CDDX::DDVEditIntegerRange(dx, 10, 1, 20); })) << "nothing while loading";
}

TEST_F(Exchange, DigitsOfTwoBytesAreDigitsWithoutANumber)
{
    const int former = _getmbcp();
    ASSERT_EQ(0, _setmbcp(932));
    const auto range = [](CDataExchange* dx) { CDDX::DDVEditIntegerRange(dx, 10, 0, 0); };
    for (const auto& [text, passes] : {std::pair{"\x82\x54", true}, {"\x82\x60", false}, {"0\x82\x54", true}, {"\x82", false}}) {
        ::SetWindowTextA(m_dialog->Item(10), text);
        EXPECT_EQ(passes, Passes(TRUE, range)) << testing::PrintToString(std::string(text));
    }
    _setmbcp(former);
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

    // Missing, damaged, with damaged first items, and ended or destroyed while it is made.
    struct Row
    {
        const char* name;
        UINT id;
        void (*onInit)(Fields&);
    };
    for (const Row& row : {Row{"missing", 4711, nullptr},
                           {"damaged", 320, nullptr},
                           {"damaged items", 340, nullptr},
                           {"ended", 310, [](Fields& fields) { fields.EndDialog(5); }},
                           {"destroyed", 310, [](Fields& fields) { fields.DestroyWindow(); }}}) {
        dialog = new Fields;
        Fields::s_deleted = false;
        Fields::s_onInit = row.onInit;
        EXPECT_FALSE(dialog->Create(row.id)) << row.name;
        EXPECT_TRUE(Fields::s_deleted) << row.name;
    }
    Fields::s_onInit = nullptr;
    EXPECT_EQ(nullptr, ::FindWindowA(nullptr, "Fields"));
}

TEST(AppDialog, HasAButtonInTheTaskBarUnlessItsStylesAreRefused)
{
    TestApp app;
    auto* dialog = new Refusing;
    ASSERT_TRUE(dialog->Create(310));
    EXPECT_TRUE(dialog->GetExStyle() & WS_EX_APPWINDOW);
    EXPECT_TRUE(dialog->GetStyle() & WS_MINIMIZEBOX);
    dialog->DestroyWindow();
    Refusing::s_agrees = FALSE;
    dialog = new Refusing;
    Fields::s_deleted = false;
    EXPECT_FALSE(dialog->Create(310));
    Refusing::s_agrees = TRUE;
    EXPECT_TRUE(Fields::s_deleted);
}

TEST(AppDialog, ComesFromNamesNumbersAndMemory)
{
    TestApp app;
    CString title;
    const auto shown = [&](Fields* dialog, BOOL created, const char* expected, UINT help) {
        ASSERT_TRUE(created) << expected;
        dialog->GetWindowText(title);
        EXPECT_STREQ(expected, title);
        EXPECT_EQ(help, dialog->m_nIDHelp) << expected;
        dialog->DestroyWindow();
    };
    auto* dialog = new Fields(0);
    shown(dialog, dialog->Create(311), "Extended", 311);
    dialog = new Fields(77);
    shown(dialog, dialog->Create(311), "Extended", 77);
    dialog = new Fields(0);
    shown(dialog, dialog->Create("NAMED"), "Named", 0);

    const HINSTANCE module = AfxFindResourceHandle(MAKEINTRESOURCEA(311), RT_DIALOG);
    const HRSRC resource = ::FindResourceA(module, MAKEINTRESOURCEA(311), RT_DIALOG);
    const HGLOBAL data = ::LoadResource(module, resource);
    const auto* const bytes = static_cast<LPCDLGTEMPLATEA>(::LockResource(data));
    dialog = new Fields(0);
    shown(dialog, dialog->CreateIndirect(data), "Extended", 0);
    static constexpr WORD kItems[] = {13, 0x401, 2, 0, 'x', 13, LB_ADDSTRING, 2, 0, 'y', 0};
    static int s_items;
    Fields::s_onInit = [](Fields& fields) { s_items = static_cast<int>(::SendMessageA(fields.Item(13), LB_GETCOUNT, 0, 0)); };
    dialog = new Fields(0);
    shown(dialog, dialog->CreateIndirect(bytes, nullptr, kItems), "Extended", 0);
    EXPECT_EQ(2, s_items);
    Fields::s_onInit = nullptr;
}

TEST(DialogTemplate, EndsWithinItsBytes)
{
    Random random;
    for (UINT id : {310u, 311u}) {
        const HINSTANCE module = AfxFindResourceHandle(MAKEINTRESOURCEA(id), RT_DIALOG);
        const HRSRC resource = ::FindResourceA(module, MAKEINTRESOURCEA(id), RT_DIALOG);
        const auto* const bytes = static_cast<const BYTE*>(::LockResource(::LoadResource(module, resource)));
        const std::size_t size = ::SizeofResource(module, resource);
        std::size_t least = size;
        for (std::size_t cut = size; cut-- > 0;) {
            const std::vector<BYTE> copy(bytes, bytes + cut);  // of that very size: a step too far is seen
            if (kelgen::detail::IsWholeDialogTemplate(copy.data(), cut))
                least = cut;
        }
        EXPECT_TRUE(kelgen::detail::IsWholeDialogTemplate(bytes, size)) << id;
        EXPECT_LE(size - least, 3u) << id << ": only padding may be missing";
        for (int round = 0; round < 2000; ++round) {
            std::vector<BYTE> copy(bytes, bytes + random.Between(0, static_cast<int>(size)));
            for (int changes = copy.empty() ? 0 : random.Between(1, 4); changes > 0; --changes)
                copy[static_cast<std::size_t>(random.Between(0, static_cast<int>(copy.size()) - 1))] ^=
                    static_cast<BYTE>(random.Between(1, 255));
            kelgen::detail::IsWholeDialogTemplate(copy.data(), copy.size());
        }
    }
}

TEST_F(Exchange, FirstItemsEndWithTheirResource)
{
    const auto items = [&] { return ::SendMessageA(m_dialog->Item(13), LB_GETCOUNT, 0, 0); };
    EXPECT_TRUE(m_dialog->ExecuteDlgInit(MAKEINTRESOURCEA(330)));
    EXPECT_EQ(2, items());
    const char* const damages[] = {"too long", "without a terminator", "cut in its head", "without an end", "empty", "huge"};
    for (UINT i = 0; i < std::size(damages); ++i)
        EXPECT_FALSE(m_dialog->ExecuteDlgInit(MAKEINTRESOURCEA(331 + i))) << damages[i];
    EXPECT_EQ(3, items()) << "the whole record before the missing end";
    EXPECT_TRUE(m_dialog->ExecuteDlgInit(MAKEINTRESOURCEA(4711))) << "none";
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

    list.DeleteAllItems();
    for (int i = 0; i < 10000; ++i)
        ASSERT_EQ(i, list.InsertItem(i, i % 2 ? u"odd"_w : u"even"_w));
    EXPECT_EQ(10000, list.GetItemCount());
    EXPECT_EQ(5000, list.InsertItem(5000, u"between"_w));
    EXPECT_STREQ("odd", list.GetItemText(10000, 0));
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
