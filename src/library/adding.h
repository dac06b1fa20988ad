// Adding media: the commands that bring files from disk into the playlist.
#pragma once

#include "chat/core.h"
#include "text/row_list.h"

#include <string>

namespace larkspin {

class Directories;
class Scan;

class Adding {
public:
    Adding(const Core& core, Directories& directories, Scan& scan)
        : state_(core.state), reply_(core.reply), dialogs_(core.dialogs), directories_(directories),
          scan_(scan) {}

    // The commands. `scan` finds files, the other two add what the last scan found.
    void scan(const std::string& directory);
    void listadd(const std::string& text);
    void transfer();

    // Scans every drive and asks whether to transfer what it has found.
    void scanAndOffer();

    // Adds the list's rows that contain the text, without regard to case, in name, extension
    // or directory. True when there was one, also when the playlist held it already.
    bool addmatching(RowList& list, const std::string& text);

    // Adds what the last scan found and contains the text, as the media window does it.
    void addString(const std::string& text);

private:
    void addScanned();

    AppState& state_;
    Reply& reply_;
    Dialogs& dialogs_;
    Directories& directories_;
    Scan& scan_;
};

} // namespace larkspin
