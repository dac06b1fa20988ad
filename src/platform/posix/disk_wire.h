// The language between the program and its disk workers: numbers and texts, one after the other.
// What is cut short reads as 0 and as empty.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace larkspin {

class WireWriter {
public:
    void number(std::uint64_t value);
    void text(std::string_view text);

    std::string bytes;
};

class WireReader {
public:
    explicit WireReader(std::string_view bytes) : bytes_(bytes) {}

    std::uint64_t number();
    std::string text();

    bool isWhole() const { return isWhole_; } // whether all that was read was there

private:
    std::string_view bytes_;
    bool isWhole_ = true;
};

} // namespace larkspin
