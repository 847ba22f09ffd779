// main.cpp: a service with its own command line. It keeps the checksums of a folder's files and tells them to clients.
//
//     service install FOLDER [--recheck SECONDS]   installs it; by default all files are looked at every 5 seconds
//     service start | stop | pause | continue      and waits until it has
//     service query [FILE]                         prints the state and the checksums, or that of one file
//     service remove                               stops and removes it
//     service run FOLDER [--once]                  no service: prints checksums here until Ctrl+C, or once
//
// Any of them takes --name NAME: several such services may be installed.
#include "Commands.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

enum class EOperand
{
    none,
    optional,
    needed,
};

struct Command
{
    const char* name;
    EOperand operand;
    int (*run)(const CommandArguments& arguments);
};

constexpr Command kCommands[] = {
    {"install", EOperand::needed, commands::Install}, {"start", EOperand::none, commands::Start},
    {"stop", EOperand::none, commands::Stop},         {"pause", EOperand::none, commands::Pause},
    {"continue", EOperand::none, commands::Continue}, {"query", EOperand::optional, commands::Query},
    {"remove", EOperand::none, commands::Remove},     {"run", EOperand::needed, commands::RunHere},
    {"serve", EOperand::none, commands::Serve},
};

// A day: the wait is counted in milliseconds.
constexpr long kMostSeconds = 86400;

/// Takes one argument, and its value if it has one. False when it makes no sense.
bool Take(int& i, int count, char** texts, CommandArguments& arguments)
{
    const char* const text = texts[i];
    const char* const value = i + 1 < count ? texts[i + 1] : "";
    if (std::strcmp(text, "--once") == 0) {
        arguments.isOnce = true;
        return true;
    }
    if (std::strcmp(text, "--name") == 0) {
        arguments.service = value;
        ++i;
        return *value != '\0';
    }
    if (std::strcmp(text, "--recheck") == 0) {
        char* end = nullptr;
        const long seconds = std::strtol(value, &end, 10);
        arguments.recheckSeconds = static_cast<int>(seconds);
        ++i;
        return *value != '\0' && *end == '\0' && seconds > 0 && seconds <= kMostSeconds;
    }
    if (std::strncmp(text, "--", 2) == 0 || *text == '\0' || !arguments.operand.IsEmpty())
        return false;
    arguments.operand = text;
    return true;
}

int ExplainUse()
{
    std::fprintf(stderr, "usage: service install FOLDER [--recheck SECONDS] | start | stop | pause | continue | query [FILE] | remove |\n"
                         "               run FOLDER [--once]       each with [--name NAME]\n");
    return 2;
}

}  // namespace

int main(int count, char** texts)
{
    for (const Command& command : kCommands) {
        if (count < 2 || std::strcmp(texts[1], command.name) != 0)
            continue;
        CommandArguments arguments;
        for (int i = 2; i < count; ++i) {
            if (!Take(i, count, texts, arguments))
                return ExplainUse();
        }
        const bool hasOperand = !arguments.operand.IsEmpty();
        if (hasOperand ? command.operand == EOperand::none : command.operand == EOperand::needed)
            return ExplainUse();
        return command.run(arguments);
    }
    return ExplainUse();
}
