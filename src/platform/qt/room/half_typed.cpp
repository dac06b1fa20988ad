#include "platform/qt/room/half_typed.h"

#include <utility>

namespace larkspin {

HalfTyped::HalfTyped(InputLine& input, const Conversations& conversations)
    : input_(input), conversations_(conversations), begun_(conversations.begun()),
      moves_(begun_.moves) {
    input_.onBegin([this] { begin(); });
}

void HalfTyped::begin() {
    begun_ = conversations_.begun();
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
    if (front.place == begun_.place || stays || input_.hides())
        return false;
    if (input_.text().isEmpty())
        halves_.erase(begun_.place);
    else
        halves_[begun_.place] = input_.draft();
    forgetGone();
    begun_ = front;
    const auto half = halves_.extract(front.place);
    input_.put(half.empty() ? InputLine::Draft() : half.mapped());
    return true;
}

bool HalfTyped::staysFor(const Conversations::Begun& front) {
    if (std::exchange(moves_, front.moves) != front.moves)
        staysBefore_ = front.place;
    const bool stays = staysBefore_ == front.place && input_.isBegun();
    if (!stays)
        staysBefore_.clear();
    return stays;
}

void HalfTyped::forgetGone() {
    std::erase_if(halves_, [this](const auto& half) { return !conversations_.find(half.first); });
}

const Conversation* HalfTyped::elsewhere() const {
    const bool isElsewhere = input_.isBegun() && begun_.place != conversations_.front().place();
    return isElsewhere ? conversations_.find(begun_.place) : nullptr;
}

} // namespace larkspin
