// What the owner says on a network, by typing it where he is or by a word that names somebody. What
// can't be said is told.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace larkspin {

class Conversation;
class Conversations;
class IrcChannels;
class IrcSession;
class IrcSpeech;
struct IrcSaid;

class IrcVoice {
public:
    using IsHere = std::function<bool(const Conversation& conversation)>; // on this network
    using Tell = std::function<void(const std::string& text)>;

    // All must live on.
    IrcVoice(const Conversations& conversations, const IrcSession& session, IrcChannels& channels,
             IrcSpeech& speech, IsHere isHere, Tell tell)
        : conversations_(conversations), session_(session), channels_(channels), speech_(speech),
          isHere_(std::move(isHere)), tell_(std::move(tell)) {}

    // A line that he says himself in the conversation in front. To be called from an event of its
    // own.
    void say(const std::string& line, bool isOnScreen = false); // where he has typed it
    void act(const std::string& doing);                         // there, too: "/me waves"

    // Says there once more what he couldn't say. What was obeyed before isn't obeyed twice.
    void sayAgain();

    void message(const std::string& name, const std::string& text);
    void notice(const std::string& name, const std::string& text);

    // Tells him if that can't be anybody's name.
    bool canBeTalkedTo(const std::string& name) const;

private:
    bool tellWithoutServer() const;
    void speak(const IrcSaid& said);

    const Conversations& conversations_;
    const IrcSession& session_;
    IrcChannels& channels_;
    IrcSpeech& speech_;
    IsHere isHere_;
    Tell tell_;
};

} // namespace larkspin
