// Main.cpp: the main function of a program that is an application object and nothing else.
#include <kelgen/framework/application/internal/ProgramMain.h>

namespace {

// Before the application object and the host's other static objects: what their constructors throw is told too.
struct FatalExceptions
{
    FatalExceptions() { kelgen::detail::TellOfFatalExceptions(); }
};
[[gnu::init_priority(101)]] const FatalExceptions fatalExceptions;

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand)
{
    return kelgen::detail::RunProgram(instance, previousInstance, commandLine, showCommand);
}
