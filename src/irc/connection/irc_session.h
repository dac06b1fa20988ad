// The life of a connection to a server: it is opened, registers, is kept alive, and when it is lost
// it is made again, with waits that grow.
#pragma once

#include "irc/connection/irc_batches.h"
#include "irc/connection/irc_connection.h"
#include "irc/connection/irc_lag_watch.h"
#include "irc/connection/irc_nick_regain.h"
#include "irc/connection/irc_outgoing.h"
#include "irc/connection/irc_registration.h"
#include "irc/protocol/irc_features.h"
#include "irc/protocol/irc_input.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

struct IrcMessage;

// What is asked of whoever keeps what is known of servers, and told to him. None may wait.
struct IrcKeeper {
    // A server with what is kept for it, before it is connected to in place of another one.
    std::function<IrcServer(IrcServer server)> completed;

    std::function<void(const IrcServer&, const IrcCertificate&)> distrusted; // and not taken

    // The server is to be reached by TLS alone, for so long from now on; 0: no longer.
    std::function<void(const IrcServer&, std::chrono::seconds)> secured;
};

class IrcSession {
public:
    // None of these may wait.
    struct Events {
        Task welcomed;                                  // the server knows the owner now
        std::function<void(const IrcMessage&)> message; // after that
        Task lost;                                      // also when it had never been welcomed
        std::function<void(const std::string& text)> tell;
        Task lagChanged = [] {}; // after each change of `isLagging`
    };

    IrcSession(EventLoop& loop, IrcConnection& connection, Events events);
    ~IrcSession();
    IrcSession(const IrcSession&) = delete;
    IrcSession& operator=(const IrcSession&) = delete;

    static constexpr std::chrono::seconds longestBeginning{60}; // until the welcome
    static constexpr std::chrono::seconds longestSilence{120};  // before the server is asked
    static constexpr std::chrono::seconds longestAnswer{60};    // of one that owes an answer
    static constexpr std::chrono::seconds shortestWait{5}, longestWait{300}; // before the next try
    static constexpr std::chrono::seconds lasting{60};      // so long, and the waits begin anew
    static constexpr std::chrono::seconds longestEnding{5}; // of a connection that is given up
    static constexpr std::chrono::milliseconds longestFarewell{300}; // as the process ends

    void keepBy(IrcKeeper keeper) { keeper_ = std::move(keeper); }

    void connect(const IrcServer& server, const IrcIdentity& identity);

    // Who the owner is from the next connection on; his name stays.
    void identify(const IrcIdentity& identity);

    // Ends the connection with a farewell, or ends the tries to make one, and doesn't connect
    // again. Lines that wait to be sent are dropped, as they are whenever a connection ends.
    void end(const std::string& farewell);

    // To be called as the process ends: sends these last lines before the connection closes.
    void finish(const std::string& lastLines);

    bool isOn() const { return phase_ != Phase::off; } // connected, or trying
    bool isWelcomed() const { return phase_ == Phase::welcomed; }

    // Whether a capability holds at the moment: the server has granted it, and not taken it back.
    bool holds(std::string_view capability) const {
        return registration_ && registration_->capabilities().holds(capability);
    }
    bool echoes() const { return holds(capability::echo); }

    // Whether the server tells with each answer to which line it belongs, if that had a label.
    bool labels() const { return holds(capability::labels) && holds(capability::batch); }
    const IrcBatches& batches() const { return batches_; }

    const IrcServer& server() const { return server_; }
    const IrcIdentity& identity() const { return identity_; }
    const IrcFeatures& features() const { return features_; }
    Nanoseconds welcomedAt() const { return welcomedAt_; }

    // How long the server takes to answer, as far as is known, and whether the owner has been told
    // that this is long.
    Nanoseconds lag() const { return outgoing_.lag().current(loop_.now()); }
    bool isLagging() const { return lagWatch_.isLagging(); }

    // The owner's name on this connection, as the server has it; before the welcome, the name that
    // the server will be asked for.
    const std::string& nick() const { return isWelcomed() ? nick_ : identity_.nick; }
    bool isSelf(std::string_view name) const { return isSame(name, nick()); }
    bool isSame(std::string_view a, std::string_view b) const {
        return features_.fold(a) == features_.fold(b);
    }

    // Asks for another one, now and, once the server has agreed, also at the next connection.
    void changeNick(const std::string& nick);

    // A line of the protocol, or one that waits its turn. False, and nothing happens, while there
    // is no welcome, and when too many wait.
    bool request(std::string_view command, const std::vector<std::string>& parameters);
    bool send(IrcOutgoing::Kind kind, std::string line, IrcOutgoing::Leaving leaving = {});

    IrcOutgoing& outgoing() { return outgoing_; }

private:
    enum class Phase { off, beginning, welcomed, waiting };

    void open();
    void take(std::string_view bytes);
    void take(const IrcMessage& message);
    bool follow(const IrcMessage& message);
    void tellEarly(const IrcMessage& message);
    bool leavesForTls();
    void reportSecurity();
    void welcome();
    void answer(const IrcMessage& ping);
    void lookForSilence();
    void tellLag() const;
    void giveUp(const std::string& why);
    void lose(const std::string& why);
    void reset(Phase phase);
    void wakeIn(Nanoseconds span, Task task);

    EventLoop& loop_;
    IrcConnection& connection_;
    Events events_;
    IrcServer server_;
    IrcIdentity identity_;
    Phase phase_ = Phase::off;
    IrcInput input_;
    IrcOutgoing outgoing_;
    IrcLagWatch lagWatch_;
    IrcFeatures features_;
    IrcBatches batches_;
    std::optional<IrcRegistration> registration_;
    IrcKeeper keeper_;
    IrcNickRegain regain_;
    std::optional<std::chrono::seconds> secured_; // for so long, the server has said
    std::string nick_, wantedNick_;
    std::chrono::seconds nextWait_ = shortestWait;
    Nanoseconds welcomedAt_{}, heardAt_{};
    TimerId timer_ = TimerId::none; // there is one at most: each phase waits for one thing
};

} // namespace larkspin
