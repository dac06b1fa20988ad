// The settings store: the only way to the two INI files of the data directory.
//
// Values are text, read from the file at each use and written through at once, so that what one
// command has written the next read sees. Values aren't validated here: each reader decides what a
// bad one means. A write that fails is lost.
//
// A value that couldn't be read is never overwritten: its reader went on with a default, which must
// not take the place of the true value.
#pragma once

#include "shell/data_directory.h"
#include "shell/ini_text.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Files;
struct FileRead;

// The settings with a default, by the index that yochoose has always taken.
enum class Choice {
    openingFont = 1,
    openingColor = 2,
    opening = 3,
    font = 4,
    fontColor = 5,
    played = 6,
    closing = 9,
    closingFont = 10,
    closingColor = 11,
};

// Keys with their new values, in the order in which they are written.
using SettingsChanges = std::vector<std::pair<std::string, std::string>>;

// The program's own settings as they stood at one moment.
class StoredSettings {
public:
    explicit StoredSettings(IniValues values, bool wereRead = true)
        : values_(std::move(values)), wereRead_(wereRead) {}

    // False when there may be settings that couldn't be read.
    bool wereRead() const { return wereRead_; }

    // As Settings::get.
    std::string get(std::string_view key) const;

private:
    IniValues values_;
    bool wereRead_;
};

class Settings {
public:
    Settings(Files& files, const DataDirectory& directory)
        : files_(files), settingsFile_(directory.settingsFile()) {}

    // Empty when the key is empty, or when it, the section or the file isn't there. A value is cut
    // after its first 749 characters, the length that the profile format's readers have room for.
    std::string getini(std::string_view section, std::string_view key, const std::string& path);

    // Makes the file, the section and the key as needed. A key whose last read failed is left
    // alone until a read of it succeeds.
    void putini(std::string_view section, std::string_view key, std::string_view value,
                const std::string& path);

    // Takes the key with its value out of the section, with the same exception.
    void removeini(std::string_view section, std::string_view key, const std::string& path);

    // The program's own settings: the section "lark" of the settings file.
    std::string get(std::string_view key) { return getini("lark", key, settingsFile_); }
    void put(std::string_view key, std::string_view value) {
        putini("lark", key, value, settingsFile_);
    }
    void putAll(const SettingsChanges& changes); // in one replacement of the file

    // All settings at once, for the start. If they can't be read then, the file is out of use up to
    // the next start: it reads as empty and nothing is written. Otherwise what a run saves that
    // began with defaults would replace what earlier runs have gathered.
    StoredSettings all();

    // The setting's value, or its default when it is missing or empty; a count of songs played
    // that isn't numeric reads 0.
    std::string yochoose(Choice choice);

private:
    FileRead readIni(const std::string& path);
    void change(const std::string& path, std::string_view section, const SettingsChanges& changes);

    Files& files_;
    std::string settingsFile_;
    bool outOfUse_ = false;        // the settings file
    std::set<std::string> unread_; // keys whose last read failed, with their files and sections
};

} // namespace larkspin
