// A directory of its own for a test, gone with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace larkspin {

class TempDirectory {
public:
    TempDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "larkspin-XXXXXX").native();
        path_ = ::mkdtemp(name.data());
    }
    ~TempDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string read(const std::string& below) const { // "" when missing
        std::ifstream file(path_ / below, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void write(const std::string& below, const std::string& contents) const {
        std::filesystem::create_directories((path_ / below).parent_path());
        std::ofstream(path_ / below, std::ios::binary) << contents;
    }

private:
    std::filesystem::path path_;
};

} // namespace larkspin
