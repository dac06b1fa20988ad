// What the client tells, a line each.
#pragma once

#include <string>

namespace larkspin::client {

// Ends of lines, tabs and backslashes in it are told by backslashes, as `unescaped` takes them.
void tell(const std::string& what, const std::string& text = {});

std::string unescaped(const std::string& text);

} // namespace larkspin::client
