#include "library/playlist_line.h"

#include "library/playlist_row.h"
#include "text/blanks.h"
#include "text/fold.h"

#include <algorithm>

namespace larkspin {

namespace {

// A row has this gap between its name and its extension, and hardly any other line has one.
bool isRow(std::string_view line) {
    static const std::string gap = makerow("", "", "").substr(0, 80);
    return line.find(gap) != std::string_view::npos;
}

bool isDrivePath(std::string_view line) {
    return line.size() > 3 && line.substr(1, 2) == ":\\";
}

std::string rowOfPath(const std::string& path) {
    const Song song = songOfPath(path);
    return makerow(song.name, song.extension, song.directory);
}

// A path from the playlist's own directory on. Other systems write backslashes in it.
std::string pathFrom(std::string_view directory, std::string path,
                     const std::function<std::string(std::string_view)>& readPath) {
    if (path.find('/') == std::string::npos)
        std::replace(path.begin(), path.end(), '\\', '/');
    for (; path.starts_with("../"); path.erase(0, 3))
        directory = directory.substr(0, std::min(directory.rfind('\\'), directory.size()));
    return std::string(directory) + readPath('/' + path).substr(2);
}

} // namespace

std::string rowOfPlaylistLine(std::string_view line, std::string_view file,
                              const std::function<std::string(std::string_view)>& readPath) {
    if (isRow(line))
        return std::string(line);
    if (line.starts_with('#'))
        return {};
    const std::string_view path = withoutBlanks(line);
    if (isDrivePath(path))
        return rowOfPath(std::string(path));
    if (!readPath)
        return std::string(line);
    if (path.starts_with('/') || path.starts_with("~/"))
        return rowOfPath(readPath(path));
    // Only in M3U files a path may begin at the file's own directory.
    const std::string kind = foldCase(file.substr(std::min(file.rfind('.'), file.size())));
    if (kind != ".m3u" && kind != ".m3u8")
        return std::string(line);
    return rowOfPath(pathFrom(file.substr(0, file.rfind('\\')), std::string(path), readPath));
}

} // namespace larkspin
