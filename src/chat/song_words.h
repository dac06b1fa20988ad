// The commands by topics, for who looks for one, each with an example. Their help is the
// catalogue's.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace larkspin {

struct SongWord {
    std::string_view topic;
    std::string_view form;    // as the catalogue has it, after the trigger
    std::string_view example; // of a form that leaves something open
    std::string_view help{};  // of what the catalogue doesn't list

    std::string_view name() const; // without what is added to it
    std::string usage(std::string_view trigger) const;
    // All that there is to tell of it, in a line.
    std::string told(std::string_view trigger) const;
};

// Those of a topic stand together, in the order in which one needs them.
std::span<const SongWord> songWords();

} // namespace larkspin
