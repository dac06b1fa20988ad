#include "irc/talk/irc_told_secrets.h"

#include "host/typed_secrets.h"
#include "irc/connection/irc_session.h"
#include "text/characters.h"
#include "text/parts.h"
#include "text/typed_words.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::size_t shortestSecret = 3; // bytes

// Names come before a password, and an address may come after it.
std::string_view passwordIn(std::string_view hidden) {
    std::string_view password;
    for (std::string_view word; !(word = takeWord(hidden)).empty();)
        if (word.find('@') == word.npos)
            password = word;
    return password;
}

bool isInWord(std::string_view text, std::size_t place) {
    return place < text.size() && (isLetter(text[place]) || isDigit(text[place]));
}

std::string withoutWord(std::string_view text, std::string_view word) {
    std::string shown(text);
    for (auto at = shown.find(word); at != shown.npos; at = shown.find(word, at + 1))
        if (!(at > 0 && isInWord(shown, at - 1)) && !isInWord(shown, at + word.size()))
            shown.replace(at, word.size(), secretMask);
    return shown;
}

} // namespace

void IrcToldSecrets::forgetOld() {
    std::erase_if(told_, [this](const Told& told) { return loop_.now() >= told.until; });
}

void IrcToldSecrets::add(std::string_view to, std::string_view text, std::string_view shown) {
    forgetOld();
    if (text == shown || shown.size() < secretMask.size())
        return;
    const std::string_view secret =
        passwordIn(text.substr(std::min(shown.size() - secretMask.size(), text.size())));
    if (secret.size() < shortestSecret)
        return;
    told_.push_back({std::string(partedAt(to, '@').head), std::string(secret), loop_.now() + span});
    if (told_.size() > most)
        told_.pop_front();
}

std::string IrcToldSecrets::without(std::string_view nick, std::string_view text) {
    forgetOld();
    std::string shown(text);
    for (const Told& told : told_)
        if (session_.isSame(told.to, nick))
            shown = withoutWord(shown, told.secret);
    return shown;
}

} // namespace larkspin
