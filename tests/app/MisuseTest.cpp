// MisuseTest.cpp: what checked builds tell of misuses.
#include <kelgen/app/App.h>
#include <kelgen/containers/FastArray.h>
#include <kelgen/framework/frames/FrameWnd.h>
#include <kelgen/platform/support/Assert.h>
#include <kelgen/property/PropertySet.h>
#include <kelgen/property/PropertyValueTrigger.h>
#include <kelgen/system/FileChangeEvent.h>
#include <kelgen/text/StrArray.h>
#include <kelgen/text/WStr.h>
#include <kelgen/window/Timer.h>
#include <kelgen/window/WindowHook.h>

#include "app/TestApp.h"

#include "support/Rows.h"
#include "window/HookWindow.h"

#include <functional>
#include <thread>

using namespace kelgen::test;

#ifdef KELGEN_CHECKED

namespace {

std::string told;

class Misuse : public testing::Test
{
protected:
    Misuse()
    {
        told.clear();
        m_before = kelgen::SetMisuseHandler([](const char* message) { told += message; });
    }
    ~Misuse() override { kelgen::SetMisuseHandler(m_before); }

private:
    kelgen::MisuseHandler m_before;
};

struct Stop
{};

std::string MessageOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (CInvalidArgException* e) {
        char text[200];
        e->GetErrorMessage(text, sizeof text);
        return text;
    }
    return "";
}

/// The memory of an object that has ended: its destructor has run, and nothing took its place.
template <class T>
class Ended
{
public:
    Ended()
    {
        T* const object = ::new (m_place) T;
        object->~T();
    }
    T* Get() { return std::launder(reinterpret_cast<T*>(m_place)); }

private:
    alignas(T) unsigned char m_place[sizeof(T)];
};

[[maybe_unused]] __attribute__((noinline)) void Delete(CObject* object)
{
    delete object;
}

class Listener : public gen::CPropertySetListener
{};
class Callback : public gen::CPropertyValueTriggerCallback
{};
class Hook : public C000WndProcInterface
{};

}  // namespace

TEST(MisuseIndex, IsNamedWithTheSize)
{
    CArray<int, int> numbers;
    numbers.SetSize(3);
    CFastArray<int, int> fast;
    fast.Add(1);
    fast.Add(2);
    CStringArray texts;
    CStrArray words;
    const CString text("abc");
    for (const auto& [act, named] : Table<std::function<void()>, const char*>{
             {[&] { numbers.GetAt(3); }, "index 3 of size 3"},
             {[&] { numbers[-1] = 0; }, "index -1 of size 3"},
             {[&] { numbers.RemoveAt(1, 3); }, "index 3 of size 3"},
             {[&] { numbers.InsertAt(-2, 0); }, "index -2 of size 3"},
             {[&] { numbers.SetAtGrow(-4, 0); }, "index -4 of size 3"},
             {[&] { fast.RemoveAt(2); }, "index 2 of size 2"},
             {[&] { texts.GetAt(0); }, "index 0 of size 0"},
             {[&] { words.GetAt(5); }, "index 5 of size 0"},
             {[&] { text.GetAt(4); }, "index 4 of size 3"},
         })
        EXPECT_EQ(std::string("An argument is not valid: ") + named + '.', MessageOf(act));
}

TEST_F(Misuse, NamesIndexesOfWideTexts)
{
    CWStr text(u"abc"_w);
    text.SetAt(3, 'x');
    EXPECT_EQ("CWStr::SetAt: index 3 of length 3", told);
    EXPECT_TRUE(text == u"abc"_w);
}

TEST_F(Misuse, NamesUnlockingWhatIsNotLocked)
{
    CString narrow("a");
    narrow.UnlockBuffer();
    EXPECT_EQ("CString::UnlockBuffer: the block is not locked", std::exchange(told, {}));
    CWStr wide(u"a"_w);
    wide.UnlockBuffer();
    EXPECT_EQ("CWStr::UnlockBuffer: the block is not locked", std::exchange(told, {}));
    narrow.LockBuffer();
    narrow.UnlockBuffer();
    wide.LockBuffer();
    wide.UnlockBuffer();
    EXPECT_EQ("", told);
}

