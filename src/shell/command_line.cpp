#include "shell/command_line.h"

#include "shell/version.h"

#include <algorithm>

namespace larkspin {

namespace {

const DisplayOption* findOption(std::span<const DisplayOption> options, std::string_view argument) {
    const auto found =
        std::ranges::find(options, argument.substr(0, argument.find('=')), &DisplayOption::name);
    return found == options.end() ? nullptr : &*found;
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
    constexpr std::size_t nameColumns = 11;
    std::string options;
    for (const DisplayOption& option : displayOptions)
        if (!option.help.empty()) {
            std::string name(option.name);
            name.resize(std::max(name.size(), nameColumns), ' ');
            options += "  " + name + std::string(option.help) + '\n';
        }
    return "usage: " + program +
           " [FILE...]\n"
           "\n"
           "Music that is driven by typing into a chat room. All files are added to the\n"
           "list, and the first one plays; directories are added with all that is below\n"
           "them. The larkspin that runs already does that, or else this one.\n"
           "\n"
           "  FILE       a path, or an address (file:///...)\n" +
           options +
           "  --help     says this\n"
           "  --version  says which version this is\n"
           "  --         what comes after it are files, whatever they begin with\n"
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
