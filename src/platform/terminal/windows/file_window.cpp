#include "platform/terminal/windows/file_window.h"

#include "library/playlist_row.h"
#include "platform/terminal/windows/question_window.h"
#include "shell/controls.h"
#include "text/fold.h"
#include "text/stand_ins.h"
#include "text/wildcard.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

constexpr int spaceBetween = 30; // twips
constexpr int listLines = 9;
constexpr std::string_view wayUp = "..";

void sortByName(std::vector<std::string>& names) {
    std::erase_if(names, [](const std::string& name) { return name.starts_with('.'); });
    std::ranges::sort(names,
                      [](const std::string& a, const std::string& b) { return lessFolded(a, b); });
}

// The directory that holds this one; itself where there is none.
std::string parentOf(const std::string& directory) {
    const std::size_t bar = directory.rfind('\\');
    if (isDriveRoot(directory) || bar == std::string::npos)
        return directory;
    return directory.substr(0, bar <= 2 ? bar + 1 : bar);
}

std::string wordsOf(DirectoryRead::Outcome outcome) {
    switch (outcome) {
    case DirectoryRead::Outcome::missing:
        return "there is no such directory";
    case DirectoryRead::Outcome::noDirectory:
        return "that is no directory";
    case DirectoryRead::Outcome::refused:
        return "you may not look into it";
    case DirectoryRead::Outcome::unanswered:
        return "the disk doesn't answer";
    default:
        return "it can't be read";
    }
}

} // namespace

FileWindow::FileWindow(Directories& directories, Wants wants, FileQuestion question)
    : directories_(directories), wants_(wants), question_(std::move(question)),
      name_(asSeen(question_.preset)), isTyped_(!name_.empty()) {
    for (const FileType& type : question_.types)
        types_.add(type.description);
    types_.setCurrentIndex(0);
    const int width = (dialogColumns + 2) * twipsPerColumn;
    window.name = "files";
    window.controls = controls(width);
    const Place& last = window.controls.back().place;
    window.place = {0, 0, width, last.top + last.height};
    window.centred = window.visible = true;
}

std::vector<Control> FileWindow::controls(int width) {
    int top = stripHeight + spaceBetween;
    const auto row = [&top, width](int left = 0, int height = twipsPerRow) {
        const Place place{left, top, width - left, height};
        top += height + spaceBetween;
        return place;
    };
    constexpr int afterLabel = 8 * twipsPerColumn;
    const auto head = [](const char* name, const Place& beside) {
        return label({.name = name,
                      .place = {0, beside.top, afterLabel, twipsPerRow},
                      .text = caption(name)});
    };
    std::vector<Control> all = dialogStrip(window, width, question_.title, [this] { end({}); });
    all.push_back(textField({.name = "directory", .place = row(), .text = [this] {
                                 return state_.empty() ? listing_.path : state_;
                             }}));
    all.push_back(listBox({.name = "files",
                           .place = row(0, listLines * twipsPerLine),
                           .rows = &rows_,
                           .selectsMany = wants_ == Wants::files,
                           .onClick = [this] { takeRow(); },
                           .onDoubleClick = [this] { enterRow(); }}));
    const Place name = row(afterLabel);
    all.push_back(head("name", name));
    all.push_back(textField({.name = "typed",
                             .place = name,
                             .text = [this] { return name_; },
                             .onKey =
                                 [this](Key key) {
                                     if (key == Key::enter)
                                         accept();
                                 },
                             .onEdit =
                                 [this](const std::string& text) {
                                     name_ = text;
                                     isTyped_ = true;
                                 }}));
    if (!types_.empty() && wants_ != Wants::directory) {
        const Place type = row(afterLabel);
        all.push_back(head("type", type));
        all.push_back(combo(
            {.name = "types", .place = type, .rows = &types_, .onClick = [this] { show(); }}));
    }
    constexpr std::string_view words[] = {"open", "open", "save", "choose"};
    const std::string word(words[static_cast<std::size_t>(wants_)]);
    auto buttons =
        dialogButtons(width, top, {{word, [this] { accept(); }}, {"cancel", [this] { end({}); }}});
    std::move(buttons.begin(), buttons.end(), std::back_inserter(all));
    return all;
}

void FileWindow::open() {
    if (question_.directory.empty() || !tryToGoTo(question_.directory))
        goTo(directories_.drivePath("~/"));
}

