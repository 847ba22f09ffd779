// deploying.cpp: which libraries a program really runs with, for an about box or a report of a fault.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <iostream>

namespace {

/// The file of a loaded module; null names the program.
CString FileOf(const char* name)
{
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(::GetModuleHandleA(name), path, MAX_PATH);
    return path;
}

/// What a module says of its version: kelgen does on both targets, and so does a program whose resource script says it.
void ShowVersion(const char* name)
{
    CVersionInfo version;
    if (version.Load(FileOf(name)))
        std::cout << version.GetProductName() << ' ' << version.GetFileVersionAsString() << '\n';
    else
        std::cout << (name != nullptr ? name : "the program") << " does not say\n";
}

}  // namespace

int main()
{
    // By this name on both targets, though the file is libkelgen.so on Linux.
    ShowVersion("kelgen.dll");
    ShowVersion(nullptr);
    std::cout << "NT family: " << COSVersionInfo::Get().IsWin2KOrGreater() << '\n';
}
