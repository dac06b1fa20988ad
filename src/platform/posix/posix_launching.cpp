#include "platform/posix/posix_launching.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/spawn.h"

#include <filesystem>
#include <string_view>
#include <unistd.h>

namespace larkspin {

namespace {

namespace fs = std::filesystem;

bool isFile(const fs::path& path) {
    std::error_code failed;
    return fs::is_regular_file(path, failed);
}

bool start(const fs::path& program, const std::vector<std::string>& arguments,
           const fs::path& directory) {
    return spawnOrphan({.program = program,
                        .arguments = arguments,
                        .environment = variables({"*"}),
                        .directory = directory,
                        .newSession = true});
}

// On a disk of another system every file may look executable. The system then refuses to start
// those that are no programs.
bool execute(const fs::path& file) {
    return isFile(file) && ::access(file.c_str(), X_OK) == 0 && start(file, {}, file.parent_path());
}

bool startWith(std::string_view tool, const std::string& argument, const fs::path& directory) {
    const fs::path program = programOnPath(tool);
    return !program.empty() && start(program, {argument}, directory);
}

fs::path ownDirectory() {
    std::error_code failed;
    return fs::read_symlink("/proc/self/exe", failed).parent_path();
}

// A program's argument ends at the first zero byte, so such a text can't be given to one.
bool endsEarly(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

} // namespace

bool PosixLaunching::run(const std::string& path) {
    const std::string native = nativePath(path);
    if (endsEarly(native) || !isFile(native))
        return false;
    // A file that the system doesn't start itself is taken for a program of Windows.
    return execute(native) || startWith("wine", native, fs::path(native).parent_path());
}

bool PosixLaunching::open(const std::string& pathOrAddress) {
    // The opener would take a text that begins with a hyphen for an option.
    if (pathOrAddress.empty() || pathOrAddress.starts_with('-') || endsEarly(pathOrAddress))
        return false;
    const std::string native = nativePath(pathOrAddress);
    if (native.empty()) // the opener knows whole addresses only
        return startWith("xdg-open",
                         (pathOrAddress.starts_with("www.") ? "http://" : "") + pathOrAddress,
                         ownDirectory());
    return execute(native) || startWith("xdg-open", native, ownDirectory());
}

} // namespace larkspin
