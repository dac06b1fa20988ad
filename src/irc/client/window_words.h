// What words with a slash mean about the chat client that is a tree of windows: that it is reached,
// or left to itself, and what of those about rooms holds in one of its rooms.
#pragma once

#include "host/slash_words.h"

#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Conversations;
class WindowRoom;

class WindowWords {
public:
    // Both must live on. What the words have to say is told by `tell`, a line each.
    WindowWords(const Conversations& conversations, WindowRoom& windows, SlashWords::Tell tell)
        : conversations_(conversations), windows_(windows), tell_(std::move(tell)) {}

    // The same words, which mean this client where the owner means it.
    std::vector<SlashWord> over(std::vector<SlashWord> words);

private:
    using Run = bool (WindowWords::*)(std::string_view rest);

    bool connect(std::string_view rest);
    bool disconnect(std::string_view rest);
    bool networks(std::string_view rest);
    bool leave(std::string_view rest);
    bool names(std::string_view rest);
    std::vector<SlashWord> without(std::vector<SlashWord> words) const;
    bool isInFront() const;

    const Conversations& conversations_;
    WindowRoom& windows_;
    SlashWords::Tell tell_;
};

} // namespace larkspin
