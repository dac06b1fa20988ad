// A pretended IRC server behind a connection without a network. It answers what a client sends as
// servers do, says what a test gives it, line by line, and may be lost, refuse or go silent. It may
// count what the client's lines cost, and leave them unread for a while.
#pragma once

#include "irc/connection/irc_connection.h"
#include "irc/protocol/irc_message.h"
#include "support/irc_penalties.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class PretendIrc : public IrcConnection {
public:
    explicit PretendIrc(EventLoop& loop) : loop_(loop) {}

    std::string capabilities = "echo-message multi-prefix";
    std::string nick; // of the client, once it has one
    std::map<std::string, std::string> names{{"#music", "@Owner ann +bob"}}; // who is in a channel
    std::map<std::string, std::string> origins; // people's "user host" that WHO tells, by nick
    bool refuses = false;                       // connections
    bool silent = false;                        // answers nothing
    Nanoseconds lag{};                          // until it answers what asks for it
    const IrcPenalties* family = nullptr;       // by which it counts
    std::size_t held = 0;                       // bytes that it hasn't taken from the client
    std::function<bool(const std::string& line)> takes; // true: the line is answered by the test

    int opened = 0;
    IrcServer to;                  // the one that was connected to last
    std::vector<std::string> sent; // by the client, without what registers and asks for answers
    std::string label;             // of the last line that it has read, which `sent` is without
    Nanoseconds finishing{};       // how long the last lines may have taken

    // The server's lines, in one chunk.
    void say(const std::string& lines, const char* end = "\r\n") {
        loop_.post([this, bytes = lines + end] {
            if (isOpen_)
                events_.received(bytes);
        });
    }
    void lose(const std::string& why) {
        if (std::exchange(isOpen_, false))
            post([ended = events_.ended, why] { ended(why); });
    }

    void distrust(const std::string& fingerprint, bool isVouchedFor = false) {
        if (std::exchange(isOpen_, false))
            post([events = events_, fingerprint, isVouchedFor] {
                events.distrusted({fingerprint, isVouchedFor});
                events.ended("its certificate isn't taken");
            });
    }

    void open(const IrcServer& server, Events events) override {
        ++opened;
        to = server;
        close();
        events_ = std::move(events);
        nick.clear();
        unread_.clear();
        paidUntil_ = {};
        isKnown_ = hasEcho_ = false;
        isOpen_ = !refuses;
        if (isOpen_)
            post([opened = events_.opened] { opened(); });
        else
            post([ended = events_.ended] { ended("nobody is there"); });
    }
    void send(std::string_view bytes) override {
        for (std::size_t end; isOpen_ && (end = bytes.find("\r\n")) != bytes.npos;
             bytes.remove_prefix(end + 2)) {
            unread_.emplace_back(bytes.substr(0, end));
            read();
        }
    }
    bool isOpen() const { return isOpen_; }
    std::size_t unsent() const override { return held; }
    void close() override {
        isOpen_ = false;
        ++connection_;
    }
    void finish(Nanoseconds atMost) override {
        finishing = atMost;
        close();
    }

