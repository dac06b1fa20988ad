// What a newcomer is told while his list is empty: three lines that lead to the first song, and a
// word that does it all with his music folder. It tells only him. Front ends show it, and nothing
// of it once there are songs.
#pragma once

#include "host/slash_words.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class Preferences;
class Program;

class FirstSteps {
public:
    // Both must live on.
    FirstSteps(Program& program, const Preferences& preferences)
        : program_(program), preferences_(preferences) {}

    // From now on tells how to play once the first songs have come.
    void begin();

    struct Step {
        std::string line; // as it is typed
        std::string does;
    };
    std::vector<Step> steps() const;
    std::string title() const; // of them
    // What is to be typed before them while not all types of songs are looked for; else blank.
    Step allTypes() const;

    // Whether they are to be shown now: there are no songs, or the owner has asked for them.
    bool areShown() const;
    bool areAskedFor() const { return areAskedFor_; }
    void askFor(bool wants) { areAskedFor_ = wants; }

    // What has been found so far, also by a line such as the first; blank while nothing is looked
    // for.
    std::string progress() const;

    // As lines, for a front end without a place for them.
    std::vector<std::string> asLines() const;

    // `/addmusic`: all that can be played of a folder, and below it. Without one it asks.
    static constexpr const char* addingWord = "/addmusic";
    SlashWord word();

private:
    bool isEmpty() const;
    void look();
    void addMusic(const std::string& typed);
    void addFrom(const std::string& folder);
    void tellHowToPlay();
    std::string folder() const;
    std::string seen(const std::string& folder) const;

    Program& program_;
    const Preferences& preferences_;
    bool areAskedFor_ = false;
    bool wasEmpty_ = false;   // when it was looked at last, while the program ran
    std::string lookingIn_{}; // the folder, as it is typed
};

} // namespace larkspin
