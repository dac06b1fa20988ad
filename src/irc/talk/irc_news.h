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

// To be asked before the channels take the message. Without a room only what is about the owner and
// his doings is told.
void tellNews(const IrcMessage& message, const IrcSession& session, const IrcChannel* room,
              const std::function<void(const std::string& text)>& tell);

// What others have written, and what is said in the client's markup, as plain text on one line.
std::string plainText(std::string_view codes);
std::string plainMarkup(std::string_view markup);

} // namespace larkspin
