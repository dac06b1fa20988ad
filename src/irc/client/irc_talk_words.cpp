#include "irc/client/irc_talk_words.h"

#include "host/conversations.h"
#include "host/own_room.h"
#include "irc/client/irc_client.h"
#include "text/blanks.h"
#include "text/typed_words.h"

#include <string>

namespace larkspin {

std::vector<SlashWord> IrcTalkWords::words() const {
    const auto by = [this](bool (IrcTalkWords::*work)(std::string_view) const) {
        return [self = *this, work](std::string_view rest) { return (self.*work)(rest); };
    };
    const auto service = [self = *this](const char* name) {
        return [self, name](std::string_view rest) {
            if (withoutBlanks(rest).empty())
                return false;
            self.network_().voice().message(name, textAfter(rest));
            return true;
        };
    };
    std::vector<SlashWord> words{
        {"me", "TEXT", "tells what you are doing: \"/me waves\"", by(&IrcTalkWords::me)},
        {"notice", "NAME TEXT", "sends a notice, which no program answers",
         by(&IrcTalkWords::notice)},
        {"again", "", "says once more what you couldn't say here", by(&IrcTalkWords::again)},
        {"ns",
         "TEXT",
         "a message to NickServ, who looks after names",
         service("NickServ"),
         {"nickserv"}},
        {"cs",
         "TEXT",
         "a message to ChanServ, who looks after rooms",
         service("ChanServ"),
         {"chanserv"}},
    };
    return about("talking", std::move(words));
}

// As with all that is typed where nothing can be said any more, he is at home with it.
bool IrcTalkWords::me(std::string_view rest) const {
    const std::string doing(withoutBlanks(rest));
    if (doing.empty())
        return false;
    if (conversations_.isFrontClosed())
        conversations_.enter(conversations_.home());
    if (conversations_.front().isAtHome())
        own_.act(doing);
    else
        network_().voice().act(doing);
    return true;
}

bool IrcTalkWords::notice(std::string_view rest) const {
    const std::string name(takeWord(rest));
    if (name.empty() || withoutBlanks(rest).empty())
        return false;
    network_().voice().notice(name, textAfter(rest));
    return true;
}

bool IrcTalkWords::again(std::string_view rest) const {
    const bool isAlone = withoutBlanks(rest).empty();
    if (isAlone)
        network_().voice().sayAgain();
    return isAlone;
}

} // namespace larkspin
