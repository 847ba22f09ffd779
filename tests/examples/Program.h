// Program.h: an example's program as a process: its status and what it prints.
#pragma once

#include "support/Scratch.h"

#include <cstdlib>
#include <string>

namespace kelgen::test {

struct Ended
{
    int exitStatus;
    std::string account;
    std::string errors;
};

/// Runs @p program to its end; @p arguments are quoted by the caller.
inline Ended RunProgram(const std::string& program, const std::string& arguments)
{
    const auto read = [](const std::string& path) {
        std::string text = ReadBytes(path);
        std::erase(text, '\r');
        return text;
    };
    const std::string out = ScratchFile("out"), err = ScratchFile("err");
    // Without a quotation mark at its beginning one command line does for both shells.
    const int status = std::system(("cd . && \"" + program + "\" " + arguments + " >\"" + out + "\" 2>\"" + err + "\"").c_str());
    // A POSIX shell's status holds the process's in its second byte.
    return {status > 0xFF ? status >> 8 : status, read(out), read(err)};
}

}  // namespace kelgen::test
