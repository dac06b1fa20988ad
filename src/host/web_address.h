// What `url` may open: addresses of the web, of file servers and of mail, and nothing else. The
// system would also run a program, open a file or hand one to somebody by mail when it is given the
// text for it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

// The address that a text stands for, blanks around it aside: http, https, ftp or mailto, or a bare
// host name (`lark.example/songs`), which gets `http://` in front. Nothing for any other text.
std::optional<std::string> webAddress(std::string_view text);

} // namespace larkspin
