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
    std::string text = {};    // what goes in their place: as much as is sure
    // What it can become, where the text is no longer than what it replaces. Not more than are
    // looked through at once.
    std::vector<std::string> choices = {};
    int others = 0; // choices that are left out
};

inline constexpr std::size_t mostChoices = 40;

// Of a line as it stands in front of the cursor. Without regard to case; names come as the lists
// have them. After `num` the name of a song becomes its number. Nothing at all when nothing fits.
Completion completionOf(const AppState& state, std::string_view typed);

// The same among words of a front end's own, each with what is typed after it; one that can't be
// without an argument, which doesn't open with a bracket, gets the blank in front of that.
struct CompletedWord {
    std::string word, arguments;
};
Completion completionAmong(const std::vector<CompletedWord>& words, std::string_view typed);

} // namespace larkspin
