// A directory of its own for a test, gone with it.
#pragma once

#include <filesystem>
#include <string>

namespace larkspin {

class TempDirectory {
public:
    TempDirectory();
    ~TempDirectory();
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string read(const std::string& below) const; // "" when missing
    void write(const std::string& below, const std::string& contents) const;

private:
    std::filesystem::path path_;
};

} // namespace larkspin
