// The words with a slash that are about these words themselves: what tells of them by topics, and
// what ends the program.
#pragma once

#include "host/slash_words.h"
#include "shell/event_loop.h"

namespace larkspin {

// "/help". The words must live on; those that are added later are told as well.
SlashWord helpWord(const SlashWords& words, SlashWords::Tell tell);

// "/quit". Elsewhere it leaves a network, so its help tells what does that here.
SlashWord quitWord(Task quit);

} // namespace larkspin
