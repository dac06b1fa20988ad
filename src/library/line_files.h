// Line files: one list row per line in UTF-8, each ended by carriage return and line feed; no
// header, no count. Playlists, notes and launcher items are kept in them.
#pragma once

#include "text/row_list.h"

#include <string>

namespace larkspin {

struct AppState;
class Files;

// Appends every line of the file to the list as it stands and gives the number of lines read.
// A file that can't be read leaves the list as it was.
int loadlines(Files& files, const std::string& path, RowList& list);

// Puts the rows over the file. A failure is not noticed; the file then keeps its old lines.
void savelines(Files& files, const std::string& path, const RowList& list);

// The playlist from a file, in place of what the lists hold.
void loadPlaylist(Files& files, const std::string& path, AppState& state);

} // namespace larkspin
