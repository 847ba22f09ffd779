// messages.cpp: the peers' events: posted, sent through filters and across threads; timers.
#include "../Bench.h"

#include <glib.h>
#include <wx/app.h>
#include <wx/event.h>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

using namespace bench;
namespace asio = boost::asio;

namespace {

constexpr int posts = 10000;

struct Receiver : QObject
{
    int count = 0;
    std::function<void()> then;
    bool event(QEvent* e) override
    {
        if (e->type() != QEvent::User)
            return QObject::event(e);
        ++count;
        if (then)
            then();
        return true;
    }
};

struct Context
{  // a GLib main context owned by this thread
    GMainContext* c = g_main_context_new();
    Context() { g_main_context_acquire(c); }
    ~Context()
    {
        g_main_context_release(c);
        g_main_context_unref(c);
    }
};

gboolean countOnce(gpointer n)
{
    ++*static_cast<int*>(n);
    return G_SOURCE_REMOVE;
}

// ---- post 10000, deliver 10000, one thread

void PostQt(State& st)
{
    Receiver r;
    for (auto _ : st) {
        r.count = 0;
        for (int i = 0; i < posts; ++i)
            QCoreApplication::postEvent(&r, new QEvent(QEvent::User));
        while (r.count < posts)
            QCoreApplication::processEvents();
    }
}

void PostGlib(State& st)
{
    Context ctx;
    for (auto _ : st) {
        int n = 0;
        for (int i = 0; i < posts; ++i) {
            GSource* s = g_idle_source_new();
            g_source_set_callback(s, countOnce, &n, nullptr);
            g_source_attach(s, ctx.c);
            g_source_unref(s);
        }
        while (n < posts)
            g_main_context_iteration(ctx.c, FALSE);
    }
}

void PostAsio(State& st)
{
    asio::io_context io;
    for (auto _ : st) {
        int n = 0;
        for (int i = 0; i < posts; ++i)
            asio::post(io, [&n] { ++n; });
        io.restart();
        io.run();
        require(n == posts, "asio");
    }
}

void PostWx(State& st)
{
    wxEvtHandler h;
    int n = 0;
    h.Bind(wxEVT_THREAD, [&n](wxThreadEvent&) { ++n; });
    for (auto _ : st) {
        n = 0;
        for (int i = 0; i < posts; ++i)
            h.QueueEvent(new wxThreadEvent);
        while (n < posts)
            wxTheApp->ProcessPendingEvents();
    }
}

// ---- send one event through n filters to its receiver

struct Filter : QObject
{
    int seen = 0;
    bool eventFilter(QObject*, QEvent*) override
    {
        ++seen;
        return false;
    }
};

void SendQt(State& st)
{
    Receiver r;
    std::deque<Filter> filters(st.range(0));
    for (auto& f : filters)
        r.installEventFilter(&f);
    for (auto _ : st) {
        QEvent e(QEvent::User);
        QCoreApplication::sendEvent(&r, &e);
    }
    require(r.count == st.iterations(), "sendEvent");
    for (auto& f : filters)
        require(f.seen == r.count, "eventFilter");
}

void SendWx(State& st)  // a chain of event handlers, each passing the event on
{
    std::deque<wxEvtHandler> chain(st.range(0) + 1);
    long seen = 0;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const bool last = i + 1 == chain.size();
        chain[i].Bind(wxEVT_THREAD, [&seen, last](wxThreadEvent& e) {
            ++seen;
            e.Skip(!last);
        });
        if (!last) {
            chain[i].SetNextHandler(&chain[i + 1]);
            chain[i + 1].SetPreviousHandler(&chain[i]);
        }
    }
    for (auto _ : st) {
        wxThreadEvent e;
        chain[0].ProcessEvent(e);
    }
    require(seen == long(st.iterations() * chain.size()), "wxEvtHandler");
    for (auto& h : chain) {
        h.SetNextHandler(nullptr);
        h.SetPreviousHandler(nullptr);
    }
}

// ---- post to another thread, which posts back

