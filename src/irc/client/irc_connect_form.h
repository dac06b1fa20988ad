// All that it takes to go to a network, as one form to be filled in: what the words for that give
// one by one. A front end shows it as a dialog.
#pragma once

#include <cstdint>
#include <string>

namespace larkspin {

class IrcNetworks;
struct IrcNetwork;

struct IrcConnectForm {
    std::string network{}; // its name; blank for the server's
    std::string host{};    // perhaps with its port after a colon
    int port = 6697;
    bool encrypted = true;
    std::string nick{};
    std::string rooms{};            // divided by blanks
    std::string user{}, password{}; // of an account; without a password it stays as it is
    bool keepsPassword = false;
    bool atStart = true;
};

inline constexpr int ircPortByTls = 6697, ircPlainPort = 6667;

// As it is for a network that is known; the password isn't shown.
IrcConnectForm connectFormOf(const IrcNetwork& network);

// What is missing or makes no sense, in words for the owner; blank when all is well.
std::string problemOf(const IrcConnectForm& form);

// Goes there. Gives what couldn't be done, or blank.
std::string connectBy(IrcNetworks& networks, const IrcConnectForm& filledIn);

} // namespace larkspin
