// How an account is logged in to (SASL): by a certificate of the owner's, by a proof of the
// password, or by the password itself, whichever the server takes first in that order.
#pragma once

#include "irc/connection/irc_identity.h"
#include "irc/protocol/sasl_lines.h"
#include "irc/protocol/scram.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct IrcMessage;
struct IrcServer;

class IrcLogin {
public:
    using Send = std::function<void(const std::string& line)>;
    using Tell = std::function<void(const std::string& text)>;

    IrcLogin(const IrcIdentity& identity, const IrcServer& server, Send send, Tell tell);

    // Whether there is something to log in by, and it hasn't come to an end.
    bool isWanted() const { return state_ != State::over; }
    bool isUnderWay() const { return state_ == State::asked || state_ == State::sent; }

    // Whether one of these ways ("PLAIN,EXTERNAL"; blank if the server names none) can be gone.
    bool knows(std::string_view ways) const { return isWanted() && !waysAmong(ways).empty(); }

    // Once the server has granted it.
    void begin(std::string_view ways);

    // AUTHENTICATE, and the numbers about logins.
    void take(const IrcMessage& message);

    // Tells the owner that he isn't logged in, unless there was nothing to log in by.
    void fail(std::string_view why);

    // The same for a server that offers no way, of which only he needs to know who has an account.
    void failUnoffered(std::string_view why);

    // Services may come later than the owner. After this, a way that wasn't offered is wanted
    // again.
    void renew();

private:
    enum class State { wanted, asked, sent, over }; // asked: the way; sent: what counts

    std::vector<std::string> waysAmong(std::string_view offered) const;
    bool goNext();
    void answer(std::string_view challenge);
    std::optional<std::string> answerTo(const std::optional<std::string>& challenge);
    void takeOutcome(const IrcMessage& message);

    IrcIdentity identity_;
    bool hasCertificate_, isEncrypted_;
    Send send_;
    Tell tell_;
    std::vector<std::string> ways_; // to be tried, the next one first
    std::string way_;               // that is tried
    std::optional<ScramClient> scram_;
    SaslInput input_;
    State state_ = State::over;
    bool isProved_ = false; // by the server
    bool isGivenUp_ = false, isUnoffered_ = false;
};

} // namespace larkspin
