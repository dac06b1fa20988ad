#include "host/conversations.h"

#include "chat/chat_lines.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// Lines that come one right after the other, so that no front end comes to show them. A
// conversation keeps several times as many, also of long ones.
constexpr std::uint64_t mostUnshown = 200;

} // namespace

Conversations::Conversations(EventLoop& loop, ChatLines& lines, std::string home)
    : loop_(loop), lines_(lines) {
    home_ = front_ = &add({Conversation::Kind::home, 0, std::move(home)});
    nowhere_.isOpen = false;
}

Conversation* Conversations::find(std::string_view place) const {
    const auto found = std::ranges::find(all_, place, &Conversation::place);
    return found == all_.end() ? nullptr : found->get();
}

Conversation& Conversations::before() const {
    Conversation* latest = home_;
    for (const auto& each : all_)
        if (each.get() != front_ && each->isOpen && each->lastVisit_ > latest->lastVisit_)
            latest = each.get();
    return *latest;
}

Conversation& Conversations::here() {
    if (const std::string& place = lines_.talk().place; !place.empty()) {
        Conversation* const talkedIn = find(place);
        return talkedIn ? *talkedIn : nowhere_;
    }
    return front_->isOpen ? *front_ : *home_;
}

Conversation* Conversations::toSpeakIn() {
    Conversation& place = here();
    lines_.speaksAt(place.place());
    return place.isOpen ? &place : nullptr;
}

std::vector<Conversation*> Conversations::ofNetwork(int network) const {
    std::vector<Conversation*> found;
    for (const auto& each : all_)
        if (each->network() == network)
            found.push_back(each.get());
    return found;
}

int Conversations::newNetwork(std::string name) {
    networks_.push_back(std::move(name));
    return static_cast<int>(networks_.size());
}

std::string Conversations::networkName(int network) const {
    const bool isOne = network > 0 && std::cmp_less_equal(network, networks_.size());
    return isOne ? visibleName(networks_[static_cast<std::size_t>(network) - 1]) : "";
}

std::string Conversations::fullName(const Conversation& conversation) const {
    const bool isOneOfSeveral =
        !conversation.isAtHome() && std::ranges::any_of(all_, [&](const auto& each) {
            return !each->isAtHome() && each->network() != conversation.network();
        });
    return visibleName(conversation.name()) +
           (isOneOfSeveral ? " on " + networkName(conversation.network()) : "");
}

int Conversations::numberOf(const Conversation& conversation) const {
    int number = 0;
    for (const auto& each : all_) {
        number += !each->isAtHome();
        if (each.get() == &conversation)
            return conversation.isAtHome() ? 0 : number;
    }
    return 0;
}

Conversation* Conversations::numbered(int number) const {
    const auto found = std::ranges::find_if(
        all_, [&](const auto& each) { return !each->isAtHome() && --number == 0; });
    return found == all_.end() ? nullptr : found->get();
}

Conversation& Conversations::add(Conversation::Identity identity) {
    ++revision_;
    return *all_.emplace_back(
        std::make_unique<Conversation>(std::move(identity), std::to_string(++lastPlace_)));
}

void Conversations::rename(Conversation& conversation, std::string name) {
    conversation.identity_.name = std::move(name);
    ++revision_;
}

void Conversations::remove(const Conversation& conversation) {
    if (&conversation == all_.front().get())
        return;
    if (home_ == &conversation)
        home_ = all_.front().get();
    if (front_ == &conversation)
        enter(*home_);
    else
        beforeChange_();
    bytes_ -= conversation.bytes();
    std::erase_if(all_, [&](const auto& each) { return each.get() == &conversation; });
    ++revision_;
}

void Conversations::enter(Conversation& conversation) {
    if (front_ == &conversation)
        return;
    beforeChange_();
    if (looks_)
        front_->go();
    front_->lastVisit_ = ++lastVisit_;
    if (looks_)
        conversation.come();
    front_ = &conversation;
    moves_ += !isAsOwnerWants_;
    if (conversation.isAtHome())
        home_ = &conversation;
    ++revision_;
}

void Conversations::look(bool looks) {
    if (std::exchange(looks_, looks) == looks)
        return;
    if (looks)
        front_->come();
    else
        front_->go();
    ++revision_;
}

void Conversations::asOwnerWants(const Task& task) {
    const bool before = std::exchange(isAsOwnerWants_, true);
    task();
    isAsOwnerWants_ = before;
}

const Conversation* Conversations::whereBegun(const Begun& begun) const {
    return begun.place.empty() || begun.moves == moves_ ? front_ : find(begun.place);
}

void Conversations::goBackTo(const Begun& begun) {
    if (begun.place.empty() || begun.moves == moves_)
        return;
    Conversation* const there = find(begun.place);
    asOwnerWants([&] { enter(there && there->isOpen ? *there : *home_); });
}

void Conversations::keep(Conversation& conversation, KeptLine line) {
    if (line.at == 0)
        line.at = loop_.moment();
    if (line.isOld && conversation.holds(line))
        return;
    if (lastNumber_ % mostUnshown == 0)
        beforeChange_();
    line.number = ++lastNumber_;
    if (kept_)
        kept_(conversation, line);
    bytes_ -= conversation.bytes();
    conversation.keep(std::move(line), looks_ && front_ == &conversation);
    bytes_ += conversation.bytes();
    boundBytes();
    ++revision_;
}

void Conversations::boundBytes() {
    while (bytes_ > mostBytes) {
        Conversation& largest =
            **std::ranges::max_element(all_, {}, [](const auto& each) { return each->bytes(); });
        bytes_ -= largest.bytes();
        largest.dropOldest();
        bytes_ += largest.bytes();
    }
}

void Conversations::showAgain(int lines) {
    beforeChange_();
    again_ = {again_.number + 1, lines};
    ++revision_;
}

void Conversations::tell(KeptLine::Kind kind, const std::string& text) {
    keep(*front_, {.kind = kind, .text = text});
}

} // namespace larkspin
