// What the chat client takes for more than text: keywords and addresses that do something.
#pragma once

#include <string>

namespace larkspin {

// A keyword: the private room of the name after it.
inline const std::string privateRoomAddress = "aol://2719:2-2-";

// A keyword: the notice of how long the owner has been online.
inline const std::string onlineClock = "online clock";

// By a message to one of these the owner switches private messages.
inline const std::string messagesOn = "$IM_ON", messagesOff = "$IM_OFF";

// Keys that sign him off.
inline const std::string signOffKeys = "%OO";

} // namespace larkspin
