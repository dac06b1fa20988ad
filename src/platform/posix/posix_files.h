// The files port on a POSIX system.
#pragma once

#include "platform/posix/wastebasket.h"
#include "shell/files.h"

namespace larkspin {

class PosixFiles : public Files {
public:
    explicit PosixFiles(Wastebasket wastebasket = Wastebasket())
        : wastebasket_(std::move(wastebasket)) {}

    bool exists(const std::string& path) override;
    std::uintmax_t size(const std::string& path) override;
    FileRead read(const std::string& path, std::size_t largest = largestFile) override;
    bool replace(const std::string& path, const std::string& contents) override;
    bool rename(const std::string& path, const std::string& newName) override;
    bool moveToWastebasket(const std::string& path) override;
    bool remove(const std::string& path) override;
    bool makeDirectory(const std::string& path) override;
    void hide(const std::string& path) override;

private:
    Wastebasket wastebasket_;
};

} // namespace larkspin
