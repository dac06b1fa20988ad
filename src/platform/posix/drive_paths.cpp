#include "platform/posix/drive_paths.h"

#include "text/parts.h"
#include "text/stand_ins.h"

#include <vector>

namespace larkspin {

namespace {

bool isSeparator(char byte) {
    return byte == '\\' || byte == '/';
}

} // namespace

std::string nativePath(std::string_view drivePath) {
    if (drivePath.size() < 2 || (drivePath[0] != 'c' && drivePath[0] != 'C') || drivePath[1] != ':')
        return {};
    drivePath.remove_prefix(2);
    std::string path;
    while (!drivePath.empty()) {
        std::size_t length = 0;
        while (length < drivePath.size() && !isSeparator(drivePath[length]))
            ++length;
        if (length > 0) {
            path += '/';
            path += nameOnDisk(drivePath.substr(0, length));
        }
        drivePath.remove_prefix(length < drivePath.size() ? length + 1 : length);
    }
    return path.empty() ? "/" : path;
}

std::string drivePath(std::string_view nativePath) {
    std::vector<std::string_view> names;
    while (!nativePath.empty()) {
        const std::string_view name = takePart(nativePath, '/');
        if (name == ".." && !names.empty())
            names.pop_back();
        else if (!name.empty() && name != "." && name != "..")
            names.push_back(name);
    }
    std::string path = names.empty() ? "c:\\" : "c:";
    for (const auto name : names)
        path.append("\\").append(nameFromDisk(name));
    return path;
}

} // namespace larkspin
