// Main.cpp: the main function of a program that is an application object and nothing else.
#include <kelgen/framework/program/WinApp.h>

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

}  // namespace

int main()
{
    return AfxWinMain(GetModuleHandleA(nullptr), nullptr, Arguments(GetCommandLineA()), SW_SHOWDEFAULT);
}
