// What a server can do beyond the plain protocol (CAP): asks for what the program makes use of, and
// knows what holds at the moment, also when that changes later.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

struct IrcMessage;

namespace capability {

inline constexpr const char *sasl = "sasl", *echo = "echo-message", *sts = "sts", *batch = "batch",
                            *labels = "labeled-response", *time = "server-time",
                            *history = "chathistory", *draftHistory = "draft/chathistory";

} // namespace capability

class IrcCapabilities {
public:
    using Send = std::function<void(const std::string& line)>;

    explicit IrcCapabilities(Send send) : send_(std::move(send)) {}

    // Asks what there is.
    void begin();

    // Takes a CAP message. When all has been told, what is wanted is asked for; so is what comes
    // later. `wantsLogin` is whether `sasl`, with this value, is of use.
    using WantsLogin = std::function<bool(std::string_view ways)>;
    void take(const IrcMessage& message, const WantsLogin& wantsLogin);

    // Whether such a message tells what there is.
    static bool isOffer(const IrcMessage& message);

    // Whether the server has told all that there is, and whether it has answered all requests.
    bool isListed() const { return isListed_; }
    bool isSettled() const { return requested_.empty(); }

    bool asksFor(std::string_view name) const;
    bool holds(std::string_view name) const;

    // What the server says about one that it offers: "PLAIN,EXTERNAL"; nothing where it isn't
    // offered, blank where there is nothing to say.
    const std::string* offered(std::string_view name) const;

private:
    void takeOffers(const std::vector<std::string_view>& words, const WantsLogin& wantsLogin);
    void takeGrant(std::string_view word);
    void takeRefusal(const std::vector<std::string_view>& words);
    void takeBack(std::string_view name);
    void request();

    Send send_;
    std::vector<std::pair<std::string, std::string>> offered_; // of those below
    std::vector<std::string> wanted_, requested_, held_; // to be asked for; not answered; granted
    bool isListed_ = false, asksSingly_ = false;
};

} // namespace larkspin
