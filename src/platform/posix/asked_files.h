// The files port of a program that can't hang: the data directory's own files are worked on at
// once, all others by the workers of the owner's disk. So is what is appended to, which grows where
// the owner wants it, and may lie on another disk through a link.
#pragma once

#include "platform/posix/owners_disk.h"
#include "platform/posix/posix_files.h"

#include <string>
#include <utility>

namespace larkspin {

class AskedFiles : public Files {
public:
    AskedFiles(OwnersDisk& disk, PosixFiles files, std::string dataDirectory) // a drive path
        : disk_(disk), files_(std::move(files)), own_(std::move(dataDirectory) + '\\') {}

    Presence presence(const std::string& path) override;
    std::optional<std::uintmax_t> size(const std::string& path) override;
    FileRead read(const std::string& path, std::size_t largest = largestFile) override;
    FileChange replace(const std::string& path, const std::string& contents) override;
    FileChange append(const std::string& path, const std::string& text) override;
    FileChange rename(const std::string& path, const std::string& newName) override;
    FileChange moveToWastebasket(const std::string& path) override;
    FileChange remove(const std::string& path) override { return files_.remove(path); }
    FileChange makeDirectory(const std::string& path) override {
        return files_.makeDirectory(path);
    }
    void hide(const std::string& path) override { files_.hide(path); }

private:
    bool isOwn(const std::string& path) const { return path.starts_with(own_); }
    std::optional<std::string> ask(const std::string& question, const std::string& path);
    FileChange change(const std::string& question, const std::string& path);

    OwnersDisk& disk_;
    PosixFiles files_;
    std::string own_; // what the paths of the program's own files begin with
};

} // namespace larkspin
