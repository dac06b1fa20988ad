// Help: all words by topics, those for songs first; and the words with a slash that tell it, and
// that end the program.
#pragma once

#include "host/slash_words.h"
#include "shell/event_loop.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

struct Help {
    const SlashWords* words; // null where there are none
    std::string trigger;     // before the words for songs
    SlashWords::Tell tell;
};

// About a word, a topic, or "all"; blank for the topics with their words.
void tellHelp(const Help& help, std::string_view about);

// "/help". The words must live on; those that are added later are told as well.
SlashWord helpWord(const SlashWords& words, std::function<std::string()> trigger,
                   SlashWords::Tell tell);

// "/quit". Elsewhere it leaves a network, so its help tells what does that here.
SlashWord quitWord(Task quit);

} // namespace larkspin
