// The command `help`, which tells the same as the word with a slash. It is told to the owner alone.
#pragma once

#include "chat/core.h"

#include <functional>
#include <string>
#include <utility>

namespace larkspin {

class HelpCommand {
public:
    explicit HelpCommand(const Core& core) : state_(core.state), reply_(core.reply) {}

    void all() { about(""); }
    void about(const std::string& word);

    // A front end with further words tells of those as well.
    void showBy(std::function<void(const std::string& word)> show) { show_ = std::move(show); }

private:
    AppState& state_;
    Reply& reply_;
    std::function<void(const std::string&)> show_;
};

} // namespace larkspin
