#include "support/temp_directory.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace larkspin {

TempDirectory::TempDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "larkspin-XXXXXX").native();
    path_ = ::mkdtemp(pattern.data());
}

TempDirectory::~TempDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempDirectory::read(const std::string& below) const {
    std::ostringstream contents;
    contents << std::ifstream(path_ / below, std::ios::binary).rdbuf();
    return contents.str();
}

void TempDirectory::write(const std::string& below, const std::string& contents) const {
    std::filesystem::create_directories((path_ / below).parent_path());
    std::ofstream(path_ / below, std::ios::binary) << contents;
}

} // namespace larkspin
