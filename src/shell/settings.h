// The settings store: the only way to the two INI files of the data directory.
//
// Values are text, read from the file at each use and written through at once, so that what
// one command has written the next read sees. Values aren't validated here: each reader says
// what it makes of a bad one.
#pragma once

#include "shell/data_directory.h"

#include <string>
#include <string_view>

namespace larkspin {

class Files;

class Settings {
public:
    Settings(Files& files, const DataDirectory& directory)
        : files_(files), settingsFile_(directory.settingsFile()) {}

    // Empty when the key, the section or the file isn't there. A value is cut behind its
    // first 749 characters, the length that the profile format's readers have room for.
    std::string getini(std::string_view section, std::string_view key, const std::string& path);

    // Makes the file, the section and the key as needed. A write that fails is lost.
    void putini(std::string_view section, std::string_view key, std::string_view value,
                const std::string& path);

    // The program's own settings: the section "lark" of the settings file.
    std::string get(std::string_view key) { return getini("lark", key, settingsFile_); }
    void put(std::string_view key, std::string_view value) {
        putini("lark", key, value, settingsFile_);
    }

private:
    Files& files_;
    std::string settingsFile_;
};

} // namespace larkspin
