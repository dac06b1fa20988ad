#include "library/line_files.h"

#include "library/playlist.h"
#include "library/playlist_line.h"
#include "shell/app_state.h"
#include "shell/data_directory.h"
#include "shell/files.h"
#include "shell/this_run.h"
#include "text/line_breaks.h"
#include "text/parts.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

// Carriage returns end lines as well, as many as stand together. Those at the end of the text
// belong to the line feed after it.
void takeLines(std::string_view text, const std::function<void(std::string_view)>& take) {
    text = text.substr(0, text.find_last_not_of('\r') + 1);
    for (auto end = text.find('\r'); end != std::string_view::npos; end = text.find('\r')) {
        take(text.substr(0, end));
        text.remove_prefix(text.find_first_not_of('\r', end));
    }
    take(text);
}

// Adds the rows that the lines stand for. Returns, as lines, those for which there was no room.
std::string addLines(std::string_view text, Loaded& loaded,
                     const std::function<std::string(std::string_view)>& rowOf,
                     const std::function<bool(std::string_view)>& add) {
    std::string leftOut;
    forEachLine(text, [&](std::string_view line) {
        if (isBlank(line))
            return;
        const std::string row = rowOf(line);
        if (row.empty() || add(row))
            return;
        ++loaded.leftOut;
        leftOut.append(row).append(lineEnd);
    });
    return leftOut;
}

std::size_t hashOf(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

std::vector<std::size_t> linesIn(std::string_view text) {
    std::vector<std::size_t> lines;
    forEachLine(text, [&](std::string_view line) { lines.push_back(hashOf(line)); });
    return lines;
}

// The hash of a text from the hashes of its lines, so that its bytes aren't read twice.
std::size_t hashOf(const std::vector<std::size_t>& lines) {
    return hashOf(std::string_view(reinterpret_cast<const char*>(lines.data()),
                                   lines.size() * sizeof lines.front()));
}

// Whether the text holds the rows of the list, then `more`, and nothing else. The list's own text
// isn't made for that.
bool isText(std::string_view text, const RowList& list, std::string_view more) {
    for (int index = 0; index < list.count(); ++index) {
        const std::string_view row = list.row(index);
        if (!text.starts_with(row) || !text.substr(row.size()).starts_with(lineEnd))
            return false;
        text.remove_prefix(row.size() + lineEnd.size());
    }
    return text == more;
}

} // namespace

void forEachLine(std::string_view text, const std::function<void(std::string_view)>& take) {
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    while (!text.empty())
        takeLines(takePart(text, '\n'), take);
}

std::string linesOf(const RowList& list) {
    std::size_t size = 0;
    for (int index = 0; index < list.count(); ++index)
        size += list.row(index).size() + lineEnd.size();
    std::string lines;
    lines.reserve(size);
    for (int index = 0; index < list.count(); ++index)
        lines.append(list.row(index)).append(lineEnd);
    return lines;
}

Loaded LineFiles::loadlines(const std::string& path, RowList& list) {
    const FileRead file = load(path);
    Loaded loaded{file.reason};
    RowWriter rows;
    kept_[path].leftOut = addLines(
        file.contents, loaded, [](std::string_view line) { return std::string(line); },
        [&](std::string_view row) { return list.add(rows.write(row)); });
    rememberLoaded(kept_[path], file.contents, list);
    return loaded;
}

Loaded LineFiles::loadPlaylist(const std::string& path, AppState& state, Into into) {
    const ThisRun run(state);
    const FileRead file = load(path);
    // Events were served while the file was read.
    if (!run.lasts())
        return {"it belongs to an older run"};
    Loaded loaded{file.reason};
    if (file.failed() && into != Into::listsOfNewRun)
        return loaded;
    const bool isAddition = into == Into::listsAsTheyAre;
    if (!isAddition)
        clearPlaylist(state);
    RowWriter rows;
    const auto add = [&](std::string_view text) {
        const Row row = rows.write(text);
        return (isAddition && holdsRow(state.masterList, row)) || addToPlaylist(state, row);
    };
    kept_[path].leftOut = addLines(
        file.contents, loaded,
        [&](std::string_view line) { return rowOfPlaylistLine(line, path, readPath_); }, add);
    rememberLoaded(kept_[path], file.contents, state.masterList);
    return loaded;
}

bool LineFiles::holdsPlaylist(const std::string& path, const RowList& list) {
    const FileRead file = files_.read(path);
    if (file.failed())
        return false;
    if (isText(file.contents, list, leftOut(path)))
        return true;
    // A file that is written in another way may still hold the same rows, so they are compared one
    // by one.
    RowList other(RowList::Order::sorted);
    Loaded loaded;
    addLines(
        file.contents, loaded,
        [&](std::string_view line) { return rowOfPlaylistLine(line, path, readPath_); },
        [&](std::string_view row) { return other.add(row); });
    if (other.count() != list.count())
        return false;
    for (int index = 0; index < list.count(); ++index)
        if (other.row(index) != list.row(index))
            return false;
    return true;
}

