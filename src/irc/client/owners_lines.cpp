#include "irc/client/owners_lines.h"

#include "irc/client/all_rooms.h"

#include <utility>

namespace larkspin {

void OwnersLines::open() {
    isOpen_ = true;
    for (const std::string& line : std::exchange(early_, {}))
        does(line); // like a line that is typed from now on
}

void OwnersLines::take(const std::string& line, const Conversations::Begun& begun) {
    if (!isOpen_ || rooms_.goBackFor(line, begun))
        act(line);
}

void OwnersLines::act(const std::string& line) {
    // A line typed before it is open is kept for later. But after one that asks for a password it
    // may be that password, which must be kept nowhere.
    const bool mayBeSecret = !early_.empty() && IrcWords::asksPassword(early_.back());
    if (!isOpen_ && !mayBeSecret)
        early_.push_back(line);
    else if (!isOpen_)
        rooms_.conversations.tell(KeptLine::Kind::answer,
                                  "a password is taken when it is asked for");
    else if (SlashWords::isMeantForIt(line))
        rooms_.conversations.asOwnerWants([&] { words_.run(line); });
    else
        rooms_.room.say(line);
}

void OwnersLines::does(const std::string& line) {
    loop_.post([this, line] { act(line); });
}

} // namespace larkspin
