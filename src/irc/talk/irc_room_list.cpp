#include "irc/talk/irc_room_list.h"

#include "host/typed_secrets.h"
#include "irc/protocol/irc_features.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_wildcards.h"
#include "irc/talk/irc_news.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestTopic = 150; // characters that are told
constexpr int mostPeople = 9'999'999;

} // namespace

void IrcRoomList::begin(const std::string& pattern, int leastPeople) {
    const bool isWild = pattern.empty() || pattern.find_first_of("*?") != pattern.npos;
    pattern_ = isWild ? pattern : '*' + pattern + '*';
    least_ = leastPeople;
    isComing_ = true;
    found_ = 0;
    rooms_.clear();
}

std::vector<std::string> IrcRoomList::parameters(const IrcFeatures& features) const {
    const auto can = [&](char filter) {
        return features.listFilters.find(filter) != std::string::npos;
    };
    std::string filters;
    if (least_ > 1 && can('U'))
        filters = '>' + std::to_string(least_ - 1);
    if (!pattern_.empty() && can('M') && pattern_.find(',') == std::string::npos)
        filters += (filters.empty() ? "" : ",") + pattern_;
    return filters.empty() ? std::vector<std::string>() : std::vector<std::string>{filters};
}

void IrcRoomList::add(const IrcMessage& room, const IrcFeatures& features) {
    const std::string_view name = room.parameter(1);
    const int people = plainNumber(room.parameter(2), 0, mostPeople).value_or(0);
    if (people < least_ ||
        !(pattern_.empty() || fitsIrcMask(features.fold(name), features.fold(pattern_))))
        return;
    ++found_;
    rooms_.push_back({std::string(name), std::string(room.parameter(3)), people});
    if (rooms_.size() >= 2 * most)
        keepLargest();
}

void IrcRoomList::keepLargest() {
    std::ranges::stable_sort(rooms_, std::ranges::greater(), &Room::people);
    if (rooms_.size() > most)
        rooms_.resize(most);
}

// Some servers put a room's modes in front of its topic, "[+ntk KEY] songs", and show the key to
// those who are in it.
static std::string withoutKey(const std::string& topic) {
    const auto end = topic.find(']'), parameters = topic.find(' ');
    const bool hasKey = topic.starts_with("[+") && end != topic.npos && parameters < end &&
                        topic.substr(0, parameters).find('k') != topic.npos;
    return hasKey ? topic.substr(0, parameters + 1).append(secretMask).append(topic.substr(end))
                  : topic;
}

std::vector<std::string> IrcRoomList::lines() {
    isComing_ = false;
    keepLargest();
    std::vector<std::string> lines;
    for (const Room& room : std::exchange(rooms_, {})) {
        const std::string topic = withoutKey(plainText(room.topic));
        const std::size_t length = prefixLength(topic, longestTopic);
        lines.push_back(visibleName(room.name) + "  " + counted(room.people, "person", "people") +
                        (topic.empty() ? "" : "  " + topic.substr(0, length)) +
                        (length < topic.size() ? "..." : ""));
    }
    if (lines.empty())
        lines.push_back("there is no such room");
    else if (found_ > lines.size())
        lines.push_back("and " +
                        counted(static_cast<std::int64_t>(found_ - lines.size()), "smaller room") +
                        "; /list PATTERN or /list LEAST asks for fewer");
    return lines;
}

} // namespace larkspin
