// What happens in the room and what the server has to say, in words for the owner. What is said in
// rooms isn't among it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class IrcChannel;
class IrcSession;
struct IrcMessage;

// To be called before the channels take the message. Without a room, only news about the owner and
// about things that he has done is told.
void tellNews(const IrcMessage& message, const IrcSession& session, const IrcChannel* room,
              const std::function<void(const std::string& text)>& tell);

// Plain text on one line, from what others have written in IRC's codes, and from the client's
// markup.
std::string plainText(std::string_view codes);
std::string plainMarkup(std::string_view markup);

} // namespace larkspin
