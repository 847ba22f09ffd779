// RunningProcesses.cpp: reads the system's process files.
#include <kelgen/platform/posix/processes/RunningProcesses.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/files/FolderReader.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <climits>
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

// The kernel lets the same callers read this link as the list of what a process has mapped, at less cost. ENOENT: the process has no
// program, as the kernel's own threads and processes that have ended and wait for their parent to ask.
bool HasProgramLink(DWORD id)
{
    char first;
    return readlink(FileOf(id, "exe").c_str(), &first, sizeof first) > 0;
}

struct Mapping
{
    ULONG_PTR start = 0;
    ULONG_PTR end = 0;
    bool isCode = false;
    std::string_view path;  // empty for what is no file
};

// The whole of a process file; nothing, with errno, when it cannot be read: ESRCH when the process has ended.
std::optional<std::string> ContentsOf(const std::string& name)
{
    const Descriptor file(Retry([&] { return open(name.c_str(), O_RDONLY | O_CLOEXEC); }));
    std::string contents;
    char piece[16384];
    ssize_t got = file ? 1 : -1;
    while (got > 0) {
        got = Retry([&] { return read(file.Get(), piece, sizeof piece); });
        contents.append(piece, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    }
    if (got == 0)
        return contents;
    errno = errno == ENOENT ? ESRCH : errno;
    return std::nullopt;
}

// What a process's "stat" says: "id (name) state parent ...". The name may hold anything, brackets too.
struct StatLine
{
    std::string name;
    std::string fields;  // from the state on
    std::size_t at = 0;

    // The field so many fields on.
    std::string_view SkipToText(int count)
    {
        std::size_t start = at;
        for (std::size_t end = at; count >= 0; --count, at = end) {
            start = std::min(fields.find_first_not_of(' ', end), fields.size());
            end = std::min(fields.find_first_of(" \n", start), fields.size());
            if (count == 0)
                at = end;
        }
        return std::string_view(fields).substr(start, at - start);
    }

    // The same as a number, 0 for what is none.
    template <class Number>
    Number Skip(int count)
    {
        const std::string_view text = SkipToText(count);
        Number number{};
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    }
};

// Nothing, with errno, as ContentsOf.
std::optional<StatLine> StatOf(DWORD id)
{
    const auto stat = ContentsOf(FileOf(id, "stat"));
    if (!stat)
        return std::nullopt;
    const std::size_t open = stat->find('(');
    const std::size_t close = stat->rfind(')');
    if (open == std::string::npos || close == std::string::npos) {
        errno = ESRCH;
        return std::nullopt;
    }
    return StatLine{stat->substr(open + 1, close - open - 1), stat->substr(close + 1)};
}

// False for the kernel's own threads and for processes that have ended and wait for their parent to ask.
bool HasProgram(DWORD id)
{
    if (HasProgramLink(id))
        return true;
    if (errno == ENOENT)
        return false;
    auto stat = StatOf(id);
    if (!stat)
        return false;
    constexpr int kBetweenStateAndFlags = 5;
    constexpr unsigned long kKernelThread = 0x00200000;
    const auto state = stat->SkipToText(0);
    const auto flags = stat->Skip<unsigned long>(kBetweenStateAndFlags);
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

std::optional<std::vector<DWORD>> RunningProcesses()
{
    FolderReader processes("/proc");
    if (!processes)
        return std::nullopt;
    std::vector<DWORD> ids;
    const int error = processes.ForEach([&ids](std::string_view name) {
        DWORD id = 0;
        const char* const end = name.data() + name.size();
        if (std::from_chars(name.data(), end, id).ptr == end)
            ids.push_back(id);
    });
    if (error != 0) {
        errno = error;
        return std::nullopt;
    }
    std::erase_if(ids, [](DWORD id) { return !HasProgram(id); });
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::optional<ProcessFacts> FactsOfProcess(DWORD id)
{
    auto stat = StatOf(id);
    if (!stat)
        return std::nullopt;
    constexpr int kBetweenParentAndThreads = 15;
    ProcessFacts facts;
    facts.parent = stat->Skip<DWORD>(1);
    facts.threads = stat->Skip<DWORD>(kBetweenParentAndThreads);
    const std::string program = ProgramOfProcess(id);
    facts.name = program.empty() ? stat->name : program.substr(program.rfind('/') + 1);
    return facts;
}

std::optional<ULONGLONG> StartOfProcess(DWORD id)
{
    auto stat = StatOf(id);
    if (!stat)
        return std::nullopt;
    // A process that nobody has asked for its end yet is still listed.
    const auto state = stat->SkipToText(0);
    if (state == "Z" || state == "X") {
        errno = ESRCH;
        return std::nullopt;
    }
    constexpr int kBetweenStateAndStart = 18;
    return stat->Skip<ULONGLONG>(kBetweenStateAndStart);
}

std::string ProgramOfProcess(DWORD id)
{
    char buffer[PATH_MAX];
    const ssize_t length = readlink(FileOf(id, "exe").c_str(), buffer, sizeof buffer);
    return WithoutDeletedMark(std::string(buffer, length > 0 ? static_cast<std::size_t>(length) : 0));
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
    const std::string maps = ContentsOf(FileOf(id, "maps")).value_or(std::string());
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

    const std::string program = ProgramOfProcess(id);
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
    return HasProgramLink(id) ||
           static_cast<bool>(Descriptor(Retry([&] { return open(FileOf(id, "maps").c_str(), O_RDONLY | O_CLOEXEC); })));
}

}  // namespace kelgen::posix
