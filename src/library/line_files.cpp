#include "library/line_files.h"

#include "library/playlist.h"
#include "shell/app_state.h"
#include "shell/files.h"

#include <functional>
#include <string_view>

namespace larkspin {

namespace {

constexpr std::string_view lineEnd = "\r\n";

int forEachLine(std::string_view contents, const std::function<void(std::string_view)>& take) {
    int count = 0;
    while (!contents.empty()) {
        const auto end = contents.find('\n');
        std::string_view line = contents.substr(0, end);
        contents.remove_prefix(end == std::string_view::npos ? contents.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        take(line);
        ++count;
    }
    return count;
}

} // namespace

int loadlines(Files& files, const std::string& path, RowList& list) {
    const auto contents = files.read(path);
    if (!contents)
        return 0;
    RowWriter rows;
    return forEachLine(*contents, [&](std::string_view line) { list.add(rows.write(line)); });
}

void savelines(Files& files, const std::string& path, const RowList& list) {
    std::string contents;
    for (int index = 0; index < list.count(); ++index)
        contents.append(list.row(index)).append(lineEnd);
    files.replace(path, contents);
}

void loadPlaylist(Files& files, const std::string& path, AppState& state) {
    clearPlaylist(state);
    loadlines(files, path, state.masterList);
    for (int index = 0; index < state.masterList.count(); ++index)
        state.playlistView.add(state.masterList.share(index));
}

} // namespace larkspin
