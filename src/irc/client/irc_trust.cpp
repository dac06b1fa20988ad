#include "irc/client/irc_trust.h"

#include "text/characters.h"
#include "text/fold.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <optional>

namespace larkspin {

namespace {

constexpr std::size_t fingerprintDigits = 64;

// "AB:CD:..." of "abcd...", as such texts are shown elsewhere.
std::string shownFingerprint(std::string_view digits) {
    std::string shown;
    for (std::size_t at = 0; at < digits.size(); ++at) {
        if (at > 0 && at % 2 == 0)
            shown += ':';
        shown += capitalAscii(digits[at]);
    }
    return shown;
}

std::optional<std::string> readFingerprint(std::string_view shown) {
    std::string digits;
    for (const char c : shown)
        if (c != ':')
            digits += smallAscii(c);
    const bool isWhole = digits.size() == fingerprintDigits &&
                         digits.find_first_not_of("0123456789abcdef") == digits.npos;
    return isWhole ? std::optional(digits) : std::nullopt;
}

} // namespace

void IrcTrust::distrusted(const IrcServer& server, const IrcCertificate& certificate) {
    const std::string place = IrcServerFacts::placeOf(IrcFact::fingerprint, server);
    if (asked_.place == place && asked_.certificate.fingerprint == certificate.fingerprint)
        return;
    asked_ = {place, certificate, loop_.now()};
    const std::string shown = shownFingerprint(certificate.fingerprint);
    if (server.pinned.empty()) {
        tell_("the certificate of " + visibleName(place) + " has the SHA-256 fingerprint " + shown);
        return tell_("if that is your server's, /trust takes it from now on");
    }
    tell_("WARNING: " + visibleName(place) +
          " shows another certificate than the one that you trust. Somebody may have put himself "
          "between you and the server.");
    tell_("trusted: " + shownFingerprint(server.pinned));
    tell_("shown now: " + shown);
    tell_("only if you know that the server has a new one: /trust takes it");
}

bool IrcTrust::trust(std::string_view rest) {
    const std::string_view word = takeWord(rest);
    const IrcServer& server = file_.account().server;
    const std::string last = IrcServerFacts::placeOf(IrcFact::fingerprint, server);
    if (!rest.empty() || (!word.empty() && server.host.empty()))
        return false;
    if (word.empty()) {
        if (asked_.place.empty()) {
            tell_("no certificate waits for your trust");
            return true;
        }
        // One that others vouch for as well needs nothing that is kept.
        const bool isVouchedFor = asked_.certificate.isVouchedFor;
        const std::string place = asked_.place;
        keep(place, isVouchedFor ? "" : asked_.certificate.fingerprint,
             "the certificate of " + visibleName(place) + " is trusted");
        return true;
    }
    const auto fingerprint = readFingerprint(word);
    if (!fingerprint && !equalFolded(word, "none"))
        return false;
    const char* const which = fingerprint ? " that certificate alone is trusted"
                                          : " any certificate is trusted that is vouched for";
    keep(last, fingerprint.value_or(""), "of " + visibleName(last) + which);
    return true;
}

void IrcTrust::keep(const std::string& place, std::string_view fingerprint,
                    const std::string& told) {
    IrcAccount account = file_.account();
    account.facts.set(IrcFact::fingerprint, place, fingerprint);
    file_.keep(std::move(account));
    forget();
    tell_(told);
    changed_();
}

} // namespace larkspin
