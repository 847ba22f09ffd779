// WndTest.cpp: windows and their objects from creation to end: order of calls, failures, handlers that throw, subclassing, maps.
#include <kelgen/framework/base/Exceptions.h>

#include "Traffic.h"
#include "support/Random.h"
#include "support/Threads.h"

#include <deque>
#include <map>

using namespace kelgen::test;

namespace {

constexpr UINT kUnknownClass = 0xFFFF;

/// A window whose creation fails at a place.
// message: the message whose handler fails; 0: PreCreateWindow; kUnknownClass: the class.
struct FailingCreation
{
    const char* name;
    UINT message;
    bool byThrowing;
    const char* steps;
};

class FailingWnd : public RecordedWnd
{
public:
    explicit FailingWnd(const FailingCreation& row) : m_row(row) {}

protected:
    BOOL PreCreateWindow(CREATESTRUCTA& cs) override
    {
        if (m_row.message == kUnknownClass)
            cs.lpszClass = "no such class";
        return RecordedWnd::PreCreateWindow(cs) && m_row.message != 0;
    }
    int OnCreate(LPCREATESTRUCTA create)
    {
        if (m_row.message != WM_CREATE)
            return CWnd::OnCreate(create);
        if (m_row.byThrowing)
            AfxThrowNotSupportedException();
        return -1;
    }
    BOOL OnNcCreate(LPCREATESTRUCTA create) { return m_row.message != WM_NCCREATE && CWnd::OnNcCreate(create); }
    DECLARE_MESSAGE_MAP()

private:
    const FailingCreation& m_row;
};

BEGIN_MESSAGE_MAP(FailingWnd, RecordedWnd)
ON_WM_CREATE()
ON_WM_NCCREATE()
END_MESSAGE_MAP()

/// A plain window procedure of the platform's kind.
LRESULT CALLBACK ForeignProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const std::string name = LifeName(message); !name.empty())
        Traffic::Add("foreign-" + name);
    return message == WM_APP ? 77 : DefWindowProcA(window, message, wParam, lParam);
}

HWND ForeignWindow()
{
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = &ForeignProcedure;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.lpszClassName = "foreign";
    AfxRegisterClass(&windowClass);
    const HWND window = CreateWindowExA(0, "foreign", "", 0, 0, 0, 10, 10, nullptr, nullptr, windowClass.hInstance, nullptr);
    Traffic::Take();
    return window;
}

WNDPROC ProcedureOf(HWND window)
{
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrA(window, GWLP_WNDPROC));
}

/// Throws what the message number says.
class ThrowingWnd : public RecordedWnd
{
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (wParam != 0xE1)
            return RecordedWnd::WindowProc(message, wParam, lParam);
        SendMessage(WM_APP + 1);
        if (lParam == 1)
            AfxThrowUserException();
        if (lParam == 2)
            throw new CFileException(CFileException::badPath);
        if (lParam == 3)
            throw new CArchiveException(CArchiveException::endOfFile);
        AfxThrowNotSupportedException();
    }
};

}  // namespace

TEST(Wnd, LivesInOrder)
{
    RecordedWnd window;
    ASSERT_TRUE(window.CreateHidden());
    EXPECT_EQ("[pre-create] [subclass] nccreate create", Traffic::Take());
    EXPECT_EQ(&window, CWnd::FromHandle(window));
    EXPECT_EQ(1, window.SendMessage(WM_QUERYAFXWNDPROC));

    RecordedWnd child("child:");
    ASSERT_TRUE(child.CreateHidden(&window, 5));
    EXPECT_EQ(5, child.GetDlgCtrlID());
    EXPECT_EQ(&child, window.GetDlgItem(5));
    Traffic::Take();

    const HWND handle = window;
    window.SendMessage(WM_CLOSE);
    EXPECT_EQ("close destroy child:destroy child:ncdestroy child:[gone] ncdestroy [gone]", Traffic::Take());
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(handle));
    EXPECT_FALSE(window.DestroyWindow());
}

TEST(Wnd, GoesWithItsObject)
{
    HWND handle;
    {
        RecordedWnd window;
        window.CreateHidden();
        handle = window;
    }
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(handle));
    Traffic::Take();
}

