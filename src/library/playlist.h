// The playlist: the operations that keep masterList and playlistView in step, and those that
// look through them. Nobody else adds to the two lists or takes from them, so that the same
// index always names the same row in both.
#pragma once

#include "text/row_list.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

struct AppState;

// False when the lists are full; they stay as they are then.
bool addToPlaylist(AppState& state, const Row& row);

// The same, unless the row is there already, compared as a whole without regard to case. A row in
// the list that is equal in that way only, not letter by letter, is still another file's if its own
// file is on the disk.
enum class Addition { added, thereAlready, leftOut };
using IsOnDisk = std::function<bool(const Row& row)>;
Addition addToPlaylistOnce(AppState& state, const Row& row, const IsOnDisk& isOnDisk);

// Whether a sorted list holds that very row.
bool holdsRow(const RowList& list, const Row& row);

// Takes the row at the index out of both lists; an index outside them does nothing.
void removeFromPlaylist(AppState& state, int index);

// Tells of files that didn't fit: "a list holds <b>32767</b> songs, left out <b>12</b>". The marks
// are for the room; a box goes without.
std::string leftOutText(int count, const std::string& mark = "<b>",
                        const std::string& unmark = "</b>");

void clearPlaylist(AppState& state);

// Where the row is that stood at the index before a wait; -1 when it has gone.
int findRow(const RowList& list, const Row& row, int index);

// The row count, on the media window and in the tray menu's entry.
void showfilecount(AppState& state);

// Whether the list holds a row that equals the text as a whole, without regard to case. An
// empty text is in no list.
bool isinlist(const RowList& list, std::string_view text);

// Fills choiceList with the rows whose name contains the text, without regard to case, and
// leaves the list's current index on the last of them. True when there is one. An empty text
// is contained in every name.
bool searchrows(AppState& state, RowList& list, std::string_view text);

// Fills knownDirs with the directories of the playlist's rows, each once however it is spelled, in
// the order of the rows. Leaves masterIndex on the last row.
void collectdirs(AppState& state);

} // namespace larkspin
