// The desktop's wastebasket, by the freedesktop.org rules for it, so that any file manager can list
// what was thrown away and put it back. A file goes to the wastebasket of the disk it lies on, by a
// renaming alone: nothing is ever copied, and nobody is asked. Paths are native.
#pragma once

#include "shell/files.h"

#include <filesystem>
#include <string>

namespace larkspin {

class Wastebasket {
public:
    // `dataHome`: where this user's programs keep their data; his own wastebasket lies below it.
    // Without one nothing is ever taken.
    explicit Wastebasket(std::string dataHome = {}) : dataHome_(std::move(dataHome)) {}

    // Takes a full path. Fails, and the file stays where it is, when its disk has no wastebasket
    // that can be written. A link is thrown away itself, not what it points to.
    FileChange take(const std::string& path) const;

private:
    std::filesystem::path dataHome_;
};

} // namespace larkspin
