// DifferencesTest.cpp: what windows and messages of our own platform answer otherwise, both answers (docs/differences.md).
#include "platform/user/WindowTraffic.h"
#include "support/Target.h"

using namespace kelgen::test;

namespace {

constexpr const char* kBox = "kelgen asks";
bool boxWasShown;

/// Answers the box with yes, if there is one to be seen.
void CALLBACK AnswerBox(HWND, UINT, UINT_PTR, DWORD)
{
    if (const HWND box = FindWindowA("#32770", kBox)) {
        boxWasShown = true;
        PostMessageA(box, WM_COMMAND, IDYES, 0);
    }
}

}  // namespace

TEST(Differences, MessageBoxWaitsForAUserWhereThereIsAScreen)
{
    boxWasShown = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, AnswerBox);
    EXPECT_EQ(isOurPlatform ? IDNO : IDYES, MessageBoxA(nullptr, "Go on?", kBox, MB_YESNO | MB_DEFBUTTON2));
    KillTimer(nullptr, timer);
    EXPECT_EQ(!isOurPlatform, boxWasShown);
}

TEST(Differences, WindowThatIsAboutToEndIsEndedOnce)
{
    struct Row
    {
        const char* name;
        const char* actor;
        UINT message;
        const char* target;
        const char* again;  ///< What the other platform sends.
    };
    constexpr const char* kOnce = "P destroy; a destroy; b destroy; a ncdestroy; b ncdestroy; P ncdestroy";
    const Row rows[] = {
        {"ItselfAgain", "P", WM_DESTROY, "P", "P destroy; >P destroy; >a destroy; >b destroy; >a ncdestroy; >b ncdestroy; >P ncdestroy"},
        {"ChildItselfAgain", "a", WM_DESTROY, "a",
         "P destroy; a destroy; >P parentnotify 2 id 0 a; >a destroy; >a ncdestroy; b destroy; b ncdestroy; P ncdestroy"},
        {"ChildThatHasBeenTold", "b", WM_DESTROY, "a",
         "P destroy; a destroy; b destroy; >P parentnotify 2 id 0 a; >a destroy; >a ncdestroy; b ncdestroy; P ncdestroy"},
        {"ParentFromAChild", "a", WM_DESTROY, "P",
         "P destroy; a destroy; >P destroy; >a destroy; >b destroy; >a ncdestroy; >b ncdestroy; >P ncdestroy"},
        {"SiblingThatHasBeenTold", "a", WM_NCDESTROY, "b",
         "P destroy; a destroy; b destroy; a ncdestroy; >P parentnotify 2 id 0 b; >b destroy; >b ncdestroy; P ncdestroy"},
    };
    for (const Row& row : rows) {
        Traffic traffic;
        std::map<std::string, HWND> windows;
        windows["P"] = traffic.Make("P", WS_POPUP, {0, 0, 9, 9});
        for (const char* name : {"a", "b"})
            windows[name] = traffic.Make(name, WS_CHILD, {0, 0, 9, 9}, windows["P"]);
        traffic.Take();
        bool hasActed = false;
        traffic.handler = [&](const std::string& name, HWND, UINT message, LRESULT&) {
            if (name == row.actor && message == row.message && !std::exchange(hasActed, true)) {
                EXPECT_TRUE(DestroyWindow(windows[row.target])) << row.name;
            }
            return false;
        };
        EXPECT_TRUE(DestroyWindow(windows["P"]));
        EXPECT_EQ(isOurPlatform ? kOnce : row.again, traffic.Take()) << row.name;
        for (const auto& [name, window] : windows)
            EXPECT_FALSE(IsWindow(window)) << row.name << name;
    }
}

TEST(Differences, QueueHoldsTenThousandPostedMessages)
{
    constexpr int kOurLimit = 10000;
    Traffic traffic;
    const HWND window = traffic.Make("A", WS_POPUP, {0, 0, 9, 9});
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
        DispatchMessageA(&message);
    int posted = 0;
    while (posted <= kOurLimit && PostMessageA(window, WM_APP, 0, 0))
        ++posted;
    if (isOurPlatform) {
        EXPECT_EQ(kOurLimit, posted);
        EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_QUOTA}, GetLastError());
    } else {
        EXPECT_EQ(kOurLimit + 1, posted);
    }
    DestroyWindow(window);
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
    }
}
