// The beginning of a process, before there is a front end: what it is started with, and whether
// another copy of the program does that already.
#pragma once

#include "platform/posix/posix_process.h"
#include "shell/command_line.h"

#include <span>
#include <string>
#include <vector>

namespace larkspin {

struct Started {
    std::vector<std::string> files;   // by their addresses
    std::vector<std::string> presses; // of buttons, once the files are taken
    std::vector<std::string> display; // options
};

// Ends the process where it is only asked something, or in a way that it doesn't know (2).
Started readStart(int count, char** arguments, const std::string& program,
                  std::span<const DisplayOption> displayOptions = {});

enum class Handing {
    notNeeded, // there is nothing to do, or no other copy: this one has its place now
    done,      // the other copy does it
    failed,    // there is one, but it can't be reached, which has been told on the error output
};
Handing handOver(const Started& started, PosixProcess& process, const std::string& dataDirectory);

inline constexpr const char* unreachableCopy =
    "larkspin runs already, but can't be reached: go there instead";

} // namespace larkspin
