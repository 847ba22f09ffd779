// Main.cpp: the main function of a program that is an application object and nothing else.
#include <kelgen/framework/application/internal/ProgramMain.h>

#include <cstring>

namespace {

/// What follows the program's name, which may stand in quotation marks.
LPSTR Arguments(LPSTR line)
{
    LPSTR end = *line == '"' ? std::strchr(line + 1, '"') : line + std::strcspn(line, " \t");
    if (!end)
        return line + std::strlen(line);
    if (*end == '"')
        ++end;
    return end + std::strspn(end, " \t");
}

// Before the application object and the host's other static objects: what their constructors throw is told too.
struct FatalExceptions
{
    FatalExceptions() { kelgen::detail::TellOfFatalExceptions(); }
};
[[gnu::init_priority(101)]] const FatalExceptions fatalExceptions;

}  // namespace

int main()
{
    return kelgen::detail::RunProgram(GetModuleHandleA(nullptr), nullptr, Arguments(GetCommandLineA()), SW_SHOWDEFAULT);
}
