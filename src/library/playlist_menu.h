// The tray's playlist menu: one entry per playlist file in the data directory.
#pragma once

namespace larkspin {

struct AppState;
class FileLister;

// Lists the playlist files anew. File1 must stand in the data directory under "*.lkl".
void fillplaylistmenu(AppState& state, const FileLister& File1);

} // namespace larkspin
