// The last facts of what the program has done, to diagnose it with: lines, commands, what failed.
//
// Keeping one costs little: it is cut to a fixed size and copied, nothing is allocated, and no text
// is made before somebody asks. What holds a secret isn't noted, nor what others say: a report of
// these facts may go to strangers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace larkspin {

class Trace {
public:
    static constexpr std::size_t most = 500;

    Trace();
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    // `kind` must live on, as a literal does. The details follow each other after a blank.
    void note(const char* kind, std::string_view detail = {}, std::string_view more = {});

    // The same for what comes in floods: while nothing else happens, one fact tells how many.
    void count(const char* kind);

    std::size_t size() const { return noted_ < most ? noted_ : most; }

    // The fact as a line, from the oldest on, without control characters: "19:05:12.345 row next".
    // Made in the buffer, and good as long as that is. May be asked for by a signal's handler.
    using Buffer = std::array<char, 192>;
    std::string_view line(std::size_t number, Buffer& buffer) const;

private:
    struct Fact {
        std::int64_t at; // milliseconds
        const char* kind;
        std::uint64_t times; // counted
        std::uint8_t length;
        std::array<char, 103> text;
    };

    Fact& next(const char* kind);

    std::array<Fact, most> facts_{};
    std::size_t noted_ = 0; // so far
    std::int64_t zone_ = 0; // of the owner's clock, in milliseconds, as the program started
};

} // namespace larkspin
