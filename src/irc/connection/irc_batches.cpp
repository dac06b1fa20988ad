#include "irc/connection/irc_batches.h"

#include "irc/protocol/irc_message.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr const char *batchCommand = "BATCH", *batchTag = "batch", *labelTag = "label";

// "chathistory", "draft/chathistory", "znc.in/playback".
bool isOfFormerTimes(std::string_view kind) {
    return kind.ends_with("chathistory") || kind.ends_with("playback");
}

} // namespace

const IrcBatch* IrcBatches::find(std::string_view reference) const {
    const auto found = std::ranges::find(batches_, reference, &IrcBatch::reference);
    return found == batches_.end() ? nullptr : &*found;
}

// What holds for a batch holds for all batches in it, also when they end later.
void IrcBatches::open(const IrcMessage& message) {
    if (message.command != batchCommand || !message.parameter(0).starts_with('+'))
        return;
    IrcBatch batch{.reference = message.parameters[0].substr(1),
                   .kind = std::string(message.parameter(1)),
                   .parameters = {},
                   .label = std::string(label(message)),
                   .isOld = isOld(message) || isOfFormerTimes(message.parameter(1))};
    for (std::size_t number = 2; number < message.parameters.size(); ++number)
        batch.parameters.push_back(message.parameters[number]);
    std::erase_if(batches_, [&](const IrcBatch& of) { return of.reference == batch.reference; });
    if (batches_.size() == mostOpen)
        batches_.erase(batches_.begin());
    batches_.push_back(std::move(batch));
}

void IrcBatches::close(const IrcMessage& message) {
    if (message.command != batchCommand || !message.parameter(0).starts_with('-'))
        return;
    const std::string_view reference = message.parameter(0).substr(1);
    std::erase_if(batches_, [&](const IrcBatch& of) { return of.reference == reference; });
}

const IrcBatch* IrcBatches::of(const IrcMessage& message) const {
    if (message.command == batchCommand && message.parameter(0).starts_with('-'))
        return find(message.parameter(0).substr(1));
    return find(message.tag(batchTag));
}

bool IrcBatches::isOld(const IrcMessage& message) const {
    const std::string_view reference = message.tag(batchTag);
    const IrcBatch* const batch = find(reference);
    return batch ? batch->isOld : !reference.empty();
}

std::string_view IrcBatches::label(const IrcMessage& message) const {
    const std::string_view own = message.tag(labelTag);
    const IrcBatch* const batch = find(message.tag(batchTag));
    return own.empty() && batch ? std::string_view(batch->label) : own;
}

} // namespace larkspin
