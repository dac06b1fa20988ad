#include "irc/connection/irc_nick_choice.h"

#include "text/characters.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// The oldest servers take names of this many characters.
constexpr std::size_t longestEverywhere = 9;
constexpr int mostUnderscores = 3;
constexpr const char* fallback = "larkspin";

std::string lettersAndDigits(const std::string& name) {
    std::string plain;
    for (const char c : name)
        if (isLetter(c) || (!plain.empty() && isDigit(c)))
            plain += c;
    return plain.empty() ? fallback : plain;
}

} // namespace

IrcNickChoice::IrcNickChoice(std::string wanted) : base_(std::move(wanted)), asked_(base_) {}

bool IrcNickChoice::taken(std::string_view asServerWrites) {
    if (!asServerWrites.empty() && asServerWrites.size() < asked_.size() &&
        asked_.starts_with(asServerWrites))
        longest_ = asServerWrites.size();
    return next();
}

bool IrcNickChoice::malformed() {
    base_ = lettersAndDigits(base_);
    longest_ = std::min(longest_, longestEverywhere);
    if (const std::string plain = base_.substr(0, longest_); tries_ == 0 && plain != asked_) {
        asked_ = plain;
        return ++tries_ <= mostTries;
    }
    return next();
}

bool IrcNickChoice::next() {
    if (++tries_ > mostTries)
        return false;
    const std::string suffix = tries_ <= mostUnderscores
                                   ? std::string(static_cast<std::size_t>(tries_), '_')
                                   : std::to_string(tries_ - mostUnderscores);
    const std::size_t room = longest_ - std::min(longest_, suffix.size());
    asked_ = base_.substr(0, fittingLength(base_, room)) + suffix;
    return true;
}

} // namespace larkspin
