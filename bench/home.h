// A home for a program that is measured as a process: what it keeps, and a playlist in it.
#pragma once

#include "support/temp_directory.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace larkspin {

// What the player keeps for all its users: it takes seconds to make.
using HomeCache = std::shared_ptr<TempDirectory>;

class Home {
public:
    // One of the songs really plays, if it is given a type such as ".mp3". Further settings are
    // lines of the settings file.
    Home(int rows, HomeCache cache, const std::string& songType = "",
         const std::string& furtherSettings = "");

    bool hasSong() const { return std::filesystem::exists(song_); }

    // Everything that the program and the player under it keep stays in here, also the lock
    // by which a running copy is known.
    std::vector<std::string> variables() const;

    // Puts down a file that the program keeps from one run to the next.
    void keep(const std::string& name, const std::string& contents) const {
        disk_.write("larkspin/" + name, contents);
    }

private:
    TempDirectory disk_;
    std::filesystem::path song_;
    HomeCache cache_;
};

} // namespace larkspin
