// SystemOperations.h: a folder of 10 000 files to list, and ten folders to make, one in the other.
#pragma once

#include "Bench.h"

#include <fstream>

namespace bench {

constexpr int fileCount = 10000;

// The folder, filled once.
inline const std::string& fullFolder()
{
    static const std::string folder = [] {
        const std::string path = scratch("full");
        std::filesystem::create_directories(path);
        for (int i = 0; i < fileCount; ++i)
            std::ofstream(path + "/entry number " + std::to_string(i) + ".text");
        return path;
    }();
    return folder;
}

template <class F>
void FindAll(State& st)
{
    const std::string& folder = fullFolder();
    for (auto _ : st)
        require(F::find(folder) == fileCount, "find");
}

// "deep/0/1/2/3/4/5/6/7/8", whose top is removed after each round, untimed.
template <class F>
void MakeFolders(State& st)
{
    const std::string top = scratch("deep");
    std::string path = top;
    for (int i = 0; i < 9; ++i)
        path += "/" + std::to_string(i);
    for (auto _ : st) {
        const bool made = F::make(path);
        st.PauseTiming();
        require(made && std::filesystem::is_directory(path), "make");
        std::filesystem::remove_all(top);
        st.ResumeTiming();
    }
}

}  // namespace bench
