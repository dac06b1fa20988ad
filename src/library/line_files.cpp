#include "library/line_files.h"

#include "library/playlist.h"
#include "shell/app_state.h"
#include "shell/files.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace larkspin {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view rescuedEnding = ".rescued";

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

std::string asOneLine(std::string text) {
    const auto isLineBreak = [](char byte) { return byte == '\r' || byte == '\n'; };
    std::replace_if(text.begin(), text.end(), isLineBreak, ' ');
    return text;
}

int LineFiles::loadlines(const std::string& path, RowList& list) {
    const std::string contents = load(path);
    RowWriter rows;
    return forEachLine(contents, [&](std::string_view line) { list.add(rows.write(line)); });
}

void LineFiles::savelines(const std::string& path, const RowList& list) {
    std::string rows;
    for (int index = 0; index < list.count(); ++index)
        rows.append(list.row(index)).append(lineEnd);
    if (!unread_.contains(path))
        files_.replace(path, rows);
    else if (!rows.empty())
        saveBehind(path, rows);
}

void LineFiles::loadTogether(const Half& first, const Half& second) {
    loadlines(first.path, first.list);
    loadlines(second.path, second.list);
    if (!unread_.contains(first.path) && !unread_.contains(second.path))
        return;
    for (const Half& half : {first, second}) {
        half.list.clear();
        unread_[half.path] = std::nullopt;
    }
}

void LineFiles::loadPlaylist(const std::string& path, AppState& state) {
    clearPlaylist(state);
    loadlines(path, state.masterList);
    for (int index = 0; index < state.masterList.count(); ++index)
        state.playlistView.add(state.masterList.share(index));
}

std::string LineFiles::load(const std::string& path) {
    FileRead file = files_.read(path);
    if (file.failed())
        unread_[path] = std::nullopt;
    else
        unread_.erase(path);
    return std::move(file.contents);
}

void LineFiles::saveBehind(const std::string& path, const std::string& rows) {
    for (const std::string& target : {path, path + std::string(rescuedEnding)}) {
        std::optional<std::string>& lines = unread_[target];
        if (!lines) {
            FileRead file = files_.read(target);
            if (file.failed())
                continue;
            lines = std::move(file.contents);
            if (!lines->empty() && lines->back() != '\n')
                *lines += lineEnd;
        }
        files_.replace(target, *lines + rows);
        return;
    }
}

} // namespace larkspin
