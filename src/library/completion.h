// What a line that the owner has begun to type can become: command words from the catalogue, and
// after some of them the names of songs and playlists.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct AppState;

struct Completion {
    // Something that the line can become.
    struct Choice {
        std::string text;      // what goes in the place of what was typed
        std::string shown;     // how it stands in a list
        std::string help = {}; // what it does, where that is known
    };

    std::size_t replaced = 0;         // characters at the end of what was typed
    std::string text = {};            // what goes in their place, as far as it is certain
    std::vector<Choice> choices = {}; // all that it can become, up to a bound
    int others = 0;                   // choices that are left out
    bool addsNothing = false;         // the text: only a choice leads on
};

inline constexpr std::size_t mostChoices = 200;

// Completes a line up to the cursor, without regard to case. Names come as the lists have them.
// After `num` the name of a song becomes its number. Empty when nothing fits.
Completion completionOf(const AppState& state, std::string_view typed);

// The same among a front end's own words, each with the arguments that are typed after it. A word
// gets a blank after it when it can't do without an argument, that is, unless its arguments begin
// with a bracket.
struct CompletedWord {
    std::string word, arguments = {}, help = {};
};
Completion completionAmong(const std::vector<CompletedWord>& words, std::string_view typed);

} // namespace larkspin
