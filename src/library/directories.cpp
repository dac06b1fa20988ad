#include "library/directories.h"

namespace larkspin {

namespace {

class OneAfterTheOther : public DirectoryReader {
public:
    explicit OneAfterTheOther(Directories& directories) : directories_(directories) {}

    void expect(const std::vector<std::string>&) override {}
    DirectoryRead read(const std::string& path) override { return directories_.list(path); }

private:
    Directories& directories_;
};

} // namespace

std::unique_ptr<DirectoryReader> Directories::reader() {
    return std::make_unique<OneAfterTheOther>(*this);
}

std::optional<std::string> folderOf(Directories& directories, std::string_view typed) {
    const DirectoryRead read = directories.list(directories.drivePath(typed));
    return read.isListed() ? std::optional(read.listing.path) : std::nullopt;
}

} // namespace larkspin
