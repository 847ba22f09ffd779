// RunningProcesses.cpp: reads the system's process files.
#include <kelgen/platform/posix/kernel/RunningProcesses.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/kernel/Paths.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace kelgen::posix {

namespace {

std::string FileOf(DWORD id, const char* name)
{
    return "/proc/" + std::to_string(id) + '/' + name;
}

// A program whose file was deleted or replaced keeps its name.
std::string WithoutDeletedMark(std::string path)
{
    constexpr std::string_view mark = " (deleted)";
    if (path.ends_with(mark))
        path.resize(path.size() - mark.size());
    return path;
}

std::string ProgramOf(DWORD id)
{
    char buffer[PATH_MAX];
    const ssize_t length = readlink(FileOf(id, "exe").c_str(), buffer, sizeof buffer);
    return WithoutDeletedMark(std::string(buffer, length > 0 ? static_cast<std::size_t>(length) : 0));
}

struct Mapping
{
    ULONG_PTR start = 0;
    ULONG_PTR end = 0;
    bool isCode = false;
    std::string path;
};

// One line: "55d0-55e0 r-xp 00001000 08:01 1234   /usr/bin/x".
Mapping ParseMapping(const std::string& line)
{
    Mapping mapping;
    char permissions[5] = "";
    int pathStart = 0;
    if (std::sscanf(line.c_str(), "%lx-%lx %4s %*s %*s %*s %n", &mapping.start, &mapping.end, permissions, &pathStart) < 3)
        return mapping;
    mapping.isCode = permissions[2] == 'x';
    if (pathStart > 0 && line.find('/', static_cast<std::size_t>(pathStart)) == static_cast<std::size_t>(pathStart))
        mapping.path = WithoutDeletedMark(line.substr(static_cast<std::size_t>(pathStart)));
    return mapping;
}

}  // namespace

std::vector<DWORD> RunningProcesses()
{
    std::vector<DWORD> ids;
    for (const std::string& entry : FolderEntries("/proc"))
        if (entry.find_first_not_of("0123456789") == std::string::npos)
            ids.push_back(static_cast<DWORD>(std::stoul(entry)));
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::optional<ProcessFacts> FactsOfProcess(DWORD id)
{
    std::ifstream file(FileOf(id, "stat"));
    std::string line;
    if (!std::getline(file, line))
        return std::nullopt;

    // "id (name) state parent ...": the name may hold anything, brackets too.
    const std::size_t open = line.find('(');
    const std::size_t close = line.rfind(')');
    if (open == std::string::npos || close == std::string::npos)
        return std::nullopt;
    ProcessFacts facts;
    std::istringstream rest(line.substr(close + 1));
    std::string skipped;
    rest >> skipped >> facts.parent;
    constexpr int kBetweenParentAndThreads = 15;
    for (int i = 0; i < kBetweenParentAndThreads; ++i)
        rest >> skipped;
    rest >> facts.threads;
    const std::string program = ProgramOf(id);
    facts.name = program.empty() ? line.substr(open + 1, close - open - 1) : program.substr(program.rfind('/') + 1);
    return facts;
}

std::vector<ProcessModule> ModulesOfProcess(DWORD id)
{
    struct Candidate
    {
        ProcessModule module;
        bool hasCode = false;
    };
    std::vector<Candidate> candidates;
    std::ifstream maps(FileOf(id, "maps"));
    for (std::string line; std::getline(maps, line);) {
        Mapping mapping = ParseMapping(line);
        if (mapping.path.empty())
            continue;
        auto known = std::find_if(candidates.begin(), candidates.end(), [&](const Candidate& c) { return c.module.path == mapping.path; });
        if (known == candidates.end())
            known = candidates.insert(known, Candidate{{mapping.start, 0, mapping.path}});
        known->module.size = mapping.end - known->module.base;
        known->hasCode = known->hasCode || mapping.isCode;
    }

    const std::string program = ProgramOf(id);
    std::vector<ProcessModule> modules;
    for (const Candidate& candidate : candidates)
        if (candidate.hasCode)
            modules.insert(candidate.module.path == program ? modules.begin() : modules.end(), candidate.module);
    return program.empty() || modules.empty() || modules[0].path != program ? std::vector<ProcessModule>() : modules;
}

bool MayLookInto(DWORD id)
{
    return static_cast<bool>(Descriptor(open(FileOf(id, "maps").c_str(), O_RDONLY | O_CLOEXEC)));
}

}  // namespace kelgen::posix