void FileWindow::goTo(const std::string& directory) {
    if (!tryToGoTo(directory) && listing_.path.empty())
        tryToGoTo("c:\\");
}

// A directory that can't be read isn't gone to. One that answers after another was asked for is of
// no use any more.
bool FileWindow::tryToGoTo(const std::string& directory) {
    const int read = ++reads_;
    state_ = "reading " + directory;
    DirectoryRead found = directories_.list(directory);
    if (read != reads_ || isOver_)
        return true;
    if (!found.isListed()) {
        state_ = asSeen(directory) + ": " + wordsOf(found.outcome);
        return false;
    }
    state_.clear();
    listing_ = std::move(found.listing);
    std::ranges::move(listing_.links, std::back_inserter(listing_.directories));
    sortByName(listing_.directories);
    sortByName(listing_.files);
    if (!isTyped_)
        name_.clear();
    show();
    return true;
}

void FileWindow::show() {
    rows_.clear();
    if (!isDriveRoot(listing_.path))
        rows_.add(wayUp);
    for (const std::string& name : listing_.directories)
        rows_.add(name + '\\');
    directoryCount_ = rows_.count();
    const int type = types_.currentIndex();
    const std::string patterns =
        type < 0 ? "*" : foldName(question_.types[static_cast<std::size_t>(type)].patterns);
    for (const std::string& name : listing_.files) {
        const std::string folded = foldName(name);
        // "*.*" means files without a dot as well.
        const bool isShown =
            wants_ != Wants::directory && (patterns == "*.*" || fitsAnyFolded(folded, patterns));
        if (isShown && !rows_.add(name))
            return;
    }
    rows_.choose(0);
}

std::string FileWindow::pathOf(int row) const {
    std::string_view name = rows_.row(row);
    if (name == wayUp && isDirectory(row))
        return parentOf(listing_.path);
    if (isDirectory(row))
        name.remove_suffix(1);
    return joinPath(listing_.path, name);
}

std::vector<std::string> FileWindow::selected() const {
    std::vector<std::string> paths;
    for (int row = directoryCount_; row < rows_.count(); ++row)
        if (rows_.isSelected(row))
            paths.push_back(pathOf(row));
    return paths;
}

// The field reads what the list would answer.
void FileWindow::takeRow() {
    const int row = rows_.currentIndex();
    if (row < 0 || (wants_ == Wants::newFile && isDirectory(row)))
        return; // the name that is to be saved stays
    const int files = static_cast<int>(selected().size());
    name_ = isDirectory(row) && files == 0 ? ""
            : files > 1                    ? std::to_string(files) + " files"
                                           : asSeen(rows_.row(row));
    isTyped_ = false;
}

void FileWindow::enterRow() {
    const int row = rows_.currentIndex();
    if (row >= 0 && isDirectory(row))
        goTo(pathOf(row));
    else
        accept();
}

void FileWindow::accept() {
    if (isTyped_ && !name_.empty())
        return acceptTyped();
    const int row = rows_.currentIndex();
    if (wants_ == Wants::directory)
        return end({row > 0 && isDirectory(row) ? pathOf(row) : listing_.path});
    if (auto files = selected(); !files.empty())
        return end(wants_ == Wants::files ? std::move(files) : std::vector{files.front()});
    if (row >= 0 && isDirectory(row))
        goTo(pathOf(row));
}

// A directory is gone to, unless it is what is asked for.
void FileWindow::acceptTyped() {
    const std::string path = typedPath();
    if (wants_ == Wants::directory)
        return end({path});
    isTyped_ = false; // if it leads elsewhere
    const bool isFile =
        std::ranges::find(listing_.files, songOfPath(path).title()) != listing_.files.end() &&
        plainDirectory(songOfPath(path).directory) == listing_.path;
    if (isFile || !tryToGoTo(path))
        end({path});
}

// A bare name is one in the directory that is shown. What the owner leaves of the preset keeps its
// bytes.
std::string FileWindow::typedPath() const {
    const std::string typed = afterEditing(question_.preset, name_);
    const std::string path = directories_.drivePath(typed);
    if (path.size() >= 2 && path[1] == ':')
        return path;
    return joinPath(listing_.path, asStoredPath(path));
}

void FileWindow::end(std::vector<std::string> paths) {
    isOver_ = true;
    paths_ = std::move(paths);
}

} // namespace larkspin
