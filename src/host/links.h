// Addresses in what is said, which the owner may want to open. A link is a piece of the text as he
// sees it, and opens what stands there: what others write can't show one address and open another.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class Conversation;

struct Link {
    std::size_t begin = 0, length = 0; // of its piece, in bytes
    std::string address{};             // as `webAddress` has it
};

// Those in a text that is shown like this. An address begins with its scheme, or with "www.", and
// is one for `webAddress`; marks around it aren't part of it. None has letters that are written
// from right to left, since these could make it look like another one.
std::vector<Link> linksIn(std::string_view shown);

// The addresses said last in a conversation, the newest first, each once.
std::vector<std::string> latestLinks(const Conversation& conversation, std::size_t most);

// What the owner is asked before it is opened: the whole address, and where it leads, since that
// isn't always what it begins with.
std::string questionAbout(std::string_view address);

} // namespace larkspin
