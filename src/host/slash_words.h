// Lines that open with a slash and a word. They aren't said in the room: a front end takes them for
// itself, and tells its owner what can't be done.
#pragma once

#include "library/completion.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

struct SlashWord {
    std::string name, arguments, help;

    // Takes what stands after the word, and returns false when it can make no sense of that.
    std::function<bool(std::string_view rest)> run;

    std::vector<std::string> aliases{}; // what other programs call it
    std::string topic{};                // among which it is told

    // How it is typed.
    std::string usage() const { return '/' + name + (arguments.empty() ? "" : ' ' + arguments); }
};

// With that topic, where they have none yet.
std::vector<SlashWord> about(const std::string& topic, std::vector<SlashWord> words);

class SlashWords {
public:
    using Tell = std::function<void(const std::string& text)>;

    explicit SlashWords(Tell tell) : tell_(std::move(tell)) {}

    void add(std::vector<SlashWord> words);
    const std::vector<SlashWord>& all() const { return words_; }

    // Whether the line isn't for the room, whether its word is known or not.
    static bool isMeantForIt(std::string_view line);
    bool knows(std::string_view line) const;

    // Whether only such a word has been begun so far; and what it can become.
    static bool isBegun(std::string_view typed);
    Completion completionOf(std::string_view typed) const;

    // Does what a line says that is meant for this.
    void run(const std::string& line) const;

    // The word of such a line, by its name or another one that it has; null if there is none.
    const SlashWord* find(std::string_view line) const;

private:
    Tell tell_;
    std::vector<SlashWord> words_;
};

} // namespace larkspin
