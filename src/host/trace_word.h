// The word with a slash that tells what the program has done last.
#pragma once

#include "host/slash_words.h"

namespace larkspin {

class Trace;

SlashWord traceWord(const Trace& trace, SlashWords::Tell tell);

} // namespace larkspin
