// The batches in which a server sends what belongs together (BATCH). Whoever takes a message learns
// here what it is part of: the answer to a line with a label, what was said in former times, or
// what happens to many at once.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct IrcMessage;

struct IrcBatch {
    std::string reference, kind;
    std::vector<std::string> parameters; // what the server says about it
    std::string label;                   // of the line that it answers; blank for none
    bool isOld;                          // it tells of former times

    // Servers have lost each other, and all behind one of them go; or they come back.
    bool isSplit() const { return kind == "netsplit"; }
    bool isJoin() const { return kind == "netjoin"; }
};

class IrcBatches {
public:
    // Beyond that the oldest one is forgotten. What still comes in it counts as old.
    static constexpr std::size_t mostOpen = 32;

    // A batch begins, and ends; other messages do nothing here.
    void open(const IrcMessage& message);
    void close(const IrcMessage& message);
    void clear() { batches_.clear(); }

    // The batch that the message comes in, or that it ends; null for none.
    const IrcBatch* of(const IrcMessage& message) const;

    // Whether it was said or done in former times: what a bouncer plays back, what was asked for,
    // and whatever comes in a batch that isn't known.
    bool isOld(const IrcMessage& message) const;

    // The label of the line that it answers, also where that stands at a batch around it; blank for
    // none.
    std::string_view label(const IrcMessage& message) const;

private:
    const IrcBatch* find(std::string_view reference) const;

    std::vector<IrcBatch> batches_; // in the order in which they began
};

} // namespace larkspin
