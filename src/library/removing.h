// Taking rows out of the playlist. The files behind them stay where they are.
#pragma once

#include "chat/core.h"
#include "text/row_list.h"

#include <string>

namespace larkspin {

// Takes the rows of the first list that contain the text, without regard to case, out of both. The
// two hold the same rows, as the lists of the playlist do. An empty text, or blanks alone, which
// stand in every row, are a mistake and take out nothing.
void removematching(RowList& first, RowList& second, const std::string& text);

class Removing {
public:
    explicit Removing(const Core& core)
        : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply) {}

    // The command.
    void listrmv(const std::string& text);

    // As the media window does it: the rows that are selected there, all, and those that contain
    // the text.
    void removeSelected();
    void removeAll();
    void removeString(const std::string& text);

private:
    void showRemoved();

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
};

} // namespace larkspin
