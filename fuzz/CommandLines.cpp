// CommandLines.cpp: any text as a command line: its arguments, quoted, are its arguments again.
#include "Input.h"

#include <kelgen/framework/program/CommandLine.h>
#include <kelgen/platform/Win32.h>
#include <kelgen/platform/posix/processes/CommandLines.h>

#include <vector>

using namespace fuzz;
using namespace kelgen::posix;

namespace {

/// @p argument as programs spell it that may hold anything.
std::string Quoted(const std::string& argument)
{
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '"')
            quoted.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, '\\') + '"';
}

std::string Joined(const std::vector<std::string>& arguments)
{
    std::string line;
    for (const std::string& argument : arguments)
        line += Quoted(argument) + ' ';
    return line;
}

std::vector<std::string> SplitByFramework(const std::string& line)
{
    auto text = Terminated<char>(line);
    kelgen::detail::CommandLineSplitter splitter(text.Get());
    std::vector<std::string> arguments;
    CString argument;
    CCommandLineInfo info;
    while (splitter.Next(argument)) {
        arguments.emplace_back(argument.GetString());
        const bool isSwitch = argument[0] == '/' || argument[0] == '-';
        info.ParseParam(argument.GetString() + isSwitch, isSwitch, splitter.AtEnd());
    }
    return arguments;
}

void Variables(const std::string& line)
{
    auto text = Terminated<char>(line);
    const DWORD needed = ExpandEnvironmentStringsA(text.Get(), nullptr, 0);
    Require(needed > 0);
    Exact<char> room(needed);
    Require(ExpandEnvironmentStringsA(text.Get(), room.Get(), needed) == needed);
    Require(room[needed - 1] == 0);
    if (line.find('%') == std::string::npos)
        Require(room.Get() == line);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const std::string line = bytes.substr(0, bytes.find('\0'));
    const std::vector<std::string> arguments = SplitArguments(line);
    Require(SplitArguments(Joined(arguments)) == arguments);
    const std::vector<std::string> others = SplitByFramework(line);
    Require(SplitByFramework(Joined(others)) == others);
    Variables(line);
    return 0;
}
