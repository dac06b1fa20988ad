#include "library/playlist_row.h"

#include "text/utf8.h"
#include "text/wildcard.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::size_t blankCount = 78;
constexpr std::size_t extensionLength = 4;
const std::string gap = std::string(blankCount, ' ') + "{ ";

// What stands between the name and the "|": the gap, the extension and one blank.
constexpr std::size_t betweenNameAndBar = blankCount + 2 + extensionLength + 1;

} // namespace

std::string makerow(std::string_view name, std::string_view extension, std::string_view directory) {
    std::string row;
    row.reserve(name.size() + gap.size() + extension.size() + 3 + directory.size());
    row.append(name).append(gap).append(extension).append(" | ").append(directory);
    return row;
}

std::string rowOfFile(std::string_view fileName, std::string_view directory) {
    return makerow(withoutLast(fileName, extensionLength),
                   lastCharacters(fileName, extensionLength), directory);
}

std::size_t longestName(std::size_t bar) {
    return bar - std::min(bar, betweenNameAndBar);
}

std::string_view rowname(std::string_view row) {
    const auto bar = row.find('|');
    if (bar == std::string_view::npos)
        return {};
    const std::string_view head = row.substr(0, bar);
    // Nearly always everything between the name and the bar is ASCII, where bytes can be counted
    // instead of characters.
    const auto gapStart = longestName(bar);
    if (head.substr(gapStart, gap.size()) == gap)
        return head.substr(0, gapStart);
    return withoutLast(head, betweenNameAndBar);
}

namespace {

// The gap and the extension, up to the "|".
std::string_view afterName(std::string_view row) {
    const auto bar = row.find('|');
    return bar == std::string_view::npos ? std::string_view()
                                         : row.substr(0, bar).substr(rowname(row).size());
}

} // namespace

// A line that wasn't built by the template has its extension after the first brace.
std::string_view rowext(std::string_view row) {
    if (const std::string_view tail = afterName(row); tail.starts_with(gap))
        return withoutLast(tail.substr(gap.size()), 1);
    const auto brace = row.find('{');
    if (brace == std::string_view::npos || brace + 2 > row.size())
        return {};
    const std::string_view rest = row.substr(brace + 2);
    const auto bar = rest.find('|');
    return bar == std::string_view::npos || bar == 0 ? std::string_view() : rest.substr(0, bar - 1);
}

std::string_view rowdir(std::string_view row) {
    const auto bar = row.find('|');
    return bar == std::string_view::npos || bar + 2 > row.size() ? std::string_view()
                                                                 : row.substr(bar + 2);
}

std::string rowpath(std::string_view row) {
    return songOfRow(row).path();
}

std::string joinPath(std::string_view directory, std::string_view fileName) {
    std::string path(directory);
    if (!isDriveRoot(directory))
        path += '\\';
    return path.append(fileName);
}

bool isDriveRoot(std::string_view directory) {
    return fits(directory, "*:\\");
}

std::string_view plainDirectory(std::string_view directory) {
    const std::size_t end = directory.find_last_not_of('\\') + 1;
    const bool isRoot = end > 0 && directory[end - 1] == ':';
    return directory.substr(0, isRoot ? end + 1 : end);
}

bool isSameFile(const Song& a, const Song& b) {
    return a.title() == b.title() && plainDirectory(a.directory) == plainDirectory(b.directory);
}

bool isWellFormed(std::string_view row) {
    const auto bar = row.find('|');
    const std::string_view tail = afterName(row);
    return bar != std::string_view::npos && tail.size() > gap.size() && tail.starts_with(gap) &&
           tail.ends_with(' ') && row.substr(bar + 1).starts_with(' ');
}

Song songOfRow(std::string_view row) {
    return {std::string(rowname(row)), std::string(rowext(row)), std::string(rowdir(row))};
}

Song songOfPath(std::string_view path) {
    const auto slash = path.rfind('\\');
    if (slash == std::string_view::npos)
        return songOfFile(path, "");
    // The root of a drive keeps its backslash.
    const std::string_view directory = path.substr(0, slash), root = path.substr(0, slash + 1);
    return songOfFile(path.substr(slash + 1), isDriveRoot(root) ? root : directory);
}

Song songOfFile(std::string_view fileName, std::string_view directory) {
    return {std::string(withoutLast(fileName, extensionLength)),
            std::string(lastCharacters(fileName, extensionLength)), std::string(directory)};
}

} // namespace larkspin
