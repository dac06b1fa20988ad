#include "irc/client/irc_networks.h"

#include "text/fold.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace larkspin {

namespace {

constexpr auto followsWithin = std::chrono::milliseconds(500);

} // namespace

IrcNetworks::IrcNetworks(IrcNetwork::Shared shared, MakeConnection makeConnection,
                         IrcAccounts& accounts, IrcOnConnect::Words words)
    : shared_(std::move(shared)), makeConnection_(std::move(makeConnection)), accounts_(accounts),
      words_(std::move(words)) {
    shownChanged_ = std::exchange(shared_.shown.changed, [this] { changed(); });
    for (const auto& file : accounts_.all())
        add(*file);
}

IrcNetwork& IrcNetworks::add(IrcAccountFile& file) {
    IrcNetwork& network =
        *all_.emplace_back(std::make_unique<IrcNetwork>(shared_, makeConnection_(), file, words_));
    network.access.readPathsBy(readPath_);
    network.client.limitSaid(accounts_.linesPerMinute());
    return network;
}

IrcNetwork* IrcNetworks::of(const Conversation& conversation) const {
    for (const auto& each : all_)
        if (each->client.owns(conversation))
            return each.get();
    return nullptr;
}

IrcNetwork& IrcNetworks::atHand() const {
    if (IrcNetwork* const inFront = of(shared_.conversations.front()))
        return *inFront;
    for (const auto& each : all_)
        if (each->client.network() == wasIn_ && each->client.isOn())
            return *each;
    if (last().client.isOn())
        return last();
    for (const auto& each : all_)
        if (each->client.isOn())
            return *each;
    return *all_.back();
}

IrcNetwork& IrcNetworks::last() const {
    return last_ ? *last_ : *all_.front();
}

IrcNetwork* IrcNetworks::named(std::string_view name) const {
    for (const auto& each : all_)
        if (each->isKnown() && equalFolded(each->name(), name))
            return each.get();
    return nullptr;
}

IrcNetwork* IrcNetworks::lastToAskForTrust() const {
    IrcNetwork* last = nullptr;
    for (const auto& each : all_)
        if (each->access.asksForTrust() &&
            (!last || each->access.askedForTrustAt() >= last->access.askedForTrustAt()))
            last = each.get();
    return last;
}

bool IrcNetworks::isOnAny() const {
    return std::ranges::any_of(all_, [](const auto& each) { return each->client.isOn(); });
}

bool IrcNetworks::connect(const IrcWish& wish) {
    IrcNetwork* network = named(wish.name.empty() ? wish.server.host : wish.name);
    if (!network && all_.size() >= IrcAccounts::most)
        return false;
    if (network)
        takeWhatWasGiven(*network);
    else
        network = all_.back().get();
    const bool isNext = !network->isKnown();
    last_ = network;
    wasIn_ = Conversations::noNetwork;
    if (isNext)
        add(accounts_.beginNext());
    network->access.connect(wish);
    return true;
}

void IrcNetworks::connectAgain(IrcNetwork& network) {
    takeWhatWasGiven(network);
    last_ = &network;
    wasIn_ = Conversations::noNetwork;
    network.access.connectAgain();
}

// What the owner has given for the next network is for this one then.
void IrcNetworks::takeWhatWasGiven(IrcNetwork& network) {
    IrcNetwork& next = *all_.back();
    if (&next == &network || next.file.account() == IrcAccount())
        return;
    IrcAccount account = network.file.account();
    const IrcAccount given = next.file.account();
    // In a file that was damaged, the next one may be what is left of another network.
    if (!given.loginHost.empty() && !equalFolded(given.loginHost, account.server.host))
        return;
    if (!given.user.empty()) {
        account.user = given.user;
        account.password = given.password;
        account.keepsPassword = given.keepsPassword;
        account.loginHost = given.loginHost;
    }
    account.facts.addWhatIsLacking(given.facts);
    network.file.keep(std::move(account));
    next.file.keep({});
}

void IrcNetworks::takeUpAgain() {
    for (const auto& each : all_)
        if (each->file.account().isWanted && each->file.account().isForStart)
            shared_.loop.post([this, network = each.get()] {
                for (const auto& still : all_)
                    if (still.get() == network) {
                        connectAgain(*network);
                        return network->client.comeBack();
                    }
            });
}

// Something of it may be at work, and this event served within that. So it goes with the next one
// that is forgotten while no event waits.
void IrcNetworks::forget(IrcNetwork& network) {
    if (last_ == &network)
        last_ = nullptr;
    network.access.giveUp();
    for (const Conversation* each : shared_.conversations.ofNetwork(network.client.network()))
        shared_.conversations.remove(*each);
    if (shared_.loop.atWork().depth <= 1)
        forgotten_.clear();
    const auto found = std::ranges::find(all_, &network, &All::value_type::get);
    forgotten_.emplace_back(accounts_.remove(network.file), std::move(*found));
    all_.erase(found);
}

void IrcNetworks::readPathsBy(const IrcAccess::ReadPath& readPath) {
    readPath_ = readPath;
    for (const auto& each : all_)
        each->access.readPathsBy(readPath_);
}

void IrcNetworks::limitSaid(int linesPerMinute) {
    accounts_.limit(linesPerMinute);
    for (const auto& each : all_)
        each->client.limitSaid(linesPerMinute);
}

void IrcNetworks::finish() {
    follow();
    for (const auto& each : all_)
        each->client.finish();
}

// Changes are written together, after a moment, so that no server can make the file be written
// again and again.
void IrcNetworks::changed() {
    if (const Conversation& front = shared_.conversations.front(); !front.isAtHome())
        wasIn_ = front.network();
    if (following_ == TimerId::none)
        following_ = shared_.loop.once(followsWithin, [this] { follow(); });
    shownChanged_();
}

void IrcNetworks::follow() {
    shared_.loop.cancel(std::exchange(following_, TimerId::none));
    for (const auto& each : all_)
        each->follow();
}

} // namespace larkspin
