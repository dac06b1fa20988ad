#include "irc/channels/irc_ignore_list.h"

#include "irc/protocol/irc_features.h"
#include "irc/protocol/irc_wildcards.h"
#include "shell/kept_files.h"
#include "text/blanks.h"
#include "text/characters.h"
#include "text/fold.h"
#include "text/parts.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t largestIgnoreFile = 300'000; // bytes

std::string orStar(std::string_view text) {
    return text.empty() ? "*" : std::string(text);
}

} // namespace

IrcIgnoreList::IrcIgnoreList(KeptFiles& files, std::string path)
    : files_(files), path_(std::move(path)), masks_(read()) {}

std::string IrcIgnoreList::maskOf(std::string_view given) {
    if (given.empty() || given.size() > longest || hasControls(given) ||
        given.find(' ') != given.npos)
        return {};
    const auto [nick, userAndHost, isNamed] = partedAt(given, '!');
    if (isNamed) {
        const auto [user, host, hasHost] = partedAt(userAndHost, '@');
        return orStar(nick) + '!' + orStar(user) + '@' + orStar(host);
    }
    const auto [user, host, hasHost] = partedAt(given, '@');
    return hasHost ? "*!" + orStar(user) + '@' + orStar(host) : std::string(given) + "!*@*";
}

std::vector<std::string> IrcIgnoreList::read() {
    const FileRead file = files_.read(path_, largestIgnoreFile);
    isRead_ = !file.failed();
    std::vector<std::string> masks;
    for (std::string_view rest = file.contents; !rest.empty() && masks.size() < most;)
        if (std::string mask = maskOf(withoutBlanks(takePart(rest, '\n'), " \r")); !mask.empty())
            masks.push_back(std::move(mask));
    return masks;
}

// What a file that couldn't be read before holds must not get lost.
void IrcIgnoreList::keep() {
    if (!isRead_)
        for (std::string& mask : read())
            if (std::ranges::find(masks_, mask) == masks_.end())
                masks_.push_back(std::move(mask));
    std::string contents;
    for (const std::string& mask : masks_)
        contents += mask + '\n';
    files_.replace(path_, contents);
}

bool IrcIgnoreList::add(const std::string& mask) {
    if (masks_.size() >= most)
        return false;
    if (std::ranges::none_of(masks_, [&](const auto& each) { return equalFolded(each, mask); })) {
        masks_.push_back(mask);
        keep();
    }
    return true;
}

bool IrcIgnoreList::remove(std::string_view mask) {
    const bool isThere =
        std::erase_if(masks_, [&](const auto& each) { return equalFolded(each, mask); }) > 0;
    if (isThere)
        keep();
    return isThere;
}

const std::string* IrcIgnoreList::find(std::string_view who, const IrcFeatures& features) const {
    if (masks_.empty())
        return nullptr;
    const std::string folded = features.fold(who);
    const auto found = std::ranges::find_if(
        masks_, [&](const std::string& mask) { return fitsIrcMask(folded, features.fold(mask)); });
    return found == masks_.end() ? nullptr : &*found;
}

} // namespace larkspin
