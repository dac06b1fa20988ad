// What the two sides of a login say to each other (SASL), in the lines of IRC.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// The parameters of the AUTHENTICATE lines, in order: pieces of at most 400 bytes of base64. The
// last one must be shorter than 400 bytes, which tells the server that it is the last; if nothing
// is left for it, it is "+".
std::vector<std::string> saslLines(std::string_view bytes);

// The other way: a server's pieces put together.
class SaslInput {
public:
    // True with the last piece, after which `message` has all of it: nothing if it made no sense,
    // or was too long.
    bool add(std::string_view piece);
    const std::optional<std::string>& message() const { return message_; }

private:
    std::string text_;
    std::optional<std::string> message_;
};

// Account and password as PLAIN puts them: as nobody but the account itself.
std::string saslPlain(std::string_view account, std::string_view password);

} // namespace larkspin
