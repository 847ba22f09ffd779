// Environment.cpp: environment variables and the command line.
#include <kelgen/platform/posix/processes/api/Environment.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/processes/CommandLines.h>

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

using namespace kelgen::posix;

namespace {

// The name of the variable that name means: its own, else the first that differs in case only, else its own.
std::string NameInEnvironment(const std::string& name)
{
    if (std::getenv(name.c_str()))
        return name;
    for (char** variable = environ; variable && *variable; ++variable) {
        const std::string_view text = *variable;
        const std::string_view known = text.substr(0, text.find('='));
        if (EqualNames(known, name))
            return std::string(known);
    }
    return name;
}

const char* ValueOf(const std::string& name)
{
    return name.empty() ? nullptr : std::getenv(NameInEnvironment(name).c_str());
}

template <class Unit>
DWORD StoreValue(const std::string& name, Unit* buffer, DWORD size)
{
    const char* const value = ValueOf(name);
    return value ? StoreName(value, buffer, size) : Fail(ERROR_ENVVAR_NOT_FOUND, DWORD{0});
}

BOOL SetValue(const std::string& name, const char* value)
{
    if (name.empty() || name.find('=') != std::string::npos)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const std::string known = NameInEnvironment(name);
    const int result = value ? setenv(known.c_str(), value, 1) : unsetenv(known.c_str());
    return result == 0 ? TRUE : Fail(ERROR_NOT_ENOUGH_MEMORY, FALSE);
}

}  // namespace

std::string kelgen::posix::WithVariables(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t end = text[0] == '%' ? text.find('%', 1) : std::string_view::npos;
        const char* const value = end == std::string_view::npos ? nullptr : ValueOf(std::string(text.substr(1, end - 1)));
        if (value) {
            result += value;
            text.remove_prefix(end + 1);
        } else {
            // An unknown name stays; its closing sign may open the next one.
            const std::size_t next = text.find('%', 1);
            result += text.substr(0, next);
            text.remove_prefix(next == std::string_view::npos ? text.size() : next);
        }
    }
    return result;
}

namespace {

// Quotes an argument so that the runtime's parser gives it back: backslashes count only before quotes.
std::string Quoted(const std::string& argument)
{
    if (!argument.empty() && argument.find_first_of(" \t\"") == std::string::npos)
        return argument;
    std::string result = "\"";
    std::size_t backslashes = 0;
    for (const char letter : argument) {
        if (letter == '"')
            result.append(backslashes + 1, '\\');
        backslashes = letter == '\\' ? backslashes + 1 : 0;
        result += letter;
    }
    return result.append(backslashes, '\\') + '"';
}

std::string BuildCommandLine()
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    const std::string arguments{std::istreambuf_iterator<char>(file), {}};
    std::string line;
    for (std::size_t start = 0; start < arguments.size();) {
        const std::size_t end = std::min(arguments.find('\0', start), arguments.size());
        const std::string argument = arguments.substr(start, end - start);
        // The program's own name has the drive form when it has a folder.
        const bool isPath = start == 0 && argument.find('/') != std::string::npos;
        line += (start == 0 ? "" : " ") + Quoted(isPath ? FullPath(argument) : argument);
        start = end + 1;
    }
    return line;
}

}  // namespace

DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreValue(NarrowName(name), buffer, size); });
}

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreValue(NarrowName(name), buffer, size); });
}

BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        return name ? SetValue(NarrowName(name), value ? NarrowName(value).c_str() : nullptr) : Fail(ERROR_ENVVAR_NOT_FOUND, FALSE);
    });
}

BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        return name ? SetValue(NarrowName(name), value ? NarrowName(value).c_str() : nullptr) : Fail(ERROR_ENVVAR_NOT_FOUND, FALSE);
    });
}

DWORD ExpandEnvironmentStringsA(LPCSTR text, LPSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD {
        const std::string expanded = WithVariables(NarrowName(text));
        const DWORD length = StoreName(expanded, buffer, size);
        if (length >= size || !buffer)
            return Fail(ERROR_INSUFFICIENT_BUFFER, length);
        return length + 1;
    });
}

LPSTR GetCommandLineA()
{
    static std::string line = AnsiName(BuildCommandLine());
    return line.data();
}

LPWSTR GetCommandLineW()
{
    static std::u16string line = WideName(BuildCommandLine());
    return reinterpret_cast<LPWSTR>(line.data());
}
