// curves.cpp: the peers' curves, where they have what the library has.
#include "../CurveOperations.h"

#include <QHash>
#include <QStandardItemModel>
#include <QString>
#include <QStringList>

#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <memory>

using namespace bench;
namespace asio = boost::asio;

namespace {

void AsioTimers(State& st)
{
    asio::io_context context;
    std::vector<std::unique_ptr<asio::steady_timer>> timers(many(st));
    int last = 0;
    const auto start = [&] {
        ++last;
        auto timer = std::make_unique<asio::steady_timer>(context, std::chrono::milliseconds(100000 + last % 7919));
        timer->async_wait([](const boost::system::error_code&) {});
        return timer;
    };
    for (auto& timer : timers)
        timer = start();
    replaceEach(
        st, timers,
        [&](auto& timer) {
            timer.reset();
            context.poll();  // the handlers that were cancelled
        },
        start);
}

void AsioPosts(State& st)
{
    asio::io_context context;
    const auto work = asio::make_work_guard(context);
    postFromThreads(
        st, [&] { asio::post(context, [] {}); }, [&] { context.run_one(); });
}

void QtItems(State& st)
{
    QStandardItemModel model;
    const QString text = "an item's text, as long as some";
    for (std::size_t i = 0; i < many(st); ++i)
        model.appendRow(new QStandardItem(text));
    const int middle = int(many(st) / 2);
    for (auto _ : st) {
        model.insertRow(middle, new QStandardItem(text));
        model.removeRow(middle);
    }
}

void QtMapEntries(State& st)
{
    fillEach(st, [&] {
        QHash<int, int> map;
        for (std::size_t i = 0; i < many(st); ++i)
            map[int(i * 7919)] = 1;
    });
}

void QtTokens(State& st)
{
    const QString text = QString("token,").repeated(int(many(st)));
    fillEach(st, [&] { require(std::size_t(text.split(',', Qt::SkipEmptyParts).size()) == many(st), "split"); });
}

COUNTED(AsioTimers)->Name("Curve/Timer/asio")->ArgsProduct({{100, 1000, 10000, 100000}});
COUNTED(AsioPosts)->Name("Curve/Post/asio")->ArgsProduct({{1, 2, 4, 8}})->UseRealTime();
COUNTED(QtItems)->Name("Curve/ListItem/QStandardItemModel")->ArgsProduct({{100, 1000, 10000, 100000}});
COUNTED(QtMapEntries)->Name("Curve/MapEntry/QHash")->ArgsProduct({{100, 1000, 10000, 100000}});
COUNTED(QtTokens)->Name("Curve/Token/QString")->ArgsProduct({{100, 1000, 10000, 100000}});

}  // namespace
