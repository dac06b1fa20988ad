// SCRAM-SHA-256, the client's side: account and password are proved without being sent, and the
// server has to prove that it knows the password as well.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

class ScramClient {
public:
    // The nonce is text that was never used before, without commas.
    ScramClient(std::string_view account, std::string password, std::string nonce);

    // A server may ask for so many rounds of work: fewer would protect nothing, more would hold up
    // the program.
    static constexpr int fewestRounds = 4096, mostRounds = 500'000;

    // What is said first, and on the server's answer to that; nothing if the answer makes no sense.
    std::string first() const { return "n,," + begun_; }
    std::optional<std::string> second(std::string_view answer);

    // Whether the server's last word proves that it knows the password.
    bool isProof(std::string_view lastWord) const;

private:
    std::string password_, nonce_;
    std::string begun_;     // the first message without its beginning
    std::string signature_; // that the server must have
};

} // namespace larkspin
