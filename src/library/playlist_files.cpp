#include "library/playlist_files.h"

#include "library/playlist.h"
#include "shell/app_state.h"
#include "shell/kept_files.h"
#include "shell/this_run.h"
#include "text/characters.h"

#include <algorithm>

namespace larkspin {

namespace {

using Into = LineFiles::Into;

constexpr std::string_view ending = ".lkl";
constexpr std::string_view pattern = "*.lkl";
constexpr std::string_view titleHead = " playlist:  ";

// What the settings tell about the list with which a run has ended: the name of its file; the same
// name once more if the list isn't what that file holds, and is in temp.lst; and once more if the
// file couldn't be read, and temp.lst holds only what has been added to it.
constexpr const char* nameKey = "playlist";
constexpr const char* changedKey = "changed playlist";
constexpr const char* addedKey = "added to playlist";

// Whether a directory can hold a file of that name. An ending alone is no name.
bool isFileName(std::string_view name) {
    if (name.ends_with(ending))
        name.remove_suffix(ending.size());
    return name.find_first_not_of('.') != std::string_view::npos &&
           name.find_first_of("\\/:") == std::string_view::npos && !hasControls(name);
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
    return files_.moveToWastebasket(pathOf(name));
}

Loaded PlaylistFiles::loadFrom(const std::string& path, const std::string& name) {
    const ThisRun run(state_);
    // A missing file would otherwise load as an empty list. One that is there but can't be read is
    // told by the load.
    if (!files_.exists(path) && !files_.read(path).failed())
        return {"there is no such file"};
    Loaded loaded =
        run.lasts() ? lineFiles_.loadPlaylist(path, state_) : Loaded{"it belongs to an older run"};
    if (loaded.failed())
        return loaded;
    file_ = loaded_ = path;
    whole_ = {path};
    lacksNamed_ = lacksUnnamed_ = isPart_ = isUnknown_ = false;
    showfilecount(state_);
    showName(name);
    state_.playedMemory.clear();
    state_.setMasterIndex(state_.masterList.count() - 1); // the first row is the next one
    return loaded;
}

PlaylistFiles::Saved PlaylistFiles::save(const std::string& name) {
    if (FileChange refused = mayBeSaved(name); !refused)
        return {refused};
    const bool isNew = !exists(name);
    const std::string path = pathOf(name);
    // Rows of that file for which the list had no room are saved after the list's own, so that none
    // is lost.
    const std::string more = leftOut(path);
    FileChange outcome = lineFiles_.replaceLines(path, state_.masterList, more);
    if (!outcome)
        return {outcome};
    file_ = path;
    if (!more.empty())
        whole_.insert(path);
    lacksNamed_ = isPart_ = isUnknown_ = false;
    showName(name);
    if (isNew && std::find(state_.p.begin(), state_.p.end(), name) == state_.p.end()) {
        state_.p.push_back(name);
        showCount();
    }
    return {{}, isNew};
}

// Tells why the list can't be saved under this name, if it can't. A file that can't be read isn't
// replaced, and a list that lacks the rows of its own file replaces none.
FileChange PlaylistFiles::mayBeSaved(const std::string& name) {
    const std::string path = pathOf(name);
    if (path.empty())
        return whyNot(name);
    if (isPart_) {
        // A file that couldn't be read at the start may be readable by now.
        FileChange joined = joinLackingRows();
        const bool isOwn = name == shownName();
        if (isOwn && lacksNamed_)
            return joined;
        if (isPart_ && (isOwn || state_.masterList.empty()))
            return {"the list that should be here couldn't be loaded"};
    }
    if (isUnknown_ && state_.masterList.empty())
        return {"the list that should be here couldn't be loaded"};
    return {files_.read(path).reason};
}

FileChange PlaylistFiles::joinLackingRows() {
    std::string reason;
    const auto join = [&](bool& lacks, const std::string& path) {
        if (!lacks)
            return;
        const Loaded joined = lineFiles_.loadPlaylist(path, state_, Into::listsAsTheyAre);
        lacks = joined.failed();
        if (lacks)
            reason = joined.reason;
    };
    join(lacksUnnamed_, directory_.unnamedPlaylist());
    join(lacksNamed_, file_);
    isPart_ = lacksNamed_ || lacksUnnamed_;
    showfilecount(state_);
    return {reason};
}

FileChange PlaylistFiles::whyNot(const std::string& name) {
    return {isFileName(name) ? "the program keeps something else there"
                             : "no file can have that name"};
}

// The lines of the loaded file for which the list had no room. A file that has them keeps them,
// even when the list has been saved under another name meanwhile. Another file gets them only if
// the list is still full, so that nothing has been taken out of it.
std::string PlaylistFiles::leftOut(const std::string& path) const {
    return whole_.contains(path) || state_.masterList.full() ? lineFiles_.leftOut(loaded_) : "";
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
    file_ = loaded_ = directory_.unnamedPlaylist();
    whole_ = {loaded_};
    isUnknown_ = !stored.wereRead();
    lacksNamed_ = lacksUnnamed_ = false;
    for (const char* key : {nameKey, changedKey, addedKey})
        if (!stored.get(key).empty())
            remembered_.insert(key);
    const std::string name = stored.get(nameKey);
    if (name.empty())
        loadUnnamed(Into::listsOfNewRun);
    else
        loadNamed(name, stored);
    isPart_ = lacksNamed_ || lacksUnnamed_;
    showfilecount(state_);
}

void PlaylistFiles::loadUnnamed(Into into) {
    const std::string unnamed = directory_.unnamedPlaylist();
    const Loaded loaded = lineFiles_.loadPlaylist(unnamed, state_, into);
    tellLoad("", loaded);
    lacksUnnamed_ = loaded.failed();
}

void PlaylistFiles::loadNamed(const std::string& name, const StoredSettings& stored) {
    showName(name);
    file_ = pathOf(name);
    // The last run ended with a list that this file doesn't hold.
    if (stored.get(changedKey) == name && files_.exists(directory_.unnamedPlaylist())) {
        whole_.insert(file_);
        return loadUnnamed(Into::listsOfNewRun);
    }
    whole_ = {file_};
    loaded_ = file_;
    const Loaded loaded = lineFiles_.loadPlaylist(loaded_, state_, Into::listsOfNewRun);
    tellLoad(name, loaded);
    lacksNamed_ = loaded.failed();
    if (stored.get(addedKey) == name)
        loadUnnamed(Into::listsAsTheyAre);
}

// The failure to read a file without a name is told by whoever reads it.
void PlaylistFiles::tellLoad(const std::string& name, const Loaded& loaded) {
    if (loaded.failed() && !name.empty())
        files_.tell("couldn't load playlist <b>" + name + "</b>:  " + loaded.reason);
    if (loaded.leftOut > 0)
        files_.tell("<b>" + std::to_string(loaded.leftOut) +
                    "</b> files of the playlist don't fit into the list");
}

// As long as temp.lst holds rows that couldn't be read, the list is saved there too, even if a file
// with a name has all of it.
void PlaylistFiles::endRun(SettingsChanges& changes) {
    const std::string name = shownName();
    const bool isNamed = name.ends_with(ending);
    // Whether its file holds the list already, so that it needn't be kept in temp.lst.
    const bool isKept = isNamed && !lacksUnnamed_ &&
                        (lacksNamed_ ? state_.masterList.empty()
                                     : lineFiles_.holdsPlaylist(pathOf(name), state_.masterList));
    if (!isKept && !saveUnnamed(isNamed))
        return; // the settings and files of the last run still hold
    const std::string named = isNamed ? name : "", differs = isKept ? "" : named;
    remember(changes, nameKey, named);
    remember(changes, changedKey, lacksNamed_ ? "" : differs);
    remember(changes, addedKey, lacksNamed_ ? differs : "");
}

void PlaylistFiles::remember(SettingsChanges& changes, const std::string& key,
                             const std::string& value) {
    if (value.empty() && !remembered_.contains(key))
        return;
    remembered_.insert(key);
    changes.emplace_back(key, value);
}

FileChange PlaylistFiles::saveUnnamed(bool isNamed) {
    const std::string unnamed = directory_.unnamedPlaylist();
    return lineFiles_.savelines(unnamed, state_.masterList, leftOut(isNamed ? file_ : unnamed));
}

// Empty for a text that can't be the name of a playlist file. No file has the empty path.
std::string PlaylistFiles::pathOf(const std::string& name) const {
    std::string path = directory_.file(name);
    return isFileName(name) && !directory_.isOwnFile(path) ? path : "";
}

} // namespace larkspin
