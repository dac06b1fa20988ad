// The commands that tell about the playlist's rows and their directories.
#pragma once

#include "chat/core.h"
#include "text/row_list.h"

#include <string>

namespace larkspin {

class ListQuestions {
public:
    explicit ListQuestions(const Core& core)
        : state_(core.state), reply_(core.reply), recitals_(core.recitals) {}

    void media(); // media?: how many rows
    void dir();   // dir?: how many directories
    void scrd();  // says each of them
    void count(const std::string& text);

    // Counts the list's rows that contain the text, without regard to case, in front of their last
    // four characters, into matchCount. Leaves the list's current index on the last of them.
    void countmatches(RowList& list, const std::string& text);

private:
    AppState& state_;
    Reply& reply_;
    Recitals& recitals_;
};

} // namespace larkspin
