// Callbacks.h: listeners, timers, triggers and messages to a thread from a lambda, by objects that unlink themselves when they go.
#pragma once

#include <kelgen/property/PropertySet.h>
#include <kelgen/property/PropertyValueTrigger.h>
#include <kelgen/property/PropertyValueTriggerCallback.h>
#include <kelgen/std/Time.h>
#include <kelgen/window/MessageWindow.h>
#include <kelgen/window/Timer.h>

#include <chrono>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace kelgen {

/// Calls a function at every assignment to a property of a set, for as long as this object lives. The set must outlive it.
///
///     kelgen::PropertyListener watch(settings, [&](gen::CProperty& property) { Apply(property); });
///
/// Threads: as CPropertySetListener.
class PropertyListener final : public gen::CPropertySetListener
{
public:
    using Function = std::function<void(gen::CProperty& property)>;

    PropertyListener(gen::CPropertySet& set, Function function) : m_set(set), m_function(std::move(function)) { m_set.AddListener(this); }
    ~PropertyListener() { m_set.RemoveListener(this); }
    PropertyListener(const PropertyListener&) = delete;
    PropertyListener& operator=(const PropertyListener&) = delete;

private:
    void OnPropertyValueChange(gen::CPropertySet*, gen::CProperty* property) override { m_function(*property); }

    gen::CPropertySet& m_set;
    Function m_function;
};

/// Calls a function each time that a property is assigned, with whether it then equals a value, for as long as this object lives. The set
/// must outlive it.
///
///     kelgen::PropertyTrigger full(settings, kLevel, 100, [&](bool isFull) { lamp.Switch(isFull); });
///
/// Threads: as gen::CPropertyValueTrigger.
class PropertyTrigger final : public gen::CPropertyValueTriggerCallback
{
public:
    using Function = std::function<void(bool matches)>;

    PropertyTrigger(gen::CPropertySet& set, int id, const gen::CPropertyValue& value, Function function) : m_function(std::move(function))
    {
        m_trigger.AddCallback(this);
        m_trigger.SetSimpleCondition(&set, id, value);
    }
    ~PropertyTrigger() override { m_trigger.RemoveCallback(this); }
    PropertyTrigger(const PropertyTrigger&) = delete;
    PropertyTrigger& operator=(const PropertyTrigger&) = delete;

    /// Tells the function the present truth.
    void Check() { m_trigger.Check(); }

private:
    void OnPropertyValueTrigger(const CBaseId&, bool matches) override { m_function(matches); }

    Function m_function;
    gen::CPropertyValueTrigger m_trigger;
};

/// Calls a function again and again, from the message loop of the thread that started it, for as long as this object lives.
///
///     kelgen::Timer blink(500ms, [&] { lamp.Toggle(); });
///
/// What the function throws ends in the timer. It may stop the timer, but not destroy it.
/// Threads: that of its construction.
class Timer final : public _kelgen::CTimerCallback
{
public:
    /// Throws: the resource exception when the timer cannot be had; the memory exception.
    template <class REP, class PERIOD>
    Timer(std::chrono::duration<REP, PERIOD> period, std::function<void()> function) : m_function(std::move(function))
    {
        auto* const window = new _kelgen::CTimerWnd;
        if (!window->Create(this)) {
            delete window;
            AfxThrowResourceException();
        }
        SetTimerWindow(window);
        if (kelgen::SetTimer(*window, kId, period) == 0) {
            window->DestroyWindow();
            AfxThrowResourceException();
        }
    }
    ~Timer() override
    {
        if (m_pTimerWnd != nullptr)
            m_pTimerWnd->DestroyWindow();
    }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// No more ticks; the timer cannot be started again.
    void Stop()
    {
        if (m_pTimerWnd != nullptr)
            m_pTimerWnd->KillTimer(kId);
        m_isStopped = true;
    }
    /// Whether Stop was not called.
    [[nodiscard]] bool IsRunning() const { return !m_isStopped; }

private:
    static constexpr UINT_PTR kId = 1;

    void OnTimerEvent(UINT) override
    {
        if (!m_isStopped)
            m_function();
    }

    std::function<void()> m_function;
    bool m_isStopped = false;
};

/// Runs functions on the thread that made this object, in the order in which they were posted, from its message loop.
///
///     kelgen::ThreadTasks tasks;                         // on the thread that is to run them
///     worker = std::thread([&] { tasks.Post([&] { view.Show(result); }); });
///
/// Functions that have not run when the object goes are dropped. Threads: Post from any; the rest from its own.
class ThreadTasks final : public CMessageWindowListener
{
public:
    using Function = std::function<void()>;

    /// Throws: the resource exception when the thread cannot have a window.
    ThreadTasks()
    {
        if (!CreateMessageWindow())
            AfxThrowResourceException();
    }
    ~ThreadTasks() override { DestroyMessageWindow(); }

    /// False when the message could not be posted; the function is then dropped.
    bool Post(Function function)
    {
        const std::scoped_lock lock(m_mutex);
        m_functions.push_back(std::move(function));
        if (PostMessageA(WM_APP, 0, 0) != 0)
            return true;
        m_functions.pop_back();
        return false;
    }

private:
    bool OnMessageWindowMessage(UINT message, WPARAM, LPARAM, LRESULT& result) override
    {
        if (message != WM_APP)
            return false;
        Function function;
        {
            const std::scoped_lock lock(m_mutex);
            if (!m_functions.empty()) {
                function = std::move(m_functions.front());
                m_functions.pop_front();
            }
        }
        if (function)
            function();
        result = 0;
        return true;
    }

    std::mutex m_mutex;
    std::deque<Function> m_functions;
};

}  // namespace kelgen
