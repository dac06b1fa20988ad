// The files port on a POSIX system.
#pragma once

#include "shell/files.h"

namespace larkspin {

class PosixFiles : public Files {
public:
    bool exists(const std::string& path) override;
    FileRead read(const std::string& path, std::size_t largest = largestFile) override;
    bool replace(const std::string& path, const std::string& contents) override;
    bool makeDirectory(const std::string& path) override;
    void hide(const std::string& path) override;
};

} // namespace larkspin
