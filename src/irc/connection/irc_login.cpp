#include "irc/connection/irc_login.h"

#include "irc/connection/irc_connection.h"
#include "irc/protocol/base64.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/parts.h"

#include <algorithm>
#include <random>
#include <utility>

namespace larkspin {

namespace {

constexpr const char *external = "EXTERNAL", *scramSha256 = "SCRAM-SHA-256", *plainSasl = "PLAIN";
constexpr std::size_t nonceSize = 18; // in bytes

std::string freshNonce() {
    std::random_device random;
    std::string bytes;
    for (std::size_t at = 0; at < nonceSize; ++at)
        bytes += static_cast<char>(random() & 0xFF);
    return base64(bytes);
}

} // namespace

IrcLogin::IrcLogin(const IrcIdentity& identity, const IrcServer& server, Send send, Tell tell)
    : identity_(identity), hasCertificate_(!server.ownCertificate.empty()),
      isEncrypted_(server.encrypted), send_(std::move(send)), tell_(std::move(tell)) {
    if (!identity_.account.empty() || hasCertificate_)
        state_ = State::wanted;
}

std::vector<std::string> IrcLogin::waysAmong(std::string_view offered) const {
    std::vector<std::string> named, ways;
    if (!isEncrypted_)
        return ways;
    for (std::string_view rest = offered; !rest.empty();)
        named.emplace_back(takePart(rest, ','));
    // Without a name a server means the way that all know.
    const auto isOffered = [&](const char* way, bool otherwise) {
        return named.empty() ? otherwise : std::ranges::find(named, way) != named.end();
    };
    if (hasCertificate_ && isOffered(external, true))
        ways.emplace_back(external);
    if (identity_.password.empty())
        return ways;
    if (isOffered(scramSha256, false))
        ways.emplace_back(scramSha256);
    if (isOffered(plainSasl, true))
        ways.emplace_back(plainSasl);
    return ways;
}

void IrcLogin::begin(std::string_view ways) {
    ways_ = waysAmong(ways);
    if (!goNext())
        fail("the server offers no login by a password");
}

bool IrcLogin::goNext() {
    if (ways_.empty())
        return false;
    way_ = ways_.front();
    ways_.erase(ways_.begin());
    state_ = State::asked;
    if (way_ == scramSha256)
        scram_.emplace(identity_.account, identity_.password, freshNonce());
    send_(ircLine("AUTHENTICATE", {way_}));
    return true;
}

void IrcLogin::take(const IrcMessage& message) {
    if (!isUnderWay())
        return;
    if (message.command == "AUTHENTICATE")
        answer(message.parameter(0));
    else
        takeOutcome(message);
}

// A password is sent once at most, and only when the server asks for it as agreed.
void IrcLogin::answer(std::string_view challenge) {
    const bool isAllSaid = state_ == State::sent && way_ != scramSha256;
    if (isGivenUp_ || isAllSaid || !input_.add(challenge))
        return;
    const auto text = answerTo(input_.message());
    isGivenUp_ = !text;
    if (!text)
        return send_(ircLine("AUTHENTICATE", {"*"}));
    for (const std::string& line : saslLines(*text))
        send_(ircLine("AUTHENTICATE", {line}));
}

// Nothing for a challenge that isn't what must come next.
std::optional<std::string> IrcLogin::answerTo(const std::optional<std::string>& challenge) {
    if (!challenge)
        return std::nullopt;
    const bool isFirst = std::exchange(state_, State::sent) == State::asked;
    if (way_ != scramSha256) {
        if (!isFirst || !challenge->empty())
            return std::nullopt;
        return way_ == plainSasl ? saslPlain(identity_.account, identity_.password) : "";
    }
    if (isFirst && challenge->empty()) {
        state_ = State::asked; // what counts comes with the next one
        return scram_->first();
    }
    if (auto proof = isFirst ? scram_->second(*challenge) : std::nullopt)
        return proof;
    isProved_ = scram_->isProof(*challenge);
    return isProved_ ? std::optional<std::string>("") : std::nullopt;
}

void IrcLogin::takeOutcome(const IrcMessage& message) {
    const std::string& command = message.command;
    // These two only tell the name of the account. How the login went comes in another number.
    if (command == numeric::loggedIn || command == numeric::loggedOut)
        return;
    const bool isProof = way_ == scramSha256;
    if (command == numeric::loginDone || command == numeric::loginDoneBefore) {
        if (isProof && command == numeric::loginDone && !isProved_)
            return fail("the server hasn't proved that it knows the password");
        state_ = State::over;
    } else if (command == numeric::loginWays) {
        // What goes on from here is told by the refusal that follows.
        const auto known = waysAmong(message.parameter(1));
        std::erase_if(ways_, [&](const std::string& way) {
            return std::ranges::find(known, way) == known.end();
        });
        if (ways_.empty())
            fail("the server knows only other ways than a password");
    } else if (isProof && isGivenUp_) {
        fail("the server doesn't prove that it knows the password");
    } else {
        // The next way is another chance, unless the password has been refused already.
        const bool isRefused = state_ == State::sent && way_ != external;
        if (!isRefused && !isGivenUp_ && goNext())
            return;
        const bool saysWhy = message.parameters.size() > 1;
        fail(saysWhy ? message.parameters.back() : "the server refuses it");
    }
}

void IrcLogin::fail(std::string_view why) {
    if (std::exchange(state_, State::over) != State::over)
        tell_("you are not logged in: " + std::string(why));
}

void IrcLogin::failUnoffered(std::string_view why) {
    isUnoffered_ = isUnoffered_ || isWanted();
    if (identity_.account.empty())
        state_ = State::over;
    fail(why);
}

void IrcLogin::renew() {
    if (std::exchange(isUnoffered_, false))
        state_ = State::wanted;
}

} // namespace larkspin
