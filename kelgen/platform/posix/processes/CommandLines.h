// CommandLines.h: the programs and arguments that command lines name.
#pragma once

#include <kelgen/platform/Export.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// The arguments of @p line by the rules of the platform's runtime: blanks separate outside quotes, a backslash counts only before
/// a quote, two quotes inside quotes are one.
KELGEN_PLATFORM_TESTED_API std::vector<std::string> SplitArguments(std::string_view line);

/// @p text with the values of the variables that stand in it as %NAME%; unknown ones stay.
std::string WithVariables(std::string_view text);

/// A program and what it is called with.
struct Command
{
    std::string program;                 // path of the file system
    std::vector<std::string> arguments;  // the program as spelt, then the rest
};

/// The program that @p line begins with, quoted or, at blanks tried one after the other, not; nothing with the last error
/// when there is no such file: ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED for a quoted folder.
std::optional<Command> FindCommand(std::string_view line);

}  // namespace kelgen::posix
