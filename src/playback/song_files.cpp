#include "playback/song_files.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "playback/choices.h"
#include "playback/last_song.h"
#include "playback/play_counters.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "text/characters.h"
#include "text/stand_ins.h"
#include "text/utf8.h"

#include <algorithm>

namespace larkspin {

namespace {

std::string undone(const std::string& verb, const std::string& title, const FileChange& change) {
    return change.mayHappen ? change.reason + ", it may still " + verb + " " + title
                            : "couldn't " + verb + " " + title + ":  " + change.reason;
}

// Whether a new name may not have this character, unless the old one has it already.
bool isRefused(char letter) {
    return isControl(letter) || std::string_view("/\\:<>|").find(letter) != std::string_view::npos;
}

// Whether the song can be given this name, which is in stored form and without the extension, since
// that stays.
bool isNewName(const std::string& name, const Song& song) {
    for (std::string_view rest = name; !rest.empty();) {
        const Character character = firstCharacter(rest);
        const std::string_view bytes = rest.substr(0, character.length);
        const auto standIn = character.valid ? standsFor(character.code) : std::nullopt;
        if (isRefused(standIn.value_or(bytes.front())) &&
            song.name.find(bytes) == std::string::npos)
            return false;
        rest.remove_prefix(character.length);
    }
    return !name.empty() && !name.starts_with(' ') && name != song.name;
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
    const auto gone = deleteFile(*song);
    if (!gone)
        return;
    if (!gone->file) {
        if (gone->run.lasts())
            tellUndone("delete", *song, gone->file);
        return;
    }
    if (gone->nothingFollows)
        catchUpWith(*song);
    takeOut(*song);
    if (gone->nothingFollows) {
        returnToResumeRow();
        lastSong_.forget();
    }
    if (gone->run.lasts())
        reply_.sayOrBox("deleted:  <b>" + song->name + "</b> " + extensionTag(song->extension),
                        "deleted " + song->title());
}

void SongFiles::renameInPlay(const std::string& typed) {
    const std::string newName = asStored(typed);
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
    const auto moved = renameFile(*song, renamed);
    if (!moved)
        return;
    if (!moved->file) {
        if (moved->run.lasts())
            tellUndone("rename", *song, moved->file);
        return;
    }
    if (moved->nothingFollows)
        catchUpWith(*song);
    giveName(*song, renamed);
    if (!moved->run.lasts())
        return;
    if (state_.silnt) // the box has always told that extension
        dialogs_.box("renamed " + song->title() + " to " + newName + ".mp3");
    else
        reply_.saychat("rename current song to:  <b>" + newName + extensionTag(song->extension));
}

void SongFiles::deleteShown() {
    const auto song = songShown();
    if (!song || !dialogs_.ask("do you really wanna delete " + song->name + "?"))
        return;
    const auto gone = deleteFile(*song);
    if (!gone)
        return;
    if (!gone->file) {
        if (gone->run.lasts())
            dialogs_.box(undone("delete", song->title(), gone->file));
        return;
    }
    takeOut(*song);
    if (!gone->run.lasts())
        return;
    if (state_.masterList.empty() && !gone->wasInPlay)
        state_.Timer1.disable();
    if (gone->nothingFollows)
        returnToResumeRow();
    else if (!gone->wasInPlay) // the click on a later row hasn't moved the place in the list
        state_.setMasterIndex(std::min(state_.masterIndex(), transport_.resumeRow()));
}

void SongFiles::renameShown() {
    const auto song = songShown();
    if (!song)
        return;
    const auto typed =
        dialogs_.askText({.title = "file renamer",
                          .prompt = "what would you like to rename " + song->name + " as?(" +
                                    song->extension + " is already provided)",
                          .preset = song->name});
    const std::string newName = asStored(typed.value_or(""));
    if (!isNewName(newName, *song))
        return;
    const Song renamed = renamedTo(newName, *song);
    const auto moved = renameFile(*song, renamed);
    if (!moved)
        return;
    if (moved->file) {
        giveName(*song, renamed);
        state_.playedMemory.clear();
    } else if (moved->run.lasts()) {
        dialogs_.box(undone("rename", song->title(), moved->file));
    }
}

std::optional<SongFiles::Change> SongFiles::deleteFile(const Song& song) {
    return changeFile(song, [&] { return files_.moveToWastebasket(song.path()); });
}

std::optional<SongFiles::Change> SongFiles::renameFile(const Song& song, const Song& renamed) {
    auto moved = changeFile(song, [&] { return files_.rename(song.path(), renamed.title()); });
    if (moved && moved->file && moved->nothingFollows)
        becomeInPlay(renamed);
    return moved;
}

// The player takes its time to let go, and so may the disk: the run can end meanwhile, and another
// song can be started. Where the disk refuses, the song in play stays that.
std::optional<SongFiles::Change> SongFiles::changeFile(const Song& song,
                                                       const std::function<FileChange()>& ask) {
    const bool wasInPlay = isInPlay(song);
    const ThisRun run(state_);
    if (wasInPlay)
        letGo();
    if (!run.lasts())
        return std::nullopt;
    const FileChange file = ask();
    const bool nothingFollows = wasInPlay && run.lasts() && isNothingStarted();
    if (!file && nothingFollows)
        becomeInPlay(song);
    return Change{run, file, wasInPlay, nothingFollows};
}

// If there are no choices, as after a search that found nothing, no song counts as in play.
std::optional<Song> SongFiles::songInPlay() const {
    return state_.choiceList.empty() ? std::nullopt : lastSong_.inHand();
}

std::optional<Song> SongFiles::songShown() {
    const int index = state_.playlistView.currentIndex();
    const Song song = songOfRow(state_.playlistView.row(index));
    if (song.title().empty())
        return std::nullopt;
    state_.setMasterIndex(index);
    return song;
}

bool SongFiles::isInPlay(const Song& song) const {
    return state_.tempTitle.empty() && isSameFile(song, lastSong_.song());
}

// The player lets go of the song. A command that comes in meanwhile finds none to work on, so that
// none is deleted or renamed twice.
void SongFiles::letGo() {
    state_.Timer1.disable();
    choices_.closeselection();
    choices_.clear();
    transport_.releasesong();
}

// Whether nothing has been started while the player let go and the disk worked. A song that has
// been started meanwhile is left alone.
bool SongFiles::isNothingStarted() const {
    return state_.playMark == idleMark && state_.tempTitle.empty() && !lastSong_.inHand();
}

// Makes the song's row the current one and the one last started, before it is removed. Additions
// may have moved it, and the row of a choice isn't the one last started.
void SongFiles::catchUpWith(const Song& song) {
    for (const int index : {transport_.resumeRow(), state_.masterIndex()}) {
        if (!isSameFile(songOfRow(state_.masterList.row(index)), song))
            continue;
        state_.resumeIndex = std::to_string(index);
        state_.setMasterIndex(index);
        return;
    }
}

// Takes the song out of the lists and the counter file.
void SongFiles::takeOut(const Song& song) {
    counters_.drop(song.title());
    changeRows(song, nullptr);
    showfilecount(state_);
    state_.playedMemory.clear();
}

// Gives the song its new name in the lists and the counter file.
void SongFiles::giveName(const Song& song, const Song& renamed) {
    counters_.carry(song.title(), renamed.title());
    changeRows(song, &renamed);
    if (isSameFile(song, lastSong_.song())) // another song may have been started by now
        lastSong_.follow(renamed);
}

// Removes all rows of the file, however they spell its directory. When there is a new name, rows
// with that name come in their place; a list that has lost the song meanwhile gets none. The row
// last started stays the same row, wherever it stands then.
void SongFiles::changeRows(const Song& song, const Song* renamed) {
    const int resumeRow = transport_.resumeRow();
    const Row lastStarted = state_.masterList.share(resumeRow);
    int gone = 0;
    for (int index = state_.masterList.count() - 1; index >= 0; --index) {
        if (!isSameFile(songOfRow(state_.masterList.row(index)), song))
            continue;
        removeFromPlaylist(state_, index);
        ++gone;
    }
    for (; renamed && gone > 0; --gone)
        addToPlaylist(state_, Row(makerow(renamed->name, renamed->extension,
                                          plainDirectory(renamed->directory))));
    if (const int index = findRow(state_.masterList, lastStarted, resumeRow); index >= 0)
        state_.resumeIndex = std::to_string(index);
}

// After a removal this is the row after the removed one. A list that isn't long enough for that
// keeps its current row.
void SongFiles::returnToResumeRow() {
    state_.setMasterIndex(transport_.resumeRow());
}

// Makes the song the one in play, without starting it. Choices that have been opened meanwhile
// stay.
void SongFiles::becomeInPlay(const Song& song) {
    lastSong_.take(song);
    choices_.offer(song.title());
}

void SongFiles::tellUndone(const std::string& verb, const Song& song, const FileChange& change) {
    reply_.sayOrBox(undone(verb, "<b>" + song.title() + "</b>", change),
                    undone(verb, song.title(), change));
}

} // namespace larkspin
