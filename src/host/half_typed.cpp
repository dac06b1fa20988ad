#include "host/half_typed.h"

#include <utility>

namespace larkspin {

HalfTyped::HalfTyped(LineTyping& line, const Conversations& conversations)
    : line_(line), conversations_(conversations), begun_(conversations.begun()),
      moves_(begun_.moves) {
    line_.onBegin([this] { begun_ = conversations_.begun(); });
}

// The owner may have gone elsewhere a moment ago, and the line that he still sees be from before.
// It then counts as if the other place had come in front by itself.
Conversations::Begun HalfTyped::begun() const {
    const Conversations::Begun front = conversations_.begun();
    return begun_.place == front.place ? begun_
                                       : Conversations::Begun{begun_.place, front.moves - 1};
}

bool HalfTyped::follow() {
    const Conversations::Begun front = conversations_.begun();
    const bool stays = staysFor(front);
    if (front.place == begun_.place || stays || line_.hides())
        return false;
    if (Draft draft = line_.draft(); draft.text.empty())
        halves_.erase(begun_.place);
    else
        halves_[begun_.place] = std::move(draft);
    forgetGone();
    begun_ = front;
    const auto half = halves_.extract(front.place);
    line_.put(half.empty() ? Draft() : half.mapped());
    return true;
}

bool HalfTyped::staysFor(const Conversations::Begun& front) {
    if (std::exchange(moves_, front.moves) != front.moves)
        staysBefore_ = front.place;
    const bool stays = staysBefore_ == front.place && line_.isBegun();
    if (!stays)
        staysBefore_.clear();
    return stays;
}

void HalfTyped::forgetGone() {
    std::erase_if(halves_, [this](const auto& half) { return !conversations_.find(half.first); });
}

const Conversation* HalfTyped::elsewhere() const {
    const bool isElsewhere = line_.isBegun() && begun_.place != conversations_.front().place();
    return isElsewhere ? conversations_.find(begun_.place) : nullptr;
}

} // namespace larkspin
