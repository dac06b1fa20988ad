// What the owner and the program say in channels and to people, on its way out and back. Where the
// server sends back what this connection has said, that counts: as the owner's, and in the order in
// which it came. Elsewhere a line has been said when it is on its way. But what the owner types
// counts soon in any case: a server that reads on slowly mustn't keep him waiting for his song.
// What isn't said after all is lost, and told.
//
// Where the server knows labels, each line has one, and its echo or its refusal is known by that
// alone.
#pragma once

#include "irc/connection/irc_outgoing.h"
#include "irc/talk/irc_lost_lines.h"
#include "irc/talk/irc_said.h"
#include "shell/event_loop.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class IrcChannels;
class IrcSession;
struct IrcMessage;

class IrcSpeech {
public:
    // The line counts as said now. When that is within `say` it is `atOnce`; when the server has
    // sent it back there is that message.
    using Reached =
        std::function<void(const IrcSaid& said, bool atOnce, const IrcMessage* cameBack)>;

    IrcSpeech(EventLoop& loop, IrcSession& session, IrcChannels& channels, Reached reached,
              IrcLostLines::Tell tell);
    ~IrcSpeech();
    IrcSpeech(const IrcSpeech&) = delete;
    IrcSpeech& operator=(const IrcSpeech&) = delete;

    // How long the server may take to send a line back. Then it is lost.
    static constexpr std::chrono::seconds longestEcho{60};

    // How long the owner waits for it before his line counts all the same.
    static constexpr std::chrono::milliseconds longestPatience{500};

    // How long it may take to refuse one, where it sends none back.
    static constexpr std::chrono::seconds longestRefusal{10};

    // Says a line, in several pieces if it is too long for one. Where the server sends lines back,
    // a line counts as said when it comes back, and what the owner types in `longestPatience` at
    // most. Elsewhere that counts at once, and what the program says counts when it has left. False
    // when too many lines wait; then it is lost.
    bool say(IrcOutgoing::Kind kind, const IrcSaid& said);

    // A line under the owner's own name that the server has sent, a PRIVMSG or NOTICE. True when it
    // is one of this connection's, and has been taken; anything else may be from another program of
    // his, or old.
    bool take(const IrcMessage& message);

    // If the message refuses a line, the server hasn't passed that on: the one with that label, or
    // else the oldest one that is on its way there. If it may have been for the codes in it, it
    // goes out again without them, at once, and from now on all that is said there does without.
    // False if it doesn't.
    bool refused(const IrcMessage& refusal);

    // The server has done with the line of that label, and has nothing else to say about it.
    void acknowledged(const IrcMessage& message);

    // Drops what waits to be said: in a channel that he has left, or all that the program says
    // because he has had enough of it.
    void dropFor(const std::string& channel);
    void dropAnswers();

    // What waits for somebody goes to him under his new name, since another may take the old one.
    void rename(std::string_view from, const std::string& to);

    // The connection is lost. What was on its way may have been said.
    void connectionLost();

    // It ends, as the owner wants it. The server reads what was sent before.
    void connectionEnded();

    IrcLostLines& lost() { return lost_; }

private:
    struct Line {
        IrcSaid said;
        IrcOutgoing::Kind kind;
        bool isReached = false, isLost = false;
    };
    struct Piece {
        std::shared_ptr<Line> line;
        std::string target; // as it goes; whoever it is may have another name by now
        std::string codes;
        bool isLast;          // the line counts as said with this piece
        bool isAgain = false; // without the codes that were refused
        // Once it has gone:
        std::uint64_t number = 0;
        Nanoseconds sentAt{};
        std::string label = {};
        bool comesBack = false;
        bool isLate = false; // and taken for lost
    };
    using Pieces = std::deque<std::shared_ptr<Piece>>;

    std::size_t longestPiece(const std::string& target) const;
    std::string codesOf(const IrcSaid& said) const;
    bool send(IrcOutgoing::Kind kind, Piece piece);
    std::string leaves(const std::shared_ptr<Piece>& piece);
    void count(Line& line, const IrcMessage* cameBack);
    void countSoon(const std::shared_ptr<Line>& line);
    void countOverdue();
    void lose(Line& line, bool isSure);
    bool isRead(const Piece& piece) const;
    void forgetRead();
    void endWith(const std::function<bool(const Piece& piece)>& isLost);
    void watchEchoes();
    void loseLate();
    bool isThat(const Piece& piece, std::string_view codes) const;
    bool isEchoOf(const Piece& piece, const IrcMessage& message) const;
    bool isRefusal(const IrcMessage& message) const;
    Pieces::iterator refusedOne(const IrcMessage& refusal);
    Pieces::iterator labelled(std::string_view label);

    EventLoop& loop_;
    IrcSession& session_;
    IrcChannels& channels_;
    Reached reached_;
    IrcLostLines lost_;
    Pieces waiting_;
    Pieces sent_; // whose fate isn't known yet, in the order in which they went
    struct Awaited {
        Nanoseconds until;
        std::shared_ptr<Line> line;
    };
    std::deque<Awaited> awaited_; // what the owner has typed, and waits for
    TimerId late_ = TimerId::none, overdue_ = TimerId::none;
};

} // namespace larkspin
