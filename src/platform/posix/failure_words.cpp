#include "platform/posix/failure_words.h"

#include "text/characters.h"

#include <cerrno>
#include <cstring>

namespace larkspin {

namespace {

struct Words {
    int error;
    const char* words;
};

constexpr Words known[] = {
    {ENOSPC, "no space left on the device"},
    {EDQUOT, "no space left for you on the device"},
    {EACCES, "permission denied"},
    {EPERM, "permission denied"},
    {EROFS, "the disk can only be read"},
    {ENAMETOOLONG, "the name is too long"},
    {EEXIST, "the name is taken"},
    {ENOENT, "there is no such file or directory"},
    {ENOTDIR, "there is no such directory"},
    {EISDIR, "it is a directory"},
    {EIO, "the disk can't be read or written"},
    {EFBIG, "it is too large"},
    {EINVAL, "the disk takes no such name"},
    {EILSEQ, "the disk takes no such name"},
    {EXDEV, "it is on another disk"},
    {ELOOP, "it is a link without an end"},
};

} // namespace

std::string failureWords(int error) {
    for (const Words& one : known)
        if (one.error == error)
            return one.words;
    // Any other error is told in the system's words, which begin with a capital.
    std::string words = std::strerror(error);
    words.front() = smallAscii(words.front());
    return words;
}

FileChange failedBecause(int error) {
    return {failureWords(error)};
}

} // namespace larkspin
