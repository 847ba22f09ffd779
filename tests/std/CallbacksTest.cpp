// CallbacksTest.cpp: lambdas as listeners, triggers, timers and tasks, and their end.
#include <kelgen/std.h>

#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

/// Serves messages until @p isDone or ten seconds have passed.
template <class CONDITION>
bool PumpUntil(CONDITION isDone)
{
    const auto end = std::chrono::steady_clock::now() + 10s;
    while (!isDone() && std::chrono::steady_clock::now() < end) {
        MSG message;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
    return isDone();
}

}  // namespace

TEST(Callbacks, ListenersAndTriggersHearUntilTheyGo)
{
    gen::CPropertySet set;
    set.AddProperty(gen::CProperty(1, "level", gen::eptInteger));
    std::vector<int> heard;
    std::vector<bool> matched;
    {
        const kelgen::PropertyListener listener(set, [&](gen::CProperty& p) { heard.push_back(p.GetValue().GetValueInteger()); });
        kelgen::PropertyTrigger trigger(set, 1, 7, [&](bool isSeven) { matched.push_back(isSeven); });
        set.Set("level", 7);
        set.Set("level", 8);
    }
    set.Set("level", 9);
    EXPECT_EQ((std::vector<int>{7, 8}), heard);
    EXPECT_EQ((std::vector<bool>{true, false}), matched);
}

TEST(Callbacks, TimerRunsUntilStopped)
{
    int events = 0;
    kelgen::Timer timer(1ms, [&] {
        if (++events == 3)
            throw 1;
    });
    EXPECT_TRUE(PumpUntil([&] { return events >= 4; }));
    timer.Stop();
    const int before = events;
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
    EXPECT_EQ(before, events);
    EXPECT_FALSE(timer.IsRunning());
}

TEST(Callbacks, TasksRunOnTheirThreadInOrder)
{
    constexpr int kCount = 200;
    std::vector<int> order;
    bool isElsewhere = false;
    {
        kelgen::ThreadTasks tasks;
        const auto owner = std::this_thread::get_id();
        std::thread worker([&] {
            for (int i = 0; i < kCount; ++i)
                tasks.Post([&, i] {
                    isElsewhere = isElsewhere || std::this_thread::get_id() != owner;
                    order.push_back(i);
                });
        });
        EXPECT_TRUE(PumpUntil([&] { return order.size() == kCount; }));
        worker.join();
        tasks.Post([&] { order.push_back(-1); });
    }
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_EQ(static_cast<std::size_t>(kCount), order.size());
    EXPECT_FALSE(isElsewhere);
}
