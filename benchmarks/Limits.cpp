// Limits.cpp: what the machine itself can do: the floors under the other areas.
#include "Bench.h"

#include <fcntl.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <thread>

using namespace bench;

namespace {

void Memcpy(State& st)
{
    std::vector<char> a(st.range(0), 1), b(st.range(0));
    const char* from = a.data();
    char* to = b.data();
    for (auto _ : st) {
        DoNotOptimize(from);
        std::memcpy(to, from, a.size());
        DoNotOptimize(to);
        benchmark::ClobberMemory();
    }
    st.SetBytesProcessed(st.iterations() * st.range(0));
}

void Memcmp(State& st)
{
    std::vector<char> a(st.range(0), 1), b(a);
    const char *p = a.data(), *q = b.data();
    for (auto _ : st) {
        DoNotOptimize(p);
        DoNotOptimize(std::memcmp(p, q, a.size()));
    }
    st.SetBytesProcessed(st.iterations() * st.range(0));
}

void Memchr(State& st)
{
    std::vector<char> a(st.range(0), 1);
    const char* p = a.data();
    for (auto _ : st) {
        DoNotOptimize(p);
        DoNotOptimize(std::memchr(p, 2, a.size()));
    }
    st.SetBytesProcessed(st.iterations() * st.range(0));
}

void MallocFree(State& st)
{
    for (auto _ : st) {
        void* p = std::malloc(st.range(0));
        DoNotOptimize(p);
        std::free(p);
    }
}

void AtomicIncDec(State& st)
{
    static std::atomic<int> refs{1};
    for (auto _ : st) {
        refs.fetch_add(1, std::memory_order_relaxed);
        DoNotOptimize(refs.fetch_sub(1, std::memory_order_acq_rel));
    }
}

void EventfdRoundTrip(State& st)
{
    int there = eventfd(0, 0), back = eventfd(0, 0);
    std::thread worker([=] {
        for (std::uint64_t v; read(there, &v, 8) == 8 && v == 1;)
            require(write(back, &v, 8) == 8, "eventfd");
    });
    std::uint64_t one = 1, stop = 2;
    for (auto _ : st)
        require(write(there, &one, 8) == 8 && read(back, &one, 8) == 8, "eventfd");
    require(write(there, &stop, 8) == 8, "eventfd");
    worker.join();
    close(there);
    close(back);
}

void FutexRoundTrip(State& st)
{
    std::atomic<int> turn{0};
    std::thread worker([&] {
        for (;;) {
            turn.wait(0);
            if (turn == 2)
                return;
            turn = 0;
            turn.notify_one();
        }
    });
    for (auto _ : st) {
        turn = 1;
        turn.notify_one();
        turn.wait(1);
    }
    turn = 2;
    turn.notify_one();
    worker.join();
}

void FileWrite8M(State& st)
{
    std::vector<char> a(8 << 20, 'x');
    const std::string path = scratch("limit.bin");
    for (auto _ : st) {
        int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        require(write(fd, a.data(), a.size()) == ssize_t(a.size()), "write");
        close(fd);
    }
}

void FileRead8M(State& st)
{
    std::vector<char> a(8 << 20, 'x');
    const std::string path = scratch("limit.bin");
    int out = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    require(write(out, a.data(), a.size()) == ssize_t(a.size()), "write");
    close(out);
    for (auto _ : st) {
        int fd = open(path.c_str(), O_RDONLY);
        require(read(fd, a.data(), a.size()) == ssize_t(a.size()), "read");
        close(fd);
    }
}

COUNTED(Memcpy)
    ->Name("Limit/Memcpy/libc")
    ->Arg(10)
    ->Arg(64)
    ->Arg(80)
    ->Arg(400)
    ->Arg(4000)
    ->Arg(4096)
    ->Arg(8192)
    ->Arg(400000)
    ->Arg(1 << 20)
    ->Arg(2 << 20);
COUNTED(Memcmp)->Name("Limit/Memcmp/libc")->Arg(80)->Arg(8192);
COUNTED(Memchr)->Name("Limit/Memchr/libc")->Arg(8192)->Arg(400000);
COUNTED(MallocFree)->Name("Limit/MallocFree/libc")->Arg(24)->Arg(96)->Arg(420)->Arg(4020);
COUNTED(AtomicIncDec)->Name("Limit/AtomicIncDec/cpu");
COUNTED(AtomicIncDec)->Name("Limit/AtomicIncDecShared/cpu")->Threads(2)->UseRealTime();
COUNTED(EventfdRoundTrip)->Name("Limit/ThreadRoundTrip/eventfd")->UseRealTime();
COUNTED(FutexRoundTrip)->Name("Limit/ThreadRoundTrip/atomic_wait")->UseRealTime();
COUNTED(FileWrite8M)->Name("Limit/FileWrite8M/write")->UseRealTime();
COUNTED(FileRead8M)->Name("Limit/FileRead8M/read")->UseRealTime();

}  // namespace
