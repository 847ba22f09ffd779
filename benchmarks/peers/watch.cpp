// watch.cpp: the peers' watchers of single files.
#include "../WatchOperations.h"

#include <QCoreApplication>
#include <QFileSystemWatcher>

using namespace bench;

namespace {

void WatchQt(State& st)
{
    ChangingFile file;
    QFileSystemWatcher watcher;
    int seen = 0;
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, [&seen] { ++seen; });
    require(watcher.addPath(QString::fromStdString(file.path)), "addPath");
    for (auto _ : st) {
        const int before = seen;
        file.change();
        while (seen == before)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

BENCHMARK(WatchQt)->Name("Watch/ChangeToAlarm/QFileSystemWatcher")->UseRealTime();

}  // namespace