void RoundTripQt(State& st)
{
    Receiver here;
    auto* there = new Receiver;
    there->then = [&] { QCoreApplication::postEvent(&here, new QEvent(QEvent::User)); };
    QThread t;
    there->moveToThread(&t);
    QObject::connect(&t, &QThread::finished, there, &QObject::deleteLater);
    t.start();
    for (auto _ : st) {
        here.count = 0;
        QCoreApplication::postEvent(there, new QEvent(QEvent::User));
        while (!here.count)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    t.quit();
    t.wait();
}

void BlockingQt(State& st)  // the synchronous form: the caller sleeps until the other thread has run it
{
    QObject there;
    QThread t;
    there.moveToThread(&t);
    t.start();
    int n = 0;
    for (auto _ : st)
        QMetaObject::invokeMethod(
            &there, [&n] { ++n; }, Qt::BlockingQueuedConnection);
    require(n == st.iterations(), "invokeMethod");
    t.quit();
    t.wait();
}

void RoundTripGlib(State& st)
{
    struct Shared
    {
        Context here;
        GMainContext* there = g_main_context_new();
        int acks = 0;
    } s;
    GMainLoop* loop = g_main_loop_new(s.there, FALSE);
    std::thread t([&] {
        g_main_context_acquire(s.there);
        g_main_loop_run(loop);
        g_main_context_release(s.there);
    });
    while (!g_main_loop_is_running(loop))
        std::this_thread::yield();
    for (auto _ : st) {
        s.acks = 0;
        g_main_context_invoke(
            s.there,
            [](gpointer p) -> gboolean {
                auto* s = static_cast<Shared*>(p);
                g_main_context_invoke(s->here.c, countOnce, &s->acks);
                return G_SOURCE_REMOVE;
            },
            &s);
        while (!s.acks)
            g_main_context_iteration(s.here.c, TRUE);
    }
    g_main_loop_quit(loop);
    t.join();
    g_main_loop_unref(loop);
    g_main_context_unref(s.there);
}

void RoundTripAsio(State& st)
{
    asio::io_context here, there;
    auto guardHere = asio::make_work_guard(here), guardThere = asio::make_work_guard(there);
    std::thread t([&] { there.run(); });
    bool ack = false;
    for (auto _ : st) {
        ack = false;
        asio::post(there, [&] { asio::post(here, [&] { ack = true; }); });
        while (!ack)
            here.run_one();
    }
    guardThere.reset();
    t.join();
}

// ---- timers

void TimerStartStopQt(State& st)
{
    QTimer t;
    for (auto _ : st) {
        t.start(1000);
        t.stop();
    }
}

void TimerStartStopGlib(State& st)
{
    Context ctx;
    int n = 0;
    for (auto _ : st) {
        GSource* s = g_timeout_source_new(1000);
        g_source_set_callback(s, countOnce, &n, nullptr);
        g_source_attach(s, ctx.c);
        g_source_destroy(s);
        g_source_unref(s);
    }
}

void TimerStartStopAsio(State& st)
{
    asio::io_context io;
    asio::steady_timer t(io);
    for (auto _ : st) {
        t.expires_after(std::chrono::seconds(1));
        t.async_wait([](const boost::system::error_code&) {});
        t.cancel();
        io.restart();
        io.poll();  // the cancelled handler is delivered here
    }
}

void TimerFireQt(State& st)  // start with interval 0, run the loop until it has fired
{
    QTimer t;
    t.setSingleShot(true);
    int n = 0;
    QObject::connect(&t, &QTimer::timeout, &t, [&n] { ++n; });
    for (auto _ : st) {
        n = 0;
        t.start(0);
        while (!n)
            QCoreApplication::processEvents();
    }
}

void TimerFireGlib(State& st)
{
    Context ctx;
    for (auto _ : st) {
        int n = 0;
        GSource* s = g_timeout_source_new(0);
        g_source_set_callback(s, countOnce, &n, nullptr);
        g_source_attach(s, ctx.c);
        g_source_unref(s);
        while (!n)
            g_main_context_iteration(ctx.c, FALSE);
    }
}

void TimerFireAsio(State& st)
{
    asio::io_context io;
    asio::steady_timer t(io);
    for (auto _ : st) {
        int n = 0;
        t.expires_after(std::chrono::seconds(0));
        t.async_wait([&n](const boost::system::error_code&) { ++n; });
        io.restart();
        io.run();
        require(n == 1, "steady_timer");
    }
}

void TimersManyQt(State& st)
{
    std::deque<QTimer> timers(1000);
    for (auto _ : st) {
        for (std::size_t i = 0; i < timers.size(); ++i)
            timers[i].start(int(1000 + i % 7));
        for (QTimer& t : timers)
            t.stop();
    }
}

BENCHMARK(PostQt)->Name("Messages/PostDeliver10000/Qt");
BENCHMARK(PostGlib)->Name("Messages/PostDeliver10000/GLib");
BENCHMARK(PostAsio)->Name("Messages/PostDeliver10000/asio");
BENCHMARK(PostWx)->Name("Messages/PostDeliver10000/wx");
#define FILTERS ->Arg(0)->Arg(3)->Arg(10)
BENCHMARK(SendQt)->Name("Messages/SendFiltered/Qt") FILTERS;
BENCHMARK(SendWx)->Name("Messages/SendFiltered/wx") FILTERS;
BENCHMARK(RoundTripQt)->Name("Messages/ThreadRoundTrip/Qt")->UseRealTime();
BENCHMARK(RoundTripGlib)->Name("Messages/ThreadRoundTrip/GLib")->UseRealTime();
BENCHMARK(RoundTripAsio)->Name("Messages/ThreadRoundTrip/asio")->UseRealTime();
BENCHMARK(BlockingQt)->Name("Messages/ThreadSend/Qt_blocking")->UseRealTime();
BENCHMARK(TimerStartStopQt)->Name("Timers/StartStop/Qt");
BENCHMARK(TimerStartStopGlib)->Name("Timers/StartStop/GLib");
BENCHMARK(TimerStartStopAsio)->Name("Timers/StartStop/asio");
BENCHMARK(TimersManyQt)->Name("Timers/StartStop1000/Qt");
BENCHMARK(TimerFireQt)->Name("Timers/Fire0/Qt");
BENCHMARK(TimerFireGlib)->Name("Timers/Fire0/GLib");
BENCHMARK(TimerFireAsio)->Name("Timers/Fire0/asio");

}  // namespace
