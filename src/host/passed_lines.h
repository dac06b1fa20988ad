// Lines of other conversations that were shown in the one in front as they came: which, and among
// which of its own lines, so that they stand there again whenever it is filled anew.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace larkspin {

class Conversation;
class Conversations;

struct PassedLine {
    std::uint64_t number = 0; // of all conversations' lines, as it came
    std::time_t at = 0;       // when it was said
    std::string words{};      // as it was shown
};

class PassedLines {
public:
    // Of one conversation; the oldest ones go.
    static constexpr std::size_t mostLines = 100, mostBytes = 50'000;

    void keep(const Conversation& shownIn, PassedLine line);

    // Those before the lines of these indices, and after the one before them; also those after the
    // last line, if `end` is behind that one. In the order in which they came.
    struct Placed {
        std::size_t before; // the index of that line
        PassedLine line;
    };
    std::vector<Placed> among(const Conversation& conversation, std::size_t first,
                              std::size_t end) const;

    // Drops those of conversations that have gone.
    void dropGone(const Conversations& conversations);

private:
    std::map<std::string, std::deque<PassedLine>> byPlace_;
};

} // namespace larkspin
