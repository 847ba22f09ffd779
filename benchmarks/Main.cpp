// Main.cpp: the library's benchmarks, the standard library's and the machine's limits; run by the command bench.
#include "Bench.h"

#include <kelgen/platform/Win32.h>

#include <cstdlib>
#include <thread>

int main(int argc, char** argv)
{
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("KELGEN_HOME", bench::scratch("home").c_str(), 1);
    // libc's single-thread shortcuts are off for every peer alike, or on for all.
    if (!std::getenv("KELGEN_BENCH_ONE_THREAD"))
        std::thread([] {}).join();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    std::error_code ignored;
    std::filesystem::remove_all(bench::scratchFolder(), ignored);
}
