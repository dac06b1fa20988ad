// The half-typed line of each conversation: it is put away when the owner goes elsewhere, and there
// again when he is back. One that stands in the line when another conversation comes in front by
// itself stays there, since he types on: it is said where he has begun it.
#pragma once

#include "host/conversations.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

namespace larkspin {

// What has been typed so far, to be put back later. A secret isn't told and isn't replaced.
struct Draft {
    std::string text = {};
    std::size_t cursor = 0; // as the line in which it is typed counts
};

class HalfTyped {
public:
    // The line in which the owner types. It tells by `begin` below when he begins one.
    struct Line {
        std::function<bool()> isBegun; // he has something to say, or to answer, there
        std::function<bool()> hides;   // while a secret is typed, or may be
        std::function<Draft()> draft;
        std::function<void(const Draft&)> put;
    };

    // The conversations must outlive it.
    HalfTyped(Line line, const Conversations& conversations);

    void begin() { begun_ = conversations_.begun(); }

    // To be called before the thread sleeps. True if the line belongs elsewhere than before.
    bool follow();

    // Where the line is that is typed now.
    Conversations::Begun begun() const;

    // That conversation, if it isn't the one in front; else null.
    const Conversation* elsewhere() const;

private:
    bool staysFor(const Conversations::Begun& front);
    void forgetGone();

    Line line_;
    const Conversations& conversations_;
    Conversations::Begun begun_;
    std::uint64_t moves_ = 0;             // those that are known of
    std::string staysBefore_;             // the place that has come in front of the line by itself
    std::map<std::string, Draft> halves_; // by place
};

} // namespace larkspin
