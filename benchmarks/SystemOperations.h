// SystemOperations.h: a folder of 10 000 files to list, and ten folders to make, one in the other.
#pragma once

#include "Bench.h"

#include <fstream>

#include <unistd.h>

namespace bench {

constexpr int fileCount = 10000;

// In memory, where the system has such a file system: a disk's own work, which differs from run to run, would hide the rest.
inline std::string memoryScratch(const std::string& name)
{
    struct Folder
    {
        Folder()
        {
            const std::filesystem::path memory("/dev/shm");
            path = (std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
                   ("kelgen-bench-" + std::to_string(getpid()));
            std::filesystem::create_directories(path);
        }
        ~Folder()
        {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
        std::filesystem::path path;
    };
    static const Folder folder;
    return (folder.path / name).string();
}

// The folder, filled once.
inline const std::string& fullFolder()
{
    static const std::string folder = [] {
        const std::string path = memoryScratch("full");
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
    const std::string top = memoryScratch("deep");
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
