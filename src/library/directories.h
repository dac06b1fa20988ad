// The port to directories and drives, for the listers to read from. Paths are drive paths;
// nothing throws.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// What one directory holds, as names without a path, in no particular order.
struct DirectoryListing {
    // In its one spelling: no trailing backslash, except for a root (`c:\`), and no `..`.
    std::string path;
    std::vector<std::string> files;
    std::vector<std::string> directories; // those that a walk from above should enter
};

class Directories {
public:
    virtual ~Directories() = default;

    // Nothing when there is no such directory or it can't be entered.
    virtual std::optional<DirectoryListing> list(const std::string& path) = 0;

    // One text per drive: letter, colon and perhaps a label behind them.
    virtual std::vector<std::string> drives() = 0;

    // The drive path for what the owner typed: the system's own notation (`~/Music`,
    // `/home/jo`) is translated, anything else comes back as typed.
    virtual std::string drivePath(std::string_view typed) = 0;
};

} // namespace larkspin
