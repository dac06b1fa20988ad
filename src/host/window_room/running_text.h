// The running text of a room in the client, to which each line is added that is said there, and
// which loses its head when it gets too long: what is new in it, and who has said it.
//
// A line is "Name:", a tabulator and what is said; what isn't so is the client's own word. Lines
// end with CR, or with CR and LF in a text where the first one does. Nothing else does: no other
// character in what somebody says can make two lines of one. And a line is only what begins where
// one ends, or at the beginning of the whole text; so what stands in the middle of somebody's words
// is never taken for a line of another's, also when a part of the text has gone.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct RunningLine {
    std::string speaker{}; // empty for the client's own words
    std::string text{};    // plain, in UTF-8, without control characters

    bool operator==(const RunningLine&) const = default;
};

class RunningText {
public:
    // How much of the text's end has to be known, in bytes.
    static constexpr std::size_t known = 65535;

    struct News {
        std::vector<RunningLine> lines;
        // Whether it has been said since the last time. Else it may have been said long ago: the
        // text is seen for the first time, or it is another one than before.
        bool isNew = false;
    };

    // The end of the text as it is now, at most `known` bytes of it, and how long it is.
    News take(std::string_view end, std::size_t length);

    // The next one is seen for the first time.
    void forget() { *this = {}; }

private:
    News takeNothing(bool isEmpty);
    News takeFirst(std::string_view end, bool isWhole);
    std::vector<RunningLine> linesIn(std::string_view bytes, bool isAtLineStart);

    std::optional<std::string> end_; // as it was the last time
    std::string emptied_;            // as it was before it was emptied, which was seen
    std::string lineEnd_;            // empty until the first one is seen
};

} // namespace larkspin
