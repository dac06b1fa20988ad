// The one road to the disk for the program's own files, whoever reads or writes them.
//
// A file that couldn't be read isn't written until a read of it has succeeded: the reader got
// nothing, and what it makes of that must not replace what the file holds. The owner is told of a
// failure once, and again only when the failure was over or has another reason.
#pragma once

#include "shell/data_directory.h"
#include "shell/event_loop.h"
#include "shell/files.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class Trace;

class KeptFiles : public Files {
public:
    KeptFiles(Files& disk, DataDirectory directory, Trace& trace)
        : disk_(disk), directory_(std::move(directory)), trace_(trace) {}

    Presence presence(const std::string& path) override { return disk_.presence(path); }
    std::optional<std::uintmax_t> size(const std::string& path) override {
        return disk_.size(path);
    }
    // A text in UTF-16 counts as one that can't be read.
    FileRead read(const std::string& path, std::size_t largest = largestFile) override;
    FileChange replace(const std::string& path, const std::string& contents) override;
    FileChange append(const std::string& path, const std::string& text) override {
        return traced("append to", path, disk_.append(path, text));
    }
    FileChange rename(const std::string& path, const std::string& newName) override {
        return traced("rename", path, disk_.rename(path, newName));
    }
    FileChange moveToWastebasket(const std::string& path) override {
        return traced("throw away", path, disk_.moveToWastebasket(path));
    }
    FileChange remove(const std::string& path) override {
        return traced("remove", path, disk_.remove(path));
    }
    FileChange makeDirectory(const std::string& path) override {
        return traced("make", path, disk_.makeDirectory(path));
    }
    void hide(const std::string& path) override { disk_.hide(path); }

    // News for the owner, in the client's markup, and the task to call when there is some. Telling
    // reads files itself, and must come to an end even on a disk that fails now and then.
    void tell(std::string text);
    void tellNews(const std::function<void(const std::string& text)>& say);
    std::vector<std::string> takeNews() { return std::exchange(news_, {}); }
    void onNews(Task task);
    int failedSaves() const { return failedSaves_; } // so far

private:
    void note(const std::string& path, const std::string& what, const std::string& reason);

    FileChange traced(const char* what, const std::string& path, FileChange outcome);

    Files& disk_;
    DataDirectory directory_;
    Trace& trace_;
    std::map<std::string, std::string> unread_;   // why, by path
    std::map<std::string, std::string> failures_; // the reasons told last, by what couldn't be done
    std::vector<std::string> news_;
    int failedSaves_ = 0, tellings_ = 0; // tellings_: calls of tellNews under way
    Task onNews_;
};

} // namespace larkspin
