// A program with a playlist of two songs, for tests of playlists and their files.
#pragma once

#include "support/media_machine.h"

#include <filesystem>

namespace larkspin {

struct PlaylistMachine : MediaMachine {
    PlaylistMachine() : MediaMachine({"a.mp3", "b.mp3"}) {}

    // A playlist of these songs, below the disk's root.
    void writeList(const std::string& below, const Lines& songs) {
        std::string rows;
        for (const std::string& name : songs)
            rows += song("rock", name) + "\r\n";
        disk.write(below, rows);
    }
    // From the media window's menu, with the answer to the dialog that it opens.
    std::string chooseFromOps(const std::string& entry, const std::string& answer = {}) {
        dialogs.answers = {answer};
        return answerTo([&] { choose("Command3", entry); });
    }
    bool exists(const std::string& below) const {
        return std::filesystem::exists(disk.path() / below);
    }
};

} // namespace larkspin