FileChange LineFiles::savelines(const std::string& path, const RowList& list,
                                const std::string& more) {
    const auto [place, isNotLoaded] = kept_.try_emplace(path);
    Kept& kept = place->second;
    if (isNotLoaded) // its lines are replaced, and those that lie beside it go with them
        kept.hasBeside = true;
    const std::string lines = linesOf(list) + more;
    if (kept.isUnread)
        return saveAfter(path, lines);
    if (kept.seen && !kept.hasBeside)
        return saveWithOthers(path, kept, lines);
    FileChange outcome = replaceWithBeside(path, lines);
    if (outcome)
        remember(kept, lines, lines);
    return outcome;
}

void LineFiles::remember(Kept& kept, std::string_view file, std::string_view own) {
    kept.seenLines = linesIn(file);
    kept.seen = hashOf(kept.seenLines);
    kept.own = file == own ? *kept.seen : hashOf(linesIn(own));
}

void LineFiles::rememberLoaded(Kept& kept, std::string_view file, const RowList& list) {
    if (isText(file, list, kept.leftOut))
        remember(kept, file, file);
    else
        remember(kept, file, linesOf(list) + kept.leftOut);
}

FileChange LineFiles::saveWithOthers(const std::string& path, Kept& kept,
                                     const std::string& lines) {
    const FileRead now = files_.read(path);
    std::string others = kept.others; // kept only if the save succeeds
    if (now.outcome == FileRead::Outcome::contents && hashOf(linesIn(now.contents)) != kept.seen) {
        // Somebody else has changed the file. If he alone has, it stays as it is. Otherwise the
        // lines that neither the file had before nor the list has now are his, and stay.
        std::vector<std::size_t> own = linesIn(lines);
        if (hashOf(own) == kept.own)
            return {};
        std::ranges::sort(own);
        std::ranges::sort(kept.seenLines);
        forEachLine(now.contents, [&](std::string_view line) {
            const std::size_t hash = hashOf(line);
            if (!isBlank(line) && !std::ranges::binary_search(kept.seenLines, hash) &&
                !std::ranges::binary_search(own, hash))
                others.append(line).append(lineEnd);
        });
    }
    const std::string all = lines + others;
    FileChange outcome = files_.replace(path, all);
    if (outcome) {
        kept.others = std::move(others);
        remember(kept, all, lines);
    }
    return outcome;
}

FileChange LineFiles::replaceLines(const std::string& path, const RowList& list,
                                   const std::string& more) {
    return replaceWithBeside(path, linesOf(list) + more);
}

// Replaces the file, and removes the one beside it, whose lines are among these.
FileChange LineFiles::replaceWithBeside(const std::string& path, const std::string& lines) {
    FileChange outcome = files_.replace(path, lines);
    if (outcome && std::exchange(kept_[path].hasBeside, false))
        files_.remove(path + std::string(besideEnding));
    return outcome;
}

std::string LineFiles::leftOut(const std::string& path) const {
    const auto found = kept_.find(path);
    return found == kept_.end() ? "" : found->second.leftOut;
}

// Reads the file and the one beside it, which may be the only one that can be read.
FileRead LineFiles::load(const std::string& path) {
    FileRead file = files_.read(path);
    FileRead beside = files_.read(path + std::string(besideEnding));
    Kept& kept = kept_[path];
    kept.isUnread = file.failed();
    kept.hasBeside = beside.outcome == FileRead::Outcome::contents;
    kept.before.reset();
    kept.others.clear();
    if (!file.contents.empty() && !file.contents.ends_with('\n') && !beside.contents.empty())
        file.contents += lineEnd;
    file.contents += beside.contents;
    return file;
}

FileChange LineFiles::saveAfter(const std::string& path, const std::string& rows) {
    Kept& kept = kept_[path];
    // There is nothing to add to a file that couldn't be read.
    if (rows.empty() && !kept.hasBeside)
        return {};
    if (!kept.before) {
        FileRead file = files_.read(path);
        if (file.failed()) {
            FileChange outcome = files_.replace(path + std::string(besideEnding), rows);
            kept.hasBeside = kept.hasBeside || outcome;
            return outcome;
        }
        kept.before = std::move(file.contents);
        if (!kept.before->empty() && kept.before->back() != '\n')
            *kept.before += lineEnd;
    }
    return replaceWithBeside(path, *kept.before + rows);
}

} // namespace larkspin
