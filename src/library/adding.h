// Adding media: the commands that bring files from disk into the playlist.
#pragma once

#include "text/row_list.h"

#include <string>

namespace larkspin {

struct AppState;
class Directories;
class Reply;
class Scan;

class Adding {
public:
    Adding(AppState& state, Directories& directories, Scan& scan, Reply& reply)
        : state_(state), directories_(directories), scan_(scan), reply_(reply) {}

    // The commands. `scan` finds files, the other two add what the last scan found.
    void scan(const std::string& directory);
    void listadd(const std::string& text);
    void transfer();

    // Adds the list's rows that contain the text, without regard to case, in name, extension
    // or directory. True when there was one, also when the playlist held it already.
    bool addmatching(RowList& list, const std::string& text);

private:
    AppState& state_;
    Directories& directories_;
    Scan& scan_;
    Reply& reply_;
};

} // namespace larkspin
