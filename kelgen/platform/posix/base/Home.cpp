// Home.cpp: finds and makes the home folder.
#include <kelgen/platform/posix/base/Home.h>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace {

std::string Environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string UserDataFolder()
{
    if (std::string data = Environment("XDG_DATA_HOME"); !data.empty())
        return data;
    std::string home = Environment("HOME");
    if (home.empty()) {
        const passwd* user = getpwuid(getuid());
        home = user ? user->pw_dir : "/tmp";
    }
    return home + "/.local/share";
}

void MakeFolders(const std::string& path)
{
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
        mkdir(path.substr(0, slash).c_str(), 0700);
    mkdir(path.c_str(), 0700);
}

std::string MadeFolder(std::string path)
{
    if (access(path.c_str(), F_OK) != 0)
        MakeFolders(path);
    return path;
}

}  // namespace

std::string kelgen::posix::HomeFolder()
{
    std::string home = Environment("KELGEN_HOME");
    if (home.empty())
        home = UserDataFolder() + "/kelgen";
    while (home.size() > 1 && home.back() == '/')
        home.pop_back();
    return MadeFolder(std::move(home));
}

std::string kelgen::posix::DriveCFolder()
{
    return MadeFolder(HomeFolder() + "/drive_c");
}
