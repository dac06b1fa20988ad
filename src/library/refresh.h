// Refresh: brings the playlist back in line with the disk, not by a look at each row, but by
// throwing rows away and listing the directories that they came from again. What the media filter
// doesn't let through goes too.
#pragma once

#include "chat/core.h"
#include "text/row_list.h"

#include <string>
#include <vector>

namespace larkspin {

class FileLister;
class Scan;

class Refresh {
public:
    Refresh(const Core& core, FileLister& File1, Scan& scan)
        : state_(core.state), reply_(core.reply), File1_(File1), scan_(scan) {}

    // Every directory of the playlist, without their subdirectories. Tells by how many rows the
    // playlist has grown. No events run meanwhile.
    int refreshDirectories();

    // The command for the directories whose path contains the text, with their subdirectories.
    void ref(const std::string& text);

    // Scans each directory of the list that contains the text, and puts what the last of these
    // scans found in place of the playlist's rows from there. A scan fills knownDirs: where that
    // is the list, the walk goes on over what the scan found.
    void refreshmatching(RowList& list, const std::string& text);

private:
    void heyaz(std::vector<Row>& rows, RowWriter& writer) const; // adds File1's files

    AppState& state_;
    Reply& reply_;
    FileLister& File1_;
    Scan& scan_;
};

} // namespace larkspin
