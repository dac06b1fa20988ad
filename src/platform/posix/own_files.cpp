#include "platform/posix/own_files.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/installed_places.h"

#include <filesystem>
#include <system_error>

namespace larkspin {

namespace {

namespace fs = std::filesystem;

// What is installed goes first: beside it may lie what an older version had put there. Empty where
// there is neither.
fs::path ownFile(const fs::path& installed, const fs::path& built) {
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed).parent_path();
    for (const fs::path& below : {installed, built})
        if (!program.empty() && fs::exists(program / below, failed))
            return program / below;
    return {};
}

std::string ownProgram(const char* name) {
    return ownFile(fs::path(installedPlayerDirectory) / name, name);
}

} // namespace

std::string ownPlayer() {
    return ownProgram("larkspin-player");
}

std::string ownBridge() {
    return ownProgram("larkspin-bridge.exe");
}

std::string ownManual() {
    const fs::path manual =
        ownFile(fs::path(installedDataDirectory) / "manual.md", "../../docs/manual.md");
    return manual.empty() ? "" : drivePath(manual.native());
}

} // namespace larkspin
