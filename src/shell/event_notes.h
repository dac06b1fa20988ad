// What is noted of each event that is being served. A note is blank as its event begins, and gone
// when that has ended; events that are served within its waits have their own.
#pragma once

#include "shell/event_loop.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace larkspin {

template <typename Note> class EventNotes {
public:
    explicit EventNotes(const EventLoop& loop) : loop_(loop) {}

    // That of the innermost one. Good until events are served.
    Note& atWork() {
        const auto [depth, number] = loop_.atWork();
        notes_.resize(static_cast<std::size_t>(depth) + 1); // those deeper have ended
        auto& [event, note] = notes_.back();
        if (std::exchange(event, number) != number)
            note = {};
        return note;
    }

private:
    const EventLoop& loop_;
    std::vector<std::pair<std::uint64_t, Note>> notes_; // by depth, with their events' numbers
};

} // namespace larkspin
