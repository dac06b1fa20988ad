#include "library/playlist_files.h"

#include "library/line_files.h"
#include "library/playlist.h"
#include "shell/app_state.h"
#include "shell/files.h"
#include "text/fold.h"

#include <algorithm>
#include <iterator>

namespace larkspin {

namespace {

constexpr std::string_view ending = ".lkl";
constexpr std::string_view pattern = "*.lkl";
constexpr std::string_view titleHead = " playlist:  ";

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

// Whether a directory can hold a file of that name. An ending alone is no name.
bool isFileName(std::string_view name) {
    if (name.ends_with(ending))
        name.remove_suffix(ending.size());
    return name.find_first_not_of('.') != std::string_view::npos &&
           name.find_first_of("\\/:") == std::string_view::npos &&
           std::none_of(name.begin(), name.end(), isControl);
}

// The mark of a private character that is meant as such makes no other name of one without.
std::string withoutMarks(std::string name) {
    constexpr std::string_view mark = "\uF000";
    for (auto at = name.find(mark); at != std::string::npos; at = name.find(mark, at))
        name.erase(at, mark.size());
    return name;
}

bool isOtherFile(const DataDirectory& directory, const std::string& path) {
    const std::string others[] = {directory.settingsFile(),     directory.countsFile(),
                                  directory.notesFile(),        directory.appPathsFile(),
                                  directory.appTitlesFile(),    directory.file("larkspin.lock"),
                                  directory.file("history.txt")};
    return std::any_of(std::begin(others), std::end(others), [&](const std::string& other) {
        return equalFolded(withoutMarks(path), withoutMarks(other));
    });
}

} // namespace

std::vector<std::string> PlaylistFiles::names() {
    std::vector<std::string> found;
    const std::string before = File1_.pattern();
    File1_.setPattern(pattern);
    if (File1_.setPath(directory_.path()))
        for (int index = 0; index < File1_.count(); ++index)
            if (isFileName(File1_.name(index)))
                found.push_back(File1_.name(index));
    File1_.setPattern(before);
    return found;
}

bool PlaylistFiles::exists(const std::string& name) {
    return files_.exists(pathOf(name));
}

FileChange PlaylistFiles::remove(const std::string& name) {
    return files_.remove(pathOf(name));
}

void PlaylistFiles::loadFrom(const std::string& path, const std::string& name) {
    lineFiles_.loadPlaylist(path, state_);
    showfilecount(state_);
    showName(name);
    state_.playedMemory.clear();
    state_.setMasterIndex(state_.masterList.count() - 1); // the first row is the next one
}

bool PlaylistFiles::save(const std::string& name) {
    const bool isNew = !exists(name);
    lineFiles_.savelines(pathOf(name), state_.masterList);
    showName(name);
    if (isNew && std::find(state_.p.begin(), state_.p.end(), name) == state_.p.end()) {
        state_.p.push_back(name);
        showCount();
    }
    return isNew;
}

void PlaylistFiles::fillplaylistmenu() {
    state_.p = names();
    showCount();
}

void PlaylistFiles::showCount() {
    state_.numl = std::to_string(state_.p.size()) + " playlists";
}

void PlaylistFiles::showName(std::string_view name) {
    state_.playlistTitle = std::string(titleHead).append(name);
}

std::string PlaylistFiles::shownName() const {
    const std::string& title = state_.playlistTitle;
    return title.starts_with(titleHead) ? title.substr(titleHead.size()) : "";
}

void PlaylistFiles::loadOfLastRun(const StoredSettings& stored) {
    const std::string name = stored.get("playlist");
    if (name.empty()) {
        lineFiles_.loadPlaylist(directory_.unnamedPlaylist(), state_);
    } else {
        lineFiles_.loadPlaylist(pathOf(name), state_);
        showName(name);
    }
    showFileCountEntry(state_);
}

void PlaylistFiles::endRun(SettingsChanges& changes) {
    const std::string name = shownName();
    if (name.ends_with(ending))
        changes.emplace_back("playlist", name);
    // A list whose file couldn't be made, or has gone, would be kept nowhere.
    if (!name.ends_with(ending) || (!exists(name) && !state_.masterList.empty()))
        lineFiles_.savelines(directory_.unnamedPlaylist(), state_.masterList);
}

// Empty for what is no playlist file's name: no file has the empty path.
std::string PlaylistFiles::pathOf(const std::string& name) const {
    std::string path = directory_.file(name);
    return isFileName(name) && !isOtherFile(directory_, path) ? path : "";
}

} // namespace larkspin
