// FileNames.cpp: any text as a path, as a file's name and as a pattern with wild cards.
#include "HomeFolder.h"

#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/ShortNames.h>

#include <sys/stat.h>

#include <fstream>
#include <set>

using namespace fuzz;
using namespace kelgen::posix;

namespace {

/// Without room, with too little and with as much as was asked for.
std::string FullName(const std::string& name)
{
    auto text = Terminated<char>(name);
    const DWORD needed = GetFullPathNameA(text.Get(), 0, nullptr, nullptr);
    if (needed == 0)
        return {};
    Exact<char> room(needed);
    char* file = nullptr;
    Require(GetFullPathNameA(text.Get(), needed, room.Get(), &file) == needed - 1 && room[needed - 1] == 0);
    Require(file == nullptr || (file >= room.Get() && file < room.Get() + needed));
    Exact<char> less(needed - 1);
    Require(GetFullPathNameA(text.Get(), needed - 1, less.Get(), nullptr) == needed);
    return room.Get();
}

void Path(const std::string& name)
{
    const std::string full = FullName(name);
    // Of several dots behind a folder's name one is dropped each time; network names and devices have more forms than one.
    const bool isFinal = (full + '\\').find(".\\") == std::string::npos && !full.ends_with(' ') && !full.starts_with('\\');
    const std::string again = FullName(full);
    Require(!isFinal || again == full || again.starts_with("\\\\.\\"));
    const ResolvedPath path = Resolve(name);
    Require(!path.exists || path.error == 0);
    struct stat facts;
    Require(path.isDevice || !path.exists || lstat(path.native.c_str(), &facts) == 0);

    const std::u16string wide = WideName(name);
    Require(NarrowName(reinterpret_cast<LPCWSTR>(wide.c_str())) == name.substr(0, name.find('\0')));
}

/// Different short names for different entries, each of which is short.
void Short(Input& input)
{
    std::set<std::string> entries;
    while (input.Left() > 0)
        if (const std::string name = input.Line(); !name.empty())
            entries.insert(name);
    const ShortNames names({entries.begin(), entries.end()});
    std::set<std::string> different;
    for (const std::string& entry : entries) {
        const std::string name = names.Of(entry);
        Require(!name.empty() && name.size() <= 12);
        different.insert(name);
    }
    Require(different.size() == entries.size());
}

/// A folder with names of many kinds, made once.
const std::string& Folder()
{
    static const std::string folder = [] {
        const std::filesystem::path path = Home() / "drive_c/fuzznames";
        std::filesystem::create_directories(path);
        for (const char* name :
             {"a", "a.b", "ab.c", "A.B.C", "longer name.text", "\xC3\xA4\xC3\xB6.txt", "x.", "...y", "dot.", "~1", "not\xFFutf8"})
            std::ofstream(path / name) << name;
        return std::string("C:\\fuzznames\\");
    }();
    return folder;
}

std::set<std::string> Found(const std::string& pattern)
{
    std::set<std::string> names;
    WIN32_FIND_DATAA found;
    auto text = Terminated<char>(Folder() + pattern);
    const HANDLE find = FindFirstFileA(text.Get(), &found);
    if (find == INVALID_HANDLE_VALUE)
        return names;
    do {
        Require(names.insert(found.cFileName).second);
    } while (FindNextFileA(find, &found));
    Require(GetLastError() == ERROR_NO_MORE_FILES && FindClose(find));
    return names;
}

/// A star at the end finds no less, and everything is found by one alone.
void WildCards(const std::string& pattern)
{
    static const std::set<std::string> all = Found("*");
    // Dots and blanks at the end are no part of a pattern, and a device is none.
    if (pattern.find_first_of(std::string("\\/:\0", 4)) != std::string::npos || pattern.find_first_of("*?") == std::string::npos ||
        pattern.back() == '.' || pattern.back() == ' ' || FullName(Folder() + pattern).starts_with("\\\\.\\"))
        return;
    const std::set<std::string> names = Found(pattern);
    Require(std::includes(all.begin(), all.end(), names.begin(), names.end()));
    const std::set<std::string> more = Found(pattern + "*");
    Require(std::includes(more.begin(), more.end(), names.begin(), names.end()));
}

void Order(Input& input)
{
    const std::string a = input.Line();
    const std::string b = input.Line();
    const std::string c = input.Line();
    const int ab = OrderOfNames(a, b);
    Require((ab > 0) == (OrderOfNames(b, a) < 0) && (ab == 0) == (a == b));
    if (ab <= 0 && OrderOfNames(b, c) <= 0)
        Require(OrderOfNames(a, c) <= 0);
    Require(EqualNames(a, b) == EqualNames(b, a) && EqualNames(a, a));
    if (EqualNames(a, b) && EqualNames(b, c))
        Require(EqualNames(a, c));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    switch (input.Below(4)) {
    case 0:
        Path(input.Rest<char>());
        break;
    case 1:
        Short(input);
        break;
    case 2:
        WildCards(input.Line());
        break;
    default:
        Order(input);
    }
    return 0;
}
