#include "platform/posix/file_addresses.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/percent_escapes.h"
#include "text/fold.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <climits>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr std::string_view fileScheme = "file:", beforeHost = "//";
// What may stand in an address as it is, beside letters and digits.
constexpr std::string_view ofAddresses = "/:?#[]@!$&'()*+,;=%";

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool isAddress(std::string_view text) {
    if (equalFolded(text.substr(0, fileScheme.size()), fileScheme))
        return true;
    const auto end = text.find("://");
    constexpr std::string_view others = "0123456789+-.";
    return end != text.npos && end > 0 && isLetter(text[0]) &&
           std::ranges::all_of(text.substr(0, end), [&](char byte) {
               return isLetter(byte) || others.find(byte) != others.npos;
           });
}

bool isDrivePath(std::string_view text) {
    return text.size() > 2 && isLetter(text[0]) && text[1] == ':' && text[2] == '\\';
}

bool isThisMachine(std::string_view host) {
    char name[HOST_NAME_MAX + 1] = {};
    ::gethostname(name, sizeof name - 1);
    return host.empty() || equalFolded(host, "localhost") || equalFolded(host, name);
}

} // namespace

std::string fileAddress(std::string_view path) {
    return "file://" + percentEscaped(path);
}

std::optional<std::string> pathOfAddress(std::string_view address) {
    if (!equalFolded(address.substr(0, fileScheme.size()), fileScheme))
        return std::nullopt;
    address.remove_prefix(fileScheme.size());
    if (address.starts_with(beforeHost)) {
        address.remove_prefix(beforeHost.size());
        const auto root = std::min(address.find('/'), address.size());
        if (!isThisMachine(address.substr(0, root)))
            return std::nullopt;
        address.remove_prefix(root);
    }
    const std::string path = percentUnescaped(address);
    const bool isOne = path.starts_with('/') && path.find('\0') == path.npos;
    return isOne ? std::optional(path) : std::nullopt;
}

std::string addressOfTyped(std::string_view typed, std::string_view workingDirectory) {
    if (isAddress(typed))
        return percentEscaped(typed, ofAddresses);
    if (isDrivePath(typed))
        if (const std::string path = nativePath(asStoredPath(typed)); !path.empty())
            return fileAddress(path);
    if (typed.starts_with('/'))
        return fileAddress(typed);
    if (typed.empty() || workingDirectory.empty()) // which has been removed
        return std::string(fileScheme) + percentEscaped(typed);
    return fileAddress(std::string(workingDirectory) + '/' + std::string(typed));
}

} // namespace larkspin
