#include "app/main_start.h"

#include "platform/dbus/running_copy.h"
#include "platform/posix/file_addresses.h"
#include "text/visible.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace larkspin {

namespace {

constexpr int wrongUse = 2;

[[noreturn]] void endAfter(const std::string& text, std::FILE* output, int status) {
    std::fputs(text.c_str(), output);
    std::exit(status);
}

} // namespace

Started readStart(int count, char** arguments, const std::string& program,
                  std::span<const DisplayOption> displayOptions) {
    const std::vector<std::string> given(arguments + std::min(count, 1), arguments + count);
    const CommandLine line = readCommandLine(given, displayOptions);
    if (line.wish == CommandLine::Wish::help)
        endAfter(usageText(program, displayOptions), stdout, EXIT_SUCCESS);
    if (line.wish == CommandLine::Wish::version)
        endAfter(versionLine(), stdout, EXIT_SUCCESS);
    if (line.wish == CommandLine::Wish::unknown)
        endAfter(unknownOptionText(program, visibleText(line.unknown, " ")), stderr, wrongUse);
    Started started{.files = {}, .presses = line.presses, .display = line.display};
    std::error_code failed;
    const std::string here = line.files.empty() ? "" : std::filesystem::current_path(failed);
    for (const std::string& file : line.files)
        started.files.push_back(addressOfTyped(file, here));
    return started;
}

Handing handOver(const Started& started, PosixProcess& process, const std::string& dataDirectory) {
    const auto& [files, presses, display] = started;
    if ((files.empty() && presses.empty()) || process.claimOnlyCopy())
        return Handing::notNeeded;
    const std::string bus = sessionBusAddress();
    if ((files.empty() || openInRunningCopy(bus, dataDirectory, files)) &&
        (presses.empty() || pressInRunningCopy(bus, dataDirectory, presses)))
        return Handing::done;
    std::fprintf(stderr, "%s\n", unreachableCopy);
    return Handing::failed;
}

} // namespace larkspin
