#include "host/owner_calls.h"

#include "host/conversations.h"
#include "host/new_lines.h"
#include "host/shown_line.h"

#include <utility>

namespace larkspin {

OwnerCalls::OwnerCalls(const Conversations& conversations)
    : conversations_(conversations), told_(conversations.lastNumber()) {}

std::optional<OwnerCall> OwnerCalls::take() {
    if (std::exchange(revision_, conversations_.revision()) == conversations_.revision())
        return std::nullopt;
    const std::uint64_t before = std::exchange(told_, conversations_.lastNumber());
    const Conversation* in = nullptr;
    const KeptLine* latest = nullptr;
    for (const auto& each : conversations_.all()) {
        if (conversations_.looks() && each.get() == &conversations_.front())
            continue;
        for (auto line = each->lines().rbegin();
             line != each->lines().rend() && line->number > before; ++line)
            if (line->isForOwner && !line->isOwners && !line->isOld &&
                (!latest || line->number > latest->number)) {
                in = each.get();
                latest = &*line;
            }
    }
    if (!latest)
        return std::nullopt;
    const bool isSaidAmongOthers =
        in->kind() != Conversation::Kind::person && latest->kind == KeptLine::Kind::said;
    return OwnerCall{in->place(), conversations_.fullName(*in),
                     shortened((isSaidAmongOthers ? latest->speaker + ": " : "") + wordsOf(*latest),
                               mostCharacters)};
}

bool OwnerCalls::isOver(const OwnerCall& call) const {
    return !conversations_.find(call.place) ||
           (conversations_.looks() && conversations_.front().place() == call.place);
}

} // namespace larkspin
