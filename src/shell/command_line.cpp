#include "shell/command_line.h"

#include "shell/version.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr DisplayOption buttons[] = {
    {.name = "--play-pause", .help = "pauses, goes on, or plays the last song once more"},
    {.name = "--next", .help = "plays the next song"},
    {.name = "--previous", .help = "plays the previous song"}};

const DisplayOption* findOption(std::span<const DisplayOption> options, std::string_view argument) {
    const auto found =
        std::ranges::find(options, argument.substr(0, argument.find('=')), &DisplayOption::name);
    return found == options.end() ? nullptr : &*found;
}

std::string toldOptions(std::span<const DisplayOption> options) {
    constexpr std::size_t nameColumns = 14;
    std::string told;
    for (const DisplayOption& option : options)
        if (!option.help.empty()) {
            std::string name(option.name);
            name.resize(std::max(name.size(), nameColumns), ' ');
            told += "  " + name + std::string(option.help) + '\n';
        }
    return told;
}

} // namespace

CommandLine readCommandLine(std::span<const std::string> arguments,
                            std::span<const DisplayOption> displayOptions) {
    using Wish = CommandLine::Wish;
    CommandLine line;
    for (std::size_t at = 0; at < arguments.size() && line.wish == Wish::run; ++at) {
        const std::string& argument = arguments[at];
        if (argument == "--") {
            line.files.insert(line.files.end(), arguments.begin() + static_cast<long>(at) + 1,
                              arguments.end());
            break;
        }
        const DisplayOption* const option = findOption(displayOptions, argument);
        if (option) {
            line.display.push_back(argument);
            if (option->takesNext && argument == option->name && at + 1 < arguments.size())
                line.display.push_back(arguments[++at]);
        } else if (!argument.starts_with('-')) {
            line.files.push_back(argument);
        } else if (std::ranges::count(buttons, argument, &DisplayOption::name) > 0) {
            line.presses.push_back(argument.substr(2));
        } else if (argument == "--help" || argument == "-h") {
            line.wish = Wish::help;
        } else if (argument == "--version") {
            line.wish = Wish::version;
        } else {
            line.wish = Wish::unknown;
            line.unknown = argument;
        }
    }
    return line;
}

std::string usageText(const std::string& program, std::span<const DisplayOption> displayOptions) {
    constexpr DisplayOption others[] = {
        {.name = "--help", .help = "says this"},
        {.name = "--version", .help = "says which version this is"},
        {.name = "--", .help = "what comes after it are files, whatever they begin with"}};
    return "usage: " + program +
           " [OPTION...] [FILE...]\n"
           "\n"
           "Music that is driven by typing into a chat room. All files are added to the\n"
           "list, and the first one plays; directories are added with all that is below\n"
           "them. The larkspin that runs already does that, and presses the buttons that\n"
           "options name, or else this one.\n"
           "\n"
           "  FILE          a path, or an address (file:///...)\n" +
           toldOptions(buttons) + toldOptions(displayOptions) + toldOptions(others) +
           "\n"
           "In the room, /help tells all else.\n";
}

std::string versionLine() {
    return "larkspin " + versionText() + "\n";
}

std::string unknownOptionText(const std::string& program, const std::string& option) {
    return program + ": there is no option " + option + ", --help tells what there is\n";
}

} // namespace larkspin
