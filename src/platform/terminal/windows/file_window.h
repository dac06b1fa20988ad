// Asks for files or for a directory, as a described window: what lies in a directory, others to
// walk to, the types of files that are shown, and a name to be typed. Reading a directory takes its
// time and serves events meanwhile.
#pragma once

#include "library/directories.h"
#include "shell/dialogs.h"
#include "shell/window.h"
#include "text/row_list.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class FileWindow {
public:
    enum class Wants { file, files, newFile, directory };

    // The port must live on.
    FileWindow(Directories& directories, Wants wants, FileQuestion question);
    FileWindow(const FileWindow&) = delete;
    FileWindow& operator=(const FileWindow&) = delete;

    Window window;
    static constexpr const char* focus = "files"; // the control that has the keyboard first

    // Reads the directory that it begins in. To be called once it is shown.
    void open();

    bool isOver() const { return isOver_; }
    // Full paths; none when it was dismissed.
    const std::vector<std::string>& paths() const { return paths_; }

private:
    std::vector<Control> controls(int width);
    void goTo(const std::string& directory);
    void goUp();
    bool tryToGoTo(const std::string& directory);
    void show();
    bool isDirectory(int row) const { return row < directoryCount_; }
    std::string pathOf(int row) const;
    std::vector<std::string> selected() const;
    void takeRow();
    void enterRow();
    void accept();
    void acceptTyped();
    void end(std::vector<std::string> paths);
    std::string typedPath() const;

    Directories& directories_;
    const Wants wants_;
    const FileQuestion question_;
    DirectoryListing listing_; // of the directory that is shown
    RowList rows_;             // the way up, directories, files
    RowList types_;            // of files
    int directoryCount_ = 0;   // with the way up
    std::string name_;         // what the field reads
    bool isTyped_ = false;     // that was typed, rather than taken from a row
    std::string state_;        // what is told of the directory
    int reads_ = 0;            // directories that have been asked for
    bool isOver_ = false;
    std::vector<std::string> paths_;
};

} // namespace larkspin
