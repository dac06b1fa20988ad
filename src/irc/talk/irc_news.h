// What happens in a channel and what the server has to say, in words for the owner. What is said in
// rooms isn't among it.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

class IrcChannel;
class IrcSession;
struct IrcMessage;

// What a message tells of that channel; empty for nothing. To be called before the channel takes
// the message.
std::string newsOf(const IrcMessage& message, const IrcSession& session, const IrcChannel& channel);

// What it tells of the owner himself, and what the server answers him; empty for nothing.
std::string newsOfOwner(const IrcMessage& message, const IrcSession& session);

// Plain text on one line, from what others have written in IRC's codes.
std::string plainText(std::string_view codes);

} // namespace larkspin