TEST_F(Misuse, NamesConversionsThatTakeSomethingElse)
{
    // What does not fit is not printed.
    kelgen::SetMisuseHandler([](const char* message) {
        told += message;
        throw Stop();
    });
    CWStr wide;
    const unsigned short* const units = u"text"_w;
    const long long big = 5;
    for (const auto& [act, named] : Table<std::function<void()>, std::string>{
             {[&] { wide.Format(u"%s %d %5.2f %I64d %c %p %%"_w, units, 1, 2.5, big, 'c', &wide); }, ""},
             {[&] { wide.Format(u"%hs %S %ls %*d"_w, "a", "b", units, 3, 4u); }, ""},
             {[&] { wide.Format(u"%s %p"_w, nullptr, units); }, ""},
             {[&] { wide.Format(u"100%% of %d"_w, 7, 8); }, ""},
             {[&] { wide.Format(u"%d %s"_w, 1, "narrow"); }, R"(CWStr::Format: "%s" takes 16-bit text, but argument 2 is narrow text)"},
             {[&] { wide.Format(u"%-8hs"_w, units); }, R"(CWStr::Format: "%-8hs" takes narrow text, but argument 1 is 16-bit text)"},
             {[&] { wide.Format(u"%x"_w, big); },
              R"(CWStr::Format: "%x" takes a number of 32 bits, but argument 1 is a number of 64 bits)"},
             {[&] { wide.Format(u"%I64u"_w, 1); },
              R"(CWStr::Format: "%I64u" takes a number of 64 bits, but argument 1 is a number of 32 bits)"},
             {[&] { wide.Format(u"%.1f"_w, 1); },
              R"(CWStr::Format: "%.1f" takes a floating-point number, but argument 1 is a number of 32 bits)"},
             {[&] { wide.Format(u"%d"_w, 1.5); },
              R"(CWStr::Format: "%d" takes a number of 32 bits, but argument 1 is a floating-point number)"},
             {[&] { wide.Format(u"%*d"_w, 1.5, 2); },
              R"(CWStr::Format: "%*" takes a number of 32 bits, but argument 1 is a floating-point number)"},
             {[&] { wide.Format(u"%s"_w, 1); }, R"(CWStr::Format: "%s" takes 16-bit text, but argument 1 is a number of 32 bits)"},
             {[&] { wide.Format(u"%d %d"_w, 1); }, R"(CWStr::Format: "%d" takes a number of 32 bits, and there is no argument 2)"},
         }) {
        if (named.empty())
            EXPECT_NO_THROW(act());
        else
            EXPECT_THROW(act(), Stop);
        EXPECT_EQ(named, std::exchange(told, {}));
    }
#ifdef KELGEN_CHECKS_NARROW_FORMATS
    CString narrow;
    EXPECT_NO_THROW(narrow.Format("%s %ls %I64d %lu", "a", units, big, DWORD{1}));
    EXPECT_THROW(narrow.AppendFormat("%s", units), Stop);
    EXPECT_EQ(R"(CString::AppendFormat: "%s" takes narrow text, but argument 1 is 16-bit text)", std::exchange(told, {}));
#endif
}

TEST_F(Misuse, NamesDeadObjectsWhereTheyAreRegistered)
{
#ifdef KELGEN_ADDRESS_SANITIZER
    GTEST_SKIP() << "the sanitizer tells of it";
#else
    Ended<Listener> listener;
    gen::CPropertySet set;
    set.AddListener(listener.Get());
    EXPECT_EQ("CPropertySet::AddListener: the listener has been destroyed", std::exchange(told, {}));
    set.RemoveListener(listener.Get());

    Ended<Hook> hook;
    HookWindow window;
    window._000HookWndProc({&C000WndProcInterface::_000WndProc, hook.Get()});
    EXPECT_EQ("hook of kelgen::test::HookWindow: its object has been destroyed", std::exchange(told, {}));
    window._000UnhookWndProc({&C000WndProcInterface::_000WndProc, hook.Get()});
#endif
}

