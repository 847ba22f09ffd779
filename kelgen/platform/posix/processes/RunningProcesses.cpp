// RunningProcesses.cpp: reads the system's process files.
#include <kelgen/platform/posix/processes/RunningProcesses.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/files/Paths.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <fstream>
#include <sstream>
#include <string_view>

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
    std::string_view path;  // empty for what is no file
};

// The whole of a process file; empty when it cannot be read.
std::string ContentsOf(const std::string& name)
{
    const Descriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    std::string contents;
    constexpr std::size_t kPiece = 16384;
    for (ssize_t got = 1; file && got > 0;) {
        const std::size_t size = contents.size();
        contents.resize(size + kPiece);
        do {
            got = read(file.Get(), contents.data() + size, kPiece);
        } while (got < 0 && errno == EINTR);
        contents.resize(size + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    }
    return contents;
}

// False for the kernel's own threads and for processes that have ended and wait for their parent to ask.
bool HasProgram(DWORD id)
{
    const std::string stat = ContentsOf(FileOf(id, "stat"));
    const std::size_t close = stat.rfind(')');
    if (close == std::string::npos)
        return false;
    std::istringstream rest(stat.substr(close + 1));
    std::string state;
    rest >> state;
    constexpr int kBetweenStateAndFlags = 5;
    std::string skipped;
    for (int i = 0; i < kBetweenStateAndFlags; ++i)
        rest >> skipped;
    unsigned long flags = 0;
    rest >> flags;
    constexpr unsigned long kKernelThread = 0x00200000;
    return state != "Z" && state != "X" && (flags & kKernelThread) == 0;
}

ULONG_PTR TakeHex(std::string_view& line)
{
    ULONG_PTR value = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), value, 16);
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    line.remove_prefix(std::min<std::size_t>(1, line.size()));
    return value;
}

// One line: "55d0-55e0 r-xp 00001000 08:01 1234   /usr/bin/x". Only lines of files have a slash.
Mapping ParseMapping(std::string_view line)
{
    Mapping mapping;
    const std::size_t path = line.find('/');
    if (path == std::string_view::npos)
        return mapping;
    mapping.path = line.substr(path);
    mapping.start = TakeHex(line);
    mapping.end = TakeHex(line);
    mapping.isCode = line.size() > 2 && line[2] == 'x';
    return mapping;
}

}  // namespace

std::vector<DWORD> RunningProcesses()
{
    std::vector<DWORD> ids;
    for (const std::string& entry : FolderEntries("/proc")) {
        if (entry.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const auto id = static_cast<DWORD>(std::stoul(entry));
        if (HasProgram(id))
            ids.push_back(id);
    }
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

std::optional<ULONGLONG> StartOfProcess(DWORD id)
{
    std::ifstream file(FileOf(id, "stat"));
    std::string line;
    std::getline(file, line);
    const std::size_t close = line.rfind(')');
    if (close == std::string::npos)
        return std::nullopt;
    std::istringstream rest(line.substr(close + 1));
    std::string field;
    rest >> field;
    // A process that nobody has asked for its end yet is still listed.
    if (field == "Z" || field == "X")
        return std::nullopt;
    constexpr int kBetweenStateAndStart = 18;
    for (int i = 0; i < kBetweenStateAndStart; ++i)
        rest >> field;
    ULONGLONG start = 0;
    rest >> start;
    return start;
}

std::vector<ProcessModule> ModulesOfProcess(DWORD id)
{
    struct Candidate
    {
        std::string_view path;
        ULONG_PTR start;
        ULONG_PTR end;
        bool hasCode;
    };
    std::vector<Candidate> candidates;
    const std::string maps = ContentsOf(FileOf(id, "maps"));
    for (std::string_view rest = maps; !rest.empty();) {
        const std::size_t length = std::min(rest.find('\n'), rest.size());
        const Mapping mapping = ParseMapping(rest.substr(0, length));
        rest.remove_prefix(std::min(length + 1, rest.size()));
        if (mapping.path.empty())
            continue;
        // A file's mappings mostly follow one another.
        const auto known = std::find_if(candidates.rbegin(), candidates.rend(), [&](const Candidate& c) { return c.path == mapping.path; });
        if (known == candidates.rend()) {
            candidates.push_back({mapping.path, mapping.start, mapping.end, mapping.isCode});
        } else {
            known->end = mapping.end;
            known->hasCode = known->hasCode || mapping.isCode;
        }
    }

    const std::string program = ProgramOf(id);
    std::vector<ProcessModule> modules;
    for (const Candidate& candidate : candidates) {
        if (!candidate.hasCode)
            continue;
        ProcessModule module{candidate.start, candidate.end - candidate.start, WithoutDeletedMark(std::string(candidate.path))};
        modules.insert(module.path == program ? modules.begin() : modules.end(), std::move(module));
    }
    return program.empty() || modules.empty() || modules[0].path != program ? std::vector<ProcessModule>() : modules;
}

bool IsRunning(DWORD id)
{
    struct stat status;
    return stat(("/proc/" + std::to_string(id)).c_str(), &status) == 0;
}

bool MayLookInto(DWORD id)
{
    return static_cast<bool>(Descriptor(open(FileOf(id, "maps").c_str(), O_RDONLY | O_CLOEXEC)));
}

}  // namespace kelgen::posix
