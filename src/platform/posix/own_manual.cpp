#include "platform/posix/own_manual.h"

#include "platform/posix/drive_paths.h"

#include <filesystem>
#include <system_error>

namespace larkspin {

std::string ownManual() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* const below : {"../share/doc/larkspin/manual.md", "../../docs/manual.md"}) {
        const auto path = program / below;
        if (!program.empty() && std::filesystem::exists(path, error))
            return drivePath(path.native());
    }
    return {};
}

} // namespace larkspin