TEST_F(Misuse, NamesHooksOnAnotherThread)
{
    HookWindow window;
    ASSERT_TRUE(window.CreateHidden());
    Hook hook;
    const C000WndProcInterface::CHook before(&C000WndProcInterface::_000BeforeWndProc, &hook);
    std::thread([&] { window._000HookBeforeWndProc(before); }).join();
    EXPECT_EQ("hook (anonymous namespace)::Hook of kelgen::test::HookWindow: added on a thread that the window is not of",
              std::exchange(told, {}));
    window._000UnhookBeforeWndProc(before);
    EXPECT_EQ("", told);
    auto owned = std::make_unique<Hook>();
    window._000HookWndProc({&C000WndProcInterface::_000WndProc, owned.get()});
    std::thread([&] { owned.reset(); }).join();
    EXPECT_EQ("hook of kelgen::test::HookWindow: destroyed on a thread that the window is not of", std::exchange(told, {}));
    window.DestroyWindow();
}

TEST_F(Misuse, NamesWindowHooksOnAnotherThread)
{
    HookWindow window;
    ASSERT_TRUE(window.CreateHidden());
    auto hook = std::make_unique<_kelgen::CWindowHook>();
    std::thread([&] { hook->HookWindow(&window); }).join();
    EXPECT_EQ("CWindowHook::HookWindow: attached on a thread that the window is not of", std::exchange(told, {}));
    hook->HookWindow(nullptr);
    hook->HookWindow(&window);
    EXPECT_EQ("", told);
    std::thread([&] { hook.reset(); }).join();
    EXPECT_EQ("CWindowHook: destroyed on a thread that its window is not of", std::exchange(told, {}));
    hook = std::make_unique<_kelgen::CWindowHook>();
    hook->HookWindow(&window);
    window.DestroyWindow();
    std::thread([&] { hook.reset(); }).join();
    EXPECT_EQ("", told) << "a window that has ended is nobody's";
}

TEST_F(Misuse, NamesThreadMessageFunctionsOfOtherThreads)
{
    struct Worker : CTrackable
    {
        void OnStep(UINT, LPARAM) {}
    };
    TestApp app;
    auto worker = std::make_unique<Worker>();
    std::thread([&] { app.AddFunction(WM_APP + 7, worker.get(), &Worker::OnStep); }).join();
    EXPECT_EQ("CKelGenApp::AddFunction: the function for message 32775 is set on another thread than the main one",
              std::exchange(told, {}));
    std::thread([&] { worker.reset(); }).join();
    EXPECT_EQ("CTrackable: destroyed on another thread than the main one, with a function set", std::exchange(told, {}));
}

TEST_F(Misuse, NamesATimerCallbackThatGoesOnAnotherThread)
{
    struct Silent : _kelgen::CTimerCallback
    {
        void OnTimerEvent(UINT) override {}
    };
    auto callback = std::make_unique<Silent>();
    auto* const window = new _kelgen::CTimerWnd;
    ASSERT_TRUE(window->Create(callback.get()));
    std::thread([&] { callback.reset(); }).join();
    EXPECT_EQ("CTimerCallback: destroyed on a thread that its timer window is not of", told);
    window->DestroyWindow();
}

TEST_F(Misuse, NamesAWatcherThatGoesWithoutEndWatch)
{
    struct Careless : CFileChangeEvent
    {};
    {
        Careless watcher;
        watcher.StartWatch();
    }
    EXPECT_EQ("CFileChangeEvent: destroyed while it watches, without EndWatch in the derived class", told);
}

TEST_F(Misuse, NamesAFrameThatIsDeletedTwice)
{
#ifdef KELGEN_ADDRESS_SANITIZER
    GTEST_SKIP() << "the sanitizer tells of it";
#else
    struct Frame : CFrameWnd
    {};
    CObject* const frame = new Frame;
    Delete(frame);
    EXPECT_EQ("", told);
    for (int i = 0; i < 2; ++i) {
        Delete(frame);
        EXPECT_EQ("a frame is deleted that has been deleted before, by itself or its maker", std::exchange(told, {}));
    }
#endif
}

#endif
