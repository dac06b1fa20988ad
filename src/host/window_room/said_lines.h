// What has been said in the client through its input line, and hasn't been seen in its running text
// yet. By that a line of the program's is told from one that the owner has typed in the client:
// only the text is seen there, without the markup, and a song's name may look like a command.
#pragma once

#include "shell/event_loop.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct SaidLine {
    std::string line{};      // as it was said, tags and all
    bool isPrograms = false; // else the owner has typed it, here
    bool isOnScreen = false; // where he has typed it
    bool isHeld = false;     // it hasn't gone out yet
    Nanoseconds at{};        // when
    std::string place{};     // where
};

class SaidLines {
public:
    void add(SaidLine said);

    // The line that is seen under the owner's name now, if it is one of these. Some clients show a
    // long one in several; of that the first one gives the line, and the rest is nobody's.
    enum class Seen { unknown, first, rest };
    Seen take(std::string_view text, SaidLine& said);

    // Those that were said before the moment and haven't been seen.
    std::optional<SaidLine> takeLost(Nanoseconds before);

    // The program's that were said since the moment and haven't been seen, or are held.
    std::vector<SaidLine> takeUnheard(Nanoseconds since);

    bool isEmpty() const { return waiting_.empty(); }
    void clear() { waiting_.clear(); }

private:
    struct Waiting {
        SaidLine said;
        std::string words; // what is to be seen of it yet, without blanks
        bool isBegun = false;
    };
    static constexpr std::size_t most = 200; // the oldest one goes

    std::deque<Waiting> waiting_;
};

} // namespace larkspin
