// A line that the owner or the program says on a network.
#pragma once

#include "host/conversation.h"

#include <string>

namespace larkspin {

struct IrcSaid {
    std::string target;
    std::string text = {};   // as it was given, whatever pieces the server had it in
    bool isOnScreen = false; // where the owner has typed it
    bool mayCommand = true;
    KeptLine::Kind kind = KeptLine::Kind::said; // or done, or noted
    bool hasCounted = false; // as said, before it turned out that it wasn't: it isn't obeyed twice
};

} // namespace larkspin
