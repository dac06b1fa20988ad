// Which name to ask a server for when it doesn't give the one that was asked for last.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

class IrcNickChoice {
public:
    explicit IrcNickChoice(std::string wanted);

    // What to ask for, or what was asked for last.
    const std::string& asked() const { return asked_; }

    // Somebody has it. The server's own form of the name shows how long it may be. False when
    // enough were tried.
    bool taken(std::string_view asServerWrites);

    // The server takes no such name: goes on with letters and digits alone, and no more of them
    // than all servers take.
    bool malformed();

private:
    static constexpr int mostTries = 30;

    bool next();

    std::string base_, asked_;
    std::size_t longest_ = 64;
    int tries_ = 0;
};

} // namespace larkspin
