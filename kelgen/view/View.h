// View.h: the desktop of the process in a browser. Native only.
#pragma once

#include <kelgen/view/Export.h>

#include <string>

namespace kelgen::view {

/// Where the desktop is served, and who is told.
struct Options
{
    int port = 0;           ///< On 127.0.0.1; 0: any that is free.
    bool printsUrl = true;  ///< One line on standard output, "view: URL".
    /// The path of a Unix socket, which only the process's user reaches; then there is no port. Its folder is the user's, and nobody else
    /// may write there. A socket that nobody listens on is replaced; at its end the process removes its own.
    std::string socket{};
};

/// Serves the desktop of the process, live, to browsers of this machine: the URL, or empty when the port is taken or the socket is not to
/// be had. It holds a random key of 128 bits, without which nothing is served; whoever has it sees all windows and acts as their user.
/// That of a socket lacks the port by which it is forwarded. A second call gives the same URL.
///
///     kelgen::view::Start({.port = 8080});
///
/// Mouse and keys come in as by SendInput. While a page is open, and some seconds after, message boxes wait for their answer.
/// The environment variable KELGEN_VIEW=PORT or KELGEN_VIEW=unix:PATH does the same for any host that waits for messages, without a line of
/// code.
/// Threads: any. The view runs on two threads of its own, which do nothing while no page is open.
KELGEN_VIEW_API std::string Start(const Options& options = {});

}  // namespace kelgen::view
