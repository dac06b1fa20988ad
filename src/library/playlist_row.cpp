#include "library/playlist_row.h"

#include "text/parts.h"
#include "text/utf8.h"
#include "text/wildcard.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::size_t blankCount = 78;
const std::string gap = std::string(blankCount, ' ') + "{ ";

// What stands between the name and the "|": the gap, the extension and one blank.
constexpr std::size_t leastBetween = blankCount + 2 + 1;
constexpr std::size_t usualBetween =
    leastBetween + 4; // in lines that weren't built by the template

} // namespace

std::string_view extensionOf(std::string_view fileName) {
    const auto dot = fileName.rfind('.');
    return dot == fileName.npos ? std::string_view() : fileName.substr(dot);
}

namespace {

std::string_view nameOf(std::string_view fileName) {
    return fileName.substr(0, fileName.rfind('.'));
}

} // namespace

std::string makerow(std::string_view name, std::string_view extension, std::string_view directory) {
    std::string row;
    row.reserve(name.size() + gap.size() + extension.size() + 3 + directory.size());
    row.append(name).append(gap).append(extension).append(" | ").append(directory);
    return row;
}

std::string rowOfFile(std::string_view fileName, std::string_view directory) {
    return makerow(nameOf(fileName), extensionOf(fileName), directory);
}

std::size_t longestName(std::size_t bar) {
    return bar - std::min(bar, leastBetween);
}

std::string_view rowname(std::string_view row) {
    const auto [head, directory, isRow] = partedAt(row, '|');
    if (!isRow)
        return {};
    const auto gapStart = head.rfind(gap);
    return gapStart == head.npos ? withoutLast(head, usualBetween) : head.substr(0, gapStart);
}

namespace {

// The gap and the extension, up to the "|".
std::string_view afterName(std::string_view row) {
    const auto [head, directory, isRow] = partedAt(row, '|');
    return isRow ? head.substr(rowname(row).size()) : std::string_view();
}

} // namespace

// A line that wasn't built by the template has its extension after the first brace.
std::string_view rowext(std::string_view row) {
    if (const std::string_view tail = afterName(row); tail.starts_with(gap))
        return withoutLast(tail.substr(gap.size()), 1);
    const auto brace = row.find('{');
    if (brace == std::string_view::npos || brace + 2 > row.size())
        return {};
    const auto [extension, directory, isRow] = partedAt(row.substr(brace + 2), '|');
    return isRow ? extension.substr(0, std::max<std::size_t>(extension.size(), 1) - 1)
                 : std::string_view();
}

std::string_view rowdir(std::string_view row) {
    const std::string_view directory = partedAt(row, '|').tail;
    return directory.substr(std::min<std::size_t>(directory.size(), 1));
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
    const std::string_view tail = afterName(row);
    return tail.size() > gap.size() && tail.starts_with(gap) && tail.ends_with(' ') &&
           partedAt(row, '|').tail.starts_with(' ');
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
    return {std::string(nameOf(fileName)), std::string(extensionOf(fileName)),
            std::string(directory)};
}

} // namespace larkspin
