#include "platform/posix/posix_machine_facts.h"

#include "platform/posix/disk_questions.h"
#include "text/fold.h"
#include "text/parts.h"

#include <ctime>
#include <fstream>
#include <sys/sysinfo.h>

namespace larkspin {

namespace {

constexpr std::size_t largestRelease = 65536; // bytes, of a file of a few hundred

std::string firstPart(const char* path) {
    std::ifstream file(path, std::ios::binary);
    std::string text(largestRelease, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

// A value as a shell reads it: bare or in quotes. A backslash makes the next character an ordinary
// one, but not between single quotes.
std::string unquoted(std::string_view value) {
    std::string text;
    char quote = 0;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const char byte = value[at];
        if (byte == '\\' && quote != '\'' && at + 1 < value.size())
            text += value[++at];
        else if (quote != 0 ? byte == quote : byte == '"' || byte == '\'')
            quote = quote != 0 ? '\0' : byte;
        else if (quote == 0 && (byte == ' ' || byte == '\t' || byte == '\r'))
            break;
        else
            text += byte;
    }
    return text;
}

std::string valueOf(std::string_view key, std::string_view lines) {
    std::string value;
    while (!lines.empty()) {
        const auto [name, quoted, isValue] = partedAt(takePart(lines, '\n'), '=');
        if (isValue && name == key)
            value = unquoted(quoted); // the last one counts
    }
    return value;
}

} // namespace

std::string systemNameIn(std::string_view osRelease) {
    const std::string name = valueOf("NAME", osRelease);
    const std::string version = valueOf("VERSION_ID", osRelease);
    return foldCase((name.empty() ? "Linux" : name) + (version.empty() ? "" : " " + version));
}

std::string PosixMachineFacts::systemName() {
    // The second file is where the system keeps its own, if the administrator has made none.
    const std::string release = firstPart("/etc/os-release");
    return systemNameIn(release.empty() ? firstPart("/usr/lib/os-release") : release);
}

std::uint64_t PosixMachineFacts::memoryBytes() {
    struct sysinfo facts {};
    return ::sysinfo(&facts) == 0 ? std::uint64_t{facts.totalram} * facts.mem_unit : 0;
}

std::chrono::milliseconds PosixMachineFacts::uptime() {
    timespec up{};
    ::clock_gettime(CLOCK_BOOTTIME, &up);
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::seconds(up.tv_sec) + std::chrono::nanoseconds(up.tv_nsec));
}

std::optional<DriveSpace> PosixMachineFacts::driveSpace(const std::string& path) {
    const std::string native = directories_.nativeAsTyped(path);
    if (native.empty())
        return std::nullopt;
    const auto answer = disk_.ask(put(DiskQuestion::space, native), native);
    return answer ? spaceIn(*answer) : DriveSpace{.isUnanswered = true};
}

} // namespace larkspin
