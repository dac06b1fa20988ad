#include "library/removing.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "text/blanks.h"
#include "text/sought_text.h"

namespace larkspin {

void removematching(RowList& first, RowList& second, const std::string& text) {
    if (withoutBlanks(text).empty())
        return;
    const SoughtText wanted(text);
    for (int index = 0; index < first.count();) {
        if (!wanted.isIn(first.folded(index))) {
            ++index;
            continue;
        }
        first.removeAt(index);
        second.removeAt(index);
    }
}

void Removing::listrmv(const std::string& text) {
    if (reply_.refusedInSilence("scanning"))
        return;
    const int before = state_.masterList.count();
    removematching(state_.masterList, state_.playlistView, text);
    const int after = state_.masterList.count();
    showfilecount(state_);
    reply_.saychat("removed <b>" + std::to_string(before - after) + "</b> items for <b>" + text +
                   "</b> (<b>" + std::to_string(after) + "</b>)");
}

void Removing::removeSelected() {
    if (state_.playlistView.selectedCount() == 0) {
        dialogs_.box("No items selected");
        return;
    }
    // Events are served after each row, so the list and the selection are read anew.
    for (int index = 0; index < state_.playlistView.count(); loop_.serveTurn()) {
        if (state_.playlistView.isSelected(index))
            removeFromPlaylist(state_, index);
        else
            ++index;
    }
    showRemoved();
}

void Removing::removeAll() {
    clearPlaylist(state_);
    showRemoved();
}

void Removing::removeString(const std::string& text) {
    removematching(state_.masterList, state_.playlistView, text);
    showRemoved();
}

void Removing::showRemoved() {
    showfilecount(state_);
    state_.playedMemory.clear();
}

} // namespace larkspin
