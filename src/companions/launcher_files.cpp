#include "companions/launcher_files.h"

#include "library/line_files.h"
#include "shell/kept_files.h"
#include "text/line_breaks.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

std::vector<std::string> linesIn(std::string_view text) {
    std::vector<std::string> lines;
    forEachLine(text, [&](std::string_view line) { lines.emplace_back(line); });
    return lines;
}

// The items of a text in which paths and titles take turns. A last path without a title gets an
// empty one.
LauncherItemList itemsInTurn(std::string_view text) {
    std::vector<std::string> lines = linesIn(text);
    lines.resize(lines.size() + lines.size() % 2);
    LauncherItemList items;
    for (std::size_t at = 0; at < lines.size(); at += 2)
        items.push_back({std::move(lines[at]), std::move(lines[at + 1])});
    return items;
}

std::string inTurn(const LauncherItemList& items) {
    std::string text;
    for (const LauncherItem& item : items)
        text.append(item.path).append(lineEnd).append(item.title).append(lineEnd);
    return text;
}

void append(LauncherItemList& items, const LauncherItemList& more) {
    items.insert(items.end(), more.begin(), more.end());
}

std::optional<std::string> contentsOf(const FileRead& file) {
    const bool isThere = file.outcome == FileRead::Outcome::contents;
    return isThere ? std::optional(file.contents) : std::nullopt;
}

} // namespace

LauncherItemList LauncherFiles::load() {
    before_.reset();
    const auto read = this->read();
    isUnread_ = !read;
    const FileRead beside = files_.read(beside_);
    hasBeside_ = beside.outcome == FileRead::Outcome::contents;
    LauncherItemList items = read.value_or(LauncherItemList());
    append(items, itemsInTurn(beside.contents));
    return items;
}

std::optional<LauncherItemList> LauncherFiles::read() {
    const FileRead ahead = files_.read(ahead_), paths = files_.read(paths_),
                   titles = files_.read(titles_);
    // As long as this file is there, the next save writes the two others anew and removes it, even
    // if no item has changed.
    hasAhead_ = ahead.outcome != FileRead::Outcome::missing;
    pathLines_ = contentsOf(paths);
    titleLines_ = contentsOf(titles);
    // The file ahead is only there when a save was broken off. It is whole, and newer than the
    // other two, of which perhaps one was written.
    if (ahead.outcome == FileRead::Outcome::contents)
        return itemsInTurn(ahead.contents);
    if (ahead.failed() || paths.failed() || titles.failed())
        return std::nullopt;
    std::vector<std::string> pathLines = linesIn(paths.contents),
                             titleLines = linesIn(titles.contents);
    pathLines.resize(std::max(pathLines.size(), titleLines.size()));
    titleLines.resize(pathLines.size());
    LauncherItemList items;
    for (std::size_t at = 0; at < pathLines.size(); ++at)
        items.push_back({std::move(pathLines[at]), std::move(titleLines[at])});
    return items;
}

void LauncherFiles::save(LauncherItemList items) {
    if (!isUnread_)
        return write(items);
    // The files couldn't be read at the start, so the items are only those of this run.
    if (items.empty() && !hasBeside_)
        return;
    if (!before_)
        before_ = read();
    // They still can't be read.
    if (!before_) {
        hasBeside_ = files_.replace(beside_, inTurn(items)) || hasBeside_;
        return;
    }
    items.insert(items.begin(), before_->begin(), before_->end());
    write(items);
}

void LauncherFiles::write(const LauncherItemList& items) {
    std::string paths, titles;
    for (const LauncherItem& item : items) {
        paths.append(item.path).append(lineEnd);
        titles.append(item.title).append(lineEnd);
    }
    // Files that hold these very items already aren't written again.
    const bool isThere = !hasAhead_ && pathLines_ == paths && titleLines_ == titles;
    if (!isThere && !saveBoth(paths, titles, inTurn(items)))
        return;
    pathLines_ = std::move(paths);
    titleLines_ = std::move(titles);
    if (std::exchange(hasBeside_, false))
        files_.remove(beside_);
}

bool LauncherFiles::saveBoth(const std::string& paths, const std::string& titles,
                             const std::string& itemsInTurn) {
    // In this order there is one whole copy on the disk at any moment: the file ahead goes only
    // when both others are written.
    if (!files_.replace(ahead_, itemsInTurn))
        return false;
    hasAhead_ = true;
    const bool areWritten = files_.replace(paths_, paths) && files_.replace(titles_, titles);
    if (areWritten)
        hasAhead_ = !files_.remove(ahead_);
    return areWritten;
}

} // namespace larkspin