TEST(WndFailingCreation, TellsTheObjectOnce)
{
    const FailingCreation rows[] = {
        {"Refused", 0, false, "[pre-create] [gone]"},
        {"UnknownClass", kUnknownClass, false, "[pre-create] [gone]"},
        {"NcCreateFalse", WM_NCCREATE, false, "[pre-create] [subclass] nccreate ncdestroy [gone]"},
        {"CreateMinusOne", WM_CREATE, false, "[pre-create] [subclass] nccreate create ncdestroy [gone]"},
        {"CreateThrows", WM_CREATE, true, "[pre-create] [subclass] nccreate create ncdestroy [gone]"},
    };
    for (const FailingCreation& row : rows) {
        SCOPED_TRACE(row.name);
        FailingWnd window(row);
        EXPECT_FALSE(window.CreateHidden());
        EXPECT_EQ(row.steps, Traffic::Take());
        EXPECT_EQ(nullptr, window.m_hWnd);
        // The next window is not taken for the failed one.
        const HWND next = ForeignWindow();
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(next));
        DestroyWindow(next);
        Traffic::Take();
    }
}

TEST(Wnd, ExceptionsEndAtTheWindowProcedure)
{
    QuietApp app;
    ThrowingWnd window;
    window.CreateHidden();
    Traffic::Take();
    MSG& current = AfxGetThreadState()->m_lastSentMsg;
    current = {nullptr, 0xABCD, 1, 2, 3, {4, 5}};

    struct Row
    {
        UINT message;
        LPARAM what;
        LRESULT result;
        const char* steps;
    };
    for (const Row& row : {Row{WM_APP, 0, 0, "app+1 box(This operation is not supported.)"}, Row{WM_APP, 1, 0, "app+1"},
                           Row{WM_APP, 2, 0, "app+1 box(an unnamed file contains an invalid path.)"}, Row{WM_PAINT, 3, 0, "app+1"},
                           Row{WM_CREATE, 3, -1, "app+1"}}) {
        EXPECT_EQ(row.result, window.SendMessage(row.message, 0xE1, row.what)) << row.steps;
        EXPECT_EQ(row.steps, Traffic::Take());
        EXPECT_EQ(0xABCDu, current.message);
        EXPECT_EQ(5, current.pt.y);
    }
    current = {};
}

TEST(Wnd, DefaultPassesTheCurrentMessageOn)
{
    const HWND handle = ForeignWindow();
    RecordedWnd window("object-");
    ASSERT_TRUE(window.SubclassWindow(handle));
    EXPECT_EQ("object-[subclass]", Traffic::Take());
    EXPECT_EQ(77, window.SendMessage(WM_APP));
    EXPECT_EQ("object-app+0 foreign-app+0", Traffic::Take());
    AfxGetThreadState()->m_lastSentMsg.message = WM_APP;
    EXPECT_EQ(77, window.Default());
    EXPECT_EQ("foreign-app+0", Traffic::Take());
    EXPECT_EQ(handle, window.UnsubclassWindow());
    EXPECT_EQ(&ForeignProcedure, ProcedureOf(handle));
    EXPECT_EQ(77, SendMessageA(handle, WM_APP, 0, 0));
    EXPECT_EQ("foreign-app+0", Traffic::Take());
    EXPECT_FALSE(window.SubclassWindow(nullptr));
    DestroyWindow(handle);
    Traffic::Take();
}

TEST(Wnd, SubclassedWindowDiesThroughBothProcedures)
{
    const HWND handle = ForeignWindow();
    RecordedWnd window("object-");
    window.SubclassWindow(handle);
    Traffic::Take();
    DestroyWindow(handle);
    EXPECT_EQ("object-destroy foreign-destroy object-ncdestroy foreign-ncdestroy object-[gone]", Traffic::Take());
}

TEST(Wnd, AttachLeavesTheProcedureAndDetachTheWindow)
{
    const HWND handle = ForeignWindow();
    CWnd* const temporary = CWnd::FromHandle(handle);
    EXPECT_EQ(temporary, CWnd::FromHandle(handle));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(handle));
    EXPECT_EQ(nullptr, CWnd::FromHandle(nullptr));
    {
        RecordedWnd object;
        EXPECT_FALSE(object.Attach(nullptr));
        EXPECT_TRUE(object.Attach(handle));
        EXPECT_EQ(&object, CWnd::FromHandle(handle));
        EXPECT_EQ(&ForeignProcedure, ProcedureOf(handle));
        // Another object takes the handle over; the first one's end changes nothing then.
        RecordedWnd second;
        second.Attach(handle);
        object.Detach();
        EXPECT_EQ(&second, CWnd::FromHandlePermanent(handle));
        CWnd* seenElsewhere = &second;
        const OwnedHandle thread = StartThread([&] {
            seenElsewhere = CWnd::FromHandlePermanent(handle);
            return 0u;
        });
        WaitForSingleObject(thread.get(), kDeadline);
        EXPECT_EQ(nullptr, seenElsewhere);
        EXPECT_EQ(handle, second.Detach());
    }
    EXPECT_TRUE(IsWindow(handle));
    AfxLockTempMaps();
    AfxUnlockTempMaps();
    EXPECT_TRUE(IsWindow(handle)) << "temporary objects own nothing";
    EXPECT_TRUE(CWnd::FromHandle(handle)->DestroyWindow());
    Traffic::Take();
}

