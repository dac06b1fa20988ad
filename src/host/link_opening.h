// Opens links that the owner chooses, after he has been asked; about the same address once in a
// run.
#pragma once

#include "shell/menu.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <utility>

namespace larkspin {

class Conversation;
class Dialogs;

class LinkOpening {
public:
    // The dialogs must live on. The task opens an address that `url` would open.
    using Open = std::function<void(const std::string& address)>;
    LinkOpening(Dialogs& dialogs, Open open) : dialogs_(dialogs), open_(std::move(open)) {}

    static constexpr std::size_t mostAgreed = 1000; // addresses that aren't asked about again

    // May wait. What is no address isn't asked about, nor opened.
    void open(const std::string& link);

private:
    Dialogs& dialogs_;
    Open open_;
    std::set<std::string> agreed_;
};

// The links said last in a conversation, of which the task gets the address that the owner chooses:
// for whoever has no mouse.
Menu linksMenu(const Conversation& conversation, const LinkOpening::Open& open);

} // namespace larkspin
