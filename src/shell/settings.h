// The settings store: the only way to the two INI files of the data directory.
//
// Values are text, read from the file at each use and written through at once, so that what
// one command has written the next read sees. Values aren't validated here: each reader says
// what it makes of a bad one. A write that fails is lost.
#pragma once

#include "shell/data_directory.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Files;

// The settings with a default, by the index that yochoose has always taken.
enum class Choice {
    openingFont = 1,
    openingColor = 2,
    opening = 3,
    font = 4,
    fontColor = 5,
    played = 6,
    playpath = 7,
    play = 8,
    closing = 9,
    closingFont = 10,
    closingColor = 11,
};

// Keys with their new values, in the order in which they are written.
using SettingsChanges = std::vector<std::pair<std::string, std::string>>;

// The program's own settings as they stood at one moment.
class StoredSettings {
public:
    explicit StoredSettings(std::string contents) : contents_(std::move(contents)) {}

    // As Settings::get.
    std::string get(std::string_view key) const;

private:
    std::string contents_; // of the settings file
};

class Settings {
public:
    Settings(Files& files, const DataDirectory& directory)
        : files_(files), settingsFile_(directory.settingsFile()) {}

    // Empty when the key is empty, or when it, the section or the file isn't there. A value is cut
    // behind its first 749 characters, the length that the profile format's readers have room for.
    std::string getini(std::string_view section, std::string_view key, const std::string& path);

    // Makes the file, the section and the key as needed.
    void putini(std::string_view section, std::string_view key, std::string_view value,
                const std::string& path);

    // Takes the key with its value out of the section.
    void removeini(std::string_view section, std::string_view key, const std::string& path);

    // The program's own settings: the section "lark" of the settings file.
    std::string get(std::string_view key) { return getini("lark", key, settingsFile_); }
    void put(std::string_view key, std::string_view value) {
        putini("lark", key, value, settingsFile_);
    }
    StoredSettings all();
    void putAll(const SettingsChanges& changes); // in one replacement of the file

    // The setting's value, or its default when it is missing or empty; a count of songs played
    // that isn't numeric reads 0.
    std::string yochoose(Choice choice);

private:
    Files& files_;
    std::string settingsFile_;
};

} // namespace larkspin
