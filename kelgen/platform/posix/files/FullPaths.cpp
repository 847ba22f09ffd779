// FullPaths.cpp: full drive forms of names, by their text alone.
#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/files/Paths.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <new>

namespace kelgen::posix {

namespace {

bool IsSlash(char letter)
{
    return letter == '/' || letter == '\\';
}

// The place of the first slash of either kind, or npos: this is asked for every part of every name, and two letters need no general search.
std::size_t FindSlash(std::string_view text)
{
    const auto found = std::find_if(text.begin(), text.end(), IsSlash);
    return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

bool IsLetter(char letter)
{
    return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
}

char UpperLetter(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool HasDrive(std::string_view name)
{
    return name.size() >= 2 && IsLetter(name[0]) && name[1] == ':';
}

std::string_view WithoutTrailing(std::string_view text, std::string_view letters)
{
    return text.substr(0, text.find_last_not_of(letters) + 1);
}

std::string Backslashed(std::string_view text)
{
    std::string result(text);
    std::ranges::replace(result, '/', '\\');
    return result;
}

// The device that the last part of a name means ("nul", "com1.txt"), or nothing.
std::string_view DeviceIn(std::string_view name)
{
    const std::size_t start = name.find_last_of("/\\:", name.size() >= 2 && name.back() == ':' ? name.size() - 2 : std::string_view::npos);
    std::string_view last = name.substr(start == std::string_view::npos ? 0 : start + 1);
    last = WithoutTrailing(last.substr(0, last.find_first_of(".:")), " ");

    std::string upper(last);
    for (char& letter : upper)
        letter = UpperLetter(letter);
    const bool numbered = upper.size() == 4 && upper[3] >= '1' && upper[3] <= '9' && (upper.starts_with("COM") || upper.starts_with("LPT"));
    const bool plain = upper == "NUL" || upper == "CON" || upper == "PRN" || upper == "AUX";
    return numbered || plain ? last : std::string_view();
}

// The end of "\\server\share\" at the start of name.
std::size_t NetworkRootEnd(std::string_view name)
{
    std::size_t end = name.find_first_of("/\\", 2);
    if (end != std::string_view::npos)
        end = name.find_first_of("/\\", end + 1);
    return end == std::string_view::npos ? name.size() : end + 1;
}

// Adds the parts of tail to parts: "." stays out, ".." takes one away, one trailing dot of a folder's name is dropped, all
// trailing dots and blanks of the last. True when the name ends in a slash.
bool AddParts(std::string_view tail, std::vector<std::string_view>& parts)
{
    while (!tail.empty()) {
        const std::size_t slash = FindSlash(tail);
        std::string_view part = tail.substr(0, slash);
        const bool last = slash == std::string_view::npos;
        tail.remove_prefix(last ? tail.size() : slash + 1);
        if (part == ".." && !parts.empty())
            parts.pop_back();
        if (part.empty() || part == "." || part == "..") {
            if (last)
                return false;
            continue;
        }

        if (last)
            part = WithoutTrailing(part, ". ");
        else if (part.back() == '.')
            part.remove_suffix(1);
        if (part.empty())
            return true;
        parts.push_back(part);
        if (last)
            return false;
    }
    return true;
}

std::string Joined(std::string root, const std::vector<std::string_view>& parts, bool endsInSlash)
{
    std::size_t length = root.size();
    for (const std::string_view part : parts)
        length += part.size() + 1;
    root.reserve(length);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        root += parts[i];
        if (i + 1 < parts.size() || endsInSlash)
            root += '\\';
    }
    return root;
}

std::string Collapsed(std::string root, std::string_view tail)
{
    std::vector<std::string_view> parts;
    parts.reserve(kUsualDepth);
    const bool endsInSlash = !tail.empty() && AddParts(tail, parts);
    return Joined(std::move(root), parts, endsInSlash);
}

std::string FromCurrentFolder(std::string_view tail)
{
    const std::string current = CurrentFolder();
    std::vector<std::string_view> parts = SplitAtBackslashes(std::string_view(current).substr(3));
    const bool endsInSlash = AddParts(tail, parts);
    return Joined(current.substr(0, 3), parts, endsInSlash);
}

// The part of native below folder, starting with its slash (or empty), or nothing.
std::optional<std::string_view> Below(std::string_view native, std::string_view folder)
{
    if (!native.starts_with(folder) || (native.size() > folder.size() && native[folder.size()] != '/'))
        return std::nullopt;
    return native.substr(folder.size());
}

std::string NativeCurrentFolder()
{
    char buffer[PATH_MAX];
    if (getcwd(buffer, sizeof buffer))
        return buffer;
    // Names must not come to lie elsewhere for want of memory; a folder that has gone has no name any more.
    if (errno == ENOMEM)
        throw std::bad_alloc();
    return "/";
}

}  // namespace

std::string CurrentFolder()
{
    std::string folder = DriveForm(NativeCurrentFolder());
    while (folder.size() > 3 && folder.back() == '\\')
        folder.pop_back();
    return folder;
}

std::string FullPath(std::string_view name)
{
    if (WithoutTrailing(name, " ").empty())
        return {};

    const bool network = name.size() >= 2 && IsSlash(name[0]) && IsSlash(name[1]);
    if (network && name.size() >= 4 && (name[2] == '?' || name[2] == '.') && IsSlash(name[3])) {
        const std::size_t root = HasDrive(name.substr(4)) && name.size() >= 7 ? 7 : 4;
        return Collapsed(Backslashed(name.substr(0, root)), name.substr(root));
    }
    if (network) {
        const std::size_t root = NetworkRootEnd(name);
        return Collapsed(Backslashed(name.substr(0, root)), name.substr(root));
    }
    if (name[0] == '/')
        return Collapsed("Z:\\", name.substr(1));
    if (const std::string_view device = DeviceIn(name); !device.empty())
        return "\\\\.\\" + std::string(device);
    if (name[0] == '\\')
        return Collapsed(CurrentFolder().substr(0, 3), name.substr(1));
    if (!HasDrive(name))
        return FromCurrentFolder(name);
    if (name.size() >= 3 && IsSlash(name[2]))
        return Collapsed(std::string(name.substr(0, 2)) + '\\', name.substr(3));
    if (UpperLetter(name[0]) == UpperLetter(CurrentFolder()[0]))
        return FromCurrentFolder(name.substr(2));
    return Collapsed(std::string(name.substr(0, 2)) + '\\', name.substr(2));
}

std::string DriveForm(std::string_view nativePath)
{
    std::string path(nativePath);
    if (path.empty() || path[0] != '/')
        path = NativeCurrentFolder() + '/' + path;

    std::optional<std::string_view> below;
    // Most paths are not on drive C and need no look at the home.
    if (path.find("/drive_c") != std::string::npos) {
        const std::string home = DriveCFolder();
        below = Below(path, home);
        // The system reports the current folder without symbolic links; the home may have been named with some.
        char buffer[PATH_MAX];
        if (!below && realpath(home.c_str(), buffer))
            below = Below(path, buffer);
    }
    std::string drive = below ? "C:" : "Z:";
    drive += Backslashed(below ? *below : std::string_view(path));
    return drive.size() == 2 ? drive + '\\' : drive;
}

}  // namespace kelgen::posix
