// Lines that the owner gives once for a network, and that are run after each welcome there.
#pragma once

#include "host/slash_words.h"
#include "irc/client/irc_accounts.h"
#include "shell/event_loop.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class IrcClient;

class IrcOnConnect {
public:
    // The words that such lines may have. One that leads to a network itself isn't among them.
    using Words = std::function<SlashWords(IrcClient& network)>;

    IrcOnConnect(EventLoop& loop, IrcClient& irc, IrcAccountFile& file, SlashWords::Tell tell,
                 Words words);
    ~IrcOnConnect() { loop_.cancel(running_); }
    IrcOnConnect(const IrcOnConnect&) = delete;
    IrcOnConnect& operator=(const IrcOnConnect&) = delete;

    // Runs the lines, and the task after them.
    void welcomed(const Task& goOn);

    // "" tells which there are, "drop 2" and "drop all" drop some, and anything else is a line, for
    // the network that the owner is on, or else for the next one. False for one that makes no
    // sense.
    bool take(std::string_view rest);

private:
    std::string place() const;
    void run(const std::string& line);
    void tellAll() const;
    bool drop(std::string_view which);
    bool add(std::string_view line);

    EventLoop& loop_;
    IrcClient& irc_;
    IrcAccountFile& file_;
    SlashWords::Tell tell_;
    Words words_;
    TimerId running_ = TimerId::none;
};

} // namespace larkspin
