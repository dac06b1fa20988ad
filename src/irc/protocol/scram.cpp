#include "irc/protocol/scram.h"

#include "irc/protocol/base64.h"
#include "irc/protocol/sha256.h"
#include "text/number.h"
#include "text/parts.h"

#include <utility>

namespace larkspin {

namespace {

// The two characters that mean something in a message.
std::string escapedName(std::string_view account) {
    std::string name;
    for (const char c : account)
        name += c == ',' ? "=2C" : c == '=' ? "=3D" : std::string(1, c);
    return name;
}

// The value of "k=value" at the front, which is taken off.
std::optional<std::string> takeValue(std::string_view& rest, char key) {
    const std::string_view part = takePart(rest, ',');
    if (part.size() < 2 || part[0] != key || part[1] != '=')
        return std::nullopt;
    return std::string(part.substr(2));
}

std::string bothOf(std::string a, std::string_view b) {
    for (std::size_t at = 0; at < a.size(); ++at)
        a[at] = static_cast<char>(a[at] ^ b[at]);
    return a;
}

} // namespace

ScramClient::ScramClient(std::string_view account, std::string password, std::string nonce)
    : password_(std::move(password)), nonce_(std::move(nonce)),
      begun_("n=" + escapedName(account) + ",r=" + nonce_) {}

std::optional<std::string> ScramClient::second(std::string_view answer) {
    std::string_view rest = answer;
    const auto nonce = takeValue(rest, 'r'), saltText = takeValue(rest, 's'),
               roundsText = takeValue(rest, 'i');
    if (!nonce || !saltText || !roundsText)
        return std::nullopt;
    const auto salt = fromBase64(*saltText);
    const auto rounds = plainNumber(*roundsText, fewestRounds, mostRounds);
    const bool isMine = nonce->size() > nonce_.size() && nonce->starts_with(nonce_);
    if (!isMine || !salt || salt->empty() || !rounds)
        return std::nullopt;
    const HmacSha256 salted(pbkdf2Sha256(password_, *salt, *rounds));
    const std::string key = salted.of("Client Key");
    const std::string end = "c=biws,r=" + *nonce; // "biws" is "n,," once more
    const std::string all = begun_ + ',' + std::string(answer) + ',' + end;
    signature_ = HmacSha256(salted.of("Server Key")).of(all);
    return end + ",p=" + base64(bothOf(key, HmacSha256(sha256(key)).of(all)));
}

bool ScramClient::isProof(std::string_view lastWord) const {
    const auto signature = takeValue(lastWord, 'v');
    return !signature_.empty() && signature && fromBase64(*signature) == signature_;
}

} // namespace larkspin
