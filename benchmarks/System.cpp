// System.cpp: searches, folders, processes and version resources, beside the standard library's file system.
#include "SystemOperations.h"

#include <kelgen/system/Shell.h>
#include <kelgen/system/VersionInfo.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

using namespace bench;

namespace {

struct Kelgen
{
    static int find(const std::string& folder)
    {
        CStringArray paths, names;
        return shell::file_find((folder + "/*").c_str(), &paths, &names, nullptr);
    }
    static bool make(const std::string& path) { return shell::mkdirp(path.c_str()); }
};

struct StdFilesystem
{
    static int find(const std::string& folder)
    {
        std::vector<std::string> paths, names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.is_directory())
                continue;
            paths.push_back(entry.path().string());
            names.push_back(entry.path().filename().string());
        }
        return int(paths.size());
    }
    static bool make(const std::string& path) { return std::filesystem::create_directories(path); }
};

// With what a find record holds: size and time.
struct StdFilesystemFacts
{
    static int find(const std::string& folder)
    {
        struct Facts
        {
            std::string path, name;
            std::uintmax_t size;
            std::filesystem::file_time_type time;
        };
        std::vector<Facts> all;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (!entry.is_directory())
                all.push_back({entry.path().string(), entry.path().filename().string(), entry.file_size(), entry.last_write_time()});
        return int(all.size());
    }
};

void ProcessKelgen(State& st)
{
    for (auto _ : st) {
        DWORD count = 0;
        require(_kelgen::GetProcessIDbyName("kelgen_bench", count) != 0 && count > 0, "process");
    }
}

void ProcessLinks(State& st)
{
    for (auto _ : st) {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
            std::error_code error;
            const auto program = std::filesystem::read_symlink(entry.path() / "exe", error);
            count += !error && program.filename() == "kelgen_bench";
        }
        require(count > 0, "process");
    }
}

std::string libraryFile()
{
    char drive[MAX_PATH];
    require(GetModuleFileNameA(GetModuleHandleA("kelgen.dll"), drive, sizeof drive) > 2, "library");
    std::string file(drive + 2);
    std::replace(file.begin(), file.end(), '\\', '/');
    return file;
}

void VersionKelgen(State& st)
{
    const CString file(libraryFile().c_str());
    for (auto _ : st) {
        CVersionInfo version;
        require(version.Load(file) == 1 && version.GetProductName() == "kelgen", "version");
    }
}

// What any reader of the file needs at least: its first and one more page.
void VersionTwoPages(State& st)
{
    const std::string file = libraryFile();
    char page[4096];
    for (auto _ : st) {
        const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        require(pread(descriptor, page, sizeof page, 0) > 0 && pread(descriptor, page, sizeof page, 8192) > 0, "pages");
        close(descriptor);
    }
}

COUNTED(FindAll<Kelgen>)->Name("System/Find10000/kelgen");
COUNTED(FindAll<StdFilesystem>)->Name("System/Find10000/filesystem");
COUNTED(FindAll<StdFilesystemFacts>)->Name("System/Find10000/filesystem_facts");
COUNTED(MakeFolders<Kelgen>)->Name("System/Mkdirp10/kelgen");
COUNTED(MakeFolders<StdFilesystem>)->Name("System/Mkdirp10/filesystem");
COUNTED(ProcessKelgen)->Name("System/ProcessByName/kelgen");
COUNTED(ProcessLinks)->Name("System/ProcessByName/read_symlink");
COUNTED(VersionKelgen)->Name("System/VersionLoad/kelgen");
COUNTED(VersionTwoPages)->Name("System/VersionLoad/limit_two_reads");

}  // namespace
