#include "library/playlist_menu.h"

#include "library/listers.h"
#include "shell/app_state.h"

namespace larkspin {

void fillplaylistmenu(AppState& state, const FileLister& File1) {
    state.p.clear();
    for (int index = 0; index < File1.count(); ++index)
        state.p.push_back(File1.name(index));
    state.numl = std::to_string(state.p.size()) + " playlists";
}

} // namespace larkspin
