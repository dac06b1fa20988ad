// Starts another program with nothing of this one but what is named: no blocked signals, no
// handlers, no open files, no variables.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace larkspin {

struct SpawnRequest {
    std::string program;                  // native path; not looked for on the PATH
    std::vector<std::string> arguments;   // after the program's own name
    std::vector<std::string> environment; // "NAME=value"
    int channel = -1;                     // a descriptor that becomes `spawnChannel`; -1 for none
    std::string directory = {};           // where it starts; empty for this program's own
    bool newSession = false;              // it survives a hang-up of this program's terminal
    int input = -1, output = -1;          // descriptors that become those; -1 for /dev/null
};

inline constexpr int spawnChannel = 3; // errors are /dev/null

// The process, which the caller waits for; nothing when it can't be started.
std::optional<pid_t> spawn(const SpawnRequest& request);

// The same for a program that nobody waits for, now or at its end: it becomes the child of the
// system. True when it has been started.
bool spawnOrphan(const SpawnRequest& request);

// Finds a program on the PATH; empty when it isn't there. Relative directories don't count: whoever
// can write into the current directory must not choose what runs.
std::string programOnPath(std::string_view name);

// Those of this program's variables that have one of these names; a name that ends in "*"
// stands for all that begin so.
std::vector<std::string> variables(const std::vector<std::string>& names);

} // namespace larkspin
