#include "playback/song_files.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "library/removing.h"
#include "playback/choices.h"
#include "playback/play_counters.h"
#include "playback/random_pick.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/files.h"
#include "shell/settings.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr const char* stillThere = "the disk wont let go of it, the file is still there";

std::string stillCalled(const Song& song) {
    return "the disk wont have that name, the file is still called " + song.title();
}

// A control character would break the row, and the files that it is kept in.
bool isControl(char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    return byte < 0x20 || byte == 0x7F;
}

// Without the extension, which stays.
bool isNewName(const std::string& name, const Song& song) {
    return !name.empty() && !name.starts_with(' ') &&
           name.find_first_of("/\\:<>|") == std::string::npos &&
           std::none_of(name.begin(), name.end(), isControl) && name != song.name;
}

Song renamedTo(const std::string& name, const Song& song) {
    return {name, song.extension, song.directory};
}

} // namespace

void SongFiles::deleteInPlay() {
    const auto song = songInPlay();
    if (!song) {
        reply_.sayOrBox("what the fuck are you gonna delete, stupid?");
        return;
    }
    const Listed listed = rowInPlay();
    const bool nothingFollows = letGo();
    const bool isGone = discard(*song);
    takeOutInPlay(*song, listed, nothingFollows);
    showFileCountEntry(state_);
    state_.playedMemory.clear();
    if (nothingFollows) {
        returnToResumeRow();
        settings_.put("play", "");
    }
    reply_.sayOrBox("deleted:  <b>" + song->name + "</b> " + extensionTag(song->extension),
                    "deleted " + song->title());
    if (!isGone)
        reply_.sayOrBox(stillThere);
}

void SongFiles::renameInPlay(const std::string& newName) {
    const auto song = songInPlay();
    if (!song) {
        reply_.sayOrBox("what the fuck are you gonna rename, stupid?");
        return;
    }
    if (!isNewName(newName, *song)) {
        reply_.saychat("that wont work dumbass");
        return;
    }
    const Song renamed = renamedTo(newName, *song);
    const Listed listed = rowInPlay();
    const bool nothingFollows = letGo();
    const bool isRenamed = giveName(*song, renamed);
    takeOutInPlay(*song, listed, nothingFollows);
    add(renamed);
    if (nothingFollows)
        becomeInPlay(renamed);
    if (state_.silnt) // the box has always told that extension
        dialogs_.box("renamed " + song->title() + " to " + newName + ".mp3");
    else
        reply_.saychat("rename current song to:  <b>" + newName + extensionTag(song->extension));
    if (!isRenamed)
        reply_.sayOrBox(stillCalled(*song));
}

void SongFiles::deleteShown() {
    const auto listed = rowShown();
    if (!listed)
        return;
    const Song song = songOfRow(listed->row.text());
    if (!dialogs_.ask("do you really wanna delete " + song.name + "?"))
        return;
    const bool wasInPlay = isInPlay(song);
    const bool nothingFollows = wasInPlay && letGo();
    const bool isGone = discard(song);
    takeOut(*listed);
    showFileCountEntry(state_);
    state_.playedMemory.clear();
    if (state_.masterList.empty() && !wasInPlay)
        state_.Timer1.disable();
    if (nothingFollows || (!wasInPlay && state_.masterIndex() > transport_.resumeRow()))
        returnToResumeRow();
    if (!isGone)
        dialogs_.box(stillThere);
}

void SongFiles::renameShown() {
    const auto listed = rowShown();
    if (!listed)
        return;
    const Song song = songOfRow(listed->row.text());
    const auto newName =
        dialogs_.askText({.title = "file renamer",
                          .prompt = "what would you like to rename " + song.name + " as?(" +
                                    song.extension + " is already provided)",
                          .preset = song.name});
    if (!newName || !isNewName(*newName, song))
        return;
    const Song renamed = renamedTo(*newName, song);
    const bool nothingFollows = isInPlay(song) && letGo();
    const bool isRenamed = giveName(song, renamed);
    if (takeOut(*listed))
        add(renamed);
    state_.playedMemory.clear();
    if (nothingFollows)
        becomeInPlay(renamed);
    if (!isRenamed)
        dialogs_.box(stillCalled(song));
}

// While a random pick is at work, and behind one whose file was gone, the setting holds its flag.
std::optional<Song> SongFiles::songInPlay() {
    Song song = transport_.lastSong();
    if (state_.choiceList.empty() || song.title().empty() || isPickFlag(song.title()))
        return std::nullopt;
    return song;
}

// By its name alone: a file of that name in another directory counts as the song in play.
bool SongFiles::isInPlay(const Song& song) {
    return !song.title().empty() && song.title() == settings_.yochoose(Choice::play);
}

// The player lets go of the song. A command that comes in meanwhile finds none to work on, so that
// none is deleted or renamed twice. False when that command has started another song, which is then
// left alone.
bool SongFiles::letGo() {
    state_.Timer1.disable();
    choices_.closeselection();
    choices_.clear();
    return transport_.releasesong();
}

SongFiles::Listed SongFiles::rowInPlay() {
    const int index = transport_.resumeRow();
    return {index, state_.masterList.share(index)};
}

std::optional<SongFiles::Listed> SongFiles::rowShown() {
    const int index = state_.playlistView.currentIndex();
    if (state_.playlistView.row(index).empty())
        return std::nullopt;
    state_.setMasterIndex(index);
    return Listed{index, state_.playlistView.share(index)};
}

int SongFiles::find(const Listed& listed) {
    return findRow(state_.masterList, listed.row, listed.index);
}

bool SongFiles::takeOut(const Listed& listed) {
    const int index = find(listed);
    removeFromPlaylist(state_, index);
    return index >= 0;
}

// Before any row has been started it is known by its text alone. Otherwise no row is current behind
// it, unless that is a song's that has been started meanwhile.
void SongFiles::takeOutInPlay(const Song& song, const Listed& listed, bool nothingFollows) {
    if (listed.index < 0) {
        removematching(state_.masterList, state_.playlistView,
                       makerow(song.name, song.extension, song.directory));
        return;
    }
    if (const int index = find(listed); nothingFollows && index >= 0)
        state_.setMasterIndex(index);
    takeOut(listed);
}

// Each renaming puts one more backslash behind the directory.
void SongFiles::add(const Song& song) {
    const std::string directory =
        isDriveRoot(song.directory) ? song.directory : song.directory + '\\';
    addToPlaylist(state_, Row(makerow(song.name, song.extension, directory)));
}

// The file with its count. False when it is still there.
bool SongFiles::discard(const Song& song) {
    const bool isGone = files_.moveToWastebasket(song.path()) || !files_.exists(song.path());
    counters_.drop(song.title());
    return isGone;
}

// The same; false when it still has its old name.
bool SongFiles::giveName(const Song& song, const Song& renamed) {
    const bool isRenamed =
        files_.rename(song.path(), renamed.title()) || !files_.exists(song.path());
    counters_.carry(song.title(), renamed.title());
    return isRenamed;
}

// After a removal it is the row behind the removed one. A list that doesn't reach it keeps the
// current row that it has.
void SongFiles::returnToResumeRow() {
    state_.setMasterIndex(transport_.resumeRow());
}

// Without being started. A choice that has been opened meanwhile stays.
void SongFiles::becomeInPlay(const Song& song) {
    settings_.put("play", song.title());
    choices_.offer(song.title());
}

} // namespace larkspin
