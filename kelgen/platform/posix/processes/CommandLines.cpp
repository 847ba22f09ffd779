// CommandLines.cpp: splits command lines and finds their programs.
#include <kelgen/platform/posix/processes/CommandLines.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>

#include <algorithm>

namespace kelgen::posix {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr const char* kProgramExtension = ".exe";

std::optional<std::string> FileAt(const std::string& name)
{
    const ResolvedPath path = Resolve(name);
    return path.exists && !path.isFolder && !path.isDevice ? std::optional(path.native) : std::nullopt;
}

std::optional<std::string> SearchedFile(const std::string& name, const char* extension)
{
    const std::string found = FileForCommand(name, extension);
    return found.empty() ? std::nullopt : FileAt(found);
}

std::optional<std::string> FindProgram(const std::string& name)
{
    if (name.empty())
        return std::nullopt;
    const bool hasFolder = name.find_first_of("\\/:") != std::string::npos;
    if (auto exact = hasFolder ? FileAt(name) : SearchedFile(name, ""))
        return exact;
    return hasFolder ? FileAt(name + kProgramExtension) : SearchedFile(name, kProgramExtension);
}

Command CommandOf(std::string native, std::string_view program, std::string_view rest)
{
    Command command{std::move(native), {std::string(program)}};
    for (std::string& argument : SplitArguments(rest))
        command.arguments.push_back(std::move(argument));
    return command;
}

}  // namespace

std::vector<std::string> SplitArguments(std::string_view line)
{
    std::vector<std::string> arguments;
    bool inArgument = false;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (!quoted && kBlanks.find(line[i]) != std::string_view::npos) {
            inArgument = false;
            continue;
        }
        if (!inArgument) {
            arguments.emplace_back();
            inArgument = true;
        }
        std::string& argument = arguments.back();
        const std::size_t end = std::min(line.find_first_not_of('\\', i), line.size());
        const std::size_t backslashes = end - i;
        const bool beforeQuote = end < line.size() && line[end] == '"';
        argument.append(beforeQuote ? backslashes / 2 : backslashes, '\\');
        i = end;
        if (i == line.size())
            break;
        if (!beforeQuote) {
            if (backslashes > 0)
                --i;  // the next turn judges what follows
            else
                argument += line[i];
        } else if (backslashes % 2 != 0) {
            argument += '"';
        } else if (quoted && i + 1 < line.size() && line[i + 1] == '"') {
            argument += '"';
            ++i;
        } else {
            quoted = !quoted;
        }
    }
    return arguments;
}

std::optional<Command> FindCommand(std::string_view line)
{
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.starts_with('"')) {
        const std::size_t end = std::min(line.find('"', 1), line.size());
        const std::string_view program = line.substr(1, end - 1);
        const auto native = FindProgram(std::string(program));
        if (native)
            return CommandOf(*native, program, line.substr(std::min(end + 1, line.size())));
        return Fail(Resolve(program).isFolder ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND, std::nullopt);
    }
    for (std::size_t end = 0; end < line.size();) {
        end = std::min(line.find_first_of(kBlanks, end + 1), line.size());
        const std::string_view program = line.substr(0, end);
        if (const auto native = FindProgram(std::string(program)))
            return CommandOf(*native, program, line.substr(end));
    }
    return Fail(ERROR_FILE_NOT_FOUND, std::nullopt);
}

}  // namespace kelgen::posix
