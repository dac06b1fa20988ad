#include "platform/posix/far_disks.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace larkspin {

namespace {

constexpr std::string_view farKinds[] = {"nfs",  "cifs", "smb",    "fuse",      "9p",
                                         "ceph", "afs",  "autofs", "glusterfs", "davfs"};

bool isFar(std::string_view kind) {
    return std::ranges::any_of(farKinds,
                               [&](std::string_view far) { return kind.starts_with(far); });
}

// The system writes blanks and the like as a backslash with three octal digits.
std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto digits = text.substr(at + 1, 3);
        if (text[at] != '\\' || digits.size() != 3 ||
            digits.find_first_not_of("01234567") != std::string_view::npos) {
            plain += text[at];
            continue;
        }
        plain +=
            static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + digits[2] - '0');
        at += 3;
    }
    return plain;
}

} // namespace

std::string farDiskIn(std::string_view mounts, const std::string& path) {
    std::istringstream lines{std::string(mounts)};
    std::string line, longest, kindOfLongest;
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string field, point, kind;
        // The fifth field is where the disk is mounted; after a lone hyphen comes the kind.
        for (int number = 0; number < 5 && fields >> point; ++number)
            continue;
        while (fields >> field && field != "-")
            continue;
        fields >> kind;
        point = unescaped(point);
        const bool isAbove = point == "/" || path == point || path.starts_with(point + '/');
        if (isAbove && point.size() >= longest.size()) { // a later mount lies over an earlier one
            longest = point;
            kindOfLongest = kind;
        }
    }
    return isFar(kindOfLongest) ? longest : "";
}

std::string farDiskOf(const std::string& path) {
    std::ifstream file("/proc/self/mountinfo", std::ios::binary);
    return farDiskIn(std::string(std::istreambuf_iterator<char>(file), {}), path);
}

} // namespace larkspin
