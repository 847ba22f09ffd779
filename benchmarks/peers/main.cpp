// main.cpp: what the peers need before the first of them runs.
#include "../Bench.h"

#include <wx/init.h>

#include <QCoreApplication>

#include <cstdlib>
#include <thread>

int main(int argc, char** argv)
{
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("XDG_CONFIG_HOME", bench::scratch("config").c_str(), 1);
    // libc's single-thread shortcuts are off for every peer alike, or on for all.
    if (!std::getenv("KELGEN_BENCH_ONE_THREAD"))
        std::thread([] {}).join();
    QCoreApplication app(argc, argv);
    wxInitializer wx;
    benchmark::Initialize(&argc, argv);
    if (!wx.IsOk() || benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    std::error_code ignored;
    std::filesystem::remove_all(bench::scratchFolder(), ignored);
}
