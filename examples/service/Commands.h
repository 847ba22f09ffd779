// Commands.h: what the program does for the person who types its command line.
#pragma once

#include <kelgen/framework/base/String.h>

/// What follows the command. Each command returns the exit status: 0, or 1 after a line on standard error.
struct CommandArguments
{
    CString service = "kelgen-checksums";
    /// A folder or the name of a file; empty when there is none.
    CString operand;
    int recheckSeconds = 5;
    bool isOnce = false;
};

namespace commands {

/// Installs this program as a service over a folder.
int Install(const CommandArguments& arguments);
/// Each returns when the service has the state.
int Start(const CommandArguments& arguments);
int Stop(const CommandArguments& arguments);
int Pause(const CommandArguments& arguments);
int Continue(const CommandArguments& arguments);
/// Prints the state, and while there is a process the checksums that it knows.
int Query(const CommandArguments& arguments);
/// Stops the service, if it runs, and takes it away with all that it has kept.
int Remove(const CommandArguments& arguments);
/// Without a service: prints what happens to the folder's files until Ctrl+C; with isOnce looks once.
int RunHere(const CommandArguments& arguments);
/// For the service manager alone.
int Serve(const CommandArguments& arguments);

}  // namespace commands
