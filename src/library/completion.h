// What a line that the owner has begun to type can become: command words from the catalogue, and
// after some of them the names of songs and playlists.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct AppState;

struct Completion {
    std::size_t replaced = 0; // characters at the end of what was typed
    std::string text = {};    // what goes in their place, as far as it is certain
    // All that it can become, when the text adds nothing; no more than one can look through at
    // once.
    std::vector<std::string> choices = {};
    int others = 0; // choices that are left out
};

inline constexpr std::size_t mostChoices = 40;

// Completes a line up to the cursor, without regard to case. Names come as the lists have them.
// After `num` the name of a song becomes its number. Empty when nothing fits.
Completion completionOf(const AppState& state, std::string_view typed);

// The same among a front end's own words, each with the arguments that are typed after it. A word
// gets a blank after it when it can't do without an argument, that is, unless its arguments begin
// with a bracket.
struct CompletedWord {
    std::string word, arguments;
};
Completion completionAmong(const std::vector<CompletedWord>& words, std::string_view typed);

} // namespace larkspin
