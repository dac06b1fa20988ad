// The files port on a POSIX system.
#pragma once

#include "platform/posix/wastebasket.h"
#include "shell/files.h"

namespace larkspin {

class PosixFiles : public Files {
public:
    explicit PosixFiles(Wastebasket wastebasket = Wastebasket())
        : wastebasket_(std::move(wastebasket)) {}

    Presence presence(const std::string& path) override;
    std::optional<std::uintmax_t> size(const std::string& path) override;
    FileRead read(const std::string& path, std::size_t largest = largestFile) override;
    FileChange replace(const std::string& path, const std::string& contents) override;
    FileChange append(const std::string& path, const std::string& text) override;
    FileChange rename(const std::string& path, const std::string& newName) override;
    FileChange moveToWastebasket(const std::string& path) override;
    FileChange remove(const std::string& path) override;
    FileChange makeDirectory(const std::string& path) override;
    void hide(const std::string& path) override;

private:
    Wastebasket wastebasket_;
};

} // namespace larkspin
