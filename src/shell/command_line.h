// What the program is started with: files, buttons to press, or one of a few options. All else is
// done by what the owner types into the room.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// An option for whatever shows the program: for a library, or of a front end's own.
struct DisplayOption {
    std::string_view name; // with its dash, and perhaps followed by "=" and a value
    bool takesNext = false;
    std::string_view help = {}; // a line; empty for what the library's own manual tells
};

struct CommandLine {
    enum class Wish { run, help, version, unknown };

    Wish wish = Wish::run;
    std::string unknown;              // option
    std::vector<std::string> files;   // as they were typed
    std::vector<std::string> presses; // of buttons, each by its option's name without the dashes
    std::vector<std::string> display;
};

// Whatever comes after "--" is a file. The first option that isn't known, or asks for a word,
// counts.
CommandLine readCommandLine(std::span<const std::string> arguments,
                            std::span<const DisplayOption> displayOptions);

// What is said about the program of that name, a line or several, each with its end.
std::string usageText(const std::string& program,
                      std::span<const DisplayOption> displayOptions = {});
std::string versionLine();
std::string unknownOptionText(const std::string& program, const std::string& option);

} // namespace larkspin
