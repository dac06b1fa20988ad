// A server's answer to what its owner has asked for, in words.
#pragma once

#include <string>

namespace larkspin {

class EventLoop;
struct IrcMessage;

// Blank for one that only tells that an answer begins or ends. The loop knows the owner's calendar.
std::string wordsOfAnswer(const IrcMessage& message, const EventLoop& loop);

} // namespace larkspin
