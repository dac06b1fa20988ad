// What the owner and the program say in channels and to people, on its way out and back. Where the
// server sends back what this connection has said, that counts: as the owner's, and in the order in
// which it came. Elsewhere a line has been said when it is on its way.
#pragma once

#include "host/conversation.h"
#include "irc/connection/irc_outgoing.h"
#include "shell/event_loop.h"

#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class IrcChannels;
class IrcSession;
struct IrcMessage;

// A line of this connection.
struct IrcSaid {
    std::string target;
    std::string text = {};   // as it was given, whatever pieces the server had it in
    bool isOnScreen = false; // where the owner has typed it
    bool mayCommand = true;
    KeptLine::Kind kind = KeptLine::Kind::said; // or done, or noted
};

class IrcSpeech {
public:
    // The line counts as said now. When that is within `say` it is `atOnce`.
    using Reached = std::function<void(const IrcSaid& said, bool atOnce)>;

    IrcSpeech(EventLoop& loop, IrcSession& session, IrcChannels& channels, Reached reached);

    // How long the server may take to send a line back.
    static constexpr std::chrono::seconds longestEcho{60};

    // How long it may take to refuse one, where it sends none back.
    static constexpr std::chrono::seconds longestRefusal{10};

    // Says a line, in several pieces if it is too long for one. Where the server sends lines back,
    // a line counts as said when it comes back. Elsewhere what the owner types counts at once, and
    // what the program says counts when it has left. False when too many lines wait.
    bool say(IrcOutgoing::Kind kind, const IrcSaid& said);

    // A line under the owner's own name that the server has sent, a PRIVMSG or NOTICE. True when it
    // is one of this connection's, and has been taken; anything else may be from another program of
    // his, or old.
    bool take(const IrcMessage& message);

    // The server hasn't passed on the oldest line that is on its way to a channel. If it may have
    // been for the codes in it, it goes out again without them, at once, and from now on all that
    // is said there does without. False if it doesn't.
    bool refused(const IrcMessage& refusal);

    // Forgets what is on its way: no echo comes any more.
    void clear() {
        awaited_.clear();
        coded_.clear();
    }

private:
    struct Piece {
        std::string codes;
        IrcSaid said;         // whole, with the last piece
        bool isDue;           // the line counts as said with this piece
        bool isAgain = false; // without the codes that were refused
    };
    struct Awaited {
        Piece piece;
        Nanoseconds sentAt;
    };

    std::size_t longestPiece(const std::string& target) const;
    std::string codesOf(const IrcSaid& said) const;
    bool send(IrcOutgoing::Kind kind, const Piece& piece);
    void gone(const Piece& piece);
    void forgetLate();
    bool isThat(const Piece& piece, const IrcMessage& message) const;

    EventLoop& loop_;
    IrcSession& session_;
    IrcChannels& channels_;
    Reached reached_;
    std::deque<Awaited> awaited_; // to be sent back
    std::deque<Awaited> coded_;   // that aren't sent back, but may be refused for their codes
};

} // namespace larkspin
