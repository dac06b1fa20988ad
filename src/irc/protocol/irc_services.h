// The programs of a network that serve those who are on it: that keep names and rooms for them, and
// whatever else servers do under a name.
#pragma once

#include <string_view>

namespace larkspin {

// Whether the sender of a message, "nick!user@host", is one of these, or a server. By common names,
// and by the hosts that services have. Where a network has no services, anybody may be called so.
bool isIrcService(std::string_view sender);

} // namespace larkspin
