// What the owner orders about people and rooms beyond talking, as the words with a slash have it.
// What the server answers is told as it comes; what can't be asked, at once.
#pragma once

#include "irc/talk/irc_answers.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Conversations;
class EventLoop;
class IrcChannels;
class IrcModeration;
class IrcSession;
struct RoomDisplay;

class IrcOrders {
public:
    // All must live on.
    IrcOrders(EventLoop& loop, IrcSession& session, IrcChannels& channels,
              const Conversations& conversations, IrcModeration& moderation,
              const RoomDisplay& shown);

    IrcAnswers& answers() { return answers_; }

    // Tells him that he is in no room, if so.
    bool tellWithoutRoom() const;

    // Whether a word that may be something else as well is meant for a room. One that begins with a
    // plus could be modes, or a reason: it is a room only if he is in it.
    bool meansRoom(std::string_view word) const;
    bool isInRoom(std::string_view name) const;

    void whois(const std::string& name); // blank for himself
    void whowas(const std::string& name);
    void who(const std::string& mask); // blank for the room
    void names(const std::string& room);
    void away(const std::string& why); // blank for back
    void list(const std::string& pattern, int leastPeople);
    void quote(std::string_view line); // one of the protocol
    void invite(const std::string& name, const std::string& room);

    // Of the room, unless the first word is a room or his own name. Without modes it asks.
    void mode(std::string_view words);

    // '+' or '-', the letter of a rank, and who gets or loses it in the room.
    void rank(char sign, char letter, const std::vector<std::string>& names);

    void kick(const std::string& room, const std::string& name, const std::string& reason);

    // By name as `eject` and `allow` of the moderation, or a mask as it is. May wait, and only to
    // be called from an event of its own.
    void ban(const std::string& nameOrMask);
    void unban(const std::string& nameOrMask);

private:
    bool tellWithoutServer() const;
    std::string here() const; // the room; blank, and told, if he is in none

    // The answer is expected from when the question goes out.
    using Expected = std::optional<std::pair<IrcAnswers::Question, std::string>>;
    void ask(std::string_view command, const std::vector<std::string>& parameters,
             Expected answer = {});
    Expected answerToModes(const std::string& about, const std::vector<std::string>& modes) const;

    IrcSession& session_;
    IrcChannels& channels_;
    const Conversations& conversations_;
    IrcModeration& moderation_;
    const RoomDisplay& shown_;
    IrcAnswers answers_;
};

} // namespace larkspin
