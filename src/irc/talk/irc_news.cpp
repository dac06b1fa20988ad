#include "irc/talk/irc_news.h"

#include "chat/markup.h"
#include "irc/channels/irc_channel.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

// Puts one message into words; without any when it isn't to be told.
class News {
public:
    News(const IrcMessage& message, const IrcSession& session, const IrcChannel* room)
        : message_(message), session_(session), room_(room), who_(visibleName(message.nick())) {}

    std::string text() const {
        const std::string& command = message_.command;
        if (command == "JOIN")
            return isOfOthers() && isHere(0) ? who_ + " comes in" : "";
        if (command == "PART")
            return isOfOthers() && isHere(0) ? who_ + " goes" : "";
        if (command == "QUIT")
            return isOfOthers() && isInRoom() ? who_ + " goes" : "";
        if (command == "KICK")
            return kick();
        if (command == "NICK")
            return nick();
        if (command == "MODE")
            return mode();
        if (command == "TOPIC")
            return isHere(0) ? who_ + " sets the topic: " + plain(1) : "";
        if (command == "INVITE")
            return who_ + " invites " +
                   (session_.isSelf(message_.parameter(0)) ? "you" : plain(0)) + " to " + plain(1);
        if (command == "KILL")
            return who_ + " ends your connection: " + plain(1);
        if (command == "FAIL")
            return standardReply();
        if (command == "WARN")
            return "warning: " + standardReply();
        if (command == "NOTE")
            return "note: " + standardReply();
        return number();
    }

private:
    bool isOfOthers() const { return !session_.isSelf(message_.nick()); }
    bool isHere(std::size_t parameter) const {
        return room_ && session_.isSame(room_->name(), message_.parameter(parameter));
    }
    bool isInRoom() const { return room_ && room_->contains(message_.nick(), session_.features()); }
    std::string plain(std::size_t parameter) const {
        return plainText(message_.parameter(parameter));
    }

    std::string kick() const {
        if (session_.isSelf(message_.parameter(1)))
            return who_ + " puts you out of " + plain(0) + ": " + plain(2);
        return isHere(0) ? plain(1) + " is put out by " + who_ : "";
    }

    // If the owner has got another name, the session knows him by that already.
    std::string nick() const {
        if (session_.isSelf(message_.parameter(0)))
            return "you are now called " + plain(0);
        return isInRoom() ? who_ + " is now called " + plain(0) : "";
    }

    std::string mode() const {
        return isHere(0) ? who_ + " sets " + words(1, message_.parameters.size()) : "";
    }

    // What it is about, and the sentence. The code between them is for programs.
    std::string standardReply() const {
        const std::size_t count = message_.parameters.size();
        std::string about = message_.parameter(0) == "*" || count < 3 ? "" : plain(0);
        for (std::size_t context = 2; context + 1 < count; ++context)
            about += (about.empty() ? "" : " ") + plain(context);
        return about + (about.empty() ? "" : ": ") + (count > 0 ? plain(count - 1) : "");
    }

    // Refusals, in the server's words, and the few answers that somebody waits for.
    std::string number() const {
        static constexpr std::string_view answers[] = {numeric::away, numeric::noTopic,
                                                       numeric::topic, numeric::inviting};
        const std::string& command = message_.command;
        // A server without a message of the day isn't news for the owner.
        if (command == numeric::noGreeting)
            return {};
        if (!numeric::isRefusal(command) &&
            std::ranges::find(answers, command) == std::end(answers))
            return {};
        return words(1, message_.parameters.size());
    }

    // The last one after a colon, as the server wrote it.
    std::string words(std::size_t from, std::size_t end) const {
        std::string all;
        for (std::size_t word = from; word < end; ++word) {
            const bool isText = word + 1 == end && word > from && message_.command != "MODE";
            if (word > from)
                all += isText ? ": " : " ";
            all += plain(word);
        }
        return all;
    }

    const IrcMessage& message_;
    const IrcSession& session_;
    const IrcChannel* room_;
    std::string who_;
};

} // namespace

std::string plainText(std::string_view codes) {
    return visibleText(withoutIrcCodes(codes), " ");
}

std::string plainMarkup(std::string_view markup) {
    std::string text;
    for (const MarkupPiece& piece : readMarkup(markup))
        text += piece.text;
    return visibleText(text, " ");
}

void tellNews(const IrcMessage& message, const IrcSession& session, const IrcChannel* room,
              const std::function<void(const std::string& text)>& tell) {
    if (const std::string text = News(message, session, room).text(); !text.empty())
        tell(text);
}

} // namespace larkspin
