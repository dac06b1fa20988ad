// A line of a conversation as a window shows it, whichever front end draws that.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace larkspin {

struct ShownLine {
    enum class Look {
        said,   // by somebody, with markup
        told,   // by the program, dim
        passed, // from elsewhere, in plain text, as bright as what is said here
        mark,   // across the whole width
    };
    static constexpr std::size_t mostCharacters = 4000; // of a text; the rest isn't shown

    Look look = Look::told;
    std::string speaker{}, text{}, stamp{};
    bool callsOwner = false;
    std::optional<std::uint32_t> nameColor = {}; // 0xRRGGBB; nothing for that of all names
    std::uint64_t number = 0;                    // by which it is found again; 0 for none

    bool isBright() const { return look == Look::passed || callsOwner; } // of what isn't said
};

// Of a longer text so many characters, and "…".
std::string shortened(std::string text, std::size_t mostCharacters);

} // namespace larkspin
