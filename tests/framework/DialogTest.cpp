// DialogTest.cpp: dialogs out of templates in memory: how they end, also while they are created.
#include <kelgen/framework/dialogs/Dialog.h>

#include "Traffic.h"

using namespace kelgen::test;

namespace {

/// A hidden popup without controls.
constexpr WORD kEmpty[] = {LOWORD(WS_POPUP), HIWORD(WS_POPUP), 0, 0, 0, 0, 0, 50, 40, 0, 0, 0};

class Recorded : public CDialog
{
public:
    explicit Recorded(CWnd* owner = nullptr) { InitModalIndirect(reinterpret_cast<LPCDLGTEMPLATEA>(kEmpty), owner); }
    bool CreateModeless() { return CreateIndirect(reinterpret_cast<LPCDLGTEMPLATEA>(kEmpty), m_pParentWnd) != FALSE; }

    void (*m_onInit)(Recorded&) = nullptr;
    int m_failures = 0;  ///< Exchanges that are to fail.

protected:
    BOOL OnInitDialog() override
    {
        const BOOL focus = CDialog::OnInitDialog();
        Traffic::Add(m_pParentWnd && !m_pParentWnd->IsWindowEnabled() ? "init(modal)" : "init");
        if (m_onInit)
            m_onInit(*this);
        return focus;
    }
    void DoDataExchange(CDataExchange* exchange) override
    {
        Traffic::Add(exchange->m_bSaveAndValidate ? "save" : "load");
        if (exchange->m_bSaveAndValidate && m_failures-- > 0)
            exchange->Fail();
    }
    void OnOK() override
    {
        Traffic::Add("ok");
        CDialog::OnOK();
    }
    void PostNcDestroy() override { Traffic::Add(m_hWnd ? "[attached]" : "[gone]"); }
};

}  // namespace

TEST(Dialog, ModalOneRunsToItsEnd)
{
    QuietApp app;
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, AfxRegisterWndClass(0), "owner", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0));
    struct Row
    {
        const char* name;
        void (*onInit)(Recorded&);
        int failures;
        INT_PTR result;
        const char* steps;
    };
    const Row rows[] = {
        {"Ok", [](Recorded& dialog) { dialog.PostMessage(WM_COMMAND, IDOK); }, 0, IDOK, "load init(modal) ok save [gone]"},
        {"OkFailsOnce",
         [](Recorded& dialog) {
             dialog.PostMessage(WM_COMMAND, IDOK);
             dialog.PostMessage(WM_COMMAND, IDOK);
         },
         1, IDOK, "load init(modal) ok save ok save [gone]"},
        {"Cancel", [](Recorded& dialog) { dialog.PostMessage(WM_COMMAND, IDCANCEL); }, 0, IDCANCEL, "load init(modal) [gone]"},
        {"EndedAtOnce", [](Recorded& dialog) { dialog.EndDialog(77); }, 0, 77, "load init(modal) [gone]"},
    };
    for (const Row& row : rows) {
        Recorded dialog(&owner);
        dialog.m_onInit = row.onInit;
        dialog.m_failures = row.failures;
        EXPECT_EQ(row.result, dialog.DoModal()) << row.name;
        EXPECT_EQ(row.steps, Traffic::Take()) << row.name;
        EXPECT_EQ(nullptr, dialog.m_hWnd) << row.name;
        EXPECT_TRUE(owner.IsWindowEnabled()) << row.name;
    }
    Recorded none;
    none.InitModalIndirect(static_cast<LPCDLGTEMPLATEA>(nullptr));
    EXPECT_EQ(-1, none.DoModal());
    Traffic::Take();
    owner.DestroyWindow();
}

TEST(Dialog, ModelessOneThatIsEndedWhileItIsCreatedFails)
{
    QuietApp app;
    Recorded dialog;
    for (int round = 0; round < 2; ++round) {
        dialog.m_onInit = [](Recorded& ended) { ended.EndDialog(-1); };
        EXPECT_FALSE(dialog.CreateModeless());
        EXPECT_EQ("load init [gone]", Traffic::Take());
        dialog.m_onInit = [](Recorded& destroyed) { destroyed.DestroyWindow(); };
        EXPECT_FALSE(dialog.CreateModeless());
        EXPECT_EQ("load init [gone]", Traffic::Take());
    }
    dialog.m_onInit = nullptr;
    ASSERT_TRUE(dialog.CreateModeless());
    dialog.EndDialog(1);
    EXPECT_TRUE(::IsWindow(dialog.m_hWnd)) << "by contract a modeless one is only hidden";
    dialog.DestroyWindow();
    EXPECT_EQ("load init [gone]", Traffic::Take());
}