private:
    // Nothing comes after the end of its connection.
    void post(Task event) {
        loop_.post([this, event = std::move(event), of = connection_] {
            if (of == connection_)
                event();
        });
    }

    void read() {
        while (!unread_.empty() && (!family || paidUntil_ - loop_.now() < family->credit)) {
            const std::string line = unread_.front();
            unread_.pop_front();
            if (family)
                paidUntil_ = std::max(paidUntil_, loop_.now()) + family->perLine +
                             static_cast<int>(line.size() + 2) / 100 * family->perPart;
            take(line);
        }
        std::size_t bytes = 0;
        for (const std::string& line : unread_)
            bytes += line.size() + 2;
        if (family && bytes > family->mostUnread)
            lose("Excess Flood");
        else if (!unread_.empty() && !std::exchange(looksAgain_, true))
            loop_.once(family->betweenLooks, [this] {
                looksAgain_ = false;
                read();
            });
    }

    void take(const std::string& whole) {
        const IrcMessage message = *readIrcMessage(whole);
        const std::string line = whole.substr(whole.starts_with('@') ? whole.find(' ') + 1 : 0);
        label = message.tag("label");
        const std::string& command = message.command;
        if (command == "PING") {
            if (!silent)
                loop_.once(
                    lag, [this, token = message.parameters[0]] { say(":irc PONG irc " + token); });
            return;
        }
        static const std::vector<std::string> ofTheConnection{"CAP", "NICK", "USER", "PONG",
                                                              "AUTHENTICATE"};
        if (std::ranges::find(ofTheConnection, command) == ofTheConnection.end() || isKnown_)
            sent.push_back(line);
        if (silent || (takes && takes(line)))
            return;
        const std::string me = ':' + nick + "!o@host ";
        if (command == "CAP")
            negotiate(message);
        else if (command == "NICK" && isKnown_)
            say(me + "NICK " + (nick = message.parameters[0]));
        else if (command == "NICK")
            nick = message.parameters[0];
        else if (command == "JOIN")
            join(message.parameters[0]);
        else if (command == "MODE" && message.parameters.size() == 2)
            say(":irc 368 " + nick + ' ' + message.parameters[0] + " :End");
        else if (command == "WHO")
            say((origins.contains(message.parameters[0])
                     ? ":irc 352 " + nick + " * " + origins[message.parameters[0]] + " irc " +
                           message.parameters[0] + " H :0 x\r\n"
                     : "") +
                ":irc 315 " + nick + ' ' + message.parameters[0] + " :End");
        else if ((command == "PRIVMSG" || command == "NOTICE") && hasEcho_)
            say((label.empty() ? "" : "@label=" + label + ' ') + me + line);
        else if (command == "PRIVMSG" && !label.empty())
            say("@label=" + label + " :irc ACK");
        else if (command == "MODE" || command == "KICK" || command == "PART" || command == "TOPIC")
            say(me + line);
        else if (command == "QUIT")
            lose("the server has closed it");
    }

    void negotiate(const IrcMessage& message) {
        if (message.parameter(0) == "LS") {
            say(":irc CAP * LS :" + capabilities);
        } else if (message.parameter(0) == "REQ") {
            hasEcho_ = message.parameters.back().find("echo-message") != std::string::npos;
            say(":irc CAP * ACK :" + message.parameters.back());
        } else if (message.parameter(0) == "END") {
            isKnown_ = true;
            say(":irc 001 " + nick + " :Welcome\r\n:irc 005 " + nick +
                " PREFIX=(ov)@+ STATUSMSG=@+ CHANTYPES=# CASEMAPPING=rfc1459 :are supported\r\n:irc 422 " +
                nick + " :No MOTD");
        }
    }

    void join(std::string_view list) {
        while (!list.empty()) {
            const std::string name(list.substr(0, list.find(',')));
            list.remove_prefix(std::min(name.size() + 1, list.size()));
            say(':' + nick + "!o@host JOIN " + name + "\r\n:irc 353 " + nick + " = " + name + " :" +
                names[name] + "\r\n:irc 366 " + nick + ' ' + name + " :End");
        }
    }

    EventLoop& loop_;
    Events events_;
    int connection_ = 0;
    std::deque<std::string> unread_;
    Nanoseconds paidUntil_{}; // its clock for this client
    bool looksAgain_ = false;
    bool isOpen_ = false, isKnown_ = false, hasEcho_ = false;
};

// What a test keeps the server of.
class LentConnection : public IrcConnection {
public:
    explicit LentConnection(PretendIrc& server) : server_(server) {}
    ~LentConnection() override { server_.close(); }

    void open(const IrcServer& server, Events events) override {
        server_.open(server, std::move(events));
    }
    void send(std::string_view bytes) override { server_.send(bytes); }
    std::size_t unsent() const override { return server_.unsent(); }
    void close() override { server_.close(); }
    void finish(Nanoseconds atMost) override { server_.finish(atMost); }

private:
    PretendIrc& server_;
};

// The first server is the first connection's, and so on. What is connected to beyond them is never
// reached.
inline auto lent(std::vector<PretendIrc*> servers) {
    return [servers, next = std::size_t(0)]() mutable -> std::unique_ptr<IrcConnection> {
        return std::make_unique<LentConnection>(*servers.at(std::min(next++, servers.size() - 1)));
    };
}

} // namespace larkspin
