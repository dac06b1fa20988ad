// How the owner wants the room to look and behave: what isn't about songs. Each preference stays
// for later runs, has a word with a slash, and can be set by a dialog as well, with the same
// effect.
#pragma once

#include "host/slash_words.h"
#include "shell/data_directory.h"
#include "shell/event_loop.h"
#include "shell/settings.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class KeptFiles;

// The program's own colours on black, or such as the desktop has.
enum class RoomColors { larkspin, light, dark };

// What closing the room's window does. Where there is no tray, `tray` minimizes as well.
enum class RoomClosing { minimize, tray, quit };

// As they are stored and typed, in the order of the values.
inline constexpr const char* roomColorNames[] = {"larkspin", "light", "dark"};
inline constexpr const char* roomClosingNames[] = {"minimize", "tray", "quit"};

class Preferences {
public:
    static constexpr int usualText = 100, smallestText = 50, largestText = 300,
                         textStep = 10; // per cent

    // Loop and files must live on. How a preference stands is told by `tell`.
    Preferences(EventLoop& loop, KeptFiles& files, const DataDirectory& directory,
                SlashWords::Tell tell);
    ~Preferences() { loop_.cancel(keeping_); }
    Preferences(const Preferences&) = delete;
    Preferences& operator=(const Preferences&) = delete;

    // The music folder of the desktop, as a drive path, and what finds the folder that is meant by
    // a typed path: nothing when there is none. It may wait.
    struct Folders {
        std::string music;
        std::function<std::optional<std::string>(std::string_view typed)> find =
            [](std::string_view typed) { return std::optional(std::string(typed)); };
        // How the owner types such a path.
        std::function<std::string(const std::string& path)> asTyped = [](const std::string& path) {
            return path;
        };
    };
    void lookIn(Folders folders) { folders_ = std::move(folders); }

    bool showsStamps() const { return values_.stamps; }     // when a line was said
    bool colorsNames() const { return values_.nameColors; } // each in one of its own
    bool notifies() const { return values_.notifications; }
    int textSize() const { return values_.textSize; } // in per cent of the usual one
    RoomColors colors() const { return values_.colors; }
    RoomClosing closing() const { return values_.closing; }
    // A drive path: the owner's choice, or else the desktop's; empty where there is neither.
    const std::string& musicFolder() const {
        return values_.musicFolder.empty() ? folders_.music : values_.musicFolder;
    }

    std::string asTyped(const std::string& path) const { return folders_.asTyped(path); }

    void showStamps(bool shows);
    void colorNames(bool colors);
    void notify(bool notifies);
    void setTextSize(int percent); // the nearest one that there is
    void changeTextSize(int steps) { setTextSize(textSize() + steps * textStep); }
    void setColors(RoomColors colors);
    void setClosing(RoomClosing closing);
    // The folder as it is typed; an empty one means the desktop's. False when there is none.
    bool setMusicFolder(std::string_view typed);

    // The text size is written once it has been the same for this long, since a wheel passes many.
    static constexpr std::chrono::milliseconds textSizeSettles{500};
    // To be called as the process ends: writes what hasn't been written yet.
    void keep();

    // Called after each change, from now on. What it refers to must live as long as this.
    void onChange(Task task) { changed_.push_back(std::move(task)); }

    std::vector<SlashWord> words();

private:
    struct Values {
        bool stamps = true, nameColors = false, notifications = true;
        int textSize = usualText;
        RoomColors colors = RoomColors::larkspin;
        RoomClosing closing = RoomClosing::minimize;
        std::string musicFolder; // the owner's choice
    };
    // False when it is so already.
    template <typename Value> bool show(Value Values::*which, Value value);
    template <typename Value>
    void change(Value Values::*which, Value value, const char* key, const std::string& text);
    SlashWord switchWord(const char* name, const char* help, bool Values::*which,
                         void (Preferences::*set)(bool), const char* on, const char* off);
    bool typedTextSize(std::string_view rest);
    bool typedColors(std::string_view rest);
    bool typedClosing(std::string_view rest);
    bool takeMusicFolder(std::string_view rest);

    EventLoop& loop_;
    Settings settings_;
    SlashWords::Tell tell_;
    Folders folders_;
    Values values_;
    std::vector<Task> changed_;
    TimerId keeping_ = TimerId::none; // until the text size is written
};

} // namespace larkspin
