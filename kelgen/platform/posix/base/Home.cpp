// Home.cpp: finds and makes the home folder.
#include <kelgen/platform/posix/base/Home.h>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace {

std::string Environment(const char* name)
{
    // Programs with more rights than their user take nothing from that user's environment.
    const char* value = secure_getenv(name);
    return value ? value : "";
}

std::string UserDataFolder()
{
    if (std::string data = Environment("XDG_DATA_HOME"); !data.empty())
        return data;
    std::string home = Environment("HOME");
    if (home.empty()) {
        passwd record{};
        passwd* user = nullptr;
        char buffer[4096];
        if (getpwuid_r(geteuid(), &record, buffer, sizeof buffer, &user) == 0 && user)
            home = user->pw_dir;
    }
    return home.empty() ? home : home + "/.local/share";
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

/// Says once why there is no home folder. The result is a path below which nothing can be.
std::string Refused(const std::string& reason)
{
    static std::atomic_flag said;
    if (!said.test_and_set())
        std::fprintf(stderr, "kelgen: no home folder: %s\n", reason.c_str());
    return "/dev/null/kelgen";
}

}  // namespace

std::string kelgen::posix::HomeFolder()
{
    std::string home = Environment("KELGEN_HOME");
    if (home.empty()) {
        home = UserDataFolder();
        if (home.empty())
            return Refused("there is none: neither HOME nor KELGEN_HOME is set");
        home += "/kelgen";
    }
    while (home.size() > 1 && home.back() == '/')
        home.pop_back();
    home = MadeFolder(std::move(home));

    struct stat state;
    if (stat(home.c_str(), &state) != 0)
        return home;  // whoever uses it learns why
    if (state.st_uid != geteuid())
        return Refused(home + " is another user's");
    if (state.st_mode & (S_IWGRP | S_IWOTH))
        return Refused(home + " can be written by others: chmod go-w");
    return home;
}

std::string kelgen::posix::DriveCFolder()
{
    return MadeFolder(HomeFolder() + "/drive_c");
}
