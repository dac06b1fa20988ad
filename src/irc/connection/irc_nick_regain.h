// Takes back the name that the owner wanted, when somebody else had it as the connection began: as
// soon as that one is seen to give it up, and otherwise by asking the server now and then.
#pragma once

#include "shell/event_loop.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

struct IrcFeatures;
struct IrcMessage;

class IrcNickRegain {
public:
    // Sends a line to the server.
    using Request =
        std::function<void(std::string_view command, const std::vector<std::string>& parameters)>;

    IrcNickRegain(EventLoop& loop, Request request) : loop_(loop), request_(std::move(request)) {}
    ~IrcNickRegain() { end(); }
    IrcNickRegain(const IrcNickRegain&) = delete;
    IrcNickRegain& operator=(const IrcNickRegain&) = delete;

    static constexpr std::chrono::minutes betweenLooks{2};

    void begin(const std::string& nick);

    // To be called as soon as the owner has another name, whoever gave him that, and at the end of
    // the connection.
    void end();

    // Everything that the server tells. True for the refusal of what was asked for here: it will be
    // asked for again, so that is no news.
    bool take(const IrcMessage& message, const IrcFeatures& features);

private:
    void look();
    bool isFree(const IrcMessage& message, const IrcFeatures& features) const;

    EventLoop& loop_;
    Request request_;
    std::string nick_; // blank while none is to be taken back
    bool isMonitored_ = false, isAskedFor_ = false, wasRefused_ = false;
    TimerId timer_ = TimerId::none;
};

} // namespace larkspin