// Handles of no window do for the map; beside it, a map of the standard library.
TEST(Wnd, ObjectsAreFoundByTheHandlesThatTheyAreAttachedTo)
{
    Random random;
    std::deque<CWnd> objects(400);
    std::map<HWND, CWnd*> model;
    for (int step = 0; step < 20000; ++step) {
        CWnd& object = objects[static_cast<std::size_t>(random.Between(0, 399))];
        const auto handle = reinterpret_cast<HWND>(static_cast<UINT_PTR>(random.Between(1, 600)) << random.Between(0, 1) * 16 << 16);
        if (object.m_hWnd) {
            model.erase(object.m_hWnd);
            object.Detach();
        } else if (!model.contains(handle)) {
            object.Attach(handle);
            model[handle] = &object;
        }
        const auto wanted = model.find(handle);
        ASSERT_EQ(wanted == model.end() ? nullptr : wanted->second, CWnd::FromHandlePermanent(handle)) << step;
    }
    for (CWnd& object : objects) {
        ASSERT_EQ(object.m_hWnd ? &object : nullptr, CWnd::FromHandlePermanent(object.m_hWnd));
        object.Detach();
    }
}

TEST(Wnd, DescendantsAreToldTopmostFirst)
{
    RecordedWnd top, one("1:"), two("2:"), inner("2.1:");
    top.CreateHidden();
    one.CreateHidden(&top, 1);
    two.CreateHidden(&top, 2);
    inner.CreateHidden(&two, 3);
    two.SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    const HWND foreign = ForeignWindow();
    SetParent(foreign, one);
    Traffic::Take();

    top.SendMessageToDescendants(WM_APP + 1);
    EXPECT_EQ("2:app+1 2.1:app+1 1:app+1 foreign-app+1", Traffic::Take());
    top.SendMessageToDescendants(WM_APP + 1, 0, 0, FALSE);
    EXPECT_EQ("2:app+1 1:app+1", Traffic::Take());
    top.SendMessageToDescendants(WM_APP + 1, 0, 0, TRUE, TRUE);
    EXPECT_EQ("2:app+1 2.1:app+1 1:app+1", Traffic::Take());
    EXPECT_EQ(&inner, top.GetDescendantWindow(3, TRUE));
    EXPECT_EQ(&top, inner.GetTopLevelParent());
    EXPECT_EQ(&top, inner.GetParentOwner());
    EXPECT_EQ(nullptr, inner.GetParentFrame());
    top.DestroyWindow();
    Traffic::Take();
}

TEST(Wnd, StyleChangesAreToldApart)
{
    RecordedWnd window;
    window.CreateHidden();
    EXPECT_FALSE(window.ModifyStyle(0, 0));
    EXPECT_TRUE(window.ModifyStyle(0, WS_DISABLED));
    EXPECT_FALSE(window.IsWindowEnabled());
    EXPECT_FALSE(window.ModifyStyle(0, WS_DISABLED));
    EXPECT_TRUE(window.ModifyStyleEx(0, WS_EX_TOOLWINDOW, SWP_FRAMECHANGED));
    EXPECT_TRUE(window.GetExStyle() & WS_EX_TOOLWINDOW);
    window.SetWindowText("other text");
    CString text;
    window.GetWindowText(text);
    EXPECT_EQ("other text", text);
    window.DestroyWindow();
    Traffic::Take();
}

TEST(Wnd, IsCenteredInItsParent)
{
    RecordedWnd parent, child;
    parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(100, 100, 400, 300), nullptr, 0);
    child.CreateHidden(&parent);
    child.CenterWindow();
    CRect rect;
    child.GetWindowRect(rect);
    EXPECT_EQ(CRect(225, 180, 275, 220), rect);
    parent.ScreenToClient(rect);
    EXPECT_EQ(CRect(125, 80, 175, 120), rect);
    parent.DestroyWindow();
    Traffic::Take();
}

TEST(WndClass, SameLookIsOneClassWithALastingName)
{
    LPCSTR const plain = AfxRegisterWndClass(CS_DBLCLKS);
    const std::string copy = plain;
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    EXPECT_NE(copy, AfxRegisterWndClass(CS_DBLCLKS, arrow));
    EXPECT_NE(copy, AfxRegisterWndClass(CS_NOCLOSE));
    EXPECT_EQ(plain, AfxRegisterWndClass(CS_DBLCLKS));
    EXPECT_EQ(copy, plain);
    WNDCLASSA found;
    EXPECT_TRUE(GetClassInfoA(AfxGetInstanceHandle(), plain, &found));
    EXPECT_EQ(static_cast<UINT>(CS_DBLCLKS), found.style);
}
