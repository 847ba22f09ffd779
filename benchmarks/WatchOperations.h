// WatchOperations.h: from a file's change to the moment when a thread of the host knows of it.
#pragma once

#include "Bench.h"

#include <atomic>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace bench {

/// A file whose last-write time moves on by a second with every change: some watchers compare times to the second.
class ChangingFile
{
public:
    ChangingFile() : path((std::filesystem::temp_directory_path() / ("kelgen-watch-" + std::to_string(getpid()))).string())
    {
        std::filesystem::create_directory(path);
        path += "/file";
        m_file = open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
        change();
    }
    ~ChangingFile()
    {
        close(m_file);
        std::filesystem::remove_all(std::filesystem::path(path).parent_path());
    }

    void change()
    {
        timespec times[2] = {{0, UTIME_OMIT}, {m_second++, 0}};
        require(futimens(m_file, times) == 0, "futimens");
    }

    std::string path;

private:
    int m_file = -1;
    std::time_t m_second = 1000000000;
};

/// Counts what a watching thread saw; the changing thread waits for it.
class Seen
{
public:
    void add()
    {
        ++m_count;
        m_count.notify_one();
    }
    void await(int before) { m_count.wait(before); }
    int count() const { return m_count; }

private:
    std::atomic<int> m_count = 0;
};

/// Times from each change of the file until the watcher has seen it.
template <class Watcher>
void watchChanges(State& st, ChangingFile& file, Watcher& watcher)
{
    watcher.StartWatch();
    // Changes count from when the thread waits.
    for (int i = 0; watcher.seen.count() == 0; ++i) {
        require(i < 1000, "no alarm");
        file.change();
        usleep(10000);
    }
    usleep(50000);
    for (auto _ : st) {
        const int before = watcher.seen.count();
        file.change();
        watcher.seen.await(before);
    }
    watcher.StopWatch();
    usleep(50000);
}

}  // namespace bench
