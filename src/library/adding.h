// Adding media: the commands and the dialogs that bring files from disk into the playlist.
#pragma once

#include "chat/core.h"
#include "library/listers.h"
#include "text/row_list.h"

#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class Files;
struct FileQuestion;
class Scan;

class Adding {
public:
    Adding(const Core& core, Files& files, Directories& directories, FileLister& File1, Scan& scan)
        : state_(core.state), reply_(core.reply), dialogs_(core.dialogs), files_(files),
          directories_(directories), File1_(File1), scan_(scan) {}

    // The commands. `scan` finds files, the other two add what the last scan found.
    void scan(const std::string& directory);
    void listadd(const std::string& text);
    void transfer();

    // Scans every drive and asks whether to transfer what it has found.
    void scanAndOffer();

    // Scans a directory with all that is below it, and adds what it has found. Nothing is said.
    struct Tree {
        int found = 0, added = 0, leftOut = 0; // songs; those without room
        std::string notes = {};                // what couldn't be read
    };
    std::optional<Tree> addTree(const std::string& directory); // nothing: the run has ended

    // Adds those rows of the list whose name, extension or directory contains the text, without
    // regard to case. Returns the number of those that didn't fit.
    int addmatching(RowList& list, const std::string& text);

    // For the media window: adds files that the owner chooses, whatever their type.
    void addFiles();
    void addFiles(const std::vector<std::string>& paths);

    // The files that the media filter lets through in a directory that the owner chooses, without
    // those in its subdirectories. Nothing when he dismisses the dialog or names what isn't there.
    // A directory that can't be looked into is told.
    FileLister::Shown askForDirectory();
    void addDirectory(const DirectoryListing& chosen);

    // What is at a path that the owner brings.
    struct Place {
        bool isDirectory = false, isUnread = false; // a file, or nothing, is neither
        FileLister::Shown shown = {};               // of a directory
    };
    Place placeAt(const std::string& path);

    // Adds what the last scan found and contains the text, in the same way.
    void addString(const std::string& text);

private:
    int addScanned(); // how many didn't fit
    void showAdded(int leftOut);
    void sayLeftOut(int count);
    void boxLeftOut(int count);
    bool isOnDisk(const Row& row);
    FileQuestion question(const std::string& wanted) const;

    AppState& state_;
    Reply& reply_;
    Dialogs& dialogs_;
    Files& files_;
    Directories& directories_;
    FileLister& File1_;
    Scan& scan_;
};

} // namespace larkspin
