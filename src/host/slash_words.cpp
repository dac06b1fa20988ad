#include "host/slash_words.h"

#include "text/characters.h"
#include "text/fold.h"
#include "text/parts.h"
#include "text/typed_words.h"

#include <iterator>

namespace larkspin {

std::vector<SlashWord> about(const std::string& topic, std::vector<SlashWord> words) {
    for (SlashWord& word : words)
        if (word.topic.empty())
            word.topic = topic;
    return words;
}

void SlashWords::add(std::vector<SlashWord> words) {
    words_.insert(words_.end(), std::make_move_iterator(words.begin()),
                  std::make_move_iterator(words.end()));
}

bool SlashWords::isMeantForIt(std::string_view line) {
    return line.size() > 1 && line[0] == '/' && isLetter(line[1]);
}

bool SlashWords::knows(std::string_view line) const {
    return isMeantForIt(line) && find(line) != nullptr;
}

bool SlashWords::isBegun(std::string_view typed) {
    return typed.starts_with('/') && typed.find(' ') == typed.npos;
}

Completion SlashWords::completionOf(std::string_view typed) const {
    std::vector<CompletedWord> known;
    for (const SlashWord& word : words_)
        known.push_back({'/' + word.name, word.arguments, word.help});
    return completionAmong(known, typed);
}

// Runs a copy of the word, since what it does may add other words.
void SlashWords::run(const std::string& line) const {
    std::string_view rest = line;
    const std::string_view typed = takeWord(rest);
    const SlashWord* const found = find(line);
    if (!found) {
        tell_(std::string(typed) + " is unknown, /help tells what there is");
        return;
    }
    const SlashWord word = *found;
    if (!word.run(rest))
        tell_(word.usage());
}

const SlashWord* SlashWords::find(std::string_view line) const {
    const std::string_view name = partedAt(line.substr(1), ' ').head;
    for (const SlashWord& word : words_)
        if (equalFolded(word.name, name))
            return &word;
    for (const SlashWord& word : words_)
        for (const std::string& alias : word.aliases)
            if (equalFolded(alias, name))
                return &word;
    return nullptr;
}

} // namespace larkspin
